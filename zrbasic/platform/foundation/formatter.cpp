#include <zrbasic/platform/foundation/formatter.h>

#include <zrbasic/platform/runtime/exception.h>

namespace zr {

ZR_DEFINE_CLASS(NSFormatter) {
    is.method<&NSFormatter::stringForObjectValue>("stringForObjectValue:");
    is.method<&NSFormatter::editingStringForObjectValue>("editingStringForObjectValue:");
    is.method<&NSFormatter::getObjectValue_forString_errorDescription>("getObjectValue:forString:errorDescription:");
    is.method<&NSFormatter::isPartialStringValid_newEditingString_errorDescription>(
        "isPartialStringValid:newEditingString:errorDescription:");
}

NSFormatter::~NSFormatter() = default;

Ref<NSString> NSFormatter::stringForObjectValue(NSObject*) {
    raiseUndefined("stringForObjectValue:");
}

Ref<NSString> NSFormatter::editingStringForObjectValue(NSObject* object) {
    return stringForObjectValue(object);
}

bool NSFormatter::getObjectValue_forString_errorDescription(id*, NSString*, Ref<NSString>*) {
    raiseUndefined("getObjectValue:forString:errorDescription:");
}

bool NSFormatter::isPartialStringValid_newEditingString_errorDescription(NSString*, Ref<NSString>*, Ref<NSString>*) {
    return true;
}

void NSFormatter::raiseUndefined(const char* operation) const {
    NSException::raise(NSInvalidArgumentException, "*** -" + std::string(operation) +
                                                       " only defined for abstract class.  Define -[" +
                                                       class_()->name() + " " + operation + "]!");
}

} // namespace zr
