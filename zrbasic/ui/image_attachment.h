#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/ref.h>

/// Images as parts of a text. To join several of them with text, use collections/rich_text.h.
///
/// The image is kept, not copied, so a later change to it shows in the text. A null receiver gives null and calls
/// nothing; nothing here raises but what a callback raises. As thread-bound as the image.
namespace zr {

class NSAttributedString;
class NSImage;
class NSTextAttachment;

/// Says how far right and up, in points, an image stands from where it would stand on the baseline.
using ZRXOffsetCreator = FunctionRef<NSPoint()>;

// NSImage(ZRXHelper)

/// A text attachment that shows the receiver on the baseline.
[[nodiscard]] ZR_EXPORT Ref<NSTextAttachment> textAttachment(NSImage* self);
/// The same, moved by what the callback gives. It is called once, now; without one the image is not moved.
[[nodiscard]] ZR_EXPORT Ref<NSTextAttachment> textAttachmentWithOffsetCreator(NSImage* self, ZRXOffsetCreator offset);
/// A text of one character, which is that attachment.
[[nodiscard]] ZR_EXPORT Ref<NSAttributedString> attributeString(NSImage* self);
[[nodiscard]] ZR_EXPORT Ref<NSAttributedString> attributeStringWithOffsetCreator(NSImage* self,
                                                                                 ZRXOffsetCreator offset);

} // namespace zr
