#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSString;

/// An archive that an object is made from, such as a description of an interface. An ancestor only: subclasses say what
/// is in it; the plain one is empty. A null key is never found.
class ZR_EXPORT NSCoder : public NSObject {
    ZR_DECLARE_CLASS(NSCoder, NSObject)
  public:
    NSCoder();
    ~NSCoder() override;

    [[nodiscard]] virtual bool containsValueForKey(NSString* key) const;
    /// Null when there is none.
    [[nodiscard]] virtual id decodeObjectForKey(NSString* key) const;
    /// The zero rectangle when there is none.
    [[nodiscard]] virtual NSRect decodeRectForKey(NSString* key) const;
};

} // namespace zr
