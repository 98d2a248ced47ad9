#include <zrbasic/ui/html_label.h>

#include "../appkit/text_toolkit.h"
#include "../foundation/checks.h"

#include <zrbasic/platform/appkit/layout_constraint.h>
#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zr {
namespace {

using test::TextToolkit;

class HTMLLabel : public testing::Test {
  protected:
    std::string text() { return label->string()->utf8(); }

    TextToolkit toolkit;
    Ref<ZRXHTMLLabel> label = make<ZRXHTMLLabel>(&ZRXHTMLLabel::initWithFrame, NSMakeRect(1, 2, 3, 4));
};

TEST_F(HTMLLabel, isToBeReadOnly) {
    EXPECT_EQ(label->delegate(), label);
    EXPECT_FALSE(label->isEditable());
    EXPECT_TRUE(label->isSelectable());
    EXPECT_FALSE(label->drawsBackground());
    EXPECT_FALSE(label->textContainer()->widthTracksTextView());
    EXPECT_FALSE(label->textContainer()->heightTracksTextView());
    EXPECT_FALSE(label->translatesAutoresizingMaskIntoConstraints());
    EXPECT_FALSE(label->displaysLinkToolTips());
    EXPECT_EQ(label->frame(), NSMakeRect(1, 2, 3, 4));
    EXPECT_FALSE(label->linkClickAction());
    EXPECT_EQ(make<ZRXHTMLLabel>()->delegate()->class_(), ZRXHTMLLabel::classObject());
}

TEST_F(HTMLLabel, isAtLeast20By20AlsoWhenItIsEmpty) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(label->constraints()->count(), 2u);
    EXPECT_EQ(sizeLimitsOf(*label), (SizeLimits{20, 20, infinity, infinity}));
    EXPECT_EQ(label->intrinsicContentSize(), NSZeroSize);
    EXPECT_EQ(send<NSSize>(label, "intrinsicContentSize"_sel), NSZeroSize);
    const Ref<NSLayoutConstraint> first = cast<NSLayoutConstraint>(label->constraints()->objectAtIndex(0));
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->firstAttribute(), NSLayoutAttributeWidth);
    EXPECT_EQ(first->relation(), NSLayoutRelationGreaterThanOrEqual);
    EXPECT_EQ(first->priority(), NSLayoutPriorityRequired);
}

TEST_F(HTMLLabel, isAsLargeAsItsTextHoweverNarrowItIs) {
    label->setCustomizedHTMLString("abc\nabcdefghij"_ns);
    EXPECT_EQ(label->intrinsicContentSize(), (NSSize{70, 20}));
    label->setFrameSize({10, 10});
    EXPECT_EQ(label->intrinsicContentSize(), (NSSize{70, 20}));
    label->textContainer()->setLineFragmentPadding(0);
    EXPECT_EQ(label->intrinsicContentSize(), (NSSize{60, 20}));
}

TEST_F(HTMLLabel, showsHtmlAsTheToolkitReadsIt) {
    const auto before = label->textStorage();
    label->setHTMLString("<b>4 €</b>"_ns);
    EXPECT_EQ(toolkit.lastHTML, "<b>4 €</b>");
    EXPECT_EQ(text(), "read: <b>4 €</b>");
    EXPECT_NE(label->textStorage(), before);
    EXPECT_EQ(toolkit.measurements, 1);
    EXPECT_EQ(label->intrinsicContentSize().height, 10);
    EXPECT_EQ(toolkit.measurements, 1);
    send<void>(label, "setHTMLString:"_sel, "x"_ns);
    EXPECT_EQ(text(), "read: x");
}

