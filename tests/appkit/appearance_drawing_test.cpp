#include "appearance_testing.h"
#include "canvas_testing.h"
#include "window_testing.h"

#include <zrbasic/platform/appkit/box.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/collection_view.h>
#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/platform/appkit/scroller.h>
#include <zrbasic/platform/appkit/split_view.h>
#include <zrbasic/platform/appkit/tab_view.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/appkit/text_view.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::DrawingRecord;
using test::drawn;
using test::InAppearance;

constexpr NSRect frame{{0, 0}, {100, 30}};

Ref<NSColor> textColorIn(const DrawingRecord& record) {
    return Ref<NSColor>(cast<NSColor>(record.attribute(NSForegroundColorAttributeName()).get()));
}

/// With a toolkit that measures texts, and everything dark.
class DrawnInTheDark : public testing::Test {
  protected:
    ~DrawnInTheDark() override { test::hideAllWindows(); }

    test::WindowToolkit m_toolkit;
    const InAppearance m_dark{NSAppearanceNameDarkAqua()};
};

TEST_F(DrawnInTheDark, aButtonHasALightTitleOnADarkFace) {
    const Ref<NSButton> button = NSButton::buttonWithTitle_target_action("Buy"_ns, nullptr, SEL());
    button->setFrame(frame);
    EXPECT_TRUE(drawn(button).has("fill round 4 4 0,0 100x30 23/23/23\nline 1 round 4 0,0 100x30 40/40/40\n"));
    EXPECT_EQ(textColorIn(drawn(button)), NSColor::labelColor());
    button->setEnabled(false);
    EXPECT_TRUE(drawn(button).has("fill round 4 4 0,0 100x30 17/17/17\n"));
    EXPECT_EQ(textColorIn(drawn(button)), NSColor::disabledControlTextColor());
    button->setEnabled(true);
    button->highlight(true);
    EXPECT_TRUE(drawn(button).has("fill round 4 4 0,0 100x30 34/34/34\n")) << "lighter, as there is no darker";
    button->setKeyEquivalent("\r"_ns);
    button->highlight(false);
    EXPECT_TRUE(drawn(button).has("fill round 4 4 0,0 100x30 13/44/87\n"));
    EXPECT_EQ(textColorIn(drawn(button)), NSColor::whiteColor());
}

TEST_F(DrawnInTheDark, aCheckBoxHasALightTitleAndAWhiteTick) {
    const Ref<NSButton> box = NSButton::checkboxWithTitle_target_action("All"_ns, nullptr, SEL());
    box->setFrame(frame);
    EXPECT_TRUE(drawn(box).has("fill round 3 3 0,8 14x14 23/23/23\n"));
    EXPECT_EQ(textColorIn(drawn(box)), NSColor::labelColor());
    box->setState(NSControlStateValueOn);
    EXPECT_TRUE(drawn(box).has("fill round 3 3 0,8 14x14 13/44/87\n"));
    EXPECT_TRUE(drawn(box).log.find(" white\n") != std::string::npos);
    EXPECT_TRUE(drawn(box).log.find(" black") == std::string::npos);
}

TEST_F(DrawnInTheDark, aFieldWithoutColoursOfItsOwnIsDarkWithLightText) {
    const Ref<NSTextField> field = make<NSTextField>(&NSTextField::initWithFrame, frame);
    field->setStringValue("1"_ns);
    EXPECT_TRUE(
        drawn(field).has("fill round 0 0 0,0 100x30 9/9/9\nfill 0,0 100x30 9/9/9\nline 1 round 0 0,0 100x30 "
                         "40/40/40\n"));
    EXPECT_EQ(textColorIn(drawn(field)), NSColor::labelColor());
    field->setStringValue(nullptr);
    field->setPlaceholderString("Price"_ns);
    EXPECT_EQ(textColorIn(drawn(field)), NSColor::placeholderTextColor());
}

TEST_F(DrawnInTheDark, aFieldKeepsTheColoursThatItWasGiven) {
    const Ref<NSTextField> field = make<NSTextField>(&NSTextField::initWithFrame, frame);
    field->setStringValue("1"_ns);
    field->setTextColor(NSColor::blackColor());
    field->setBackgroundColor(NSColor::whiteColor());
    EXPECT_TRUE(drawn(field).has("fill 0,0 100x30 white\n"));
    EXPECT_EQ(textColorIn(drawn(field)), NSColor::blackColor()) << "black that was set is black";
    field->setTextColor(nullptr);
    EXPECT_EQ(textColorIn(drawn(field)), NSColor::labelColor()) << "null takes it back";
    field->setBackgroundColor(nullptr);
    EXPECT_EQ(field->backgroundColor(), nullptr) << "and null is no background";
    EXPECT_FALSE(drawn(field).has("fill 0,0 "));
}

