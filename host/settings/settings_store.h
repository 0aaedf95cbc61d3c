#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
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

/// How many keys may lie within each other. Nobody needs nearly as many; what a store walks through, though, must not
/// be as deep as a damaged file makes it.
inline constexpr std::size_t kMostNames = 100;

/// A value in a store, whether or not a settings key can read it.
struct SettingsEntry {
  SettingsPath path;                  ///< the key that it lies in
  std::string name;                   ///< as it is spelled in the store
  std::optional<SettingValue> value;  ///< none when it is neither a text nor an integer of 32 bits
  std::string shown;                  ///< the value as a person is shown it: 3, "道路中心", 2024-04-01

  /// Whether this is the value of a name in a key, without regard to the case of ASCII letters.
  [[nodiscard]] bool IsAt(const SettingsPath& key, std::string_view valueName) const;

  bool operator==(const SettingsEntry&) const = default;
};

/// A value that is to be stored.
struct SettingChange {
  SettingsPath path;   ///< the key
  std::string name;    ///< of the value
  SettingValue value;  ///< what is to be stored
};

/// A store that outlasts the process. As the library asks it, it never throws: what cannot be read is not there, and
/// what cannot be written gives false, and a report. A key that is created comes into the store with its first value,
/// so reading leaves no traces. Until a value was to be stored in it, the object answers that it is there, afterwards
/// the store does: a key that could not be stored is none. A key that was found or created may be written for as long
/// as the object lives, even while another program has emptied the place or is in the middle of filling it.
class SettingsStore : public WexStore {
 public:
  /// Hears, in one sentence for the user, why settings could not be read or kept. It may take its time and may use the
  /// settings itself, as nothing is locked when it is called. Must not throw; null is silence.
  using ProblemHandler = std::function<void(const std::string& problem)>;

  /// Where the settings are, as messages name it: a file, a key of the system registry.
  [[nodiscard]] virtual std::string Place() const = 0;
  /// Everything that is stored. Throws `DocumentError` when the place cannot be read.
  [[nodiscard]] virtual std::vector<SettingsEntry> Entries() const = 0;
  /// What a key gives for a name, as it is spelled where it is stored; none when nothing is stored there, or when the
  /// place cannot be read.
  [[nodiscard]] virtual std::optional<SettingsEntry> Find(const SettingsPath& path, std::string_view name) const = 0;

  [[nodiscard]] bool KeyExists(std::string_view path) const final;
  bool CreateKey(std::string_view path) final;
  [[nodiscard]] std::optional<std::int32_t> ReadInt(std::string_view path, std::string_view name) const final;
  /// None also for a text that a settings key cannot give, see `TextOf`.
  [[nodiscard]] std::optional<CString> ReadString(std::string_view path, std::string_view name) const final;
  bool WriteInt(std::string_view path, std::string_view name, std::int32_t value) final;
  bool WriteString(std::string_view path, std::string_view name, std::string_view value) final;

 protected:
  /// What was tried.
  enum class Access : std::size_t { Read, Write };

  /// A store whose problems are told to the handler.
  explicit SettingsStore(ProblemHandler report);

  /// Whether a key is stored.
  [[nodiscard]] virtual bool HasKey(const SettingsPath& path) const = 0;
  /// Stores a value, with its key if that is not there yet; false, and a report, when that cannot be done.
  virtual bool Keep(SettingChange change) = 0;

  /// Tells the handler.
  void Report(const std::string& problem) const { m_report(problem); }
  /// Reports a problem unless it is the one that was reported last. A store of several places that succeed or fail on
  /// their own says which one it is about.
  void ReportOnce(Access access, const std::string& problem, const std::string& place = {}) const;
  /// Notes that reading or writing a place succeeded: a problem that comes back is reported again.
  void NoteSuccess(Access access, const std::string& place = {}) const { Told(access).erase(place); }
  /// Notes that a value was to be stored in a key: what is stored tells from now on whether the key, and those above
  /// it, are there.
  void NoteTried(const SettingsPath& path);

 private:
  using Problems = std::map<std::string, std::string>;

  [[nodiscard]] bool KeyExists(const SettingsPath& path) const;
  [[nodiscard]] bool MayWrite(const SettingsPath& path) const;
  [[nodiscard]] std::optional<SettingValue> Read(std::string_view path, std::string_view name) const;
  /// A value of none stands for a text that cannot be stored.
  bool Write(std::string_view path, std::string_view name, std::optional<SettingValue> value);
  /// Reports why a value cannot be written; false.
  bool Refuse(const SettingsPath& path, std::string_view name, const char* reason) const;
  [[nodiscard]] Problems& Told(Access access) const { return m_told[static_cast<std::size_t>(access)]; }

  ProblemHandler m_report;                    ///< never null
  std::set<SettingsPath> m_created;           ///< without a value that was to be stored; names are folded
  mutable std::set<SettingsPath> m_writable;  ///< that were created or found; names are folded
  mutable std::array<Problems, 2> m_told;     ///< by `Access` and place: what was reported, and is not over yet
};

/// Splits a key's path and turns it into UTF-8; none where `ToStoredText` gives none, or for more than `kMostNames`.
[[nodiscard]] std::optional<SettingsPath> ToSettingsPath(std::string_view path);
/// Text of the library as UTF-8; none when it is no text in code page 932 or has a NUL within, as no settings key could
/// give it back.
[[nodiscard]] std::optional<std::string> ToStoredText(std::string_view text);
/// What a settings key is given of a stored value: an integer, or a text that code page 932 can hold and that has no
/// NUL within, where whoever takes it for a C text would cut it short.
[[nodiscard]] std::optional<std::int32_t> IntegerOf(const std::optional<SettingValue>& value);
/// As above, for a text.
[[nodiscard]] std::optional<CString> TextOf(const std::optional<SettingValue>& value);
/// A stored value as a person is shown it: 3, "道路中心".
[[nodiscard]] std::string ShownText(const SettingValue& value);
/// The names as one text, as people write it: RoadInfo.speed.
[[nodiscard]] std::string DottedName(const SettingsPath& path, std::string_view name);
[[nodiscard]] std::string DottedName(const SettingsEntry& entry);

/// A name of a key or value with ASCII letters in lower case: names differ by more than that.
[[nodiscard]] std::string FoldedName(std::string_view name);
/// Whether two names are the same but for the case of ASCII letters.
[[nodiscard]] bool IsSameName(std::string_view a, std::string_view b);

}  // namespace vorn_host
