#pragma once

#include <forward_list>
#include <utility>

/// The framework's linked list, in the measure that it is used: elements by value, whose addresses stay while others
/// come and go.
///
/// Its nodes are linked one way: the shortest text takes one byte in an archive, and a list of a million of them must
/// not take much more than the archive does.
template <typename Type>
class CList {
 public:
  /// @param blockSize how many nodes the framework allocates at once; taken for source compatibility only
  explicit CList([[maybe_unused]] int blockSize = 10) {}
  /// The copy has memory of its own.
  CList(const CList& other) {
    for (const Type& item : other) AddTail(item);
  }
  /// Takes over the elements of another list, which is empty afterwards.
  CList(CList&& other) noexcept { Take(other); }
  /// Replaces the elements by copies.
  CList& operator=(const CList& other) {
    if (this != &other) *this = CList(other);
    return *this;
  }
  /// Replaces the elements by those of another list, which is empty afterwards.
  CList& operator=(CList&& other) noexcept {
    if (this != &other) Take(other);
    return *this;
  }
  ~CList() = default;

  /// The number of elements; `GetSize` is the same.
  [[nodiscard]] int GetCount() const { return m_count; }
  [[nodiscard]] int GetSize() const { return GetCount(); }
  /// Whether there is no element.
  [[nodiscard]] bool IsEmpty() const { return m_items.empty(); }
  /// Appends an element.
  void AddTail(const Type& item) { Append(item); }
  void AddTail(Type&& item) { Append(std::move(item)); }
  /// Takes over the elements of another list, behind its own: whatever their number, that needs no memory.
  void AddTail(CList&& other) noexcept {
    if (other.IsEmpty()) return;
    m_items.splice_after(m_last, other.m_items);
    m_last = other.m_last;
    m_count += other.m_count;
    other.RemoveAll();
  }
  /// Removes all elements.
  void RemoveAll() {
    m_items.clear();
    m_last = m_items.before_begin();
    m_count = 0;
  }

  /// The first element, and the end behind the last.
  [[nodiscard]] auto begin() { return m_items.begin(); }
  [[nodiscard]] auto end() { return m_items.end(); }
  [[nodiscard]] auto begin() const { return m_items.begin(); }
  [[nodiscard]] auto end() const { return m_items.end(); }

 private:
  template <typename Item>
  void Append(Item&& item) {
    m_last = m_items.insert_after(m_last, std::forward<Item>(item));
    ++m_count;
  }
  /// Takes over the elements of another list, which is empty afterwards.
  void Take(CList& other) noexcept {
    m_items = std::move(other.m_items);
    m_last = other.m_count > 0 ? other.m_last : m_items.before_begin();
    m_count = other.m_count;
    other.RemoveAll();
  }

  std::forward_list<Type> m_items;
  typename std::forward_list<Type>::iterator m_last = m_items.before_begin();  ///< where the next element goes behind
  int m_count = 0;
};
