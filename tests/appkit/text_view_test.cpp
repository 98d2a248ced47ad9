#include <zrbasic/platform/appkit/text_view.h>

#include "../foundation/checks.h"
#include "canvas_testing.h"
#include "measuring_testing.h"
#include "text_listening.h"
#include "text_toolkit.h"

#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <string>

namespace zr {
namespace {

using test::TextDelegate;
using test::TextToolkit;
using test::TextViewTest;

class TextView : public TextViewTest {
  protected:
    id attribute(NSString* name, NSUInteger index) {
        return view->textStorage()->attribute_atIndex_effectiveRange(name, index, nullptr);
    }
};

TEST_F(TextView, isEmptyEditableAndBlackOnWhiteAtFirst) {
    EXPECT_EQ(text(), "");
    EXPECT_EQ(view->selectedRange(), (NSRange{0, 0}));
    EXPECT_TRUE(view->isEditable());
    EXPECT_TRUE(view->isSelectable());
    EXPECT_FALSE(view->isFieldEditor());
    EXPECT_TRUE(view->drawsBackground());
    EXPECT_TRUE(view->displaysLinkToolTips());
    EXPECT_FALSE(view->isSecure());
    EXPECT_TRUE(view->isFlipped());
    EXPECT_TRUE(view->font()->isEqual(NSFont::systemFontOfSize(13)));
    EXPECT_TRUE(view->textColor()->isEqual(NSColor::blackColor()));
    EXPECT_TRUE(view->backgroundColor()->isEqual(NSColor::whiteColor()));
    EXPECT_TRUE(view->insertionPointColor()->isEqual(NSColor::blackColor()));
    EXPECT_NE(view->textStorage(), nullptr);
    EXPECT_EQ(view->layoutManager()->textStorage(), view->textStorage());
    EXPECT_EQ(view->frame(), NSMakeRect(0, 0, 100, 20));
}

TEST_F(TextView, takesNullAsTheDefault) {
    view->setFont(nullptr);
    EXPECT_TRUE(view->font()->isEqual(NSFont::systemFontOfSize(13)));
    view->setTextColor(nullptr);
    EXPECT_TRUE(view->textColor()->isEqual(NSColor::blackColor()));
    view->setInsertionPointColor(nullptr);
    EXPECT_TRUE(view->insertionPointColor()->isEqual(NSColor::blackColor()));
    view->setBackgroundColor(nullptr);
    EXPECT_EQ(view->backgroundColor(), nullptr);
    show("abc", {0, 3});
    view->setString(nullptr);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(view->selectedRange(), (NSRange{0, 0}));
}

TEST_F(TextView, asksNobodyWhenItsTextIsSet) {
    view->setEditJudge([](TextEdit&, const TextEdit&) { return EditJudgement::Refused; });
    view->setString("abc"_ns);
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(view->selectedRange(), (NSRange{3, 0}));
    EXPECT_EQ(delegate->heard(), "");
    send<void>(view, "setString:"_sel, NSNull::null());
    EXPECT_EQ(text(), "");
}

TEST_F(TextView, cutsTheSelectionToTheText) {
    const struct {
        NSRange set;
        NSRange cut;
    } rows[] = {
        {{1, 1}, {1, 1}},   {{0, 3}, {0, 3}},          {{2, 5}, {2, 1}},
        {{3, 1}, {3, 0}},   {{NSNotFound, 2}, {3, 0}}, {{1, static_cast<NSUInteger>(-1)}, {1, 2}},
        {{99, 99}, {3, 0}},
    };
    view->setString("abc"_ns);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.set.location);
        view->setSelectedRange(row.set);
        EXPECT_EQ(view->selectedRange(), row.cut);
    }
    view->setSelectedRange({1, 2});
    view->textStorage()->deleteCharactersInRange({0, 2});
    EXPECT_EQ(view->selectedRange(), (NSRange{1, 0}));
}

TEST_F(TextView, canBeSelectedWhenItCanBeEdited) {
    view->setSelectable(false);
    EXPECT_FALSE(view->isEditable());
    EXPECT_FALSE(view->acceptsFirstResponder());
    EXPECT_FALSE(view->becomeFirstResponder());
    view->setEditable(true);
    EXPECT_TRUE(view->isSelectable());
    view->setEditable(false);
    EXPECT_TRUE(view->isSelectable());
    EXPECT_TRUE(view->acceptsFirstResponder());
}

TEST_F(TextView, givesAllOfItsTextTheFontColorAndAlignment) {
    const auto font = NSFont::systemFontOfSize(20);
    view->setString("abc"_ns);
    view->setFont(font);
    view->setTextColor(NSColor::redColor());
    view->setAlignment(NSTextAlignmentCenter);
    for (const NSUInteger index : {0u, 2u}) {
        EXPECT_TRUE(font->isEqual(attribute(NSFontAttributeName(), index)));
        EXPECT_TRUE(NSColor::redColor()->isEqual(attribute(NSForegroundColorAttributeName(), index)));
        EXPECT_EQ(cast<NSParagraphStyle>(attribute(NSParagraphStyleAttributeName(), index))->alignment(),
                  NSTextAlignmentCenter);
    }
    view->setString("new"_ns);
    EXPECT_TRUE(font->isEqual(attribute(NSFontAttributeName(), 0)));
    EXPECT_EQ(cast<NSParagraphStyle>(attribute(NSParagraphStyleAttributeName(), 2))->alignment(),
              NSTextAlignmentCenter);
    view->setString(nullptr);
    EXPECT_TRUE(view->insertText("d"_ns));
    EXPECT_TRUE(font->isEqual(attribute(NSFontAttributeName(), 0)));
}

