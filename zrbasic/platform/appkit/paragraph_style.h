#pragma once

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/types.h>

namespace zr {

/// Where lines stand between the margins.
enum NSTextAlignment : NSInteger {
    NSTextAlignmentLeft = 0,
    NSTextAlignmentRight = 1,
    NSTextAlignmentCenter = 2,
    NSTextAlignmentJustified = 3,
    /// Left or right, as the text is written.
    NSTextAlignmentNatural = 4,
};

/// What happens to a line that is too long.
enum NSLineBreakMode : NSUInteger {
    NSLineBreakByWordWrapping = 0,
    NSLineBreakByCharWrapping = 1,
    NSLineBreakByClipping = 2,
    NSLineBreakByTruncatingHead = 3,
    NSLineBreakByTruncatingTail = 4,
    NSLineBreakByTruncatingMiddle = 5,
};

/// How a paragraph is laid out: the value of `NSParagraphStyleAttributeName`.
///
/// Never changes (but see `NSMutableParagraphStyle`), so it may be used from any thread. Nothing here raises.
class ZR_EXPORT NSParagraphStyle : public NSObject {
    ZR_DECLARE_CLASS(NSParagraphStyle, NSObject)

  public:
    NSParagraphStyle();
    ~NSParagraphStyle() override;

    /// The style of text that has none: natural alignment, wrapping at words, no extra spacing. The same object every
    /// time.
    [[nodiscard]] static Ref<NSParagraphStyle> defaultParagraphStyle();

    /// Points between the lines; 0 at first.
    [[nodiscard]] double lineSpacing() const { return m_lineSpacing; }
    [[nodiscard]] NSTextAlignment alignment() const { return m_alignment; }
    [[nodiscard]] NSLineBreakMode lineBreakMode() const { return m_lineBreakMode; }

    /// True for a style, mutable or not, with the same settings.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The receiver itself when it cannot change.
    [[nodiscard]] id copy() const override;
    /// An `NSMutableParagraphStyle` with the same settings.
    [[nodiscard]] id mutableCopy() const override;

  protected:
    [[nodiscard]] static Ref<NSParagraphStyle> styleLike(const NSParagraphStyle& other);
    void takeSettings(const NSParagraphStyle& other);

    double m_lineSpacing = 0;
    NSTextAlignment m_alignment = NSTextAlignmentNatural;
    NSLineBreakMode m_lineBreakMode = NSLineBreakByWordWrapping;
};

/// A paragraph style that can be changed. Not for use from several threads at once.
class ZR_EXPORT NSMutableParagraphStyle : public NSParagraphStyle {
    ZR_DECLARE_CLASS(NSMutableParagraphStyle, NSParagraphStyle)

  public:
    NSMutableParagraphStyle();
    ~NSMutableParagraphStyle() override;

    /// Kept exactly as set, sensible or not.
    void setLineSpacing(double spacing) { m_lineSpacing = spacing; }
    void setAlignment(NSTextAlignment alignment) { m_alignment = alignment; }
    void setLineBreakMode(NSLineBreakMode mode) { m_lineBreakMode = mode; }
    /// All settings of `other`; null changes nothing.
    void setParagraphStyle(NSParagraphStyle* other);

    /// A style with the present settings that will not change.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
