#include <zrbasic/ui/text_field.h>

#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include "../appkit/canvas_testing.h"
#include "../appkit/text_field_testing.h"

namespace zr {
namespace {

/// Counts how often it is told.
class FocusListener : public NSObject, public ZRXTextFieldDelegate {
    ZR_OBJECT(FocusListener, NSObject, ZRXTextFieldDelegate)
  public:
    void xTextFieldDidBecomeFirstResponder() override {
        ++count;
        if (field) {
            colorWhenTold = field->layer()->borderColor();
        }
    }

    int count = 0;
    NSView* field = nullptr;
    Ref<NSColor> colorWhenTold;
};

/// Looks at the border when the field is asked whether it may be edited, and when it is told of the end.
class BorderWatcher : public NSObject {
    ZR_OBJECT(BorderWatcher, NSObject)
  public:
    bool shouldBegin(NSObject*, NSObject*) {
        atTheBeginning = field->layer()->borderColor();
        return true;
    }
    ZR_METHOD(shouldBegin, "control:textShouldBeginEditing:")
    void ended(NSNotification*) { atTheEnd = field->layer()->borderColor(); }
    ZR_METHOD(ended, "controlTextDidEndEditing:")

    NSView* field = nullptr;
    Ref<NSColor> atTheBeginning;
    Ref<NSColor> atTheEnd;
};

/// Writes down in which order its look is set, and what has been set before.
class SetUpField : public ZRXTextField {
    ZR_OBJECT(SetUpField, ZRXTextField)
  public:
    void setBorderWidth(double width) override {
        log += wantsLayer() && isEditable() && !isBezeled() && usesSingleLineMode() ? "width " : "too early ";
        ZRXTextField::setBorderWidth(width);
    }
    void setBorderColor(NSColor* color) override {
        log += "colour ";
        ZRXTextField::setBorderColor(color);
    }
    void setCornerRadius(double radius) override {
        log += focusRingType() == NSFocusRingTypeNone ? "ring radius " : "radius ";
        ZRXTextField::setCornerRadius(radius);
    }
    void setXPadding(double padding) override {
        log += focusRingType() == NSFocusRingTypeNone ? "ring padding " : "padding ";
        ZRXTextField::setXPadding(padding);
    }

    std::string log;
};

class SetUpSecureField : public ZRXSecureTextField {
    ZR_OBJECT(SetUpSecureField, ZRXSecureTextField)
  public:
    void setBorderWidth(double width) override {
        log += wantsLayer() && isEditable() && !isBezeled() && usesSingleLineMode() ? "width " : "too early ";
        ZRXSecureTextField::setBorderWidth(width);
    }
    void setBorderColor(NSColor* color) override {
        log += "colour ";
        ZRXSecureTextField::setBorderColor(color);
    }
    void setCornerRadius(double radius) override {
        log += focusRingType() == NSFocusRingTypeNone ? "ring radius " : "radius ";
        ZRXSecureTextField::setCornerRadius(radius);
    }

