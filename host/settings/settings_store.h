#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "vorn/platform/wex_store.h"

namespace vorn_host {

/// An integer, or a text in UTF-8.
using SettingValue = std::variant<std::int32_t, std::string>;

/// Names of keys in UTF-8, from the outermost inwards; without any, the store itself.
using SettingsPath = std::vector<std::string>;

/// A value in a store, whether or not a settings key can read it.
struct SettingsEntry {
  SettingsPath path;
  std::string name;
  std::optional<SettingValue> value;  ///< none when it is neither a text nor an integer of 32 bits
  std::string shown;                  ///< the value as a person is shown it: 3, "道路中心", 2024-04-01

  bool operator==(const SettingsEntry&) const = default;
};

/// A store that outlasts the process. As the library asks it, it never throws: what cannot be read is not there, and
/// what cannot be written gives false.
class SettingsStore : public WexStore {
 public:
  /// Hears, in one sentence for the user, why settings could not be read or kept. Must not throw; null is silence.
  using ProblemHandler = std::function<void(const std::string& problem)>;

  /// Where the settings are, as messages name it: a file, a key of the system registry.
  [[nodiscard]] virtual std::string Place() const = 0;
  /// Everything that is stored. Throws `DocumentError` when the place cannot be read.
  [[nodiscard]] virtual std::vector<SettingsEntry> Entries() const = 0;
};

/// Splits a key's path and turns it into UTF-8; none when it is no text in code page 932.
[[nodiscard]] std::optional<SettingsPath> ToSettingsPath(std::string_view path);
/// Text of the library as UTF-8; none when it is no text in code page 932, which no store could give back.
[[nodiscard]] std::optional<std::string> ToStoredText(std::string_view text);
/// What a settings key is given of a stored value: an integer, or a text that code page 932 can hold.
[[nodiscard]] std::optional<std::int32_t> IntegerOf(const std::optional<SettingValue>& value);
[[nodiscard]] std::optional<CString> TextOf(const std::optional<SettingValue>& value);
/// The names as one text, as people write it: RoadInfo.speed.
[[nodiscard]] std::string DottedName(const SettingsPath& path, std::string_view name);

/// A name of a key or value with ASCII letters in lower case: names differ by more than that.
[[nodiscard]] std::string FoldedName(std::string name);
/// Whether two names are the same but for the case of ASCII letters.
[[nodiscard]] bool IsSameName(std::string_view a, std::string_view b);
[[nodiscard]] bool IsSamePath(const SettingsPath& a, const SettingsPath& b);

}  // namespace vorn_host
