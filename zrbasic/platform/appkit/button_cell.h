#pragma once

#include <zrbasic/platform/appkit/cell.h>

namespace zr {

class NSImage;

/// What a button does when it is pressed.
enum NSButtonType : NSUInteger {
    NSButtonTypeMomentaryLight = 0,
    NSButtonTypePushOnPushOff = 1,
    NSButtonTypeToggle = 2,
    /// A box with a check mark.
    NSButtonTypeSwitch = 3,
    /// One of several choices. It goes on and never off by itself: whoever has several sees to the others.
    NSButtonTypeRadio = 4,
    NSButtonTypeMomentaryChange = 5,
    NSButtonTypeOnOff = 6,
    NSButtonTypeMomentaryPushIn = 7,
};

enum NSControlStateValue : NSInteger {
    NSControlStateValueMixed = -1,
    NSControlStateValueOff = 0,
    NSControlStateValueOn = 1,
};

/// Whether, and where beside the title, a button shows its image.
enum NSCellImagePosition : NSUInteger {
    NSNoImage = 0,
    NSImageOnly = 1,
    NSImageLeft = 2,
    NSImageRight = 3,
};

/// The cell of a button: a title and an image in a border, or behind the mark of a check box or radio button.
///
/// Its value is its state, as a number. Main thread only.
class ZR_EXPORT NSButtonCell : public NSActionCell {
    ZR_DECLARE_CLASS(NSButtonCell, NSActionCell)
  public:
    NSButtonCell();
    ~NSButtonCell() override;

    /// Bordered, with the given title, in the middle.
    id initTextCell(NSString* string) override;

    /// Never null: the empty text for null. Copied when set.
    [[nodiscard]] Ref<NSString> title() const { return m_title; }
    virtual void setTitle(NSString* title);
    /// Null at first. Kept.
    [[nodiscard]] Ref<NSImage> image() const;
    /// An image that is set where none was shown is shown in place of an empty title, or to the left of it.
    virtual void setImage(NSImage* image);
    [[nodiscard]] NSCellImagePosition imagePosition() const { return m_imagePosition; }
    void setImagePosition(NSCellImagePosition position);

    /// The key that presses the button, as it is typed, "\r" for the return key; the empty text at first and for null.
    /// A button of the return key is the default one of its window.
    [[nodiscard]] Ref<NSString> keyEquivalent() const { return m_keyEquivalent; }
    void setKeyEquivalent(NSString* key);
    /// Which of the command, option and control keys must be held down with it; a sum of `NSEventModifierFlags`, of
    /// which the others do not count. None at first.
    [[nodiscard]] NSUInteger keyEquivalentModifierMask() const { return m_modifiers; }
    void setKeyEquivalentModifierMask(NSUInteger modifiers) { m_modifiers = modifiers; }
    [[nodiscard]] bool isDefault() const;

    /// `NSButtonTypeMomentaryPushIn` at first. A check box and a radio button have no border and their title at the
    /// left.
    [[nodiscard]] NSButtonType buttonType() const { return m_type; }
    virtual void setButtonType(NSButtonType type);
    /// Anything above 0 is on; anything below is mixed, or on where that is not allowed.
    void setState(NSInteger state) override;
    /// The state by a number or a text; anything else is off.
    void setObjectValue(NSObject* value) override;
    void setStringValue(NSString* string) override;
    void setAttributedStringValue(NSAttributedString* string) override;
    [[nodiscard]] bool allowsMixedState() const { return m_allowsMixedState; }
    void setAllowsMixedState(bool allows);
    /// The state that a click leads to: the other one, or round on, off and mixed; always on for a radio button. Of a
    /// momentary button, always off.
    [[nodiscard]] NSInteger nextState() const;
    virtual void setNextState();

    [[nodiscard]] NSSize cellSize() const override;
    [[nodiscard]] NSRect drawingRectForBounds(NSRect bounds) const override;
    void drawWithFrame_inView(NSRect frame, NSView* view) override;
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

  protected:
    [[nodiscard]] Ref<NSColor> colorOfText() const override;

  private:
    [[nodiscard]] bool hasMark() const;
    /// Whether it stays down after a click: shown as pressed while it is on.
    [[nodiscard]] bool isPressedLook() const;
    [[nodiscard]] Ref<NSAttributedString> titleToDraw() const;
    [[nodiscard]] NSSize titleSize() const;
    [[nodiscard]] bool showsImage() const;
    void drawBorder(NSRect frame);
    void drawMark(NSRect frame, bool isFlipped);

    Ref<NSString> m_title;
    Ref<NSImage> m_image;
    Ref<NSString> m_keyEquivalent;
    NSUInteger m_modifiers = 0;
    NSButtonType m_type = NSButtonTypeMomentaryPushIn;
    NSCellImagePosition m_imagePosition = NSNoImage;
    bool m_allowsMixedState = false;
};

} // namespace zr
