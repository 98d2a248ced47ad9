#include <zrbasic/platform/appkit/text_attachment.h>

#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_DEFINE_CLASS(NSTextAttachmentCell) {
    is.method<&NSTextAttachmentCell::initImageCell>("initImageCell:")
        .method<&NSTextAttachmentCell::image>("image")
        .method<&NSTextAttachmentCell::setImage>("setImage:")
        .method<&NSTextAttachmentCell::cellSize>("cellSize")
        .method<&NSTextAttachmentCell::cellBaselineOffset>("cellBaselineOffset");
}

ZR_DEFINE_CLASS(NSTextAttachment) {
    is.method<&NSTextAttachment::initWithData_ofType>("initWithData:ofType:")
        .method<&NSTextAttachment::contents>("contents")
        .method<&NSTextAttachment::setContents>("setContents:")
        .method<&NSTextAttachment::fileType>("fileType")
        .method<&NSTextAttachment::setFileType>("setFileType:")
        .method<&NSTextAttachment::attachmentCell>("attachmentCell")
        .method<&NSTextAttachment::setAttachmentCell>("setAttachmentCell:");
}

ZR_GROUP(NSAttributedString, NSAttributedStringAttachmentConveniences) {
    is.classMethod<&attributedStringWithAttachment>("attributedStringWithAttachment:");
}

NSTextAttachmentCell::NSTextAttachmentCell() = default;
NSTextAttachmentCell::~NSTextAttachmentCell() = default;

id NSTextAttachmentCell::initImageCell(NSImage* image) {
    m_image = image;
    return id(this);
}

Ref<NSImage> NSTextAttachmentCell::image() const {
    return m_image;
}

void NSTextAttachmentCell::setImage(NSImage* image) {
    m_image = image;
}

NSSize NSTextAttachmentCell::cellSize() const {
    return m_image ? m_image->size() : NSZeroSize;
}

NSPoint NSTextAttachmentCell::cellBaselineOffset() const {
    return NSZeroPoint;
}

NSTextAttachment::NSTextAttachment() = default;
NSTextAttachment::~NSTextAttachment() = default;

id NSTextAttachment::initWithData_ofType(NSData* contents, NSString* fileType) {
    setContents(contents);
    setFileType(fileType);
    return id(this);
}

Ref<NSData> NSTextAttachment::contents() const {
    return m_contents;
}

void NSTextAttachment::setContents(NSData* contents) {
    m_contents = contents;
}

Ref<NSString> NSTextAttachment::fileType() const {
    return m_fileType;
}

void NSTextAttachment::setFileType(NSString* fileType) {
    m_fileType = fileType ? Ref<NSString>(cast<NSString>(fileType->copy())) : nullptr;
}

Ref<NSAttributedString> attributedStringWithAttachment(NSTextAttachment* attachment) {
    static auto* const character =
        new Ref<NSString>(NSString::fromUtf16(std::u16string_view(&NSAttachmentCharacter, 1)));
    const Ref<NSDictionary> attributes =
        NSDictionary::dictionaryWithObject_forKey(attachment, NSAttachmentAttributeName());
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, character->get(), attributes);
}

} // namespace zr
