#pragma once

#include <map>
#include <utility>

/// The framework's map, in the measure that it is used. It goes through its associations in the order of the keys, so
/// that what is stored from it is the same on every machine.
template <typename Key, typename Value>
class CMap {
 public:
  /// The number of associations.
  [[nodiscard]] int GetCount() const { return static_cast<int>(m_values.size()); }
  /// Whether there is none.
  [[nodiscard]] bool IsEmpty() const { return m_values.empty(); }
  /// Copies the value of a key; false, and the output untouched, when there is none.
  bool Lookup(const Key& key, Value& value) const {
    const Value* found = Find(key);
    if (found != nullptr) value = *found;
    return found != nullptr;
  }
  /// The value of a key; null when there is none. Valid until the key is removed.
  [[nodiscard]] const Value* Find(const Key& key) const {
    const auto found = m_values.find(key);
    return found == m_values.end() ? nullptr : &found->second;
  }
  [[nodiscard]] Value* Find(const Key& key) { return const_cast<Value*>(std::as_const(*this).Find(key)); }
  /// Stores a value in place of whatever has the key.
  void SetAt(const Key& key, const Value& value) { m_values.insert_or_assign(key, value); }
  void SetAt(const Key& key, Value&& value) { m_values.insert_or_assign(key, std::move(value)); }
  /// The value of a key, a new one when there is none.
  Value& operator[](const Key& key) { return m_values[key]; }
  /// False when there was no such key.
  bool RemoveKey(const Key& key) { return m_values.erase(key) > 0; }
  /// Removes all associations.
  void RemoveAll() { m_values.clear(); }

  /// The first association in the order of the keys, and the end behind the last.
  [[nodiscard]] auto begin() { return m_values.begin(); }
  [[nodiscard]] auto end() { return m_values.end(); }
  [[nodiscard]] auto begin() const { return m_values.begin(); }
  [[nodiscard]] auto end() const { return m_values.end(); }

 private:
  std::map<Key, Value> m_values;
};
