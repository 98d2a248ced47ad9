#pragma once

#include <zrbasic/platform/runtime/object.h>

namespace zr {

class NSDictionary;
class NSString;

/// Tells what has happened to `sender`: first its delegate, null for none, if that has the operation, and then everyone
/// who listens for `name`. Keeps the sender meanwhile, as whoever is told may let go of it.
void tellDelegateAndPost(NSObject* sender, const id& delegate, SEL operation, NSString* name,
                         NSDictionary* userInfo = nullptr);

} // namespace zr
