#pragma once

#include <algorithm>
#include <cstdint>

/// An identifier that is not assigned, or that names nothing.
inline constexpr std::uint32_t kVornNoID = 0xFFFFFFFF;

/// Gives the elements of a collection their serials.
class VornSerialCounter {
 public:
  /// Begins with that serial.
  explicit VornSerialCounter(std::uint32_t next) : m_next(next) {}

  /// The serial that the next element without one receives; never lowered. `kVornNoID` when all are given away: such
  /// elements then stay without one, rather than get that of a design surface or a centre point.
  [[nodiscard]] std::uint32_t Next() const { return m_next; }
  /// Gives the next serial away.
  [[nodiscard]] std::uint32_t Take() { return m_next == kVornNoID ? kVornNoID : m_next++; }
  /// Serial 0 is that of a certain element: no other one may get it, also after old data, where it is the next.
  void KeepZero() { m_next = std::max<std::uint32_t>(m_next, 1); }
  /// An element without a serial gets the next one; one that brings its own raises the next above it.
  template <typename Element>
  void Number(Element& element) {
    if (element.GetSerialID() == kVornNoID) {
      element.SetSerialID(Take());
    } else if (m_next <= element.GetSerialID()) {
      m_next = element.GetSerialID() + 1;
    }
  }

 private:
  std::uint32_t m_next;
};
