#include "shades.h"
#include "specimen.h"

#include <zrbasic/platform/appkit/bezier_path.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/ui/image.h>
#include <zrbasic/ui/image_attachment.h>

namespace controls {
namespace {

using namespace zr;

/// Shows an image in its own size.
class GalleryPicture : public NSView {
    ZR_OBJECT(GalleryPicture, NSView)
  public:
    void drawRect(NSRect) override {
        if (image) {
            image->drawInRect(NSRect{NSZeroPoint, image->size()});
        }
    }
    ZR_METHOD(drawRect, "drawRect:")

    Ref<NSImage> image;
};

/// An arrow to the upper right, in grey, so that turns, mirrors and tints can be told.
Ref<NSImage> arrow(double extent) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(extent, extent));
    image->lockFocus();
    setFill(NSColor::colorWithWhite_alpha(0.5, 1));
    const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
    const auto at = [extent](double x, double y) { return NSMakePoint(extent * x, extent * y); };
    path->moveToPoint(at(0.92, 0.92));
    path->lineToPoint(at(0.40, 0.84));
    path->lineToPoint(at(0.56, 0.68));
    path->lineToPoint(at(0.08, 0.22));
    path->lineToPoint(at(0.22, 0.08));
    path->lineToPoint(at(0.68, 0.56));
    path->lineToPoint(at(0.84, 0.40));
    path->closePath();
    path->fill();
    image->unlockFocus();
    return image;
}

Specimen shown(const char* name, const char* caption, Ref<NSImage> image) {
    const Ref<GalleryPicture> view =
        make<GalleryPicture>(&GalleryPicture::initWithFrame, NSRect{NSZeroPoint, image->size()});
    view->image = std::move(image);
    return {name, caption, view, {}};
}

constexpr double extent = 28;

} // namespace

Section images() {
    Section section{"Images", {}};
    auto& specimens = section.specimens;
    specimens.push_back(shown("image/plain", "as drawn", arrow(extent)));
    specimens.push_back(shown("image/tinted", "tinted", imageWithTintColor(arrow(extent), alarm())));
    specimens.push_back(shown("image/upside-down", "top to bottom", mirrorRotateInYAxis(arrow(extent))));
    specimens.push_back(shown("image/left-to-right", "left to right", mirrorRotateInXAsix(arrow(extent))));
    specimens.push_back(shown("image/quarter-turn", "turned by 90 degrees", rotateWithAngle(arrow(extent), 90)));
    specimens.push_back(shown("image/turned", "turned by 30 degrees", rotateWithAngle(arrow(extent), 30)));

    const Ref<NSTextField> label = make<NSTextField>(&NSTextField::initWithFrame, NSMakeRect(0, 0, 200, 20));
    label->setEditable(false);
    label->setBezeled(false);
    label->setDrawsBackground(false);
    const Ref<NSMutableAttributedString> text = make<NSMutableAttributedString>();
    text->append(u"Up ", nullptr);
    text->appendAttributedString(
        attributeStringWithOffsetCreator(imageWithTintColor(arrow(12), rise()), [] { return NSMakePoint(0, -1); }));
    text->append(u" 3.02 %", nullptr);
    label->setAttributedStringValue(text);
    specimens.push_back({"image/in-text", "in a text", label, {}});
    return section;
}

} // namespace controls
