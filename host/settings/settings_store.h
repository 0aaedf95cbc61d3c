#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
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

  /// Whether this is the value of a name in a key, without regard to the case of ASCII letters.
  [[nodiscard]] bool IsAt(const SettingsPath& key, std::string_view valueName) const;

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

  [[nodiscard]] std::optional<std::int32_t> ReadInt(std::string_view path, std::string_view name) const final;
  /// None also for a text that code page 932 cannot hold.
  [[nodiscard]] std::optional<CString> ReadString(std::string_view path, std::string_view name) const final;
  bool WriteInt(std::string_view path, std::string_view name, std::int32_t value) final;
  bool WriteString(std::string_view path, std::string_view name, std::string_view value) final;

 protected:
  explicit SettingsStore(ProblemHandler report);

  /// The value of a name in a key, of whatever kind it is.
  [[nodiscard]] virtual std::optional<SettingValue> Read(std::string_view path, std::string_view name) const = 0;
  /// Stores a value; false when that cannot be done. A value of none stands for a text that cannot be stored.
  virtual bool Write(std::string_view path, std::string_view name, const std::optional<SettingValue>& value) = 0;

  void Report(const std::string& problem) const { m_report(problem); }

 private:
  ProblemHandler m_report;  ///< never null
};

/// Splits a key's path and turns it into UTF-8; none when it is no text in code page 932.
[[nodiscard]] std::optional<SettingsPath> ToSettingsPath(std::string_view path);
/// Text of the library as UTF-8; none when it is no text in code page 932, which no store could give back.
[[nodiscard]] std::optional<std::string> ToStoredText(std::string_view text);
/// What a settings key is given of a stored value: an integer, or a text that code page 932 can hold.
[[nodiscard]] std::optional<std::int32_t> IntegerOf(const std::optional<SettingValue>& value);
[[nodiscard]] std::optional<CString> TextOf(const std::optional<SettingValue>& value);
/// A stored value as a person is shown it: 3, "道路中心".
[[nodiscard]] std::string ShownText(const SettingValue& value);
/// The names as one text, as people write it: RoadInfo.speed.
[[nodiscard]] std::string DottedName(const SettingsPath& path, std::string_view name);
[[nodiscard]] std::string DottedName(const SettingsEntry& entry);

/// A name of a key or value with ASCII letters in lower case: names differ by more than that.
[[nodiscard]] std::string FoldedName(std::string name);
/// Whether two names are the same but for the case of ASCII letters.
[[nodiscard]] bool IsSameName(std::string_view a, std::string_view b);

}  // namespace vorn_host
