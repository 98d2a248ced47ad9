#pragma once

#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/geometry.h>

namespace zr {

class NSBitmapImageRep;

/// A picture of a size in points, given by one bitmap or by several for screens of different density.
///
/// An image that has no bitmaps is empty, whatever its size. Used on one thread at a time.
class ZR_EXPORT NSImage : public NSObject {
    ZR_DECLARE_CLASS(NSImage, NSObject)
  public:
    NSImage();
    ~NSImage() override;

    /// Without bitmaps. Any size is taken as it is, an empty or negative one too; such an image has nothing to show.
    id initWithSize(NSSize size);

    /// In points, independent of how many pixels the bitmaps have.
    [[nodiscard]] NSSize size() const { return m_size; }
    void setSize(NSSize size) { m_size = size; }

    /// The bitmaps in the order they were added in; a list of the moment that does not change with the image. Never
    /// null.
    [[nodiscard]] Ref<NSArray> representations() const;
    /// Keeps the bitmap itself, not a copy. Null, and one that is there already, do nothing.
    void addRepresentation(NSBitmapImageRep* representation);
    /// Null, and one that is not there, do nothing.
    void removeRepresentation(NSBitmapImageRep* representation);
    /// The bitmap with the most pixels, the first among equals; null when there is none.
    [[nodiscard]] Ref<NSBitmapImageRep> bestRepresentation() const;

    // Drawing; main thread only.

    /// Makes the image what is drawn in, in points from its lower left corner on, until `unlockFocus`. It begins with
    /// what the image shows, in as many pixels as its best bitmap has, or in those of the main screen when there is
    /// none, one a point without a screen. Until the end the image itself stays as it was, so that it may be drawn into
    /// itself. An image without an extent, or with one that no bitmap can have, takes drawing and keeps nothing.
    void lockFocus();
    /// Ends that: what was drawn becomes the image's only bitmap, and what was drawn in before is so again. Does
    /// nothing unless this image is what is being drawn in.
    void unlockFocus();

    /// Draws the part `from`, in points from the lower left corner on, all of it when that is empty, spread over `to`
    /// in what is being drawn in. `fraction` is how opaque that is, from 0 to 1. Does nothing when nothing is being
    /// drawn in, and for an image without bitmaps.
    void drawInRect_fromRect_operation_fraction(NSRect to, NSRect from, NSCompositingOperation operation,
                                                double fraction);
    /// All of it over what is there.
    void drawInRect(NSRect to);

    /// Another image of the same size with copies of the bitmaps.
    [[nodiscard]] id copy() const override;

  private:
    NSSize m_size;
    Ref<NSArray> m_representations = NSArray::array();
};

} // namespace zr
