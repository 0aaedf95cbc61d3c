#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <variant>

#include "vorn/platform/cstring.h"

/// Where settings keys live. A key is a path of names with `kSeparator` between them and holds named integers and
/// texts; names differ by more than the case of ASCII letters. All text is in code page 932, so whoever splits a path
/// has to look for the separator with `CString::Find`.
class WexStore {
 public:
  /// What stands between the names of a path.
  static constexpr char kSeparator = '\\';

  WexStore() = default;
  WexStore(const WexStore&) = delete;
  WexStore& operator=(const WexStore&) = delete;
  virtual ~WexStore() = default;

  /// Whether there is such a key; the empty path, the store itself, always is one.
  [[nodiscard]] virtual bool KeyExists(std::string_view path) const = 0;
  /// Creates a key and those above it; true when it is there afterwards.
  virtual bool CreateKey(std::string_view path) = 0;

  /// The integer of a name; none when there is no such key or name, or when a text is stored there.
  [[nodiscard]] virtual std::optional<std::int32_t> ReadInt(std::string_view path, std::string_view name) const = 0;
  /// The text of a name; none when there is no such key or name, or when an integer is stored there.
  [[nodiscard]] virtual std::optional<CString> ReadString(std::string_view path, std::string_view name) const = 0;

  /// Stores a value in place of whatever has the name; false when the key does not exist or cannot be written.
  virtual bool WriteInt(std::string_view path, std::string_view name, std::int32_t value) = 0;
  /// Stores a text, as `WriteInt` an integer.
  virtual bool WriteString(std::string_view path, std::string_view name, std::string_view value) = 0;

  /// Begin and end of calls that belong together, for `WexKeyGroup`; groups may lie within each other. A store that
  /// shares its values with others answers all questions of a group from one state, and keeps what the group writes
  /// together at the end of the outermost one, where it can. Without need for that, nothing happens. Must not throw.
  virtual void BeginGroup() {}
  /// Ends what `BeginGroup` began.
  virtual void EndGroup() {}
};

/// A store that lasts as long as the object. A lack of memory throws `std::bad_alloc` and leaves every key and value as
/// it was: a path comes with all the keys above it or not at all.
class WexMemoryStore final : public WexStore {
 public:
  [[nodiscard]] bool KeyExists(std::string_view path) const override;
  bool CreateKey(std::string_view path) override;
  [[nodiscard]] std::optional<std::int32_t> ReadInt(std::string_view path, std::string_view name) const override;
  [[nodiscard]] std::optional<CString> ReadString(std::string_view path, std::string_view name) const override;
  bool WriteInt(std::string_view path, std::string_view name, std::int32_t value) override;
  bool WriteString(std::string_view path, std::string_view name, std::string_view value) override;

 private:
  using Value = std::variant<std::int32_t, CString>;
  using Values = std::map<CString, Value>;

  template <typename T>
  std::optional<T> Read(std::string_view path, std::string_view name) const;
  bool Write(std::string_view path, std::string_view name, Value value);

  std::map<CString, Values> m_keys{{CString(), Values()}};  ///< by path, both names in lower case
};
