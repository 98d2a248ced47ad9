#include <zrbasic/platform/appkit/text_field.h>

#include <zrbasic/platform/appkit/event.h>
#include "canvas_testing.h"
#include "measuring_testing.h"
#include "text_field_testing.h"

namespace zr {
namespace {

using test::FieldDelegate;

class TextField : public test::FieldsInWindow<NSTextField> {};

TEST_F(TextField, isEditableWithABezelOnWhiteAtFirst) {
    EXPECT_EQ(NSTextField::cellClass(), NSTextFieldCell::classObject());
    EXPECT_NE(cast<NSTextFieldCell>(field->cell().get()), nullptr);
    EXPECT_TRUE(field->isEditable() && field->isSelectable() && field->isEnabled());
    EXPECT_TRUE(field->isBezeled());
    EXPECT_TRUE(field->drawsBackground());
    EXPECT_TRUE(field->backgroundColor()->isEqual(NSColor::whiteColor()));
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_EQ(field->cell()->controlView(), field);
}

TEST_F(TextField, aLabelIsReadOnlyAndAsLargeAsItsText) {
    test::MeasuringToolkit toolkit;
    const Ref<NSTextField> label = NSTextField::labelWithString("Price"_ns);
    EXPECT_EQ(label->stringValue()->utf8(), "Price");
    EXPECT_FALSE(label->isEditable() || label->isSelectable() || label->isBezeled() || label->drawsBackground());
    EXPECT_FALSE(label->acceptsFirstResponder());
    EXPECT_EQ(label->frame().size, label->cell()->cellSize());
    EXPECT_GE(label->frame().size.width, 50);
    EXPECT_EQ(NSTextField::labelWithString(nullptr)->stringValue()->utf8(), "");
}

TEST_F(TextField, isEditedFromWhenItBecomesFirstResponder) {
    field->setStringValue("abc"_ns);
    EXPECT_TRUE(window->makeFirstResponder(field));
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(editor()->superview(), field);
    EXPECT_EQ(editor()->delegate(), field);
    EXPECT_EQ(shown(), "abc");
    EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
    EXPECT_EQ(editor()->frame(), (NSRect{{2, 2}, {116, 20}})) << "inside the bezel, where the idle text stands";
    EXPECT_EQ(delegate->log, "begin abc\n");
}

TEST_F(TextField, givesItsLookToTheEditor) {
    field->setFont(NSFont::boldSystemFontOfSize(20));
    field->setTextColor(NSColor::redColor());
    field->setAlignment(NSTextAlignmentRight);
    window->makeFirstResponder(field);
    EXPECT_TRUE(editor()->font()->isEqual(NSFont::boldSystemFontOfSize(20)));
    EXPECT_TRUE(editor()->textColor()->isEqual(NSColor::redColor()));
    EXPECT_EQ(editor()->alignment(), NSTextAlignmentRight);
    EXPECT_FALSE(editor()->drawsBackground());
    field->setFont(NSFont::systemFontOfSize(9));
    EXPECT_TRUE(editor()->font()->isEqual(NSFont::systemFontOfSize(9))) << "also while it is edited";
    window->makeFirstResponder(other);
    EXPECT_TRUE(editor()->font()->isEqual(NSFont::systemFontOfSize(13)));
    EXPECT_EQ(editor()->alignment(), NSTextAlignmentNatural);
}

TEST_F(TextField, drawsItsTextUnlessItIsEdited) {
    field->setStringValue("abc"_ns);
    const std::string idle = test::drawn(field).log;
    EXPECT_EQ(idle,
              "fill round 0 0 0,0 120x24 white\n"
              "fill 0,0 120x24 white\n"
              "line 1 round 0 0,0 120x24 light\n"
              "text 'abc' 2,2 116x20\n");
    window->makeFirstResponder(field);
    EXPECT_EQ(test::drawn(field).log, idle.substr(0, idle.find("text")));
    window->makeFirstResponder(other);
    EXPECT_EQ(test::drawn(field).log, idle);
}

TEST_F(TextField, takesWhatWasEditedWhenAnotherOneIsEdited) {
    window->makeFirstResponder(field);
    editor()->insertText("12"_ns);
    EXPECT_EQ(delegate->log, "begin \nchange 12\n");
    delegate->log.clear();
    EXPECT_TRUE(window->makeFirstResponder(other));
    EXPECT_EQ(delegate->log, "should end\nend 0 12\n");
    EXPECT_TRUE(isEdited(other));
    EXPECT_FALSE(isEdited(field));
    EXPECT_EQ(field->stringValue()->utf8(), "12");
    EXPECT_EQ(shown(), "") << "one editor for all fields, with the text of the other one now";
    EXPECT_EQ(field->subviews()->count(), 0U);
}

TEST_F(TextField, isEditedInTheSameEditorThroughoutItsWindow) {
    window->makeFirstResponder(field);
    const Ref<NSTextView> first = editor();
    window->makeFirstResponder(other);
    EXPECT_EQ(editor(), first);
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(first->superview(), nullptr);
    EXPECT_EQ(first->delegate(), nullptr);
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_EQ(other->currentEditor(), nullptr);
}

TEST_F(TextField, countsWhatStandsInTheEditorAsItsValue) {
    window->makeFirstResponder(field);
    editor()->insertText("12.5"_ns);
    EXPECT_EQ(field->stringValue()->utf8(), "12.5");
    EXPECT_EQ(field->doubleValue(), 12.5);
    EXPECT_EQ(field->integerValue(), 12);
    EXPECT_TRUE(field->objectValue()->isEqual("12.5"_ns));
    EXPECT_EQ(field->attributedStringValue()->string()->utf8(), "12.5");
    EXPECT_TRUE(isEdited(field));
}

TEST_F(TextField, showsAValueThatIsSetWhileItIsEdited) {
    window->makeFirstResponder(field);
    editor()->insertText("12"_ns);
    field->setStringValue("new"_ns);
    EXPECT_EQ(shown(), "new");
    EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
    EXPECT_TRUE(isEdited(field));
    editor()->insertText("er"_ns);
    press("cancelOperation:"_sel);
    EXPECT_EQ(field->stringValue()->utf8(), "new") << "the program's word is not given up with the user's";
}

TEST_F(TextField, endsWithTheActionAndIsSelectedAgainAfterReturn) {
    field->setTarget(delegate);
    field->setAction("act:"_sel);
    window->makeFirstResponder(field);
    editor()->insertText("12"_ns);
    delegate->log.clear();
    press("insertNewline:"_sel);
    EXPECT_EQ(delegate->log, "insertNewline:\nshould end\nend 16 12\nact 12\nbegin 12\n");
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(shown(), "12");
    EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 2}));
    editor()->insertText("3"_ns);
    EXPECT_EQ(shown(), "3");
}

