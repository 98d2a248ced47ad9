#include <zrbasic/platform/appkit/key_view_order_p.h>
#include <zrbasic/platform/appkit/text_view.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

using test::keyEvent;

/// Takes the keyboard, if it shall, and may hand it on at once.
class KeyStop : public NSView {
    ZR_OBJECT(KeyStop, NSView)
  public:
    [[nodiscard]] bool acceptsFirstResponder() const override { return accepts; }
    bool becomeFirstResponder() override {
        heard += "become ";
        if (handsOnTo) {
            window()->makeFirstResponder(handsOnTo);
        }
        return becomes;
    }
    bool resignFirstResponder() override {
        heard += "resign ";
        return true;
    }

    bool accepts = true;
    bool becomes = true;
    Ref<NSView> handsOnTo;
    std::string heard;
};

Ref<KeyStop> stopAt(NSView* superview, double x, double y) {
    Ref<KeyStop> stop = make<KeyStop>();
    stop->setFrame({{x, y}, {20, 10}});
    superview->addSubview(stop);
    return stop;
}

class KeyViews : public testing::Test {
  protected:
    void SetUp() override {
        m_window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {200, 100}},
                                  NSUInteger{NSWindowStyleMaskTitled});
        m_content = m_window->contentView();
    }
    [[nodiscard]] Ref<NSView> next(NSView* from) const { return nextKeyViewFrom(m_content, from, true); }
    [[nodiscard]] Ref<NSView> previous(NSView* from) const { return nextKeyViewFrom(m_content, from, false); }

    Ref<NSWindow> m_window;
    Ref<NSView> m_content;
};

TEST_F(KeyViews, followEachOtherAsPeopleRead) {
    const auto bottom = stopAt(m_content, 0, 0);
    const auto right = stopAt(m_content, 100, 50);
    const auto left = stopAt(m_content, 10, 50);
    EXPECT_EQ(next(nullptr), left) << "from nowhere to the first";
    EXPECT_EQ(next(left), right);
    EXPECT_EQ(next(right), bottom);
    EXPECT_EQ(next(bottom), left) << "and round again";
    EXPECT_EQ(previous(left), bottom);
    EXPECT_EQ(previous(bottom), right);
    EXPECT_EQ(previous(nullptr), bottom) << "backwards from nowhere to the last";
}

/// With its origin at the upper left.
class FlippedBox : public NSView {
    ZR_OBJECT(FlippedBox, NSView)
  public:
    [[nodiscard]] bool isFlipped() const override { return true; }
};

TEST_F(KeyViews, areOrderedByTheirPlaceInTheWindow) {
    const auto box = make<FlippedBox>();
    box->setFrame({{0, 0}, {200, 100}});
    m_content->addSubview(box);
    const auto lower = stopAt(box, 0, 60);
    const auto upper = stopAt(box, 0, 5);
    const auto between = stopAt(m_content, 50, 60);
    EXPECT_EQ(next(nullptr), upper);
    EXPECT_EQ(next(upper), between);
    EXPECT_EQ(next(between), lower);
}

TEST_F(KeyViews, passOverWhatCannotTakeTheKeyboard) {
    const auto first = stopAt(m_content, 0, 80);
    const auto hidden = stopAt(m_content, 0, 60);
    const auto unwilling = stopAt(m_content, 0, 40);
    const auto box = make<NSView>();
    m_content->addSubview(box);
    const auto inHiddenBox = stopAt(box, 0, 20);
    const auto last = stopAt(m_content, 0, 0);
    hidden->setHidden(true);
    unwilling->accepts = false;
    box->setHidden(true);
    EXPECT_EQ(next(first), last);
    EXPECT_EQ(previous(last), first);
    EXPECT_EQ(next(inHiddenBox), first) << "one that is not in the order counts as none";
    hidden->setHidden(false);
    EXPECT_EQ(next(first), hidden);
}

