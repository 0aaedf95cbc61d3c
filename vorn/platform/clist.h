#pragma once

#include <list>
#include <utility>

/// The framework's linked list, in the measure that it is used: elements by value, whose addresses stay while others
/// come and go.
template <typename Type>
class CList {
 public:
  /// @param blockSize how many nodes the framework allocates at once; taken for source compatibility only
  explicit CList([[maybe_unused]] int blockSize = 10) {}

  [[nodiscard]] int GetCount() const { return static_cast<int>(m_items.size()); }
  [[nodiscard]] int GetSize() const { return GetCount(); }
  [[nodiscard]] bool IsEmpty() const { return m_items.empty(); }
  void AddTail(const Type& item) { m_items.push_back(item); }
  void AddTail(Type&& item) { m_items.push_back(std::move(item)); }
  void RemoveAll() { m_items.clear(); }

  [[nodiscard]] auto begin() { return m_items.begin(); }
  [[nodiscard]] auto end() { return m_items.end(); }
  [[nodiscard]] auto begin() const { return m_items.begin(); }
  [[nodiscard]] auto end() const { return m_items.end(); }

 private:
  std::list<Type> m_items;
};
