#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace zr {

template <class Signature>
class FunctionRef;

/// A callback that is only called while the operation runs: borrowed, never stored, never allocated.
///
/// Made from any callable, or from nothing (`{}` or `nullptr`), which tests false. Calling an empty one is an error
/// of the caller. An object that wants to keep a callback takes a `std::function` instead.
template <class R, class... Args>
class FunctionRef<R(Args...)> {
  public:
    constexpr FunctionRef() = default;
    constexpr FunctionRef(std::nullptr_t) {}

    template <class F>
    requires(!std::is_same_v<std::remove_cvref_t<F>, FunctionRef> && std::is_invocable_r_v<R, F&, Args...>)
        FunctionRef(F&& callable) {
        using Callable = std::remove_reference_t<F>;
        if constexpr (std::is_function_v<Callable>) {
            m_function = reinterpret_cast<void (*)()>(&callable);
            m_call = [](const FunctionRef& self, Args... args) -> R {
                return reinterpret_cast<Callable*>(self.m_function)(std::forward<Args>(args)...);
            };
        } else {
            if constexpr (std::is_constructible_v<bool, Callable&>) {
                // An empty std::function or a null function pointer reads as no callback.
                if (!static_cast<bool>(callable)) {
                    return;
                }
            }
            m_object = const_cast<void*>(static_cast<const void*>(std::addressof(callable)));
            m_call = [](const FunctionRef& self, Args... args) -> R {
                if constexpr (std::is_void_v<R>) {
                    (*static_cast<Callable*>(self.m_object))(std::forward<Args>(args)...);
                } else {
                    return (*static_cast<Callable*>(self.m_object))(std::forward<Args>(args)...);
                }
            };
        }
    }

    R operator()(Args... args) const { return m_call(*this, std::forward<Args>(args)...); }
    explicit operator bool() const { return m_call != nullptr; }

  private:
    void* m_object = nullptr;
    void (*m_function)() = nullptr;
    R (*m_call)(const FunctionRef&, Args...) = nullptr;
};

} // namespace zr
