#include <zrbasic/ui/responder.h>

#include <zrbasic/model/incision.h>
#include <zrbasic/platform/appkit/text_input_context.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/runtime/message.h>

#include <utility>

namespace zr {

void changeTextInputSourceToABC(NSResponder* self) {
    const Ref<NSTextInputContext> context = self ? NSTextInputContext::currentInputContext() : nullptr;
    if (!context) {
        return;
    }
    const Ref<NSString> plain = "com.apple.keylayout.ABC"_ns;
    if (!plain->isEqual(context->selectedKeyboardInputSource()) &&
        context->keyboardInputSources()->containsObject(plain)) {
        context->setSelectedKeyboardInputSource(plain);
    }
}

void eventObserver_forEventAction(NSResponder* self, EventObserver observer, SEL action) {
    if (!observer) {
        return;
    }
    detail::installEventObserver(self, action,
                                 [observer = std::move(observer)](NSObject* event) { observer(cast<NSEvent>(event)); });
}

ZR_GROUP(NSResponder, ZRXHelper) {
    is.method<&changeTextInputSourceToABC>("changeTextInputSourceToABC");
    is.method<&eventObserver_forEventAction>("eventObserver:forEventAction:");
}

} // namespace zr