TEST_F(HTMLLabel, keepsItsTextWhenTheNewOneIsNotValid) {
    label->setHTMLString("old"_ns);
    const auto storage = label->textStorage();
    const struct {
        const char* name;
        id text;
    } rows[] = {
        {"null", nullptr},
        {"empty", ""_ns},
        {"three blanks", "   "_ns},
        {"tab and no-break space", "\t\u00A0"_ns},
        {"null object", NSNull::null()},
        {"number", box(7)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        send<void>(label, "setHTMLString:"_sel, row.text);
        EXPECT_EQ(label->textStorage(), storage);
        send<void>(label, "setCustomizedHTMLString:"_sel, row.text);
        EXPECT_EQ(label->textStorage(), storage);
    }
    EXPECT_EQ(text(), "read: old");
    // A lone line feed is text.
    label->setCustomizedHTMLString("\n"_ns);
    EXPECT_EQ(text(), "\n");
}

TEST_F(HTMLLabel, showsWhateverTheReaderMakesOfValidText) {
    label->setHTMLString("old"_ns);
    toolkit.readsNothing = true;
    label->setHTMLString("<>"_ns);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(label->intrinsicContentSize(), NSZeroSize);
    toolkit.readsNothing = false;
    label->setHTMLString(NSString::fromUtf16(u"\xD800<"));
    EXPECT_EQ(toolkit.lastHTML, "\uFFFD<");
    label->setHTMLString(NSString::fromUtf16(std::u16string(1000000, u'<')));
    EXPECT_EQ(label->string()->length(), 1000006u);
}

TEST_F(HTMLLabel, showsCustomizedTextWithItsLinks) {
    label->setCustomizedHTMLString("Read <a href=\"https://example.com/t\">this</a> & <b>that</b>"_ns);
    EXPECT_EQ(text(), "Read this & <b>that</b>");
    const auto link = label->textStorage()->attribute_atIndex_effectiveRange(NSLinkAttributeName(), 5, nullptr);
    ASSERT_NE(cast<NSURL>(link), nullptr);
    EXPECT_EQ(cast<NSURL>(link)->absoluteString()->utf8(), "https://example.com/t");
    EXPECT_EQ(label->textStorage()->attribute_atIndex_effectiveRange(NSLinkAttributeName(), 4, nullptr), nullptr);
    EXPECT_EQ(toolkit.measurements, 1);
    EXPECT_EQ(toolkit.lastHTML, "");
}

TEST_F(HTMLLabel, keepsItsTextWhenALinkLeadsNowhere) {
    label->setCustomizedHTMLString("old"_ns);
    EXPECT_EQ(test::raisedName([&] { label->setCustomizedHTMLString("<a href=\"not a url\">x</a>"_ns); }),
              "NSInvalidArgumentException");
    EXPECT_EQ(text(), "old");
}

TEST_F(HTMLLabel, doesNotChangeWithTheStringThatItWasGiven) {
    const auto string = make<NSMutableString>();
    string->appendString("abc"_ns);
    label->setCustomizedHTMLString(string);
    string->appendString("d"_ns);
    EXPECT_EQ(text(), "abc");
}

TEST_F(HTMLLabel, leavesClicksToTheDesktopWithoutAnAction) {
    const auto url = NSURL::URLWithString("https://example.com/t"_ns);
    label->setHTMLString("<a href='https://example.com/t'>t</a>"_ns);
    EXPECT_FALSE(label->textView_clickedOnLink_atIndex(label, url, 3));
    EXPECT_FALSE(send<bool>(label, "textView:clickedOnLink:atIndex:"_sel, label, url, 3));
    EXPECT_EQ(toolkit.opened, "");
    label->clickedOnLink_atIndex(url, 3);
    EXPECT_EQ(toolkit.opened, "https://example.com/t ");
}

TEST_F(HTMLLabel, handsClicksToItsActionAndOpensNothing) {
    std::string clicks;
    label->setLinkClickAction([&](NSObject* link, NSUInteger index) {
        clicks += (link ? link->description()->utf8() : "(null)") + ' ' + std::to_string(index) + '\n';
    });
    label->clickedOnLink_atIndex(NSURL::URLWithString("a:b"_ns), 3);
    label->clickedOnLink_atIndex("a string"_ns, 0);
    label->clickedOnLink_atIndex(nullptr, NSNotFound);
    EXPECT_TRUE(send<bool>(label, "textView:clickedOnLink:atIndex:"_sel, nullptr, NSNull::null(), 1));
    EXPECT_EQ(clicks, "a:b 3\na string 0\n(null) 9223372036854775807\n<null> 1\n");
    EXPECT_EQ(toolkit.opened, "");
    label->setLinkClickAction(nullptr);
    EXPECT_FALSE(label->textView_clickedOnLink_atIndex(label, nullptr, 0));
}

TEST_F(HTMLLabel, letsItsActionBeChangedByMessageAndWhileItRuns) {
    int calls = 0;
    const ZRXHTMLLabel::LinkClickAction action = [&](NSObject*, NSUInteger) {
        ++calls;
        label->setLinkClickAction(nullptr);
        label = nullptr;
    };
    send<void>(label, "setLinkClickAction:"_sel, action);
    EXPECT_TRUE(send<ZRXHTMLLabel::LinkClickAction>(label, "linkClickAction"_sel));
    const Weak<ZRXHTMLLabel> watched(label);
    label->clickedOnLink_atIndex("a:b"_ns, 0);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(toolkit.opened, "");
    EXPECT_TRUE(watched.expired());
}

TEST_F(HTMLLabel, isNotKeptByBeingItsOwnDelegate) {
    const Weak<ZRXHTMLLabel> watched(label);
    label = nullptr;
    EXPECT_TRUE(watched.expired());
}

} // namespace
} // namespace zr