TEST_F(TextField, leavesTheKeyboardWhereTheActionPutIt) {
    field->setTarget(delegate);
    field->setAction("act:"_sel);
    delegate->whenActing = [this] { window->makeFirstResponder(other); };
    window->makeFirstResponder(field);
    press("insertNewline:"_sel);
    EXPECT_TRUE(isEdited(other));
    EXPECT_FALSE(isEdited(field));
}

TEST_F(TextField, leavesTheKeyboardWhereTheDelegatePutItAtTheEnd) {
    const auto third = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{10, 10}, {50, 24}});
    window->contentView()->addSubview(third);
    delegate->whenEnded = [&] { window->makeFirstResponder(third); };
    window->makeFirstResponder(field);
    press("insertTab:"_sel);
    EXPECT_TRUE(isEdited(third));
    delegate->whenEnded = nullptr;
}

TEST_F(TextField, handsTheKeyboardOnWithTabAndBack) {
    window->makeFirstResponder(field);
    editor()->insertText("1"_ns);
    delegate->log.clear();
    press("insertTab:"_sel);
    EXPECT_EQ(delegate->log, "insertTab:\nshould end\nend 17 1\n");
    EXPECT_TRUE(isEdited(other));
    press("insertBacktab:"_sel);
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(shown(), "1");
    EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 1}));
    delegate->log.clear();
    press("insertBacktab:"_sel);
    EXPECT_EQ(delegate->log, "insertBacktab:\nshould end\nend 18 1\n");
    EXPECT_TRUE(isEdited(other)) << "from the first on to the last";
}

TEST_F(TextField, staysWithTabWhenItIsTheOnlyOne) {
    other->removeFromSuperview();
    field->setStringValue("abc"_ns);
    window->makeFirstResponder(field);
    editor()->setSelectedRange({1, 0});
    press("insertTab:"_sel);
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
    EXPECT_EQ(delegate->log, "begin abc\ninsertTab:\nshould end\nend 17 abc\nbegin abc\n");
}

