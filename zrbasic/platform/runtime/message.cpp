#include <zrbasic/platform/runtime/message.h>

#include <zrbasic/platform/runtime/invocation.h>
#include <zrbasic/platform/runtime/runtime_p.h>

#include <array>
#include <memory>

namespace zr::detail {

namespace {

struct CachedLookUp {
    const Class* ofClass = nullptr;
    const SelectorRecord* selector = nullptr;
    std::uint64_t generation = 0;
    IMP implementation;
};

using LookUpCache = std::array<CachedLookUp, 512>;

// The pointer alone lies in thread storage, where every look-up can reach it without a call.
#if defined(__linux__)
[[gnu::tls_model("initial-exec")]]
#endif
constinit thread_local LookUpCache* threadCache = nullptr;

struct CacheOwner {
    std::unique_ptr<LookUpCache> cache;
    ~CacheOwner() { threadCache = nullptr; }
};

LookUpCache* makeCache() {
    static thread_local bool isOver = false;
    struct Guard : CacheOwner {
        ~Guard() { isOver = true; }
    };
    if (isOver) {
        // The thread is ending; its last messages do without.
        return nullptr;
    }
    static thread_local Guard guard;
    guard.cache = std::make_unique<LookUpCache>();
    threadCache = guard.cache.get();
    return threadCache;
}

std::size_t slotFor(const Class* ofClass, const SelectorRecord* selector) {
    const auto a = reinterpret_cast<std::uintptr_t>(ofClass);
    const auto b = reinterpret_cast<std::uintptr_t>(selector);
    return ((a >> 5) ^ (b >> 4) ^ (b >> 12)) % std::tuple_size_v<LookUpCache>;
}

} // namespace

IMP lookUp(const Class* ofClass, SEL selector) {
    LookUpCache* cache = threadCache;
    if (!cache) [[unlikely]] {
        cache = makeCache();
        if (!cache) {
            return Runtime::shared().implementationOf(ofClass, selector);
        }
    }
    const SelectorRecord* const record = selector.record();
    CachedLookUp& entry = (*cache)[slotFor(ofClass, record)];
    const std::uint64_t generation = Runtime::generation();
    if (entry.ofClass != ofClass || entry.selector != record || entry.generation != generation) {
        // Read before looking: whatever changes meanwhile makes the entry stale, never wrong.
        const IMP implementation = Runtime::shared().implementationOf(ofClass, selector);
        entry = {ofClass, record, generation, implementation};
    }
    return entry.implementation;
}

Value sendDynamically(NSObject* self, const Class* startingAt, SEL selector, const Value* arguments,
                      std::size_t count) {
    if (const IMP implementation = lookUp(startingAt, selector)) {
        Value result;
        if (implementation.type->argumentCount != count ||
            !implementation.type->invoke(implementation.function, self, selector, arguments, &result)) {
            NSException::raise(NSInvalidArgumentException,
                               "-[" + std::string(object_getClassName(self)) + ' ' + sel_getName(selector) +
                                   "]: the arguments do not fit the types " + implementation.type->encoding);
        }
        return result;
    }

    const id target = send<id>(self, "forwardingTargetForSelector:"_sel, selector);
    if (target && target.get() != self) {
        return sendDynamically(target, target->isa(), selector, arguments, count);
    }
    const auto signature = send<Ref<NSMethodSignature>>(self, "methodSignatureForSelector:"_sel, selector);
    if (!signature) {
        self->doesNotRecognizeSelector(selector);
    }
    const Ref<NSInvocation> invocation = NSInvocation::invocationWithMethodSignature(signature);
    invocation->setTarget(self);
    invocation->setSelector(selector);
    for (std::size_t i = 0; i < count && i + 2 < signature->numberOfArguments(); ++i) {
        invocation->setArgument_atIndex(arguments[i], i + 2);
    }
    send<void>(self, "forwardInvocation:"_sel, invocation.get());
    return invocation->getReturnValue();
}

} // namespace zr::detail
