#include <zrbasic/platform/appkit/view_controller.h>
#include <zrbasic/platform/foundation/mutable_string.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

/// Writes down when it makes its view.
class Chart : public NSViewController {
    ZR_OBJECT(Chart, NSViewController)
  public:
    void loadView() override {
        log += "load ";
        if (makes) {
            setView(make<NSView>(&NSView::initWithFrame, NSRect{{1, 2}, {30, 40}}));
        }
        if (asks) {
            static_cast<void>(view());
        }
    }
    void viewDidLoad() override { log += isViewLoaded() ? "did " : "did without "; }
    void mouseDown(NSEvent*) override { log += "down "; }

    bool makes = true;
    bool asks = false;
    std::string log;
};

std::string raisedBy(const std::function<void()>& work) {
    try {
        work();
    } catch (const NSException& exception) {
        return std::string(exception.name());
    }
    return "";
}

TEST(ViewController, makesItsViewWhenItIsFirstAskedForIt) {
    const auto chart = make<Chart>();
    EXPECT_FALSE(chart->isViewLoaded());
    EXPECT_EQ(chart->log, "");
    const Ref<NSView> view = chart->view();
    EXPECT_EQ(view->frame(), (NSRect{{1, 2}, {30, 40}}));
    EXPECT_EQ(chart->view(), view);
    EXPECT_EQ(chart->log, "load did ");
    chart->setView(nullptr);
    EXPECT_FALSE(chart->isViewLoaded());
    EXPECT_NE(chart->view(), view);
    EXPECT_EQ(chart->log, "load did load did ");
}

TEST(ViewController, makesAPlainViewUnlessToldOtherwise) {
    const auto controller = make<NSViewController>();
    const id view = send<id>(controller, "view"_sel);
    EXPECT_EQ(view->isa(), NSView::classObject());
    EXPECT_EQ(cast<NSView>(view)->frame(), NSZeroRect);
    EXPECT_TRUE(controller->isViewLoaded());
}

TEST(ViewController, doesNotMakeAViewThatItWasGiven) {
    const auto chart = make<Chart>();
    const auto view = make<NSView>();
    chart->setView(view);
    EXPECT_EQ(chart->view(), view);
    EXPECT_EQ(chart->log, "");
}

TEST(ViewController, raisesWhenItsViewIsNotMade) {
    const auto chart = make<Chart>();
    chart->makes = false;
    EXPECT_EQ(raisedBy([&] { static_cast<void>(chart->view()); }), NSInternalInconsistencyException);
    chart->asks = true;
    EXPECT_EQ(raisedBy([&] { static_cast<void>(chart->view()); }), NSInternalInconsistencyException)
        << "its own question must not go round in circles";
    chart->makes = true;
    EXPECT_EQ(raisedBy([&] { static_cast<void>(chart->view()); }), "") << "it can be tried again";
    EXPECT_EQ(chart->log, "load load load did ");
}

TEST(ViewController, standsBetweenItsViewAndTheSuperview) {
    const auto chart = make<Chart>();
    const auto superview = make<NSView>();
    const Ref<NSView> view = chart->view();
    EXPECT_EQ(view->nextResponder(), chart);
    EXPECT_EQ(chart->nextResponder(), nullptr);
    superview->addSubview(view);
    EXPECT_EQ(chart->nextResponder(), superview);
    chart->log.clear();
    send<void>(view, "mouseDown:"_sel, test::mouseEvent(NSEventTypeLeftMouseDown, {0, 0}));
    EXPECT_EQ(chart->log, "down ");
    const auto other = make<NSResponder>();
    chart->setNextResponder(other);
    EXPECT_EQ(chart->nextResponder(), other);
    chart->setNextResponder(nullptr);
    EXPECT_EQ(chart->nextResponder(), superview);
}

TEST(ViewController, ofAWindowsContentLeadsToTheWindow) {
    const auto window = make<NSWindow>();
    const auto chart = make<Chart>();
    window->setContentView(chart->view());
    EXPECT_EQ(chart->nextResponder(), window);
    window->setContentView(nullptr);
    EXPECT_EQ(chart->nextResponder(), nullptr);
}

TEST(ViewController, leavesTheChainWhenItLetsGoOfItsView) {
    const auto superview = make<NSView>();
    auto chart = make<Chart>();
    const Ref<NSView> view = chart->view();
    superview->addSubview(view);
    chart->setView(nullptr);
    EXPECT_EQ(view->nextResponder(), superview);
    chart->setView(view);
    EXPECT_EQ(view->nextResponder(), chart);
    chart = nullptr;
    EXPECT_EQ(view->nextResponder(), superview) << "the view outlives its controller";
}

TEST(ViewController, leavesAChainAloneThatSomebodyElseHasMade) {
    const auto other = make<NSResponder>();
    auto chart = make<Chart>();
    const Ref<NSView> view = chart->view();
    view->setNextResponder(other);
    chart = nullptr;
    EXPECT_EQ(view->nextResponder(), other);
}

TEST(ViewController, copiesItsNames) {
    const auto controller = make<NSViewController>();
    EXPECT_EQ(controller->title(), nullptr);
    EXPECT_EQ(controller->identifier(), nullptr);
    const auto text = cast<NSMutableString>(NSString::fromUtf8("Chart")->mutableCopy());
    controller->setTitle(text);
    controller->setIdentifier(text);
    controller->setRepresentedObject(text);
    text->appendString("s"_ns);
    EXPECT_EQ(controller->title()->utf8(), "Chart");
    EXPECT_EQ(controller->identifier()->utf8(), "Chart");
    EXPECT_EQ(controller->representedObject(), text) << "what it shows is kept as it is";
    controller->setTitle(nullptr);
    controller->setIdentifier(nullptr);
    controller->setRepresentedObject(nullptr);
    EXPECT_EQ(controller->title(), nullptr);
    EXPECT_EQ(controller->identifier(), nullptr);
    EXPECT_EQ(controller->representedObject(), nullptr);
}

} // namespace
} // namespace zr
