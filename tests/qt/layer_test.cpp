#include "view_testing.h"

#include <zrbasic/platform/appkit/layer.h>

#include <QPainter>

namespace zr::test {
namespace {

class Layers : public ViewWindow {
  protected:
    void SetUp() override {
        content->color = NSColor::whiteColor();
        view = add({{100, 100}, {100, 60}});
        view->setWantsLayer(true);
        layer = view->layer();
    }

    /// What is on the screen of such a density.
    QImage picture(double scale) const {
        QImage image((QSizeF(400, 300) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::white);
        QPainter painter(&image);
        widgetOf(content)->render(&painter, {}, {}, QWidget::DrawChildren);
        return image;
    }
    /// At so many points from the view's upper left corner.
    static QColor at(const QImage& image, double x, double y) {
        const double scale = image.devicePixelRatio();
        return image.pixelColor(int((100 + x) * scale), int((140 + y) * scale));
    }

    Ref<LoggingView> view;
    Ref<CALayer> layer;
};

TEST_F(Layers, theBorderLiesInsideOfTheViewAtEveryDensity) {
    layer->setBackgroundColor(NSColor::greenColor());
    layer->setBorderColor(NSColor::redColor());
    layer->setBorderWidth(2);
    show();
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        const QImage image = picture(scale);
        EXPECT_EQ(at(image, -1.0, 30), QColor(Qt::white));
        EXPECT_EQ(at(image, 0.1, 30), QColor(Qt::red));
        EXPECT_EQ(at(image, 1.4, 30), QColor(Qt::red));
        EXPECT_EQ(at(image, 2.1, 30), QColor(Qt::green));
        EXPECT_EQ(at(image, 50, 57.4), QColor(Qt::green));
        EXPECT_EQ(at(image, 50, 58.1), QColor(Qt::red));
        EXPECT_EQ(at(image, 99.4, 59.4), QColor(Qt::red));
        EXPECT_EQ(at(image, 0.1, 0.1), QColor(Qt::red));
        EXPECT_EQ(at(image, 50, 60.1), QColor(Qt::white));
    }
}

TEST_F(Layers, theBorderLiesAboveWhatIsInTheView) {
    layer->setBorderColor(NSColor::redColor());
    layer->setBorderWidth(3);
    show();
    const Ref<LoggingView> inner = add({{0, 0}, {100, 60}}, view);
    inner->color = NSColor::blueColor();
    auto* const foreign = new QWidget(widgetOf(view));
    foreign->setGeometry(50, 0, 50, 60);
    foreign->setAutoFillBackground(true);
    foreign->setPalette(QPalette(Qt::cyan));
    foreign->show();
    const QImage image = picture(1);
    EXPECT_EQ(at(image, 1, 30), QColor(Qt::red));
    EXPECT_EQ(at(image, 4, 30), QColor(Qt::blue));
    EXPECT_EQ(at(image, 98, 30), QColor(Qt::red));
    EXPECT_EQ(at(image, 75, 58), QColor(Qt::red));
    EXPECT_NE(at(image, 75, 30), QColor(Qt::blue));
}

TEST_F(Layers, thePointerGoesThroughTheBorder) {
    layer->setBorderWidth(10);
    show();
    const Ref<LoggingView> inner = add({{0, 0}, {100, 60}}, view);
    inner->take();
    click(103, 103);
    EXPECT_EQ(inner->take(), "down up ");
}

TEST_F(Layers, theBorderFollowsTheViewAndTheLayer) {
    layer->setBorderColor(NSColor::redColor());
    layer->setBorderWidth(2);
    show();
    view->setFrame({{100, 80}, {120, 80}});
    EXPECT_EQ(at(picture(1), 119, 79), QColor(Qt::red));
    EXPECT_EQ(at(picture(1), 99, 59), QColor(Qt::white));
    layer->setBorderColor(NSColor::blueColor());
    EXPECT_EQ(at(picture(1), 1, 40), QColor(Qt::blue));
    layer->setBorderWidth(0);
    EXPECT_EQ(at(picture(1), 1, 40), QColor(Qt::white));
    layer->setBorderWidth(5);
    EXPECT_EQ(at(picture(1), 4, 40), QColor(Qt::blue));
    layer->setBorderColor(nullptr);
    EXPECT_EQ(at(picture(1), 4, 40), QColor(Qt::white));
    layer->setBorderColor(NSColor::blueColor());
    view->setWantsLayer(false);
    EXPECT_EQ(at(picture(1), 4, 40), QColor(Qt::white));
}

TEST_F(Layers, cornersAreRound) {
    layer->setBackgroundColor(NSColor::greenColor());
    layer->setBorderColor(NSColor::redColor());
    layer->setBorderWidth(2);
    layer->setCornerRadius(15);
    show();
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        const QImage image = picture(scale);
        EXPECT_EQ(at(image, 1, 1), QColor(Qt::white));
        EXPECT_EQ(at(image, 98, 58), QColor(Qt::white));
        EXPECT_EQ(at(image, 50, 0.5), QColor(Qt::red));
        EXPECT_EQ(at(image, 8, 8), QColor(Qt::green));
    }
}

TEST_F(Layers, theBackgroundLiesBelowWhatTheViewDraws) {
    layer->setBackgroundColor(NSColor::greenColor());
    show();
    EXPECT_EQ(at(picture(1), 50, 30), QColor(Qt::green));
    view->color = NSColor::blueColor();
    EXPECT_EQ(at(picture(1), 50, 30), QColor(Qt::blue));
    layer->setBackgroundColor(nullptr);
    view->color = nullptr;
    EXPECT_EQ(at(picture(1), 50, 30), QColor(Qt::white));
}

TEST_F(Layers, theBackgroundFillsThePixelsOfAnExtentThatIsNoWholeNumber) {
    layer->setBackgroundColor(NSColor::greenColor());
    view->setFrame({{100, 99.6}, {100.4, 60.4}});
    show();
    const QImage image = picture(1);
    EXPECT_EQ(at(image, 0, 0), QColor(Qt::green));
    EXPECT_EQ(at(image, 99, 59), QColor(Qt::green));
}

} // namespace
} // namespace zr::test
