#pragma once

#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/geometry.h>

namespace zr {

class NSData;
class NSImage;

/// The character that stands in a text for an attachment.
inline constexpr char16_t NSAttachmentCharacter = 0xFFFC;

/// Draws an attachment: an image on the text line. Used on one thread at a time; nothing here raises.
class ZR_EXPORT NSTextAttachmentCell : public NSObject {
    ZR_DECLARE_CLASS(NSTextAttachmentCell, NSObject)

  public:
    NSTextAttachmentCell();
    ~NSTextAttachmentCell() override;

    /// Keeps the image, which may be null.
    virtual id initImageCell(NSImage* image);

    [[nodiscard]] Ref<NSImage> image() const;
    void setImage(NSImage* image);
    /// The room on the line, in points: the image's size, nothing without an image.
    [[nodiscard]] virtual NSSize cellSize() const;
    /// Where the cell's lower left corner lies, seen from the place on the text's baseline where the next character
    /// would begin: the zero point.
    [[nodiscard]] virtual NSPoint cellBaselineOffset() const;

  private:
    Ref<NSImage> m_image;
};

/// Something that is no text but stands in one: the value of `NSAttachmentAttributeName`. Compared by identity. Used on
/// one thread at a time; nothing here raises.
class ZR_EXPORT NSTextAttachment : public NSObject {
    ZR_DECLARE_CLASS(NSTextAttachment, NSObject)

  public:
    NSTextAttachment();
    ~NSTextAttachment() override;

    /// Both may be null: what is drawn comes from the cell.
    id initWithData_ofType(NSData* contents, NSString* fileType);

    [[nodiscard]] Ref<NSData> contents() const;
    void setContents(NSData* contents);
    [[nodiscard]] Ref<NSString> fileType() const;
    /// Copied.
    void setFileType(NSString* fileType);
    /// Null until one is set.
    [[nodiscard]] Ref<NSTextAttachmentCell> attachmentCell() const { return m_cell; }
    void setAttachmentCell(NSTextAttachmentCell* cell) { m_cell = cell; }

  private:
    Ref<NSData> m_contents;
    Ref<NSString> m_fileType;
    Ref<NSTextAttachmentCell> m_cell;
};

// NSAttributedString(NSAttributedStringAttachmentConveniences)

/// The attachment character alone, with the attachment as its attribute. Raises `NSInvalidArgumentException` for null.
[[nodiscard]] ZR_EXPORT Ref<NSAttributedString> attributedStringWithAttachment(NSTextAttachment* attachment);

} // namespace zr
