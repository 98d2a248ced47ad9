#include "session_testing.h"
#include "view_testing.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/ui/color_panel.h>
#include <zrbasic/ui/text_field.h>

#include <QColorDialog>
#include <QLineEdit>
#include <QSpinBox>

namespace zr::test {
namespace {

/// Takes the colours that a panel hands on.
class PanelColorTaker : public NSObject {
    ZR_OBJECT(PanelColorTaker, NSObject)
  public:
    void take(NSColor* color) { colors.push_back(Ref<NSColor>(color)); }
    ZR_METHOD(take, "take:")

    std::vector<Ref<NSColor>> colors;
};

/// The shared panel on the screen, beside a window in which a field is edited.
class ColorPanelOnScreen : public ViewWindow {
  protected:
    void SetUp() override {
        show();
        field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSRect{{20, 100}, {200, 24}});
        content->addSubview(field);
        window->makeFirstResponder(field);
        panel = panelWithTarget_action(taker, "take:"_sel);
        panel->setColor(NSColor::whiteColor());
        panel->orderFront(nullptr);
        ASSERT_TRUE(eventually([this] { return dialog() && dialog()->isVisible(); }));
        settle();
        taker->colors.clear();
    }
    ~ColorPanelOnScreen() override {
        panelWithTarget_action(nullptr, {});
        panel->setTarget(nullptr);
        panel->setContinuous(false);
        panel->setShowsAlpha(false);
        panel->orderOut(nullptr);
        field = nullptr;
    }

    [[nodiscard]] QWidget* panelHost() const { return qt::widget(panel.get()); }
    [[nodiscard]] QColorDialog* dialog() const {
        QWidget* const around = panelHost();
        return around ? around->findChild<QColorDialog*>() : nullptr;
    }
    /// The square in which hue and saturation are dragged.
    [[nodiscard]] QWidget* square() const { return part("QColorPicker"); }
    [[nodiscard]] QWidget* part(const char* className) const {
        const auto parts = dialog()->findChildren<QWidget*>();
        for (QWidget* const one : parts) {
            if (QByteArray(one->metaObject()->className()).endsWith(className)) {
                return one;
            }
        }
        return nullptr;
    }
    /// Where that point of a part lies in the panel's window.
    [[nodiscard]] QPoint inWindow(const QWidget& part, QPoint point) const { return part.mapTo(panelHost(), point); }
    [[nodiscard]] QWindow* panelWindow() const { return panelHost()->windowHandle(); }
    [[nodiscard]] QColor shown() const { return dialog()->currentColor(); }

