#include <zrbasic/platform/runtime/invocation.h>

#include <cctype>

namespace zr {

namespace {

/// Cuts the next type off `text`, with the stack offset that may follow it; "" when none is left.
std::string takeType(std::string_view& text) {
    std::size_t length = 0;
    while (length < text.size() &&
           (text[length] == '^' || std::string_view("rnNoORV").find(text[length]) != text.npos)) {
        ++length;
    }
    if (length >= text.size()) {
        text = {};
        return {};
    }
    const char opening = text[length];
    const char closing = opening == '{' ? '}' : opening == '(' ? ')' : opening == '[' ? ']' : '\0';
    if (closing) {
        int depth = 0;
        do {
            depth += text[length] == opening ? 1 : text[length] == closing ? -1 : 0;
            ++length;
        } while (depth > 0 && length < text.size());
    } else {
        ++length;
        if (opening == '@' && length < text.size() && text[length] == '?') {
            ++length;
        } else if (opening == '@' && length < text.size() && text[length] == '"') {
            const std::size_t end = text.find('"', length + 1);
            length = end == text.npos ? text.size() : end + 1;
        }
    }
    const std::string type(text.substr(0, length));
    while (length < text.size() && std::isdigit(static_cast<unsigned char>(text[length]))) {
        ++length;
    }
    text.remove_prefix(length);
    return type;
}

} // namespace

ZR_DEFINE_CLASS(NSMethodSignature) {
    is.method<&NSMethodSignature::numberOfArguments>("numberOfArguments");
}

NSMethodSignature::~NSMethodSignature() = default;

Ref<NSMethodSignature> NSMethodSignature::signatureWithObjCTypes(const char* types) {
    if (!types) {
        return {};
    }
    Ref<NSMethodSignature> signature = alloc<NSMethodSignature>();
    std::string_view rest = types;
    signature->m_returnType = takeType(rest);
    while (!rest.empty()) {
        std::string type = takeType(rest);
        if (!type.empty()) {
            signature->m_argumentTypes.push_back(std::move(type));
        }
    }
    return signature->m_argumentTypes.size() >= 2 ? signature : nullptr;
}

NSUInteger NSMethodSignature::numberOfArguments() const {
    return m_argumentTypes.size();
}

const char* NSMethodSignature::getArgumentTypeAtIndex(NSUInteger index) const {
    if (index >= m_argumentTypes.size()) {
        NSException::raise(NSInvalidArgumentException, "argument index " + std::to_string(index) + " out of bounds");
    }
    return m_argumentTypes[index].c_str();
}

const char* NSMethodSignature::methodReturnType() const {
    return m_returnType.c_str();
}

ZR_DEFINE_CLASS(NSInvocation) {
    is.method<&NSInvocation::invoke>("invoke");
    is.method<&NSInvocation::invokeWithTarget>("invokeWithTarget:");
    is.method<&NSInvocation::target>("target");
    is.method<&NSInvocation::setTarget>("setTarget:");
    is.method<&NSInvocation::selector>("selector");
    is.method<&NSInvocation::setSelector>("setSelector:");
    is.method<&NSInvocation::methodSignature>("methodSignature");
}

NSInvocation::~NSInvocation() = default;

Ref<NSInvocation> NSInvocation::invocationWithMethodSignature(NSMethodSignature* signature) {
    if (!signature) {
        NSException::raise(NSInvalidArgumentException, "an invocation needs a method signature");
    }
    Ref<NSInvocation> invocation = alloc<NSInvocation>();
    invocation->m_signature = signature;
    invocation->m_arguments.resize(signature->numberOfArguments() - 2);
    return invocation;
}

Ref<NSMethodSignature> NSInvocation::methodSignature() const {
    return m_signature;
}

id NSInvocation::target() const {
    return m_target;
}

void NSInvocation::setTarget(NSObject* target) {
    m_target = id(target);
}

SEL NSInvocation::selector() const {
    return m_selector;
}

void NSInvocation::setSelector(SEL selector) {
    m_selector = selector;
}

std::size_t NSInvocation::slot(NSUInteger index) const {
    if (index < 2 || index - 2 >= m_arguments.size()) {
        NSException::raise(NSInvalidArgumentException, "argument index " + std::to_string(index) + " out of bounds");
    }
    return static_cast<std::size_t>(index - 2);
}

const Value& NSInvocation::getArgument_atIndex(NSUInteger index) const {
    return m_arguments[slot(index)];
}

void NSInvocation::setArgument_atIndex(Value argument, NSUInteger index) {
    m_arguments[slot(index)] = std::move(argument);
}

const Value& NSInvocation::getReturnValue() const {
    return m_result;
}

void NSInvocation::setReturnValue(Value result) {
    m_result = std::move(result);
}

void NSInvocation::invoke() {
    if (!m_target) {
        m_result = Value();
        return;
    }
    const id target = m_target;
    m_result = detail::sendDynamically(target, target->isa(), m_selector, m_arguments.data(), m_arguments.size());
}

void NSInvocation::invokeWithTarget(NSObject* target) {
    setTarget(target);
    invoke();
}

} // namespace zr
