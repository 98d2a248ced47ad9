#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// Turns values into text and back, and watches text while it is typed. An ancestor only: subclasses say how.
///
/// Used by the text field that it is attached to, on that field's thread.
class ZR_EXPORT NSFormatter : public NSObject {
    ZR_DECLARE_CLASS(NSFormatter, NSObject)
  public:
    ~NSFormatter() override;

    /// The text that stands for `object`. The plain formatter raises `NSInvalidArgumentException`.
    [[nodiscard]] virtual Ref<NSString> stringForObjectValue(NSObject* object);
    /// The text to begin editing with; the same as `stringForObjectValue` unless a subclass says otherwise.
    [[nodiscard]] virtual Ref<NSString> editingStringForObjectValue(NSObject* object);

    /// Reads `string` as a value.
    ///
    /// True when it is one; the value goes to `object`. False when it is not; a reason for the user may go to
    /// `error`. Either pointer may be null. The plain formatter raises `NSInvalidArgumentException`.
    virtual bool getObjectValue_forString_errorDescription(id* object, NSString* string, Ref<NSString>* error);

    /// Judges one edit: `partialString` is all of the text as it would be after it.
    ///
    /// True lets it stand. False refuses it; a text put into `newString` is then shown instead, and without one the
    /// text stays as it was. The plain formatter accepts everything.
    virtual bool isPartialStringValid_newEditingString_errorDescription(NSString* partialString,
                                                                        Ref<NSString>* newString, Ref<NSString>* error);

  private:
    [[noreturn]] void raiseUndefined(const char* operation) const;
};

} // namespace zr
