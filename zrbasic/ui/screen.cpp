#include <zrbasic/ui/screen.h>

namespace zr {

ZR_GROUP(NSScreen, ZRXHelper) {
    is.classMethod<&mainScreenWidth>("mainScreenWidth");
    is.classMethod<&mainScreenHeight>("mainScreenHeight");
    is.classMethod<&zr_scale>("zr_scale");
}

double mainScreenWidth() {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    return screen ? screen->frame().size.width : 0;
}

double mainScreenHeight() {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    return screen ? screen->frame().size.height : 0;
}

double zr_scale() {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    return screen ? screen->backingScaleFactor() : 0;
}

} // namespace zr