TEST_F(KeyViews, leadWhereTheyWereSetToLead) {
    const auto a = stopAt(m_content, 0, 80);
    const auto b = stopAt(m_content, 0, 60);
    const auto c = stopAt(m_content, 0, 40);
    a->setNextKeyView(c);
    EXPECT_EQ(next(a), c);
    EXPECT_EQ(previous(c), a);
    EXPECT_EQ(next(b), c) << "b has none of its own";
    c->accepts = false;
    c->setNextKeyView(b);
    EXPECT_EQ(next(a), b) << "through one that cannot take it";
    b->accepts = false;
    b->setNextKeyView(c);
    EXPECT_EQ(next(a), a) << "a ring of views that cannot ends, and leaves a alone";
}

TEST_F(KeyViews, areNoneInAnEmptyWindow) {
    EXPECT_EQ(next(nullptr), nullptr);
    EXPECT_EQ(nextKeyViewFrom(nullptr, nullptr, true), nullptr);
    m_window->selectNextKeyView(nullptr);
    m_window->selectPreviousKeyView(nullptr);
    EXPECT_EQ(m_window->firstResponder(), m_window);
    const auto only = stopAt(m_content, 0, 0);
    EXPECT_EQ(next(only), only);
    EXPECT_EQ(previous(only), only);
}

TEST_F(KeyViews, takeTheKeyboardInTurn) {
    const auto upper = stopAt(m_content, 0, 80);
    const auto lower = stopAt(m_content, 0, 0);
    m_window->selectNextKeyView(nullptr);
    EXPECT_EQ(m_window->firstResponder(), upper);
    m_window->keyDown(keyEvent("\t"_ns));
    EXPECT_EQ(m_window->firstResponder(), lower);
    m_window->keyDown(keyEvent("\t"_ns, NSEventModifierFlagShift));
    EXPECT_EQ(m_window->firstResponder(), upper);
    m_window->keyDown(keyEvent("\x19"_ns));
    EXPECT_EQ(m_window->firstResponder(), lower);
    EXPECT_EQ(upper->heard, "become resign become resign ");
    m_window->keyDown(nullptr);
    EXPECT_EQ(m_window->firstResponder(), lower);
}

TEST_F(KeyViews, goOnFromTheFieldThatIsEdited) {
    const auto upper = stopAt(m_content, 0, 80);
    const auto lower = stopAt(m_content, 0, 0);
    const auto editor = m_window->fieldEditor_forObject(true, upper);
    upper->addSubview(editor);
    m_window->makeFirstResponder(editor);
    ASSERT_EQ(m_window->firstResponder(), editor);
    m_window->selectNextKeyView(nullptr);
    EXPECT_EQ(m_window->firstResponder(), lower);
}

TEST_F(KeyViews, mayHandTheKeyboardOnWhileTheyTakeIt) {
    const auto field = stopAt(m_content, 0, 80);
    const auto editor = stopAt(field, 0, 0);
    const auto other = stopAt(m_content, 0, 40);
    field->handsOnTo = editor;
    EXPECT_TRUE(m_window->makeFirstResponder(field));
    EXPECT_EQ(m_window->firstResponder(), editor);
    EXPECT_EQ(field->heard, "become ") << "it never had the keyboard, so it does not lose it";
    EXPECT_TRUE(m_window->makeFirstResponder(other));
    EXPECT_EQ(editor->heard, "become resign ");
    EXPECT_EQ(field->heard, "become ");
    field->becomes = false;
    EXPECT_TRUE(m_window->makeFirstResponder(field));
    EXPECT_EQ(m_window->firstResponder(), editor) << "whom it has handed it to keeps it";
}

TEST_F(KeyViews, leaveTheWindowItselfWhenTheyRefuse) {
    const auto refusing = stopAt(m_content, 0, 80);
    refusing->becomes = false;
    m_window->selectNextKeyView(nullptr);
    EXPECT_EQ(m_window->firstResponder(), m_window);
    EXPECT_EQ(refusing->heard, "become ");
    m_window->makeFirstResponder(nullptr);
    EXPECT_EQ(m_window->firstResponder(), m_window);
}

} // namespace
} // namespace zr
