#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSArray;
class NSString;

/// How the user's keys become text: the keyboard layouts that the desktop has, and which of them is in use.
///
/// A layout is known by its input source: the plain Latin one, "us" to the desktop, is "com.apple.keylayout.ABC", and
/// any other one "com.apple.keylayout." and its name there, such as "com.apple.keylayout.de", or
/// "com.apple.keylayout.us(dvorak)" for a variant. Main thread only.
class ZR_EXPORT NSTextInputContext final : public NSObject {
    ZR_DECLARE_CLASS(NSTextInputContext, NSObject)
  public:
    ~NSTextInputContext() override;

    /// The same object every time; null when the desktop does not tell its layouts, as without a toolkit.
    [[nodiscard]] static Ref<NSTextInputContext> currentInputContext();

    /// Strings, in the desktop's order. Never null.
    [[nodiscard]] Ref<NSArray> keyboardInputSources() const;
    /// Null when it cannot be told.
    [[nodiscard]] Ref<NSString> selectedKeyboardInputSource() const;
    /// For all of the desktop. Nothing happens for null and for what is not among the sources.
    void setSelectedKeyboardInputSource(NSString* source);
};

} // namespace zr
