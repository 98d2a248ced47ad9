#include <zrbasic/platform/appkit/toolbar.h>
#include <zrbasic/platform/foundation/key_value_coding.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

Ref<NSWindow> titledWindow() {
    return make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{10, 20}, {200, 100}},
                          NSUInteger{NSWindowStyleMaskTitled});
}

TEST(Toolbar, hasAViewInTheTitleBarOfItsWindow) {
    const auto window = titledWindow();
    const auto toolbar = make<NSToolbar>(&NSToolbar::initWithIdentifier, "main"_ns);
    EXPECT_EQ(toolbar->identifier()->utf8(), "main");
    EXPECT_EQ(valueForKey(toolbar, "toolbarView"_ns), nullptr);
    window->setToolbar(toolbar);
    EXPECT_EQ(window->toolbar(), toolbar);
    const auto view = cast<NSView>(valueForKey(toolbar, "toolbarView"_ns));
    ASSERT_NE(view, nullptr);
    ASSERT_NE(view->superview(), nullptr);
    EXPECT_EQ(view->window(), window);
    EXPECT_FALSE(view->isDescendantOf(window->contentView()));
    EXPECT_EQ(view->superview()->frame(), (NSRect{{0, 100}, {200, window->frame().size.height - 100}}));
    window->setToolbar(toolbar);
    EXPECT_EQ(toolbar->toolbarView(), view);
}

TEST(Toolbar, keepsUpWithItsWindow) {
    const auto window = titledWindow();
    const auto toolbar = make<NSToolbar>();
    window->setToolbar(toolbar);
    window->setContentSize({300, 50});
    EXPECT_EQ(toolbar->toolbarView()->superview()->frame().origin, (NSPoint{0, 50}));
    EXPECT_EQ(toolbar->toolbarView()->frame().size.width, 300);
}

TEST(Toolbar, leavesItsWindow) {
    const auto window = titledWindow();
    const auto other = titledWindow();
    const auto toolbar = make<NSToolbar>();
    window->setToolbar(toolbar);
    const auto view = toolbar->toolbarView();
    other->setToolbar(toolbar);
    EXPECT_EQ(window->toolbar(), nullptr);
    EXPECT_EQ(view->window(), other);
    other->setToolbar(make<NSToolbar>());
    EXPECT_EQ(toolbar->toolbarView(), nullptr);
    const auto successor = other->toolbar();
    EXPECT_NE(successor, toolbar);
    window->setToolbar(toolbar);
    EXPECT_EQ(other->toolbar(), successor) << "it had left that one before";
    other->setToolbar(nullptr);
    EXPECT_EQ(other->toolbar(), nullptr);
}

TEST(Toolbar, outlivesItsWindow) {
    auto window = titledWindow();
    const auto toolbar = make<NSToolbar>();
    window->setToolbar(toolbar);
    const auto view = toolbar->toolbarView();
    const auto bar = view->superview();
    window = nullptr;
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_EQ(bar->window(), nullptr);
    EXPECT_EQ(toolbar->toolbarView(), nullptr);
    const auto next = titledWindow();
    next->setToolbar(toolbar);
    EXPECT_EQ(toolbar->toolbarView()->window(), next);
}

TEST(Toolbar, mayBeWithoutAnIdentifier) {
    EXPECT_EQ(make<NSToolbar>()->identifier(), nullptr);
    EXPECT_EQ(make<NSToolbar>(&NSToolbar::initWithIdentifier, nullptr)->identifier(), nullptr);
}

} // namespace
} // namespace zr