TEST_F(TextView, keepsTheAttributesOfWhatAnEditLeavesAlone) {
    view->setString("abcdef"_ns);
    view->textStorage()->addAttribute_value_range("mark"_ns, box(1), {4, 2});
    view->editWasMade({"aXcdef"_ns, {2, 0}});
    EXPECT_EQ(text(), "aXcdef");
    EXPECT_EQ(attribute("mark"_ns, 3), nullptr);
    EXPECT_TRUE(box(1)->isEqual(attribute("mark"_ns, 4)));
    view->editWasMade({"def"_ns, {0, 0}});
    EXPECT_EQ(attribute("mark"_ns, 0), nullptr);
    EXPECT_TRUE(box(1)->isEqual(attribute("mark"_ns, 1)));
    view->editWasMade({nullptr, {7, 7}});
    EXPECT_EQ(text(), "");
    EXPECT_EQ(view->selectedRange(), (NSRange{0, 0}));
}

TEST_F(TextView, doesNotTellItsOwnEditorOfTheEditsThatItMade) {
    TextToolkit toolkit;
    view->ensurePeer();
    view->setString("a"_ns);
    EXPECT_EQ(toolkit.taken(), "content\nlayout\ndisplay\nselection\n");
    view->editWasMade({"ab"_ns, {2, 0}});
    EXPECT_EQ(toolkit.taken(), "layout\ndisplay\n");
    EXPECT_EQ(view->selectedRange(), (NSRange{2, 0}));
    EXPECT_EQ(delegate->heard(), "begin? begun changed ");
    view->editWasMade({"ab"_ns, {0, 99}});
    EXPECT_EQ(toolkit.taken(), "");
    EXPECT_EQ(view->selectedRange(), (NSRange{0, 2}));
    EXPECT_EQ(delegate->heard(), "");
    delegate->whenTold = [this] {
        delegate->whenTold = nullptr;
        view->setString("other"_ns);
    };
    view->editWasMade({"abc"_ns, {3, 0}});
    EXPECT_EQ(toolkit.taken(), "layout\ndisplay\ncontent\nlayout\ndisplay\nselection\n");
    EXPECT_EQ(text(), "other");
}

TEST_F(TextView, isAsLargeAsItsTextNaturallyIs) {
    EXPECT_EQ(view->intrinsicContentSize(), NSZeroSize);
    TextToolkit toolkit;
    EXPECT_EQ(view->intrinsicContentSize(), NSZeroSize);
    view->setString("abc\nd"_ns);
    EXPECT_EQ(view->intrinsicContentSize(), (NSSize{28, 20}));
}

TEST_F(TextView, isAsHighAsItsTextWhenItMayBe) {
    test::MeasuringToolkit toolkit;
    view->setFrame({{0, 0}, {50, 40}});
    view->setString("abc\nabc\nabc"_ns);
    EXPECT_EQ(view->frame().size, (NSSize{50, 40})) << "not unless it is told to";
    view->setVerticallyResizable(true);
    EXPECT_TRUE(view->isVerticallyResizable());
    EXPECT_EQ(view->frame().size, (NSSize{50, 45}));
    view->setString("abc"_ns);
    EXPECT_EQ(view->frame().size, (NSSize{50, 15}));
    view->setFrameSize({20, 300});
    EXPECT_EQ(view->frame().size, (NSSize{20, 45})) << "one letter to the line";
    view->setString(""_ns);
    EXPECT_EQ(view->frame().size.height, 0);
    view->setVerticallyResizable(false);
    view->setFrameSize({20, 300});
    EXPECT_EQ(view->frame().size, (NSSize{20, 300}));
}

TEST_F(TextView, isAtLeastAsHighAsWhatClipsItWhenItMayBe) {
    test::MeasuringToolkit toolkit;
    const auto scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 50, 40));
    view->setFrame({{0, 0}, {50, 40}});
    view->setVerticallyResizable(true);
    view->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    scrolling->setDocumentView(view);
    view->setString("abc"_ns);
    EXPECT_EQ(view->frame().size, (NSSize{50, 40}));
    view->setString("abc\nabc\nabc\nabc"_ns);
    EXPECT_EQ(view->frame().size, (NSSize{50, 60}));
    scrolling->setFrameSize({50, 80});
    EXPECT_EQ(view->frame().size, (NSSize{50, 80}));
    scrolling->setFrameSize({30, 30});
    EXPECT_EQ(view->frame().size, (NSSize{30, 120})) << "two letters to the line";
}

