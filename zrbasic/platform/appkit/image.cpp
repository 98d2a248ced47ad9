#include <zrbasic/platform/appkit/image.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/foundation/mutable_array.h>

namespace zr {

ZR_DEFINE_CLASS(NSImage) {
    is.method<&NSImage::initWithSize>("initWithSize:");
    is.method<&NSImage::size>("size");
    is.method<&NSImage::setSize>("setSize:");
    is.method<&NSImage::representations>("representations");
    is.method<&NSImage::addRepresentation>("addRepresentation:");
    is.method<&NSImage::removeRepresentation>("removeRepresentation:");
    is.method<&NSImage::lockFocus>("lockFocus");
    is.method<&NSImage::unlockFocus>("unlockFocus");
    is.method<&NSImage::drawInRect_fromRect_operation_fraction>("drawInRect:fromRect:operation:fraction:");
    is.method<&NSImage::drawInRect>("drawInRect:");
}

NSImage::NSImage() = default;
NSImage::~NSImage() = default;

id NSImage::initWithSize(NSSize size) {
    m_size = size;
    return id(this);
}

Ref<NSArray> NSImage::representations() const {
    return m_representations;
}

void NSImage::addRepresentation(NSBitmapImageRep* representation) {
    if (representation && !m_representations->containsObject(representation)) {
        m_representations = m_representations->arrayByAddingObject(representation);
    }
}

void NSImage::removeRepresentation(NSBitmapImageRep* representation) {
    const Ref<NSMutableArray> remaining = NSMutableArray::array();
    for (const id& element : m_representations->elements()) {
        if (element.get() != representation) {
            remaining->addObject(element);
        }
    }
    m_representations = NSArray::arrayWithArray(remaining);
}

Ref<NSBitmapImageRep> NSImage::bestRepresentation() const {
    const auto pixels = [](const NSBitmapImageRep* bitmap) { return bitmap->pixelsWide() * bitmap->pixelsHigh(); };
    NSBitmapImageRep* best = nullptr;
    for (const id& element : m_representations->elements()) {
        auto* const bitmap = cast<NSBitmapImageRep>(element);
        if (!best || pixels(bitmap) > pixels(best)) {
            best = bitmap;
        }
    }
    return Ref<NSBitmapImageRep>(best);
}

id NSImage::copy() const {
    const Ref<NSImage> made = make<NSImage>(&NSImage::initWithSize, m_size);
    for (const id& element : m_representations->elements()) {
        made->addRepresentation(cast<NSBitmapImageRep>(element->copy()));
    }
    return made;
}

} // namespace zr
