#include <zrbasic/platform/appkit/text_input_context.h>

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/string.h>

#include <string>
#include <vector>

namespace zr {

namespace {

/// The input source that stands for a layout of the desktop.
Ref<NSString> sourceOf(const std::string& layout) {
    return NSString::fromUtf8("com.apple.keylayout." + (layout == "us" ? "ABC" : layout));
}

} // namespace

ZR_DEFINE_CLASS(NSTextInputContext) {
    is.classMethod<&NSTextInputContext::currentInputContext>("currentInputContext");
    is.method<&NSTextInputContext::keyboardInputSources>("keyboardInputSources");
    is.method<&NSTextInputContext::selectedKeyboardInputSource>("selectedKeyboardInputSource");
    is.method<&NSTextInputContext::setSelectedKeyboardInputSource>("setSelectedKeyboardInputSource:");
}

NSTextInputContext::~NSTextInputContext() = default;

Ref<NSTextInputContext> NSTextInputContext::currentInputContext() {
    static NSTextInputContext* const context = make<NSTextInputContext>().leak();
    return currentToolkit().keyboardLayouts().empty() ? nullptr : Ref<NSTextInputContext>(context);
}

Ref<NSArray> NSTextInputContext::keyboardInputSources() const {
    std::vector<id> sources;
    for (const std::string& layout : currentToolkit().keyboardLayouts()) {
        sources.push_back(sourceOf(layout));
    }
    return NSArray::fromElements(std::move(sources));
}

Ref<NSString> NSTextInputContext::selectedKeyboardInputSource() const {
    const std::vector<std::string> layouts = currentToolkit().keyboardLayouts();
    const NSInteger current = currentToolkit().currentKeyboardLayout();
    return current >= 0 && static_cast<std::size_t>(current) < layouts.size()
               ? sourceOf(layouts[static_cast<std::size_t>(current)])
               : nullptr;
}

void NSTextInputContext::setSelectedKeyboardInputSource(NSString* source) {
    const NSUInteger index = source ? keyboardInputSources()->indexOfObject(source) : NSUInteger{NSNotFound};
    if (index != NSUInteger{NSNotFound}) {
        currentToolkit().selectKeyboardLayout(static_cast<NSInteger>(index));
    }
}

} // namespace zr