/// Knows another way through its views.
class OneWayWindow : public NSWindow {
    ZR_OBJECT(OneWayWindow, NSWindow)
  public:
    void selectNextKeyView(NSObject*) override { makeFirstResponder(next); }

    NSView* next = nullptr;
};

TEST_F(TextField, leavesItToTheWindowWhereTabLeads) {
    const auto own = make<OneWayWindow>();
    own->contentView()->addSubview(field);
    const auto far = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{0, 0}, {50, 24}});
    const auto near = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{20, 100}, {50, 24}});
    own->contentView()->addSubview(near);
    own->contentView()->addSubview(far);
    own->next = far;
    own->makeFirstResponder(field);
    send<void>(own->firstResponder(), "doCommandBySelector:"_sel, "insertTab:"_sel);
    EXPECT_EQ(far->currentEditor(), own->firstResponder());
    EXPECT_EQ(delegate->log, "begin \ninsertTab:\nshould end\nend 17 \n");
}

TEST_F(TextField, putsTheOldValueBackWithEscape) {
    field->setStringValue("old"_ns);
    window->makeFirstResponder(field);
    editor()->insertText("new"_ns);
    EXPECT_EQ(field->stringValue()->utf8(), "new") << "asked for meanwhile";
    delegate->log.clear();
    press("cancelOperation:"_sel);
    EXPECT_EQ(delegate->log, "cancelOperation:\nshould end\nend 23 old\n");
    EXPECT_EQ(field->stringValue()->utf8(), "old");
    EXPECT_EQ(window->firstResponder(), window);
    EXPECT_EQ(field->currentEditor(), nullptr);
}

TEST_F(TextField, throwsEditsAwayWithoutAWordWhenEditingIsAborted) {
    field->setStringValue("old"_ns);
    EXPECT_FALSE(field->abortEditing());
    window->makeFirstResponder(field);
    editor()->insertText("new"_ns);
    delegate->log.clear();
    EXPECT_TRUE(field->abortEditing());
    EXPECT_EQ(delegate->log, "");
    EXPECT_EQ(field->stringValue()->utf8(), "old");
    EXPECT_EQ(window->firstResponder(), window);
    EXPECT_EQ(editor()->superview(), nullptr);
    EXPECT_FALSE(field->abortEditing());
}

TEST_F(TextField, isEditedOnAsLongAsTheDelegateSaysSo) {
    window->makeFirstResponder(field);
    editor()->insertText("1"_ns);
    delegate->mayEnd = false;
    EXPECT_FALSE(window->makeFirstResponder(other));
    EXPECT_TRUE(isEdited(field));
    press("insertNewline:"_sel);
    delegate->log.clear();
    press("insertTab:"_sel);
    EXPECT_EQ(delegate->log, "insertTab:\nshould end\n") << "asked once";
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(shown(), "1");
    delegate->mayEnd = true;
    EXPECT_TRUE(window->makeFirstResponder(other));
    EXPECT_TRUE(isEdited(other));
}

TEST_F(TextField, cannotKeepTheEditorWhenItLeavesItsWindow) {
    window->makeFirstResponder(field);
    editor()->insertText("1"_ns);
    delegate->mayEnd = false;
    field->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), window);
    window->makeFirstResponder(other);
    EXPECT_TRUE(isEdited(other));
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(field->subviews()->count(), 0U);
    delegate->mayEnd = true;
}

TEST_F(TextField, takesItsTextAlongWhenItLeavesItsWindow) {
    window->makeFirstResponder(field);
    editor()->insertText("12"_ns);
    delegate->log.clear();
    field->removeFromSuperview();
    EXPECT_EQ(delegate->log, "should end\nend 0 12\n");
    EXPECT_EQ(field->stringValue()->utf8(), "12");
    EXPECT_EQ(window->firstResponder(), window);
    EXPECT_EQ(field->subviews()->count(), 0U);
}

TEST_F(TextField, refusesEditsThatTheDelegateDoesNotWant) {
    delegate->mayBegin = false;
    window->makeFirstResponder(field);
    ASSERT_TRUE(editor());
    EXPECT_FALSE(editor()->insertText("1"_ns));
    EXPECT_EQ(field->stringValue()->utf8(), "");
    delegate->mayBegin = true;
    EXPECT_TRUE(editor()->insertText("1"_ns)) << "asked again at every edit";
    EXPECT_EQ(field->stringValue()->utf8(), "1");
}

