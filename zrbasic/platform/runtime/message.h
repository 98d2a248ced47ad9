#pragma once

#include <zrbasic/platform/runtime/class.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/signature.h>

namespace zr {

namespace detail {

/// The implementation that `ofClass` runs for `selector`; null when it has none. Served from a cache of the calling
/// thread.
[[nodiscard]] ZR_EXPORT IMP lookUp(const Class* ofClass, SEL selector);

/// A message whose fast way is closed: other C++ types than the implementation's, or no implementation at all.
ZR_EXPORT Value sendDynamically(NSObject* self, const Class* startingAt, SEL selector, const Value* arguments,
                                std::size_t count);

template <class R>
R fromResult(Result<R>&& result) {
    if constexpr (isRef<R>) {
        using Element = typename R::Element;
        if constexpr (std::is_same_v<Element, NSObject>) {
            return std::move(result);
        } else {
            return R(cast<Element>(result));
        }
    } else if constexpr (ObjectPointer<R>) {
        return cast<std::remove_cv_t<std::remove_pointer_t<R>>>(result.get());
    } else {
        return static_cast<R>(std::forward<Result<R>>(result));
    }
}

template <class R, class... A>
R sendStartingAt(NSObject* self, const Class* startingAt, SEL selector, A&&... arguments) {
    static_assert(!std::is_pointer_v<R> || ObjectPointer<R>, "results are objects or values");
    const IMP implementation = lookUp(startingAt, selector);
    if (implementation) [[likely]] {
        if (*implementation.type == MethodTypeOf<Result<R>, Argument<std::remove_cvref_t<A>>...>::type) [[likely]] {
            const auto function =
                reinterpret_cast<ImplementationType<R, std::remove_cvref_t<A>...>>(implementation.function);
            if constexpr (std::is_void_v<R>) {
                function(self, selector, static_cast<Argument<std::remove_cvref_t<A>>>(arguments)...);
                return;
            } else {
                return fromResult<R>(
                    function(self, selector, static_cast<Argument<std::remove_cvref_t<A>>>(arguments)...));
            }
        }
    }
    const Value values[] = {Value(std::forward<A>(arguments))..., Value()};
    const Value result = sendDynamically(self, startingAt, selector, values, sizeof...(A));
    if constexpr (!std::is_void_v<R>) {
        return fromResult<R>(result.template to<Result<R>>());
    }
}

} // namespace detail

/// Sends a message by name: `send<NSInteger>(object, "compare:"_sel, other)`.
///
/// A null receiver gives the zero of `R` and runs nothing. When the argument or result types differ from the
/// operation's own, numbers are converted and objects passed on; what cannot be converted raises
/// `NSInvalidArgumentException`. A result that cannot be converted reads as zero, an object of another class than `R`
/// names as null. An operation that the
/// receiver does not have is forwarded if the receiver forwards it, and otherwise raises
/// `NSInvalidArgumentException`.
template <class R = void, class... A>
R send(NSObject* self, SEL selector, A&&... arguments) {
    if (!self) {
        return R();
    }
    return detail::sendStartingAt<R>(self, self->isa(), selector, std::forward<A>(arguments)...);
}

/// Runs the implementation that `above`, and not the receiver's own class, has for the message. `above` is a class
/// that the receiver's class descends from; anything else raises `NSInvalidArgumentException`.
template <class R = void, class... A>
R sendSuper(NSObject* self, const Class* above, SEL selector, A&&... arguments) {
    if (!self || !above) {
        return R();
    }
    if (!self->isa()->descendsFrom(above)) {
        NSException::raise(NSInvalidArgumentException, "the receiver does not descend from " + above->name());
    }
    return detail::sendStartingAt<R>(self, above, selector, std::forward<A>(arguments)...);
}

} // namespace zr
