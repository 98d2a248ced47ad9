#include <zrbasic/platform/appkit/screen.h>

#include <functional>

namespace zr {

ZR_DEFINE_CLASS(NSScreen) {
    is.classMethod<&NSScreen::screens>("screens");
    is.classMethod<&NSScreen::mainScreen>("mainScreen");
    is.method<&NSScreen::frame>("frame");
    is.method<&NSScreen::visibleFrame>("visibleFrame");
    is.method<&NSScreen::backingScaleFactor>("backingScaleFactor");
}

NSScreen::NSScreen() = default;
NSScreen::~NSScreen() = default;

Ref<NSArray> NSScreen::screens() {
    std::vector<id> screens;
    for (const ScreenState& state : currentToolkit().screens()) {
        const Ref<NSScreen> screen = alloc<NSScreen>();
        screen->m_state = state;
        screens.push_back(screen);
    }
    return NSArray::fromElements(std::move(screens));
}

Ref<NSScreen> NSScreen::mainScreen() {
    return Ref<NSScreen>(cast<NSScreen>(screens()->firstObject()));
}

bool NSScreen::isEqual(NSObject* other) const {
    const auto* const screen = cast<NSScreen>(other);
    return screen && screen->m_state.frame == m_state.frame && screen->m_state.visibleFrame == m_state.visibleFrame &&
           screen->m_state.backingScaleFactor == m_state.backingScaleFactor;
}

NSUInteger NSScreen::hash() const {
    return std::hash<double>()(m_state.frame.origin.x) ^ std::hash<double>()(m_state.frame.origin.y);
}

} // namespace zr