TEST_F(TextView, leavesAClickOnALinkToItsDelegate) {
    TextToolkit toolkit;
    const auto url = NSURL::URLWithString("https://example.com/a"_ns);
    delegate->takesClicks = true;
    view->clickedOnLink_atIndex(url, 4);
    EXPECT_EQ(delegate->heard(), "click https://example.com/a 4 ");
    EXPECT_EQ(toolkit.opened, "");
    delegate->takesClicks = false;
    send<void>(view, "clickedOnLink:atIndex:"_sel, url, 0);
    EXPECT_EQ(delegate->heard(), "click https://example.com/a 0 ");
    EXPECT_EQ(toolkit.opened, "https://example.com/a ");
}

TEST_F(TextView, opensALinkThatNobodyDealsWith) {
    TextToolkit toolkit;
    view->setDelegate(make<NSObject>());
    const struct {
        const char* name;
        id link;
        const char* opened;
    } rows[] = {
        {"a URL", NSURL::URLWithString("mailto:a@b"_ns), "mailto:a@b "},
        {"a string", "http://x/y"_ns, "http://x/y "},
        {"no URL", "not a url"_ns, ""},
        {"null", nullptr, ""},
        {"the null object", NSNull::null(), ""},
        {"a number", box(7), ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        toolkit.opened.clear();
        view->clickedOnLink_atIndex(row.link, NSNotFound);
        EXPECT_EQ(toolkit.opened, row.opened);
    }
}

TEST_F(TextView, survivesADelegateThatLetsGoOfIt) {
    Weak<NSTextView> watched(view);
    delegate->whenTold = [this] {
        delegate->whenTold = nullptr;
        view->removeFromSuperview();
        view = nullptr;
    };
    NSTextView* const borrowed = view;
    borrowed->insertText("a"_ns);
    EXPECT_EQ(delegate->heard(), "begin? begun changed ");
    delegate->last = nullptr;
    EXPECT_TRUE(watched.expired());
}

/// Keeps what it has read at every change.
class RememberingStorage : public NSTextStorage {
    ZR_OBJECT(RememberingStorage, NSTextStorage)
  public:
    std::u16string seen;

  protected:
    void didChange() override {
        seen += std::u16string(view()) + u'|';
        NSTextStorage::didChange();
    }
};

TEST_F(TextView, overwritesASecureTextBeforeItTakesAnother) {
    TextToolkit toolkit;
    const auto storage = make<RememberingStorage>();
    view->layoutManager()->replaceTextStorage(storage);
    view->ensurePeer();
    view->setString("key"_ns);
    view->setString(nullptr);
    EXPECT_EQ(storage->seen, u"key||");
    view->setSecure(true);
    view->setString("key"_ns);
    storage->seen.clear();
    toolkit.taken();
    view->setString("new"_ns);
    const std::u16string zeros(3, u'\0');
    EXPECT_EQ(storage->seen, zeros + u"|new|");
    EXPECT_EQ(toolkit.taken(), "layout\ndisplay\ncontent\nlayout\ndisplay\nselection\n");
    storage->seen.clear();
    view->setString(nullptr);
    EXPECT_EQ(storage->seen, zeros + u"||");
    EXPECT_EQ(text(), "");
}

TEST_F(TextView, leavesSpacingAloneWhenItIsAligned) {
    const auto spaced = make<NSMutableParagraphStyle>();
    spaced->setLineSpacing(4);
    view->setString("ab"_ns);
    view->textStorage()->addAttribute_value_range(NSParagraphStyleAttributeName(), spaced, {1, 1});
    view->setAlignment(NSTextAlignmentRight);
    const auto first = cast<NSParagraphStyle>(attribute(NSParagraphStyleAttributeName(), 0));
    const auto second = cast<NSParagraphStyle>(attribute(NSParagraphStyleAttributeName(), 1));
    ASSERT_TRUE(first != nullptr && second != nullptr);
    EXPECT_EQ(first->alignment(), NSTextAlignmentRight);
    EXPECT_EQ(first->lineSpacing(), 0);
    EXPECT_EQ(second->alignment(), NSTextAlignmentRight);
    EXPECT_EQ(second->lineSpacing(), 4);
    EXPECT_EQ(spaced->alignment(), NSTextAlignmentNatural);
}

TEST_F(TextView, drawsItsTextInsideOfThePadding) {
    view->setString("abc"_ns);
    view->drawRect(view->bounds());
    EXPECT_EQ(test::drawn(view).log, "fill 0,0 100x20 white\ntext 'abc' 5,0 90x20\n");
    view->setDrawsBackground(false);
    view->setFieldEditor(true);
    EXPECT_EQ(test::drawn(view).log, "text 'abc' 5,0 90x20 on one line\n");
    view->setString(nullptr);
    EXPECT_EQ(test::drawn(view).log, "");
}

TEST_F(TextView, drawsBulletsForASecureText) {
    view->setDrawsBackground(false);
    view->setSecure(true);
    view->setString("key"_ns);
    EXPECT_EQ(test::drawn(view).log, "text '\u2022\u2022\u2022' 5,0 90x20\n");
    EXPECT_EQ(text(), "key");
}

} // namespace
} // namespace zr