    std::string log;
};

bool same(NSColor* one, NSColor* other) {
    return one && one->isEqual(other);
}

template <class Field>
class StyledField : public test::FieldsInWindow<Field> {
  protected:
    [[nodiscard]] Ref<NSColor> shownBorder() const { return this->field->layer()->borderColor(); }
    void edit() const { this->window->makeFirstResponder(this->field); }
    void stopEditing() const { this->window->makeFirstResponder(nullptr); }
};

using BothFields = testing::Types<ZRXTextField, ZRXSecureTextField>;
TYPED_TEST_SUITE(StyledField, BothFields);

TYPED_TEST(StyledField, looksLikeAFlatBoxFromTheStart) {
    ASSERT_TRUE(this->field->wantsLayer());
    EXPECT_EQ(this->field->layer()->borderWidth(), 1.0);
    EXPECT_EQ(this->field->layer()->cornerRadius(), 3.0);
    EXPECT_TRUE(same(this->field->layer()->borderColor(), NSColor::lightGrayColor()));
    EXPECT_EQ(this->field->borderWidth(), 1.0);
    EXPECT_EQ(this->field->cornerRadius(), 3.0);
    EXPECT_NEAR(this->field->borderColor()->whiteComponent(), 2.0 / 3, 1e-12);
    EXPECT_TRUE(this->field->isEditable());
    EXPECT_FALSE(this->field->isBordered() || this->field->isBezeled());
    EXPECT_EQ(this->field->bezelStyle(), NSTextFieldSquareBezel);
    EXPECT_TRUE(same(this->field->textColor(), NSColor::blackColor()));
    EXPECT_TRUE(same(this->field->backgroundColor(), NSColor::clearColor()));
    EXPECT_TRUE(this->field->usesSingleLineMode());
    EXPECT_EQ(this->field->lineBreakMode(), NSLineBreakByTruncatingTail);
    EXPECT_EQ(this->field->focusRingType(), NSFocusRingTypeNone);
    EXPECT_EQ(this->field->placeholderColor(), nullptr);
    EXPECT_EQ(this->field->cursorColor(), nullptr);
    EXPECT_EQ(this->field->highlightedBorderColor(), nullptr);
    EXPECT_TRUE(this->field->acceptsFirstMouse(nullptr));
}

TYPED_TEST(StyledField, setsItsBorderInTheLayerAtOnce) {
    this->field->setBorderWidth(2.5);
    this->field->setCornerRadius(0);
    this->field->setBorderColor(NSColor::redColor());
    EXPECT_EQ(this->field->layer()->borderWidth(), 2.5);
    EXPECT_EQ(this->field->layer()->cornerRadius(), 0);
    EXPECT_TRUE(same(this->shownBorder(), NSColor::redColor()));
    this->field->setBorderColor(nullptr);
    EXPECT_EQ(this->shownBorder(), nullptr);
    this->field->setWantsLayer(false);
    this->field->setBorderWidth(4);
    this->field->setBorderColor(NSColor::greenColor());
    this->field->setCornerRadius(1);
    EXPECT_EQ(this->field->borderWidth(), 4.0) << "kept, with nothing to show it on";
}

TYPED_TEST(StyledField, changesItsBorderWhileItIsEdited) {
    this->field->setHighlightedBorderColor(NSColor::greenColor());
    EXPECT_TRUE(same(this->shownBorder(), NSColor::lightGrayColor())) << "stored only";
    this->edit();
    EXPECT_TRUE(same(this->shownBorder(), NSColor::greenColor()));
    this->field->setBorderColor(NSColor::redColor());
    EXPECT_TRUE(same(this->shownBorder(), NSColor::redColor())) << "at once, even now";
    this->stopEditing();
    EXPECT_TRUE(same(this->shownBorder(), NSColor::redColor()));
    this->edit();
    EXPECT_TRUE(same(this->shownBorder(), NSColor::greenColor()));
    this->stopEditing();
    EXPECT_TRUE(same(this->shownBorder(), NSColor::redColor()));
}

TYPED_TEST(StyledField, changesItsBorderInAnOrderOfItsOwn) {
    const auto watcher = make<BorderWatcher>();
    watcher->field = this->field;
    this->field->setDelegate(watcher);
    this->field->setHighlightedBorderColor(NSColor::greenColor());
    this->edit();
    const bool isPlain = std::is_same_v<TypeParam, ZRXTextField>;
    EXPECT_TRUE(same(watcher->atTheBeginning, isPlain ? NSColor::lightGrayColor() : NSColor::greenColor()))
        << "the secure one first of all, the other one once it has the keyboard";
    EXPECT_TRUE(same(this->shownBorder(), NSColor::greenColor()));
    this->stopEditing();
    EXPECT_TRUE(same(watcher->atTheEnd, NSColor::greenColor())) << "until everybody has been told";
    EXPECT_TRUE(same(this->shownBorder(), NSColor::lightGrayColor()));
}

TYPED_TEST(StyledField, neverTouchesItsBorderWithoutAHighlight) {
    this->field->layer()->setBorderColor(NSColor::redColor());
    this->edit();
    EXPECT_TRUE(same(this->shownBorder(), NSColor::redColor()));
    this->stopEditing();
    EXPECT_TRUE(same(this->shownBorder(), NSColor::redColor()));
    this->field->setHighlightedBorderColor(NSColor::greenColor());
    this->edit();
    this->field->setHighlightedBorderColor(nullptr);
    this->stopEditing();
    EXPECT_TRUE(same(this->shownBorder(), NSColor::greenColor())) << "left as it was";
}

TYPED_TEST(StyledField, highlightsItsBorderEvenWhenItIsRefusedTheKeyboard) {
    this->field->setHighlightedBorderColor(NSColor::greenColor());
    this->field->setEnabled(false);
    EXPECT_FALSE(this->field->becomeFirstResponder());
    EXPECT_TRUE(same(this->shownBorder(), NSColor::greenColor()));
    this->field->textDidEndEditing(nullptr);
    EXPECT_TRUE(same(this->shownBorder(), NSColor::lightGrayColor()));
}

TYPED_TEST(StyledField, hasItsOrdinaryBorderAgainAfterReturn) {
    this->field->setHighlightedBorderColor(NSColor::greenColor());
    this->edit();
    this->press("insertNewline:"_sel);
    EXPECT_TRUE(this->isEdited(this->field));
    EXPECT_TRUE(same(this->shownBorder(), NSColor::lightGrayColor()));
    this->press("insertTab:"_sel);
    this->press("insertBacktab:"_sel);
    EXPECT_TRUE(same(this->shownBorder(), NSColor::greenColor()));
    this->press("cancelOperation:"_sel);
    EXPECT_TRUE(same(this->shownBorder(), NSColor::lightGrayColor()));
}

TYPED_TEST(StyledField, keepsItsHighlightWhenEditingIsAborted) {
    this->field->setHighlightedBorderColor(NSColor::greenColor());
    this->edit();
    EXPECT_TRUE(this->field->abortEditing());
    EXPECT_TRUE(same(this->shownBorder(), NSColor::greenColor())) << "nobody was told that editing ended";
}

TYPED_TEST(StyledField, colorsTheInsertionPointWhenItMovesIntoAWindow) {
    this->field->setCursorColor(NSColor::redColor());
    EXPECT_EQ(this->editor(), nullptr) << "stored only";
    this->edit();
    EXPECT_TRUE(same(this->editor()->insertionPointColor(), NSColor::blackColor()));
    this->field->removeFromSuperview();
    this->window->contentView()->addSubview(this->field);
    EXPECT_TRUE(same(this->editor()->insertionPointColor(), NSColor::redColor()));
    this->window->makeFirstResponder(this->other);
    EXPECT_TRUE(same(this->editor()->insertionPointColor(), NSColor::redColor())) << "of all fields of the window";
    this->field->setCustomizeCursorColor(NSColor::greenColor());
    EXPECT_TRUE(same(this->editor()->insertionPointColor(), NSColor::greenColor()));
    EXPECT_TRUE(same(this->field->cursorColor(), NSColor::redColor()));
    this->field->setCustomizeCursorColor(nullptr);
    EXPECT_TRUE(same(this->editor()->insertionPointColor(), NSColor::blackColor()));
}

TYPED_TEST(StyledField, makesTheEditorOfAWindowThatHasNone) {
    const auto fresh = make<NSWindow>();
    this->field->removeFromSuperview();
    this->field->setCustomizeCursorColor(NSColor::redColor());
    this->field->setCursorColor(NSColor::redColor());
    EXPECT_EQ(fresh->fieldEditor_forObject(false, nullptr), nullptr);
    fresh->contentView()->addSubview(this->field);
    const auto editor = fresh->fieldEditor_forObject(false, nullptr);
    ASSERT_NE(cast<NSTextView>(editor.get()), nullptr);
    EXPECT_TRUE(same(cast<NSTextView>(editor.get())->insertionPointColor(), NSColor::redColor()));
}

TYPED_TEST(StyledField, answersMessages) {
    EXPECT_EQ(send<Class*>(TypeParam::classObject(), "cellClass"_sel), this->field->cell()->isa());
    send<void>(this->field, "setBorderWidth:"_sel, 7.0);
    EXPECT_EQ(send<double>(this->field, "borderWidth"_sel), 7.0);
    send<void>(this->field, "setHighlightedBorderColor:"_sel, NSColor::redColor());
    EXPECT_TRUE(same(send<Ref<NSColor>>(this->field, "highlightedBorderColor"_sel), NSColor::redColor()));
    send<void>(this->field, "setBorderColor:"_sel, "no colour"_ns);
    EXPECT_EQ(this->field->borderColor(), nullptr) << "an object of another kind is none";
    for (const SEL operation :
         {"setupInitialize"_sel, "initWithFrame:"_sel, "acceptsFirstMouse:"_sel, "viewDidMoveToWindow"_sel,
          "becomeFirstResponder"_sel, "textDidEndEditing:"_sel, "setCornerRadius:"_sel, "cornerRadius"_sel,
          "setCursorColor:"_sel, "cursorColor"_sel, "setCustomizeCursorColor:"_sel, "setPlaceholderColor:"_sel,
          "placeholderColor"_sel, "setPlaceholderString:"_sel})
        EXPECT_TRUE(this->field->respondsToSelector(operation)) << operation.name();
    const bool isPlain = std::is_same_v<TypeParam, ZRXTextField>;
    for (const SEL operation : {"xPadding"_sel, "setXPadding:"_sel, "xDelegate"_sel, "setXDelegate:"_sel})
        EXPECT_EQ(this->field->respondsToSelector(operation), isPlain) << operation.name();
    EXPECT_FALSE(this->field->respondsToSelector("initWithCoder:"_sel));
}

TYPED_TEST(StyledField, isReadAndSetByKey) {
    setValue_forKey(this->field, box(2.5), "borderWidth"_ns);
    EXPECT_EQ(this->field->layer()->borderWidth(), 2.5);
    EXPECT_TRUE(valueForKey(this->field, "cornerRadius"_ns)->isEqual(box(3)));
    setValue_forKey(this->field, NSColor::redColor(), "borderColor"_ns);
    EXPECT_TRUE(same(this->shownBorder(), NSColor::redColor()));
    EXPECT_EQ(valueForKey(this->field, "placeholderColor"_ns), nullptr);
}

TYPED_TEST(StyledField, looksLikeAPlainOneUntilItIsSetUp) {
    const auto fresh = alloc<TypeParam>();
    EXPECT_FALSE(fresh->wantsLayer());
    EXPECT_EQ(fresh->borderColor(), nullptr);
    EXPECT_EQ(fresh->borderWidth(), 0);
    fresh->setHighlightedBorderColor(NSColor::redColor());
    EXPECT_FALSE(fresh->becomeFirstResponder());
    fresh->textDidEndEditing(nullptr);
    fresh->setupInitialize();
    EXPECT_EQ(fresh->layer()->borderWidth(), 1.0);
    EXPECT_EQ(fresh->cell(), nullptr);
}

TEST(StyledFieldSetUp, givesTheLayerItsBorderBeforeTheRingGoesAndThePaddingLast) {
    EXPECT_EQ(make<SetUpField>()->log, "width colour radius ring padding ");
    EXPECT_EQ(make<SetUpSecureField>()->log, "width colour radius ");
    const auto again = make<SetUpField>();
    again->setBorderWidth(4);
    again->log.clear();
    send<void>(again, "setupInitialize"_sel);
    EXPECT_EQ(again->log, "width colour ring radius ring padding ");
    EXPECT_EQ(again->layer()->borderWidth(), 1);
}

// The plain field

class PlainField : public StyledField<ZRXTextField> {
  protected:
    const Ref<FocusListener> listener = make<FocusListener>();
};

TEST_F(PlainField, hasTheTextFivePointsFromItsSides) {
    EXPECT_EQ(field->xPadding(), 5.0);
    EXPECT_EQ(cast<ZRXTextFieldCell>(field->cell().get())->xPadding(), 5.0);
    EXPECT_EQ(make<ZRXTextFieldCell>()->xPadding(), 0.0);
    field->setNeedsDisplay(false);
    field->setXPadding(8.5);
    EXPECT_EQ(cast<ZRXTextFieldCell>(field->cell().get())->xPadding(), 8.5);
    EXPECT_TRUE(field->needsDisplay());
    field->setCell(make<NSTextFieldCell>());
    field->setXPadding(3);
    EXPECT_EQ(field->xPadding(), 3.0);
}

TEST_F(PlainField, tellsOnlyAListenerThatTheDelegateCouldBe) {
    field->setXDelegate(listener);
    edit();
    EXPECT_EQ(listener->count, 0) << "the delegate lacks the operation";
    stopEditing();
    field->setDelegate(nullptr);
    edit();
    EXPECT_EQ(listener->count, 0) << "no delegate";
    stopEditing();
    const auto another = make<FocusListener>();
    field->setDelegate(another);
    edit();
    EXPECT_EQ(listener->count, 1);
    EXPECT_EQ(another->count, 0) << "the delegate is asked, the other one is told";
    stopEditing();
    EXPECT_EQ(listener->count, 1) << "not of the end";
    field->setXDelegate(nullptr);
    edit();
    EXPECT_EQ(another->count, 0);
}

TEST_F(PlainField, tellsItsListenerBeforeItHighlightsAndEvenWhenRefused) {
    field->setXDelegate(listener);
    field->setDelegate(listener);
    field->setHighlightedBorderColor(NSColor::greenColor());
    listener->field = field;
    field->setEnabled(false);
    EXPECT_FALSE(field->becomeFirstResponder());
    EXPECT_EQ(listener->count, 1);
    EXPECT_TRUE(same(listener->colorWhenTold, NSColor::lightGrayColor()));
    EXPECT_TRUE(same(shownBorder(), NSColor::greenColor()));
}

TEST_F(PlainField, doesNotKeepItsListenerAndToleratesOneWithoutTheOperation) {
    field->setDelegate(listener);
    field->setXDelegate(make<NSObject>());
    EXPECT_EQ(field->xDelegate(), nullptr);
    const auto deaf = make<NSObject>();
    field->setXDelegate(deaf);
    EXPECT_NO_THROW(edit());
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(listener->count, 0);
    EXPECT_TRUE(listener->conformsToProtocol(ZRXTextFieldDelegate::protocolObject()));
    EXPECT_EQ(objc_getProtocol("ZRXTextFieldDelegate"), ZRXTextFieldDelegate::protocolObject());
}

TEST_F(PlainField, colorsItsPlaceholderInWhateverOrder) {
    field->setFont(NSFont::systemFontOfSize(20));
    field->setAlignment(NSTextAlignmentRight);
    field->setPlaceholderColor(NSColor::redColor());
    EXPECT_EQ(field->placeholderAttributedString(), nullptr) << "nothing to colour yet";
    EXPECT_EQ(field->placeholderString(), nullptr);
    for (const bool isTextLast : {true, false}) {
        SCOPED_TRACE(isTextLast ? "text last" : "colour last");
        if (isTextLast) {
            field->setPlaceholderString("Price"_ns);
        } else {
            field->setPlaceholderColor(NSColor::greenColor());
        }
        const auto shown = field->placeholderAttributedString();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->string()->utf8(), "Price");
        const auto attributes = shown->attributesAtIndex_effectiveRange(0, nullptr);
        EXPECT_EQ(attributes->count(), 3U);
        EXPECT_TRUE(attributes->objectForKey(NSForegroundColorAttributeName())
                        ->isEqual(isTextLast ? NSColor::redColor() : NSColor::greenColor()));
        EXPECT_TRUE(attributes->objectForKey(NSFontAttributeName())->isEqual(NSFont::systemFontOfSize(20)));
        const auto style = cast<NSParagraphStyle>(attributes->objectForKey(NSParagraphStyleAttributeName()));
        EXPECT_EQ(style->alignment(), NSTextAlignmentRight);
        EXPECT_EQ(style->lineBreakMode(), NSLineBreakByTruncatingTail);
    }
}

TEST_F(PlainField, leavesItsPlaceholderAsItIsForANullColor) {
    field->setPlaceholderString("Price"_ns);
    EXPECT_EQ(field->placeholderAttributedString(), nullptr) << "uncoloured";
    field->setPlaceholderColor(NSColor::redColor());
    const auto shown = field->placeholderAttributedString();
    field->setPlaceholderColor(nullptr);
    EXPECT_EQ(field->placeholderColor(), nullptr);
    EXPECT_EQ(field->placeholderAttributedString(), shown);
    field->setPlaceholderString("Lots"_ns);
    EXPECT_EQ(field->placeholderAttributedString(), nullptr);
    EXPECT_EQ(field->placeholderString()->utf8(), "Lots");
    field->setPlaceholderColor(NSColor::redColor());
    field->setPlaceholderString(nullptr);
    EXPECT_EQ(field->placeholderString(), nullptr);
    field->setPlaceholderString(""_ns);
    EXPECT_EQ(field->placeholderString()->length(), 0U);
}

// The field for passwords

class PasswordField : public StyledField<ZRXSecureTextField> {};

TEST_F(PasswordField, tellsNobodyThatItBecomesFirstResponder) {
    const auto listener = make<FocusListener>();
    field->setDelegate(listener);
    edit();
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(listener->count, 0);
}

TEST_F(PasswordField, colorsItsPlaceholderWithoutAFont) {
    field->setFont(NSFont::systemFontOfSize(20));
    field->setPlaceholderString("Password"_ns);
    field->setPlaceholderColor(NSColor::redColor());
    const auto attributes = field->placeholderAttributedString()->attributesAtIndex_effectiveRange(0, nullptr);
    EXPECT_EQ(attributes->count(), 2U);
    EXPECT_TRUE(attributes->objectForKey(NSForegroundColorAttributeName())->isEqual(NSColor::redColor()));
    EXPECT_NE(attributes->objectForKey(NSParagraphStyleAttributeName()), nullptr);
    const auto record = test::drawn(field);
    EXPECT_TRUE(record.attribute(NSFontAttributeName())->isEqual(NSFont::systemFontOfSize(13)));
    EXPECT_EQ(record.texts.at(0).text->string()->utf8(), "Password") << "readable, unlike the text";
}

TEST_F(PasswordField, needsTheTextOfItsPlaceholderBeforeTheColor) {
    EXPECT_THROW(field->setPlaceholderColor(NSColor::redColor()), NSException);
    EXPECT_TRUE(same(field->placeholderColor(), NSColor::redColor())) << "kept all the same";
    field->setPlaceholderString("Password"_ns);
    EXPECT_EQ(field->placeholderAttributedString(), nullptr) << "a text set afterwards is not coloured";
    EXPECT_NO_THROW(field->setPlaceholderColor(nullptr));
    EXPECT_EQ(field->placeholderAttributedString(), nullptr);
}

} // namespace
} // namespace zr
