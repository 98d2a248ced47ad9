#include <zrbasic/platform/appkit/peer.h>

namespace zr {

ViewPeer::~ViewPeer() = default;

WindowPeer::~WindowPeer() = default;

} // namespace zr