TEST_F(DrawnInTheDark, boxesTabsAndDividersFollow) {
    const Ref<NSBox> box = make<NSBox>(&NSBox::initWithFrame, NSRect{{0, 0}, {100, 60}});
    box->setTitle("Order"_ns);
    EXPECT_TRUE(drawn(box).has("fill round 5 5 0,0 100x44 100/100/100 at 0.05\nline 1 round 5 0,0 100x44 28/28/28\n"));
    EXPECT_EQ(textColorIn(drawn(box)), NSColor::labelColor());
    box->setBoxType(NSBoxSeparator);
    EXPECT_TRUE(drawn(box).log.ends_with(" 40/40/40\n"));

    const Ref<NSTabView> tabs = make<NSTabView>(&NSTabView::initWithFrame, NSRect{{0, 0}, {300, 100}});
    const Ref<NSTabViewItem> one = make<NSTabViewItem>(&NSTabViewItem::initWithIdentifier, "1"_ns);
    one->setLabel("One"_ns);
    tabs->addTabViewItem(one);
    EXPECT_TRUE(drawn(tabs).has("fill 0,74 300x26 17/17/17\nfill 0,74 300x1 40/40/40\n"));
    EXPECT_GE(test::contrast(test::luminance(textColorIn(drawn(tabs))), test::luminance(NSColor::controlColor())), 4.5);

    const Ref<NSSplitView> split = make<NSSplitView>(&NSSplitView::initWithFrame, NSRect{{0, 0}, {201, 50}});
    split->setVertical(true);
    split->addSubview(make<NSView>());
    split->addSubview(make<NSView>());
    split->adjustSubviews();
    EXPECT_TRUE(drawn(split).log.ends_with(" 40/40/40\n"));
}

TEST_F(DrawnInTheDark, scrollersAreLightOnDarkUnlessTheyWereToldOtherwise) {
    const Ref<NSScroller> scroller = make<NSScroller>(&NSScroller::initWithFrame, NSRect{{0, 0}, {200, 15}});
    scroller->setEnabled(true);
    scroller->setKnobProportion(0.5);
    EXPECT_TRUE(drawn(scroller).has("fill 0,0 200x15 19/19/19\n"));
    EXPECT_TRUE(drawn(scroller).log.ends_with(" 85/85/85 at 0.45\n"));
    scroller->setKnobStyle(NSScrollerKnobStyleDark);
    EXPECT_TRUE(drawn(scroller).log.ends_with(" black at 0.45\n") || drawn(scroller).log.ends_with(" 0/0/0 at 0.45\n"));
}

TEST_F(DrawnInTheDark, aTextViewColoursWhatHasNoColour) {
    const Ref<NSTextView> view = make<NSTextView>(&NSTextView::initWithFrame, frame);
    view->setString("red or not"_ns);
    view->textStorage()->addAttribute_value_range(NSForegroundColorAttributeName(), NSColor::redColor(), {0, 3});
    const DrawingRecord record = drawn(view);
    EXPECT_TRUE(record.has("fill 0,0 100x30 9/9/9\n"));
    EXPECT_EQ(textColorIn(record), NSColor::redColor());
    EXPECT_EQ(record.texts.at(0).text->attribute_atIndex_effectiveRange(NSForegroundColorAttributeName(), 5, nullptr),
              NSColor::labelColor());
    view->setTextColor(NSColor::blueColor());
    EXPECT_EQ(textColorIn(drawn(view)), NSColor::blueColor());
    view->setTextColor(nullptr);
    EXPECT_EQ(textColorIn(drawn(view)), NSColor::labelColor());
    EXPECT_EQ(view->textStorage()->attribute_atIndex_effectiveRange(NSForegroundColorAttributeName(), 0, nullptr),
              nullptr);
}

// What is asked for

