#pragma once

#include <cstdint>
#include <map>
#include <variant>

#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"

/// A table of values by integer key: the slot at the head of most archive records, in which later versions can carry
/// values without breaking the layout.
class DovDataTable {
 public:
  /// The byte in the archive that tells what kind of value follows it.
  enum class Type : std::uint8_t {
    Integer = 1,  ///< 4 bytes
    Real = 2,     ///< 8 bytes
    Text = 3,     ///< an archive text
  };

  /// Stores a value in place of whatever has the key.
  void SetAt(std::int32_t key, std::int32_t value) { m_values.insert_or_assign(key, value); }
  void SetAt(std::int32_t key, double value) { m_values.insert_or_assign(key, value); }
  void SetAt(std::int32_t key, const CString& value) { m_values.insert_or_assign(key, value); }

  /// The value of a key; false, and the output untouched, when there is none or it is of another type.
  bool Lookup(std::int32_t key, std::int32_t& value) const { return LookupAs(key, value); }
  bool Lookup(std::int32_t key, double& value) const { return LookupAs(key, value); }
  bool Lookup(std::int32_t key, CString& value) const { return LookupAs(key, value); }

  /// False when there was no such key.
  bool RemoveKey(std::int32_t key) { return m_values.erase(key) > 0; }
  /// Removes all values.
  void RemoveAll() { m_values.clear(); }
  /// The number of values.
  [[nodiscard]] int GetCount() const { return static_cast<int>(m_values.size()); }
  /// Whether there is no value.
  [[nodiscard]] bool IsEmpty() const { return m_values.empty(); }

  /// The 32-bit count, then for each value, in ascending order of the keys: the 32-bit key, the type byte, the value.
  /// An empty table is four zero bytes.
  ///
  /// Loading takes the values in any order, the last one of a key, and replaces what the table held. It refuses
  /// unknown types (`CArchiveException::badIndex`), since their length is not known, and counts that the bytes left
  /// cannot back (end-of-file); the table then stays as it was.
  void Serialize(CArchive& ar);

  // The same bytes without a table, for records whose values are known: there are as many tables in an archive as
  // there are records, and next to all of them hold nothing or one integer.

  /// Stores an empty table, or loads one and forgets it.
  static void SerializeEmpty(CArchive& ar) {
    std::uint32_t count = 0;
    if (ar.IsStoring()) {
      ar << count;
    } else {
      ar >> count;
      if (count > 0) ForgetEntries(ar, count);
    }
  }
  /// Stores a table with one integer.
  static void StoreInteger(CArchive& ar, std::int32_t key, std::int32_t value);
  /// Loads a table, and takes the integer that it holds under a key; false, and the output untouched, without one.
  static bool LoadInteger(CArchive& ar, std::int32_t key, std::int32_t& value);

 private:
  using Value = std::variant<std::int32_t, double, CString>;

  template <typename T>
  bool LookupAs(std::int32_t key, T& value) const {
    const auto found = m_values.find(key);
    const T* held = found == m_values.end() ? nullptr : std::get_if<T>(&found->second);
    if (held != nullptr) value = *held;
    return held != nullptr;
  }

  void Store(CArchive& ar) const;
  void Load(CArchive& ar);
  /// Loads a number of entries, and hands each to `sink` as its key and its value.
  template <typename Sink>
  static void LoadEntries(CArchive& ar, std::uint32_t count, Sink&& sink);
  static void ForgetEntries(CArchive& ar, std::uint32_t count);

  std::map<std::int32_t, Value> m_values;
};
