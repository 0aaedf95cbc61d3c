#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "vorn/platform/cstring.h"
#include "vorn/platform/exceptions.h"

/// The framework's dynamic array: elements by value, indices from 0, `int` counts. An index outside the array throws
/// `CInvalidArgException`. Elements move when the array grows or is rebuilt.
///
/// An array that never held anything takes one pointer: a composed point has four that are nearly always empty, and
/// there are a million composed points.
///
/// A lack of memory throws `std::bad_alloc` and leaves the array as it was; its elements have to be moved without one.
template <typename Type, typename ArgType = const Type&>
class CArray {
 public:
  CArray() = default;
  /// The copy has memory of its own.
  CArray(const CArray& other) { Copy(other); }
  CArray(CArray&&) noexcept = default;
  /// Replaces the elements by copies.
  CArray& operator=(const CArray& other) {
    Copy(other);
    return *this;
  }
  CArray& operator=(CArray&&) noexcept = default;
  virtual ~CArray() = default;

  /// The number of elements; `GetCount` is the same.
  [[nodiscard]] int GetSize() const { return m_items ? static_cast<int>(m_items->size()) : 0; }
  [[nodiscard]] int GetCount() const { return GetSize(); }
  /// Index of the last element; -1 in an empty array.
  [[nodiscard]] int GetUpperBound() const { return GetSize() - 1; }
  /// Whether there is no element.
  [[nodiscard]] bool IsEmpty() const { return !m_items || m_items->empty(); }
  /// Cuts or fills up with default elements; a negative size throws `CInvalidArgException`.
  void SetSize(int size) {
    if (size < 0) throw CInvalidArgException();
    if (size > 0 || m_items) Items().resize(static_cast<std::size_t>(size));
  }
  /// Appends a default element and gives it.
  Type& AddDefault() { return Items().emplace_back(); }
  /// Makes room for a number of elements without adding any.
  void Reserve(int size) {
    if (size > 0) Items().reserve(static_cast<std::size_t>(size));
  }
  /// Makes room for a number of elements more. An array that does so again and again moves its elements seldom.
  void ReserveMore(int count) {
    if (count <= 0) return;
    const std::size_t size = Items().size() + static_cast<std::size_t>(count);
    if (size > Items().capacity()) Items().reserve(std::max(size, 2 * Items().capacity()));
  }
  /// Removes all elements, and keeps their room.
  void RemoveAll() {
    if (m_items) m_items->clear();
  }

  /// The element at an index.
  [[nodiscard]] Type& GetAt(int index) {
    const std::size_t at = Checked(index);
    return (*m_items)[at];
  }
  [[nodiscard]] const Type& GetAt(int index) const {
    const std::size_t at = Checked(index);
    return (*m_items)[at];
  }
  /// The element at an index.
  Type& operator[](int index) { return GetAt(index); }
  const Type& operator[](int index) const { return GetAt(index); }
  /// Replaces the element at an index.
  void SetAt(int index, ArgType item) { GetAt(index) = item; }
  /// As `SetAt`, and grows the array when index lies behind its end.
  void SetAtGrow(int index, ArgType item) {
    if (index < GetSize()) return SetAt(index, item);
    if (index == std::numeric_limits<int>::max()) throw CInvalidArgException();
    Type kept = item;  // item may lie in this array, which is about to move
    SetSize(index + 1);
    GetAt(index) = std::move(kept);
  }

  /// Appends, and returns the index of the new element.
  int Add(ArgType item) {
    Items().push_back(item);
    return GetUpperBound();
  }
  int Add(Type&& item) requires(!std::is_same_v<ArgType, Type>) {
    Items().push_back(std::move(item));
    return GetUpperBound();
  }
  /// Appends all elements of another array, and returns the index of the first of them.
  int Append(const CArray& other) {
    const int first = GetSize();
    if (&other == this) {
      const CArray copy(other);
      return Append(copy);
    }
    if (other.IsEmpty()) return first;
    // Room first: a vector that grows while it copies has moved its own elements away when a copy fails.
    ReserveMore(other.GetSize());
    Items().insert(Items().end(), other.begin(), other.end());
    return first;
  }
  /// Replaces the elements by copies of another array's.
  void Copy(const CArray& other) {
    if (other.IsEmpty()) return RemoveAll();
    if constexpr (std::is_trivially_copyable_v<Type>) {
      Items() = *other.m_items;  // either all memory is there before the first element changes, or none is needed
    } else if (&other != this) {
      m_items = std::make_unique<std::vector<Type>>(*other.m_items);
    }
  }

  /// Inserts before index; an index behind the end first grows the array.
  void InsertAt(int index, ArgType item, int count = 1) {
    if (index < 0 || count < 0 || count > std::numeric_limits<int>::max() - std::max(index, GetSize())) {
      throw CInvalidArgException();
    }
    const int size = GetSize();
    if (count == 1 && index <= size) {
      Items().insert(Items().begin() + index, item);
      return;
    }
    // The copies first: with one that cannot be made in its place, the elements behind it would have moved already.
    std::vector<Type> copies(static_cast<std::size_t>(count), item);
    SetSize(std::max(index, size) + count);
    if (index < size) std::move_backward(begin() + index, begin() + size, end());
    std::move(copies.begin(), copies.end(), begin() + index);
  }
  /// Removes count elements from index on; the later ones move down.
  void RemoveAt(int index, int count = 1) {
    if (index < 0 || count < 0 || index > GetSize() - count) throw CInvalidArgException();
    if (count > 0) m_items->erase(m_items->begin() + index, m_items->begin() + index + count);
  }

  /// The elements one behind the other; null in an array that never held anything.
  [[nodiscard]] Type* GetData() { return m_items ? m_items->data() : nullptr; }
  [[nodiscard]] const Type* GetData() const { return m_items ? m_items->data() : nullptr; }

  /// The first element, and the end behind the last.
  [[nodiscard]] Type* begin() { return GetData(); }
  [[nodiscard]] Type* end() { return GetData() + GetSize(); }
  [[nodiscard]] const Type* begin() const { return GetData(); }
  [[nodiscard]] const Type* end() const { return GetData() + GetSize(); }

  /// Whether both hold equal elements in one order.
  friend bool operator==(const CArray& a, const CArray& b) requires requires(const Type& x) { x == x; }
  { return std::equal(a.begin(), a.end(), b.begin(), b.end()); }

 private:
  /// The index of an element that is there: without one there are no items to be looked into.
  [[nodiscard]] std::size_t Checked(int index) const {
    if (index < 0 || index >= GetSize()) throw CInvalidArgException();
    return static_cast<std::size_t>(index);
  }
  /// The elements, for whoever is about to add some.
  std::vector<Type>& Items() {
    if (!m_items) m_items = std::make_unique<std::vector<Type>>();
    return *m_items;
  }

  std::unique_ptr<std::vector<Type>> m_items;  ///< null is empty
};

/// The framework's array of texts.
using CStringArray = CArray<CString>;
