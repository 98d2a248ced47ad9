#include <zrbasic/platform/appkit/tracking_area.h>

namespace zr {

ZR_DEFINE_CLASS(NSTrackingArea) {
    is.method<&NSTrackingArea::initWithRect_options_owner_userInfo>("initWithRect:options:owner:userInfo:");
    is.method<&NSTrackingArea::rect>("rect");
    is.method<&NSTrackingArea::options>("options");
    is.method<&NSTrackingArea::owner>("owner");
    is.method<&NSTrackingArea::userInfo>("userInfo");
}

NSTrackingArea::NSTrackingArea() = default;
NSTrackingArea::~NSTrackingArea() = default;

id NSTrackingArea::initWithRect_options_owner_userInfo(NSRect rect, NSUInteger options, NSObject* owner,
                                                       NSDictionary* userInfo) {
    m_rect = rect;
    m_options = options;
    m_owner = Weak<NSObject>(owner);
    m_userInfo = Ref<NSDictionary>(userInfo);
    return id(this);
}

} // namespace zr