TEST(AppearanceDefaults, areThePlainOnesInTheLight) {
    EXPECT_TRUE(make<NSTextFieldCell>()->textColor()->isEqual(NSColor::blackColor()));
    EXPECT_EQ(make<NSTextFieldCell>()->backgroundColor(), nullptr);
    EXPECT_TRUE(make<NSTextView>()->textColor()->isEqual(NSColor::blackColor()));
    EXPECT_TRUE(make<NSTextView>()->backgroundColor()->isEqual(NSColor::whiteColor()));
    EXPECT_TRUE(make<NSTextView>()->insertionPointColor()->isEqual(NSColor::blackColor()));
    EXPECT_TRUE(make<NSScrollView>()->backgroundColor()->isEqual(NSColor::whiteColor()));
    EXPECT_TRUE(make<NSCollectionView>()->backgroundColors()->objectAtIndex(0)->isEqual(NSColor::whiteColor()));
}

TEST(AppearanceDefaults, followUntilSomethingElseIsSet) {
    const auto field = make<NSTextField>();
    const auto text = make<NSTextView>();
    const auto clip = make<NSClipView>();
    const auto items = make<NSCollectionView>();
    const auto box = make<NSBox>();
    const auto look = [&] {
        return std::vector<Ref<NSColor>>{field->textColor(),
                                         field->backgroundColor(),
                                         text->textColor(),
                                         text->backgroundColor(),
                                         text->insertionPointColor(),
                                         clip->backgroundColor(),
                                         Ref<NSColor>(cast<NSColor>(items->backgroundColors()->objectAtIndex(0).get())),
                                         box->borderColor()};
    };
    const std::vector<Ref<NSColor>> light = look();
    const InAppearance dark(NSAppearanceNameDarkAqua());
    const std::vector<Ref<NSColor>> inTheDark = look();
    for (std::size_t i = 0; i < light.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_FALSE(inTheDark[i]->isEqual(light[i]));
    }
    const Ref<NSColor> red = NSColor::redColor();
    field->setTextColor(red);
    field->setBackgroundColor(red);
    text->setTextColor(red);
    text->setBackgroundColor(red);
    text->setInsertionPointColor(red);
    clip->setBackgroundColor(red);
    items->setBackgroundColors(array({red}));
    box->setBorderColor(red);
    for (const Ref<NSColor>& color : look()) {
        EXPECT_EQ(color, red);
    }
}

TEST(AppearanceDefaults, noneIsStillNone) {
    const InAppearance dark(NSAppearanceNameDarkAqua());
    const auto text = make<NSTextView>();
    text->setBackgroundColor(nullptr);
    EXPECT_EQ(text->backgroundColor(), nullptr);
    const auto items = make<NSCollectionView>();
    items->setBackgroundColors(nullptr);
    EXPECT_EQ(items->backgroundColors()->count(), 0U);
    const auto box = make<NSBox>();
    box->setBorderColor(nullptr);
    EXPECT_TRUE(box->borderColor()->isEqual(NSColor::clearColor()));
    const auto clip = make<NSClipView>();
    clip->setBackgroundColor(NSColor::redColor());
    clip->setBackgroundColor(nullptr);
    EXPECT_EQ(clip->backgroundColor(), NSColor::textBackgroundColor()) << "but a clip view has one at any rate";
}

TEST(AppearanceDefaults, reachAFieldThatIsBeingEdited) {
    const test::WindowToolkit toolkit;
    const auto window = make<NSWindow>();
    const Ref<NSTextField> field = make<NSTextField>(&NSTextField::initWithFrame, frame);
    window->contentView()->addSubview(field);
    window->makeFirstResponder(field);
    const Ref<NSText> editor = field->currentEditor();
    ASSERT_TRUE(editor);
    editor->setString("12"_ns);
    editor->setSelectedRange({1, 1});
    EXPECT_TRUE(editor->textColor()->isEqual(NSColor::blackColor()));
    {
        const InAppearance dark(NSAppearanceNameDarkAqua());
        EXPECT_EQ(editor->textColor(), NSColor::labelColor());
        EXPECT_EQ(field->currentEditor(), editor) << "editing goes on";
        EXPECT_EQ(editor->string()->utf8(), "12");
        EXPECT_EQ(editor->selectedRange(), (NSRange{1, 1}));
    }
    EXPECT_TRUE(editor->textColor()->isEqual(NSColor::blackColor()));
    window->makeFirstResponder(nullptr);
}

} // namespace
} // namespace zr
