#pragma once

#include <memory>
#include <type_traits>
#include <utility>

/// A reference to something callable, for callbacks that do not outlive the call: two pointers, no allocation.
template <typename Signature>
class FunctionRef;

/// As above, for a signature.
template <typename Result, typename... Args>
class FunctionRef<Result(Args...)> {
 public:
  /// Refers to the callable, which has to outlive the reference.
  template <typename Callable>
  requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef> &&
           std::is_invocable_r_v<Result, Callable&, Args...>)
      FunctionRef(Callable&& callable)  // NOLINT(google-explicit-constructor,bugprone-forwarding-reference-overload)
      : m_object(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
        m_call([](void* object, Args... args) -> Result {
          return (*static_cast<std::remove_reference_t<Callable>*>(object))(std::forward<Args>(args)...);
        }) {}

  /// Calls it.
  Result operator()(Args... args) const { return m_call(m_object, std::forward<Args>(args)...); }

 private:
  void* m_object;
  Result (*m_call)(void*, Args...);
};