TEST_F(TextField, leavesCommandsToTheDelegateFirst) {
    window->makeFirstResponder(field);
    delegate->log.clear();
    delegate->takesCommands = true;
    press("insertTab:"_sel);
    EXPECT_EQ(delegate->log, "insertTab:\n");
    EXPECT_TRUE(isEdited(field));
}

TEST_F(TextField, doesNotTakeTheKeyboardWhenItCannotBeEditedOrSelected) {
    field->setEditable(false);
    EXPECT_FALSE(field->acceptsFirstResponder());
    window->makeFirstResponder(field);
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_FALSE(field->becomeFirstResponder());
    field->setSelectable(true);
    EXPECT_TRUE(field->acceptsFirstResponder());
    field->setEnabled(false);
    EXPECT_FALSE(field->acceptsFirstResponder());
    EXPECT_FALSE(make<NSTextField>()->becomeFirstResponder()) << "without a window";
}

TEST_F(TextField, canBeSelectedWithoutBeingEdited) {
    field->setStringValue("abc"_ns);
    field->setEditable(false);
    field->setSelectable(true);
    window->makeFirstResponder(field);
    ASSERT_TRUE(isEdited(field));
    EXPECT_FALSE(editor()->isEditable());
    EXPECT_FALSE(editor()->insertText("x"_ns));
    EXPECT_EQ(delegate->log, "");
    window->makeFirstResponder(other);
    EXPECT_EQ(field->subviews()->count(), 0U);
    EXPECT_TRUE(editor()->isEditable());
}

TEST_F(TextField, endsEditingWhenItIsTurnedOff) {
    window->makeFirstResponder(field);
    editor()->insertText("1"_ns);
    field->setEnabled(false);
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_EQ(field->stringValue()->utf8(), "1");
    window->makeFirstResponder(other);
    editor()->insertText("2"_ns);
    other->setEditable(false);
    EXPECT_EQ(other->currentEditor(), nullptr);
    EXPECT_EQ(other->stringValue()->utf8(), "2");
    EXPECT_EQ(window->firstResponder(), window);
}

TEST_F(TextField, takesTheEditorAlongWhenItsExtentChanges) {
    window->makeFirstResponder(field);
    editor()->insertText("12"_ns);
    field->setFrame({{0, 0}, {200, 30}});
    EXPECT_EQ(editor()->frame(), (NSRect{{2, 2}, {196, 26}}));
    EXPECT_EQ(shown(), "12") << "what was typed stays";
    EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 0}));
    field->setBezeled(false);
    EXPECT_EQ(editor()->frame(), (NSRect{{0, 0}, {200, 30}}));
}

TEST_F(TextField, postsNotificationsAboutItself) {
    std::string heard;
    const auto center = NSNotificationCenter::defaultCenter();
    const auto listen = [&](NSString* name) {
        return center->addObserverForName_object_usingBlock(
            name, field, [&](NSNotification* told) { heard += told->name()->utf8() + '\n'; });
    };
    const id tokens[] = {listen(NSControlTextDidBeginEditingNotification()),
                         listen(NSControlTextDidChangeNotification()),
                         listen(NSControlTextDidEndEditingNotification())};
    window->makeFirstResponder(field);
    editor()->insertText("1"_ns);
    window->makeFirstResponder(other);
    editor()->insertText("2"_ns);
    EXPECT_EQ(heard,
              "NSControlTextDidBeginEditingNotification\n"
              "NSControlTextDidChangeNotification\n"
              "NSControlTextDidEndEditingNotification\n");
    for (const id& token : tokens)
        center->removeObserver(token);
}

TEST_F(TextField, isSelectedWholeByHand) {
    field->setStringValue("abc"_ns);
    field->selectText(nullptr);
    EXPECT_TRUE(isEdited(field));
    editor()->setSelectedRange({1, 1});
    field->selectText(nullptr);
    EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
    other->selectText(nullptr);
    EXPECT_TRUE(isEdited(other));
    make<NSTextField>()->selectText(nullptr);
    EXPECT_TRUE(isEdited(other));
}

