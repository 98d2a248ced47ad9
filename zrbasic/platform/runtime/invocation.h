#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <string>
#include <vector>

namespace zr {

/// The types of one operation: result and arguments.
class ZR_EXPORT NSMethodSignature final : public NSObject {
    ZR_DECLARE_CLASS(NSMethodSignature, NSObject)

  public:
    ~NSMethodSignature() override;

    /// A signature from the platform's notation, such as "v@:@"; offsets between the types are skipped. Null when
    /// the text does not hold a result, a receiver and a selector.
    [[nodiscard]] static Ref<NSMethodSignature> signatureWithObjCTypes(const char* types);

    /// The number of arguments, receiver and selector included: at least 2.
    [[nodiscard]] NSUInteger numberOfArguments() const;
    /// The type of an argument; index 0 is the receiver, 1 the selector. Raises `NSInvalidArgumentException` past
    /// the end.
    [[nodiscard]] const char* getArgumentTypeAtIndex(NSUInteger index) const;
    [[nodiscard]] const char* methodReturnType() const;

  private:
    std::string m_returnType;
    std::vector<std::string> m_argumentTypes;
};

/// A message put on hold: target, selector, arguments, and its result once it was sent.
class ZR_EXPORT NSInvocation final : public NSObject {
    ZR_DECLARE_CLASS(NSInvocation, NSObject)

  public:
    ~NSInvocation() override;

    /// Raises `NSInvalidArgumentException` for a null signature.
    [[nodiscard]] static Ref<NSInvocation> invocationWithMethodSignature(NSMethodSignature* signature);

    [[nodiscard]] Ref<NSMethodSignature> methodSignature() const;
    [[nodiscard]] id target() const;
    void setTarget(NSObject* target);
    [[nodiscard]] SEL selector() const;
    void setSelector(SEL selector);

    /// Arguments count from 2 on, behind receiver and selector. Raises `NSInvalidArgumentException` for an index
    /// that the signature does not have.
    [[nodiscard]] const Value& getArgument_atIndex(NSUInteger index) const;
    void setArgument_atIndex(Value argument, NSUInteger index);

    /// The result of the last `invoke`; nothing, which reads as zero of any type, before it.
    [[nodiscard]] const Value& getReturnValue() const;
    void setReturnValue(Value result);

    /// Sends the message. With a null target nothing runs and the result is zero.
    void invoke();
    void invokeWithTarget(NSObject* target);

  private:
    [[nodiscard]] std::size_t slot(NSUInteger index) const;

    Ref<NSMethodSignature> m_signature;
    id m_target;
    SEL m_selector;
    std::vector<Value> m_arguments;
    Value m_result;
};

} // namespace zr
