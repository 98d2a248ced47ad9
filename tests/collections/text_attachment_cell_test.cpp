#include <zrbasic/collections/text_attachment_cell.h>

#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {
namespace {

TEST(MovedAttachmentCell, standsOnTheBaselineAtFirst) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(16, 12));
    const Ref<ZRTextAttachmentCell> cell = make<ZRTextAttachmentCell>(&NSTextAttachmentCell::initImageCell, image);
    EXPECT_EQ(cell->image().get(), image.get());
    EXPECT_EQ(cell->cellSize(), NSMakeSize(16, 12));
    EXPECT_EQ(cell->offset(), NSZeroPoint);
    EXPECT_EQ(cell->cellBaselineOffset(), NSZeroPoint);
    EXPECT_EQ(make<ZRTextAttachmentCell>()->offset(), NSZeroPoint);
}

TEST(MovedAttachmentCell, isMovedByItsOffset) {
    const Ref<ZRTextAttachmentCell> cell =
        make<ZRTextAttachmentCell>(&ZRTextAttachmentCell::initImageCell_offset, nullptr, NSMakePoint(1.5, -3));
    EXPECT_FALSE(cell->image());
    EXPECT_EQ(cell->offset(), NSMakePoint(1.5, -3));
    EXPECT_EQ(cell->cellBaselineOffset(), NSMakePoint(1.5, -3));
    cell->setOffset(NSMakePoint(0, std::numeric_limits<double>::infinity()));
    const Ref<NSTextAttachmentCell> seenAsItsParent = cell;
    EXPECT_EQ(seenAsItsParent->cellBaselineOffset(), NSMakePoint(0, std::numeric_limits<double>::infinity()));
}

TEST(MovedAttachmentCell, answersByName) {
    const id cell = send<id>(class_createInstance(ZRTextAttachmentCell::classObject()), "initImageCell:offset:"_sel,
                             make<NSImage>(), NSMakePoint(2, 3));
    EXPECT_EQ(send<NSPoint>(cell, "cellBaselineOffset"_sel), NSMakePoint(2, 3));
    send<void>(cell, "setOffset:"_sel, NSMakePoint(4, 5));
    EXPECT_EQ(send<NSPoint>(cell, "offset"_sel), NSMakePoint(4, 5));
    EXPECT_EQ(send<NSPoint>(cell, "cellBaselineOffset"_sel), NSMakePoint(4, 5));
    const id plain = send<id>(class_createInstance(ZRTextAttachmentCell::classObject()), "initImageCell:"_sel, "no"_ns);
    EXPECT_FALSE(send<id>(plain, "image"_sel)) << "of another kind: read as null";
    EXPECT_EQ(send<NSPoint>(plain, "cellBaselineOffset"_sel), NSZeroPoint);
}

} // namespace
} // namespace zr