    Ref<ZRXTextField> field;
    Ref<NSColorPanel> panel;
    Ref<PanelColorTaker> taker = make<PanelColorTaker>();
};

TEST_F(ColorPanelOnScreen, aColorChosenInTheDialogReachesTheTargetTwice) {
    dialog()->setCurrentColor(QColor(10, 20, 30));
    ASSERT_EQ(taker->colors.size(), 2u);
    const auto expected = NSColor::colorWithSRGBRed_green_blue_alpha(10 / 255.0, 20 / 255.0, 30 / 255.0, 1);
    EXPECT_TRUE(taker->colors[0]->isEqual(expected)) << taker->colors[0]->description()->utf8();
    EXPECT_TRUE(taker->colors[1]->isEqual(expected));
    EXPECT_TRUE(panel->color()->isEqual(expected));
    EXPECT_EQ(panelHost()->findChildren<QColorDialog*>().size(), 1);
}

TEST_F(ColorPanelOnScreen, aTargetThatIsGoneGetsNothing) {
    const Weak<PanelColorTaker> watched(taker);
    taker = nullptr;
    EXPECT_EQ(watched.lock(), nullptr) << "nobody keeps it";
    dialog()->setCurrentColor(QColor(1, 2, 3));
    settle();
    EXPECT_TRUE(
        panel->color()->isEqual(NSColor::colorWithSRGBRed_green_blue_alpha(1 / 255.0, 2 / 255.0, 3 / 255.0, 1)));
    EXPECT_EQ(weakTarget(panel), nullptr);
    taker = make<PanelColorTaker>();
}

TEST_F(ColorPanelOnScreen, showsTheColorThatIsSetInCode) {
    panel->setColor(NSColor::colorWithSRGBRed_green_blue_alpha(1, 0.5, 0.25, 1));
    EXPECT_EQ(shown(), QColor(255, 128, 64));
    EXPECT_EQ(taker->colors.size(), 2u) << "the dialog reports nothing of its own";
    EXPECT_EQ(panel->color()->greenComponent(), 0.5) << "not what the dialog makes of it";
    panel->orderOut(nullptr);
    panel->setColor(NSColor::blueColor());
    panel->orderFront(nullptr);
    settle();
    EXPECT_EQ(shown(), QColor(0, 0, 255));
}

TEST_F(ColorPanelOnScreen, aDragTellsOfEveryColorOnItsWay) {
    QWidget* const pad = square();
    ASSERT_TRUE(pad);
    panel->setColor(NSColor::redColor());
    taker->colors.clear();
    QTest::mousePress(panelWindow(), Qt::LeftButton, {}, inWindow(*pad, {20, 20}));
    const auto pressed = taker->colors.size();
    EXPECT_EQ(pressed, 2u);
    QTest::mouseMove(panelWindow(), inWindow(*pad, {40, 30}));
    QTest::mouseMove(panelWindow(), inWindow(*pad, {60, 40}));
    EXPECT_EQ(taker->colors.size(), pressed + 4);
    QTest::mouseRelease(panelWindow(), Qt::LeftButton, {}, inWindow(*pad, {60, 40}));
    settle();
    EXPECT_EQ(taker->colors.size(), pressed + 4) << "the end of the drag is no change";
}

TEST_F(ColorPanelOnScreen, aDragTellsOfItsLastColorOnlyWhereThePanelIsNotContinuous) {
    QWidget* const pad = square();
    ASSERT_TRUE(pad);
    panel->setColor(NSColor::redColor());
    taker->colors.clear();
    panel->setContinuous(false);
    QTest::mousePress(panelWindow(), Qt::LeftButton, {}, inWindow(*pad, {20, 20}));
    QTest::mouseMove(panelWindow(), inWindow(*pad, {60, 40}));
    settle();
    EXPECT_TRUE(taker->colors.empty());
    EXPECT_FALSE(panel->color()->isEqual(NSColor::redColor())) << "who asks is told";
    QTest::mouseRelease(panelWindow(), Qt::LeftButton, {}, inWindow(*pad, {60, 40}));
    ASSERT_TRUE(eventually([this] { return !taker->colors.empty(); }));
    EXPECT_EQ(taker->colors.size(), 2u);
    EXPECT_TRUE(taker->colors[0]->isEqual(panel->color()));
    QTest::mouseClick(panelWindow(), Qt::LeftButton, {}, inWindow(*pad, {60, 40}));
    settle();
    EXPECT_EQ(taker->colors.size(), 2u) << "the same colour again";
}

TEST_F(ColorPanelOnScreen, neverBecomesKeyAndLeavesTheFieldBeingEdited) {
    const Ref<NSResponder> editor = window->firstResponder();
    ASSERT_TRUE(cast<NSText>(editor));
    panel->makeKeyAndOrderFront(nullptr);
    settle();
    EXPECT_FALSE(panel->isKeyWindow());
    EXPECT_FALSE(panel->canBecomeKeyWindow());
    EXPECT_TRUE(panelHost()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_EQ(panelHost()->windowType(), Qt::Tool);
    EXPECT_TRUE(panelHost()->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_FALSE(panelHost()->isModal());
    // Without a desktop Qt activates every window that is shown, whatever that asks for.
    host()->activateWindow();
    ASSERT_TRUE(eventually([this] { return host()->isActiveWindow(); }));
    for (const char* const name : {"QColorPicker", "QSpinBox", "QLineEdit"}) {
        SCOPED_TRACE(name);
        QWidget* const one = part(name);
        ASSERT_TRUE(one);
        QTest::mouseClick(panelWindow(), Qt::LeftButton, {}, inWindow(*one, one->rect().center()));
        settle();
        EXPECT_EQ(window->firstResponder(), editor);
        EXPECT_TRUE(window->isKeyWindow());
        EXPECT_EQ(QApplication::focusWidget()->window(), host());
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);
    EXPECT_EQ(field->stringValue()->utf8(), "a");
}

TEST_F(ColorPanelOnScreen, isAsLargeAsTheDialogWants) {
    const QSize wanted = dialog()->sizeHint();
    EXPECT_EQ(dialog()->geometry(), QRect(QPoint(0, 0), wanted));
    EXPECT_EQ(panelHost()->size(), wanted);
    EXPECT_EQ(panel->contentView()->frame().size.width, wanted.width());
    panel->setShowsAlpha(true);
    EXPECT_TRUE(dialog()->testOption(QColorDialog::ShowAlphaChannel));
    ASSERT_TRUE(eventually([this] { return panelHost()->size() == dialog()->sizeHint(); }));
    dialog()->setCurrentColor(QColor(10, 20, 30, 51));
    EXPECT_EQ(panel->color()->alphaComponent(), 51 / 255.0);
}

TEST_F(ColorPanelOnScreen, stillShowsTheDialogWhateverTheUserPresses) {
    QTest::keyClick(dialog(), Qt::Key_Escape);
    QTest::keyClick(dialog(), Qt::Key_Return);
    settle();
    EXPECT_TRUE(dialog()->isVisible());
    EXPECT_TRUE(panel->isVisible());
    panelHost()->close();
    settle();
    EXPECT_FALSE(panel->isVisible()) << "the title bar's button closes it";
    panel->orderFront(nullptr);
    settle();
    EXPECT_TRUE(dialog()->isVisible());
}

TEST_F(ColorPanelOnScreen, anAlphaThatTheDialogDoesNotShowSurvivesAClick) {
    const auto pale = NSColor::colorWithSRGBRed_green_blue_alpha(1, 0, 0, 0.5);
    panel->setColor(pale);
    taker->colors.clear();
    QWidget* const spinBox = part("QSpinBox");
    ASSERT_TRUE(spinBox);
    QTest::mouseClick(panelWindow(), Qt::LeftButton, {}, inWindow(*spinBox, {5, 5}));
    settle();
    EXPECT_TRUE(taker->colors.empty());
    EXPECT_TRUE(panel->color()->isEqual(pale));
}

TEST_F(ColorPanelOnScreen, isMadeAgainInTheNextSession) {
    const QPointer<QColorDialog> before = dialog();
    qt::sessionOfTests().reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(before);
    panel->setColor(NSColor::greenColor());
    EXPECT_EQ(taker->colors.size(), 2u) << "its rules need no screen";
    qt::sessionOfTests() = std::make_unique<qt::Session>();
    panel->orderFront(nullptr);
    ASSERT_TRUE(dialog());
    EXPECT_EQ(shown(), QColor(0, 255, 0));
    dialog()->setCurrentColor(QColor(1, 2, 3));
    EXPECT_EQ(taker->colors.size(), 4u);
}

} // namespace
} // namespace zr::test
