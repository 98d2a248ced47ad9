#include <zrbasic/platform/appkit/layout_manager.h>

#include "text_toolkit.h"

#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {
namespace {

using test::TextToolkit;

constexpr NSSize endless{1e7, 1e7};

TEST(TextContainer, isEndlessUntilItFollowsAView) {
    const auto container = make<NSTextContainer>();
    EXPECT_EQ(container->containerSize(), endless);
    EXPECT_TRUE(container->widthTracksTextView());
    EXPECT_TRUE(container->heightTracksTextView());
    EXPECT_EQ(container->lineFragmentPadding(), 5);
    container->setContainerSize({40, -1});
    EXPECT_EQ(container->containerSize(), (NSSize{40, -1}));
}

TEST(TextContainer, hasTheExtentsOfItsViewThatItFollows) {
    const auto view = make<NSTextView>(&NSTextView::initWithFrame, NSMakeRect(1, 2, 30, 40));
    const auto container = view->textContainer();
    EXPECT_EQ(container->textView(), view);
    EXPECT_EQ(container->containerSize(), (NSSize{30, 40}));
    view->setFrameSize({50, 60});
    EXPECT_EQ(container->containerSize(), (NSSize{50, 60}));
    container->setWidthTracksTextView(false);
    EXPECT_EQ(container->containerSize(), (NSSize{1e7, 60}));
    container->setHeightTracksTextView(false);
    EXPECT_EQ(container->containerSize(), endless);
}

TEST(TextContainer, doesNotKeepItsView) {
    Ref<NSTextContainer> container;
    {
        const auto view = make<NSTextView>();
        container = view->textContainer();
    }
    EXPECT_EQ(container->textView(), nullptr);
    EXPECT_EQ(container->containerSize(), endless);
}

class LayoutManager : public testing::Test {
  protected:
    void show(const char* text) {
        manager->replaceTextStorage(make<NSTextStorage>(&NSAttributedString::initWithString, NSString::fromUtf8(text)));
    }
    NSSize used() { return manager->usedRectForTextContainer(container).size; }

    Ref<NSLayoutManager> manager = make<NSLayoutManager>();
    Ref<NSTextContainer> container = make<NSTextContainer>();
};

TEST_F(LayoutManager, measuresTheTextAsItNaturallyIs) {
    TextToolkit toolkit;
    show("abc\nabcde");
    EXPECT_EQ(manager->usedRectForTextContainer(container), NSMakeRect(0, 0, 5 * 6 + 10, 20));
    container->setLineFragmentPadding(0);
    EXPECT_EQ(used(), (NSSize{30, 20}));
}

TEST_F(LayoutManager, measuresNothingWithoutTextContainerOrToolkit) {
    EXPECT_EQ(used(), NSZeroSize);
    show("abc");
    EXPECT_EQ(used(), NSZeroSize);
    TextToolkit toolkit;
    EXPECT_EQ(used(), (NSSize{28, 10}));
    EXPECT_EQ(manager->usedRectForTextContainer(nullptr), NSZeroRect);
    manager->ensureLayoutForTextContainer(nullptr);
    show("");
    EXPECT_EQ(used(), NSZeroSize);
    EXPECT_EQ(send<NSRect>(manager, "usedRectForTextContainer:"_sel, NSNull::null()), NSZeroRect);
}

TEST_F(LayoutManager, breaksLinesThatTheContainerIsTooNarrowFor) {
    TextToolkit toolkit;
    show("abcdefgh");
    container->setContainerSize({34, 1e7});
    EXPECT_EQ(used(), (NSSize{34, 20}));
    container->setContainerSize({58, 1e7});
    EXPECT_EQ(used(), (NSSize{58, 10}));
    container->setContainerSize({500, 1e7});
    EXPECT_EQ(used(), (NSSize{58, 10}));
    container->setContainerSize({std::numeric_limits<double>::quiet_NaN(), 1});
    EXPECT_EQ(used(), (NSSize{58, 10}));
}

TEST_F(LayoutManager, measuresOnceUntilSomethingChanges) {
    TextToolkit toolkit;
    show("abc");
    manager->ensureLayoutForTextContainer(container);
    EXPECT_EQ(toolkit.measurements, 1);
    EXPECT_EQ(used(), (NSSize{28, 10}));
    EXPECT_EQ(toolkit.measurements, 1);
    manager->textStorage()->append(u"d", nullptr);
    EXPECT_EQ(used(), (NSSize{34, 10}));
    EXPECT_EQ(toolkit.measurements, 2);
    container->setLineFragmentPadding(1);
    EXPECT_EQ(used(), (NSSize{26, 10}));
    {
        TextToolkit another;
        EXPECT_EQ(used(), (NSSize{26, 10}));
        EXPECT_EQ(another.measurements, 1);
    }
    EXPECT_EQ(toolkit.measurements, 3);
}

TEST_F(LayoutManager, neverIsWithoutAText) {
    const Ref<NSTextStorage> first = manager->textStorage();
    ASSERT_NE(first, nullptr);
    manager->replaceTextStorage(nullptr);
    ASSERT_NE(manager->textStorage(), nullptr);
    EXPECT_NE(manager->textStorage(), first);
    send<void>(manager, "replaceTextStorage:"_sel, "a string"_ns);
    ASSERT_NE(manager->textStorage(), nullptr);
    EXPECT_EQ(manager->textStorage()->length(), 0u);
}

TEST_F(LayoutManager, tellsTheViewOfAnotherTextButNotOfTheSame) {
    TextToolkit toolkit;
    const auto view = make<NSTextView>();
    view->ensurePeer();
    toolkit.taken();
    const auto text = make<NSTextStorage>(&NSAttributedString::initWithString, "abc"_ns);
    view->layoutManager()->replaceTextStorage(text);
    EXPECT_EQ(toolkit.taken(), "content\nlayout\ndisplay\n");
    view->layoutManager()->replaceTextStorage(text);
    EXPECT_EQ(toolkit.taken(), "");
    EXPECT_EQ(view->textStorage(), text);
    view->setSelectedRange({1, 2});
    view->layoutManager()->replaceTextStorage(make<NSTextStorage>(&NSAttributedString::initWithString, "ab"_ns));
    EXPECT_EQ(view->selectedRange().location, 1u);
    EXPECT_EQ(view->selectedRange().length, 1u);
}

} // namespace
} // namespace zr
