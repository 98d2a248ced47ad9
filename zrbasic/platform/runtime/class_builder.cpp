#include <zrbasic/platform/runtime/class_builder.h>

#include <zrbasic/platform/runtime/runtime_p.h>

#include <cctype>

namespace zr {

using detail::Runtime;

namespace {

std::string withFirstLetter(std::string text, int (*change)(int)) {
    if (!text.empty()) {
        text.front() = static_cast<char>(change(static_cast<unsigned char>(text.front())));
    }
    return text;
}

} // namespace

void ClassBuilder::addMethod(std::string_view selector, IMP implementation) {
    Runtime::shared().addMethod(m_class, sel_registerName(selector), implementation, nullptr,
                                Runtime::Origin::Declared);
}

void ClassBuilder::addClassMethod(std::string_view selector, IMP implementation) {
    Runtime::shared().addMethod(m_class->isa(), sel_registerName(selector), implementation, nullptr,
                                Runtime::Origin::Declared);
}

void ClassBuilder::adopt(Protocol* protocol, void* (*cast)(NSObject*)) {
    Runtime::shared().adopt(m_class, protocol, cast);
}

void ClassBuilder::addProperty(PropertyRecord record, const std::string& encoding, const char* storage,
                               const char* getter, const char* setter) {
    const std::string getterName = getter;
    const std::string setterName = setter;
    const bool isReadonly = setterName.empty();
    std::string name = getterName;
    bool hasCustomGetter = false;
    bool hasCustomSetter = false;
    if (!isReadonly && setterName != "set" + withFirstLetter(getterName, std::toupper)) {
        // `isHidden` with `setHidden` is the property `hidden`, read through a getter of its own name.
        const std::string stem = setterName.starts_with("set") ? setterName.substr(3) : std::string();
        if (!stem.empty() && getterName == "is" + stem) {
            name = withFirstLetter(stem, std::tolower);
            hasCustomGetter = true;
        } else {
            hasCustomSetter = true;
        }
    }

    record.name = name;
    record.getter = sel_registerName(getterName);
    record.setter = isReadonly ? SEL() : sel_registerName(setterName + ':');
    record.variable = '_' + name;
    record.attributes.push_back({"T", encoding});
    const std::string held = storage;
    if (isReadonly) {
        record.attributes.push_back({"R", ""});
    } else if (held == "&" || held == "C") {
        record.attributes.push_back({held, ""});
    }
    if (held == "W") {
        record.attributes.push_back({held, ""});
    }
    record.attributes.push_back({"N", ""});
    if (hasCustomGetter) {
        record.attributes.push_back({"G", getterName});
    }
    if (hasCustomSetter) {
        record.attributes.push_back({"S", setterName + ':'});
    }
    record.attributes.push_back({"V", record.variable});
    Runtime::shared().addProperty(m_class, std::make_unique<PropertyRecord>(std::move(record)));
}

namespace detail {

void raiseForeignReceiver(NSObject* self, SEL selector) {
    NSException::raise(NSInvalidArgumentException,
                       "-[" + std::string(object_getClassName(self)) + ' ' + std::string(selector.name()) +
                           "]: the implementation belongs to a class that the receiver does not descend from");
}

} // namespace detail

} // namespace zr
