#pragma once

#include <memory>

/// A member that most objects leave as it is in a new object, held apart and made when it is first asked for to be
/// changed: until then it takes one pointer. It is copied and moved as the value itself.
template <typename Type>
class OnDemand {
 public:
  OnDemand() = default;
  OnDemand(const OnDemand& other) : m_value(other.m_value ? std::make_unique<Type>(*other.m_value) : nullptr) {}
  OnDemand(OnDemand&&) noexcept = default;
  OnDemand& operator=(const OnDemand& other) {
    if (this != &other) *this = OnDemand(other);
    return *this;
  }
  OnDemand& operator=(OnDemand&&) noexcept = default;
  ~OnDemand() = default;

  /// The value; before it was made, the one that new objects share.
  [[nodiscard]] const Type& Get() const {
    static const Type kNew;
    return m_value ? *m_value : kNew;
  }
  /// The value to be changed.
  [[nodiscard]] Type& Get() {
    if (!m_value) m_value = std::make_unique<Type>();
    return *m_value;
  }

 private:
  std::unique_ptr<Type> m_value;  ///< null is a new one
};
