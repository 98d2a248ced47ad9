#include <zrbasic/platform/appkit/panel.h>

namespace zr {

ZR_DEFINE_CLASS(NSPanel) {
    is.method<&NSPanel::isFloatingPanel>("isFloatingPanel");
    is.method<&NSPanel::setFloatingPanel>("setFloatingPanel:");
    is.method<&NSPanel::becomesKeyOnlyIfNeeded>("becomesKeyOnlyIfNeeded");
    is.method<&NSPanel::setBecomesKeyOnlyIfNeeded>("setBecomesKeyOnlyIfNeeded:");
    is.method<&NSPanel::worksWhenModal>("worksWhenModal");
    is.method<&NSPanel::setWorksWhenModal>("setWorksWhenModal:");
}

NSPanel::NSPanel() = default;
NSPanel::~NSPanel() = default;

void NSPanel::setFloatingPanel(bool floats) {
    m_isFloatingPanel = floats;
    // It is part of how the desktop shows the window, like the style.
    tellPeer(WindowChange::StyleMask);
}

void NSPanel::setBecomesKeyOnlyIfNeeded(bool onlyIfNeeded) {
    m_becomesKeyOnlyIfNeeded = onlyIfNeeded;
}

void NSPanel::setWorksWhenModal(bool works) {
    m_worksWhenModal = works;
}

} // namespace zr