TEST_F(TextField, putsTheInsertionPointWhereItIsClicked) {
    test::MeasuringToolkit toolkit;
    field->setStringValue("abcdef"_ns);
    const auto clickAt = [&](double x) {
        EventFields fields;
        fields.location = {x, 110};
        field->mouseDown(NSEvent::eventWithFields(fields));
        return editor()->selectedRange();
    };
    // The text begins at 12, every letter is 10 wide.
    EXPECT_EQ(clickAt(12 + 24), (NSRange{2, 0}));
    EXPECT_TRUE(isEdited(field));
    EXPECT_EQ(clickAt(12 + 26), (NSRange{3, 0})) << "the nearer side of a letter";
    EXPECT_EQ(clickAt(0), (NSRange{0, 0}));
    EXPECT_EQ(clickAt(500), (NSRange{6, 0}));
    field->setAlignment(NSTextAlignmentRight);
    EXPECT_EQ(clickAt(12 + 116 - 10), (NSRange{5, 0}));
    field->setAlignment(NSTextAlignmentCenter);
    EXPECT_EQ(clickAt(12 + 28 + 10), (NSRange{1, 0}));
}

TEST_F(TextField, handsClicksOnThatItDoesNotTake) {
    field->setEnabled(false);
    field->mouseDown(NSEvent::eventWithFields({}));
    field->mouseDown(nullptr);
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_EQ(window->firstResponder(), window);
}

TEST_F(TextField, hasNoWidthOfItsOwnAsLongAsItCanBeEdited) {
    test::MeasuringToolkit toolkit;
    field->setStringValue("abc"_ns);
    EXPECT_EQ(field->intrinsicContentSize(), (NSSize{NSViewNoIntrinsicMetric, 20}));
    field->setEditable(false);
    EXPECT_EQ(field->intrinsicContentSize(), (NSSize{34, 20}));
    field->sizeToFit();
    EXPECT_EQ(field->frame(), (NSRect{{10, 100}, {34, 20}}));
}

TEST_F(TextField, toleratesBeingToldOfEditingThatIsNone) {
    field->setStringValue("abc"_ns);
    field->textDidBeginEditing(nullptr);
    field->textDidChange(nullptr);
    field->textDidEndEditing(nullptr);
    field->validateEditing();
    EXPECT_EQ(delegate->log, "");
    EXPECT_EQ(field->stringValue()->utf8(), "abc");
    EXPECT_TRUE(field->textShouldBeginEditing(nullptr));
    EXPECT_FALSE(other->textView_doCommandBySelector(nullptr, "insertTab:"_sel)) << "nobody to ask";
}

TEST_F(TextField, isNotKeptByItsWindowOrEditor) {
    Weak<NSTextField> gone;
    Weak<NSCell> goneCell;
    {
        const auto passing = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{0, 0}, {50, 20}});
        gone = Weak<NSTextField>(passing);
        goneCell = Weak<NSCell>(passing->cell());
        window->contentView()->addSubview(passing);
        window->makeFirstResponder(passing);
        ASSERT_TRUE(isEdited(passing));
        editor()->insertText("1"_ns);
        passing->removeFromSuperview();
    }
    EXPECT_EQ(gone.lock(), nullptr);
    EXPECT_EQ(goneCell.lock(), nullptr);
    window->makeFirstResponder(field);
    EXPECT_TRUE(isEdited(field));
}

TEST_F(TextField, mayBeDoneAwayWithWhileItEnds) {
    delegate->whenEnded = [this] { window->setContentView(nullptr); };
    window->makeFirstResponder(field);
    editor()->insertText("1"_ns);
    press("insertNewline:"_sel);
    EXPECT_EQ(field->window(), nullptr);
    EXPECT_EQ(field->stringValue()->utf8(), "1");
    EXPECT_EQ(window->firstResponder(), window);
    delegate->whenEnded = nullptr;
}

TEST_F(TextField, withACellOfAnotherKindHasNoneOfItsLook) {
    field->setCell(make<NSCell>());
    field->setTextColor(NSColor::redColor());
    field->setBezeled(true);
    EXPECT_EQ(field->textColor(), nullptr);
    EXPECT_FALSE(field->isBezeled());
    field->setCell(nullptr);
    field->setPlaceholderString("x"_ns);
    EXPECT_EQ(field->placeholderString(), nullptr);
    window->makeFirstResponder(field);
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_EQ(test::drawn(field).log, "");
}

} // namespace
} // namespace zr
