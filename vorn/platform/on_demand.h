#pragma once

#include <concepts>
#include <memory>

/// A member that most objects leave as it is in a new object, held apart and made when it is first asked for to be
/// changed: until then it takes one pointer.
///
/// It is copied, moved and compared as the value itself, with these differences. Assigning replaces the value as a
/// whole: references to the one before are good no longer. Moving hands the value over, references to it included, and
/// leaves a new one behind. Copying or making it without memory throws `std::bad_alloc` and leaves it as it was.
///
/// Any number of threads may look into an object at a time, but changing it excludes all others: `Change` changes it
/// even when nothing is done with what it gives.
/// @tparam Type new values of it are all alike, whenever they are made: objects share one until they change it
template <typename Type>
class OnDemand {
 public:
  OnDemand() = default;
  /// The copy has a value of its own where the other one has.
  OnDemand(const OnDemand& other) : m_value(other.m_value ? std::make_unique<Type>(*other.m_value) : nullptr) {}
  OnDemand(OnDemand&&) noexcept = default;
  /// Replaces the value as a whole.
  OnDemand& operator=(const OnDemand& other) {
    if (this != &other) *this = OnDemand(other);
    return *this;
  }
  OnDemand& operator=(OnDemand&&) noexcept = default;
  ~OnDemand() = default;

  /// The value to be looked into; before it is made, the one that all share, whose making may throw too. The
  /// reference is good until the value is changed for the first time, replaced or moved away from here.
  [[nodiscard]] const Type& Get() const {
    static const Type kNew;
    return m_value ? *m_value : kNew;
  }
  /// The value to be changed, made now if need be. The reference is good until the value is replaced.
  [[nodiscard]] Type& Change() {
    if (!m_value) m_value = std::make_unique<Type>();
    return *m_value;
  }

  /// Whether the value is one of the object's own; before it is made, there is nothing in it that a new one has not.
  [[nodiscard]] bool IsMade() const { return m_value != nullptr; }

  /// Whether the values are equal: it does not matter which of them were made.
  friend bool operator==(const OnDemand& a, const OnDemand& b) requires std::equality_comparable<Type> {
    return a.Get() == b.Get();
  }

 private:
  std::unique_ptr<Type> m_value;  ///< null is a new one
};
