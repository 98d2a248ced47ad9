#include <zrbasic/platform/appkit/peer.h>

namespace zr {

ViewPeer::~ViewPeer() = default;

WindowPeer::~WindowPeer() = default;

void ViewPeer::playRotation(NSPoint, std::span<const double>, double, std::function<void()> end) {
    end();
}

bool ViewPeer::drawInto(NSBitmapImageRep&, NSRect) {
    return false;
}

} // namespace zr
