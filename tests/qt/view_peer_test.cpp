#include "view_testing.h"

#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/foundation/dictionary.h>

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace zr::test {
namespace {

class ViewPeers : public ViewWindow {};

TEST_F(ViewPeers, aViewLiesWhereItsFrameSaysWithTheOriginAtTheLowerLeft) {
    const Ref<LoggingView> view = add({{10, 20}, {100, 50}});
    show();
    ASSERT_NE(widgetOf(view), nullptr);
    EXPECT_EQ(widgetOf(view)->parentWidget(), widgetOf(content));
    EXPECT_EQ(widgetOf(view)->geometry(), QRect(10, 230, 100, 50));
    EXPECT_TRUE(widgetOf(view)->isVisible());
    view->setFrameOrigin({30, 0});
    EXPECT_EQ(widgetOf(view)->geometry(), QRect(30, 250, 100, 50));
    view->setFrameSize({7, 300});
    EXPECT_EQ(widgetOf(view)->geometry(), QRect(30, 0, 7, 300));
}

TEST_F(ViewPeers, inAFlippedSuperviewTheOriginIsAtTheUpperLeft) {
    content->flips = true;
    const Ref<LoggingView> view = add({{10, 20}, {100, 50}});
    show();
    EXPECT_EQ(widgetOf(view)->geometry(), QRect(10, 20, 100, 50));
}

TEST_F(ViewPeers, aHigherSuperviewMovesItsSubviewsDownOnTheScreen) {
    const Ref<LoggingView> box = add({{0, 0}, {200, 100}});
    const Ref<LoggingView> low = add({{0, 0}, {10, 10}}, box);
    const Ref<LoggingView> high = add({{0, 90}, {10, 10}}, box);
    show();
    EXPECT_EQ(widgetOf(low)->y(), 90);
    EXPECT_EQ(widgetOf(high)->y(), 0);
    box->setFrameSize({200, 150});
    EXPECT_EQ(widgetOf(low)->y(), 140);
    EXPECT_EQ(widgetOf(high)->y(), 50);
    EXPECT_EQ(low->frame(), NSMakeRect(0, 0, 10, 10));
}

TEST_F(ViewPeers, edgesHalfWayBetweenPixelsGoUp) {
    struct Row {
        const char* label;
        double x;
        double width;
        int left;
        int pixels;
    };
    content->flips = true;
    const Ref<LoggingView> view = add({{0, 0}, {10, 10}});
    show();
    for (const Row& row : {Row{"minus a half", -0.5, 10, 0, 10}, Row{"a half", 0.5, 10, 1, 10},
                           Row{"both edges at a half", 0.5, 0.5, 1, 0}, Row{"a third", 10.3, 9.4, 10, 10},
                           Row{"minus a third", -1.3, 1, -1, 1}}) {
        SCOPED_TRACE(row.label);
        view->setFrame({{row.x, 0}, {row.width, 10}});
        EXPECT_EQ(widgetOf(view)->x(), row.left);
        EXPECT_EQ(widgetOf(view)->width(), row.pixels);
    }
}

TEST_F(ViewPeers, theDoublesThatWereSetAreKept) {
    const Ref<LoggingView> view = add({{0, 0}, {10, 10}});
    show();
    view->setFrame({{12.34, 56.78}, {90.12, 34.56}});
    settle();
    EXPECT_EQ(view->frame(), NSMakeRect(12.34, 56.78, 90.12, 34.56));
    for (int i = 0; i < 20; ++i) {
        view->setFrameOrigin({view->frame().origin.x + 4.01, 56.78});
        settle();
    }
    double x = 12.34;
    for (int i = 0; i < 20; ++i) {
        x += 4.01;
    }
    EXPECT_EQ(view->frame().origin.x, x);
    EXPECT_EQ(view->frame().size, NSMakeSize(90.12, 34.56));
}

TEST_F(ViewPeers, anExtentBelowNothingIsNothingOnTheScreenAndStaysAsItIs) {
    const Ref<LoggingView> view = add({{10, 10}, {-5, 1e9}});
    show();
    EXPECT_EQ(widgetOf(view)->width(), 0);
    EXPECT_EQ(view->frame(), NSMakeRect(10, 10, -5, 1e9));
    view->setFrame({{std::numeric_limits<double>::quiet_NaN(), -1e300}, {1e300, 5}});
    settle();
    EXPECT_EQ(view->frame().size.width, 1e300);
}

TEST_F(ViewPeers, theOriginOfTheBoundsMovesWhatLiesInTheView) {
    const Ref<LoggingView> view = add({{10, 20}, {100, 50}});
    show();
    content->setBoundsOrigin({5, 10});
    EXPECT_EQ(widgetOf(view)->geometry(), QRect(5, 240, 100, 50));
}

TEST_F(ViewPeers, aHiddenViewIsNotOnTheScreen) {
    const Ref<LoggingView> view = add({{10, 20}, {100, 50}});
    const Ref<LoggingView> inner = add({{0, 0}, {10, 10}}, view);
    view->setHidden(true);
    show();
    EXPECT_FALSE(widgetOf(view)->isVisible());
    view->setHidden(false);
    EXPECT_TRUE(widgetOf(view)->isVisible());
    EXPECT_TRUE(widgetOf(inner)->isVisible());
    view->setHidden(true);
    EXPECT_FALSE(widgetOf(inner)->isVisible());
    EXPECT_FALSE(inner->isHidden());
}

TEST_F(ViewPeers, theFrontmostSubviewIsTheOneThatIsSeenAndFound) {
    const Ref<LoggingView> one = add({{0, 0}, {100, 100}});
    const Ref<LoggingView> two = add({{0, 0}, {100, 100}});
    show();
    EXPECT_EQ(host()->childAt(pixel(50, 50)), widgetOf(two));
    content->addSubview_positioned_relativeTo(one, NSWindowAbove, two);
    EXPECT_EQ(host()->childAt(pixel(50, 50)), widgetOf(one));
    content->addSubview_positioned_relativeTo(one, NSWindowBelow, nullptr);
    EXPECT_EQ(host()->childAt(pixel(50, 50)), widgetOf(two));
}

TEST_F(ViewPeers, aViewThatMovesToAnotherOneTakesItsWidgetAlong) {
    const Ref<LoggingView> left = add({{0, 0}, {200, 300}});
    const Ref<LoggingView> right = add({{200, 0}, {200, 200}});
    const Ref<LoggingView> view = add({{0, 0}, {10, 10}}, left);
    show();
    QWidget* const widget = widgetOf(view);
    right->addSubview(view);
    EXPECT_EQ(widgetOf(view), widget);
    EXPECT_EQ(widget->parentWidget(), widgetOf(right));
    EXPECT_EQ(widget->geometry(), QRect(0, 190, 10, 10));
    EXPECT_TRUE(widget->isVisible());
    view->removeFromSuperview();
    EXPECT_EQ(widget->parentWidget(), nullptr);
    EXPECT_FALSE(widget->isVisible());
    content->addSubview(view);
    EXPECT_TRUE(widget->isVisible());
    EXPECT_EQ(widget->geometry(), QRect(0, 290, 10, 10));
}

TEST_F(ViewPeers, aWidgetThatQtHasDeletedIsMadeAgain) {
    const Ref<LoggingView> view = add({{10, 20}, {100, 50}});
    const Ref<LoggingView> inner = add({{1, 2}, {3, 4}}, view);
    show();
    delete widgetOf(view);
    EXPECT_EQ(widgetOf(view), nullptr);
    EXPECT_EQ(widgetOf(inner), nullptr);
    ASSERT_TRUE(eventually([&] { return widgetOf(view) && widgetOf(inner); }));
    EXPECT_EQ(widgetOf(view)->geometry(), QRect(10, 230, 100, 50));
    EXPECT_EQ(widgetOf(inner)->geometry(), QRect(1, 44, 3, 4));
    EXPECT_TRUE(widgetOf(inner)->isVisible());
    delete widgetOf(content);
    ASSERT_TRUE(eventually([&] { return widgetOf(content) && widgetOf(inner); }));
    EXPECT_TRUE(widgetOf(inner)->isVisible());
}

TEST_F(ViewPeers, onlyTheOutermostViewGivesItsWidgetAway) {
    const Ref<LoggingView> view = add({{10, 20}, {100, 50}});
    EXPECT_EQ(qt::widget(static_cast<NSView*>(nullptr)), nullptr);
    EXPECT_EQ(qt::widget(view.get()), nullptr);
    const Ref<LoggingView> alone = loggingView({{0, 0}, {10, 10}});
    QWidget* const widget = qt::widget(alone.get());
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(qt::widget(alone.get()), widget);
    EXPECT_FALSE(widget->isVisible());
    EXPECT_EQ(qt::viewOf(widget), alone.get());
}

TEST_F(ViewPeers, aToolTipIsShownAsItStands) {
    const Ref<LoggingView> view = add({{10, 20}, {100, 50}});
    view->setToolTip("5 < 6"_ns);
    show();
    EXPECT_EQ(widgetOf(view)->toolTip(), "5 < 6");
    view->setToolTip("<b>bold</b>"_ns);
    EXPECT_TRUE(widgetOf(view)->toolTip().contains("&lt;b&gt;bold&lt;/b&gt;"));
    view->setToolTip(nullptr);
    EXPECT_EQ(widgetOf(view)->toolTip(), "");
}

TEST_F(ViewPeers, aTranslucentViewLetsShineThroughWhatIsBehind) {
    content->color = NSColor::whiteColor();
    const Ref<LoggingView> view = add({{0, 0}, {100, 100}});
    view->color = NSColor::blackColor();
    show();
    const auto shade = [&] { return widgetOf(content)->grab().toImage().pixelColor(50, 250).red(); };
    EXPECT_EQ(shade(), 0);
    view->setAlphaValue(0.5);
    EXPECT_NEAR(shade(), 127, 2);
    view->setAlphaValue(1);
    EXPECT_EQ(shade(), 0);
}

TEST_F(ViewPeers, aViewIsDrawnWhenItAsksForItAndNotBefore) {
    const Ref<LoggingView> view = add({{0, 0}, {100, 100}});
    show();
    ASSERT_TRUE(eventually([&] { return view->drawn > 0; }));
    EXPECT_FALSE(view->needsDisplay());
    settle();
    const int before = view->drawn;
    settle();
    EXPECT_EQ(view->drawn, before);
    view->setNeedsDisplay(true);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_TRUE(eventually([&] { return view->drawn > before; }));
    EXPECT_FALSE(view->needsDisplay());
}

class ViewLayouts : public testing::Test {
  protected:
    ~ViewLayouts() override { settle(); }

    QWidget top;
};

TEST_F(ViewLayouts, theLayoutDecidesWhereTheViewLies) {
    auto* const layout = new QVBoxLayout(&top);
    layout->setContentsMargins(10, 20, 30, 40);
    layout->setSpacing(0);
    const Ref<LoggingView> view = loggingView({{1.5, 2.5}, {50, 60}});
    auto* const button = new QPushButton("button");
    button->setFixedHeight(25);
    layout->addWidget(button);
    layout->addWidget(qt::widget(view.get()));
    top.resize(300, 200);
    top.show();
    ASSERT_TRUE(eventually([&] { return view->frame().size.width == 260; }));
    EXPECT_EQ(view->frame(), NSMakeRect(10, 40, 260, 115));
    EXPECT_TRUE(widgetOf(view)->isVisible());
    top.resize(310, 260);
    ASSERT_TRUE(eventually([&] { return view->frame() == NSMakeRect(10, 40, 270, 175); }));
    // What is set meanwhile has no lasting effect.
    view->setFrame({{0, 0}, {5, 5}});
    settle();
    EXPECT_EQ(view->frame(), NSMakeRect(10, 40, 270, 175));
}

TEST_F(ViewLayouts, aViewInWidgetsThatMoveKnowsItsPlaceInTheWindow) {
    auto* const outer = new QWidget(&top);
    const Ref<LoggingView> view = loggingView({{0, 0}, {50, 60}});
    QWidget* const widget = qt::widget(view.get());
    widget->setParent(outer);
    widget->setGeometry(5, 5, 50, 60);
    outer->setGeometry(100, 100, 80, 80);
    top.resize(300, 300);
    top.show();
    widget->show();
    ASSERT_TRUE(eventually([&] { return view->frame() == NSMakeRect(105, 135, 50, 60); }));
    outer->move(0, 0);
    EXPECT_EQ(view->frame(), NSMakeRect(5, 235, 50, 60));
    top.resize(300, 400);
    EXPECT_EQ(view->frame(), NSMakeRect(5, 335, 50, 60));
    auto* const other = new QWidget(&top);
    other->setGeometry(200, 0, 100, 100);
    other->show();
    outer->setParent(other);
    outer->show();
    EXPECT_EQ(view->frame(), NSMakeRect(205, 335, 50, 60));
}

TEST_F(ViewLayouts, aViewIsInTheWindowObjectOfTheWidgetsWindow) {
    const Ref<LoggingView> view = loggingView({{0, 0}, {50, 60}});
    const Ref<LoggingView> inner = loggingView({{0, 0}, {5, 6}});
    const Ref<LoggingView> other = loggingView({{0, 0}, {5, 6}});
    view->addSubview(inner);
    QWidget* const widget = qt::widget(view.get());
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_EQ(view->log, "");
    auto* const layout = new QVBoxLayout(&top);
    layout->addWidget(widget);
    layout->addWidget(qt::widget(other.get()));
    const Ref<NSWindow> window = view->window();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(view->take() + inner->take(), "in in ");
    EXPECT_EQ(other->window(), window);
    top.setGeometry(100, 100, 300, 200);
    top.show();
    settle();
    EXPECT_EQ(window->contentRectForFrameRect(window->frame()).size, NSMakeSize(300, 200));
    EXPECT_TRUE(window->isVisible());
    widget->setParent(nullptr);
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_EQ(inner->window(), nullptr);
    EXPECT_EQ(view->take() + inner->take(), "out out ");
    EXPECT_EQ(other->window(), window);
    top.hide();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ViewLayouts, theWindowObjectGoesWithTheWidgetsWindow) {
    const Ref<LoggingView> view = loggingView({{0, 0}, {50, 60}});
    Weak<NSWindow> window;
    {
        QWidget another;
        auto* const layout = new QVBoxLayout(&another);
        layout->addWidget(qt::widget(view.get()));
        another.show();
        settle();
        window = Weak<NSWindow>(view->window());
        EXPECT_NE(window.lock(), nullptr);
        EXPECT_EQ(view->take(), "in ");
    }
    EXPECT_EQ(window.lock(), nullptr);
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_EQ(view->take(), "out ");
    EXPECT_EQ(widgetOf(view), nullptr);
    EXPECT_NE(qt::widget(view.get()), nullptr);
}

TEST_F(ViewLayouts, whoKeepsItsNaturalWidthIsSaidByThePriorities) {
    auto* const layout = new QHBoxLayout(&top);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const Ref<LoggingView> strong = loggingView({{0, 0}, {10, 10}});
    const Ref<LoggingView> weak = loggingView({{0, 0}, {10, 10}});
    strong->natural = weak->natural = {150, 20};
    const auto horizontal = NSLayoutConstraintOrientationHorizontal;
    strong->setContentCompressionResistancePriority_forOrientation(750, horizontal);
    strong->setContentHuggingPriority_forOrientation(250, horizontal);
    weak->setContentCompressionResistancePriority_forOrientation(250, horizontal);
    weak->setContentHuggingPriority_forOrientation(750, horizontal);
    layout->addWidget(qt::widget(strong.get()));
    layout->addWidget(qt::widget(weak.get()));
    top.show();
    struct Row {
        int width;
        double strong;
        double weak;
    };
    for (const Row& row : {Row{200, 150, 50}, Row{300, 150, 150}, Row{400, 250, 150}}) {
        SCOPED_TRACE(row.width);
        top.resize(row.width, 50);
        EXPECT_TRUE(eventually([&] { return strong->frame().size.width == row.strong; }));
        EXPECT_EQ(weak->frame().size.width, row.weak);
    }
    weak->natural = {30, 20};
    weak->invalidateIntrinsicContentSize();
    EXPECT_TRUE(eventually([&] { return weak->frame().size.width == 30; }));
}

TEST_F(ViewLayouts, aViewThatIsHiddenStaysSoInALayout) {
    const Ref<LoggingView> hidden = loggingView({{0, 0}, {10, 10}});
    const Ref<LoggingView> shown = loggingView({{0, 0}, {10, 10}});
    auto* const layout = new QVBoxLayout(&top);
    hidden->setHidden(true);
    layout->addWidget(qt::widget(hidden.get()));
    shown->setHidden(true);
    QWidget* const widget = qt::widget(shown.get());
    shown->setHidden(false);
    EXPECT_FALSE(widget->isVisible());
    layout->addWidget(widget);
    top.show();
    settle();
    EXPECT_FALSE(widgetOf(hidden)->isVisible());
    EXPECT_TRUE(widget->isVisible());
    hidden->setHidden(false);
    EXPECT_TRUE(widgetOf(hidden)->isVisible());
}

/// Does not know how large it would like to be.
class RaisingView : public LoggingView {
    ZR_OBJECT(RaisingView, LoggingView)
  public:
    NSSize intrinsicContentSize() const override { NSException::raise(NSGenericException, "no size"); }
};

TEST_F(ViewLayouts, aNaturalSizeThatRaisesIsNone) {
    const auto view = make<RaisingView>(&RaisingView::initWithFrame, NSRect{{0, 0}, {50, 60}});
    auto* const layout = new QVBoxLayout(&top);
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW({
        layout->addWidget(qt::widget(view.get()));
        top.show();
        settle();
    });
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("no size"), std::string::npos) << reported;
    EXPECT_EQ(widgetOf(view)->sizeHint(), QSize(50, 60)) << "as large as it was made";
    EXPECT_EQ(widgetOf(view)->minimumSizeHint(), QSize(0, 0));
}

TEST_F(ViewLayouts, aViewTakenOutOfALayoutCanGoIntoAnotherView) {
    const Ref<LoggingView> view = loggingView({{0, 0}, {50, 60}});
    auto* const layout = new QVBoxLayout(&top);
    layout->addWidget(qt::widget(view.get()));
    top.show();
    settle();
    const Ref<LoggingView> outer = loggingView({{0, 0}, {100, 100}});
    QWidget* const around = qt::widget(outer.get());
    view->setFrame({{1, 2}, {3, 4}});
    outer->addSubview(view);
    EXPECT_EQ(widgetOf(view)->parentWidget(), around);
    EXPECT_EQ(layout->count(), 0);
    EXPECT_EQ(view->window(), nullptr);
    view->setFrame({{1, 2}, {3, 4}});
    EXPECT_EQ(widgetOf(view)->geometry(), QRect(1, 94, 3, 4));
}

} // namespace
} // namespace zr::test
