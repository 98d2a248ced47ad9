#include "pictures.h"

#include "../../examples/controls/specimen.h"

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/session.h>

#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace zr::test {
namespace {

constexpr double margin = 6;

/// The specimen of that name, made anew.
controls::Specimen specimenNamed(const std::string& name) {
    for (const controls::Section& section : controls::allSections()) {
        for (const controls::Specimen& specimen : section.specimens) {
            if (specimen.name == name) {
                return specimen;
            }
        }
    }
    ADD_FAILURE() << "there is no specimen " << name;
    return {};
}

std::vector<std::string> specimenNames() {
    std::vector<std::string> names;
    for (const controls::Section& section : controls::allSections()) {
        for (const controls::Specimen& specimen : section.specimens) {
            names.push_back(specimen.name);
        }
    }
    return names;
}

/// The control on white, at one, one and a half and two pixels a point, side by side.
QImage pictureAtAllScales(QWidget& widget) {
    const QImage pictures[] = {pictureOf(widget, 1), pictureOf(widget, 1.5), pictureOf(widget, 2)};
    QSize size;
    for (const QImage& picture : pictures) {
        size = QSize(size.width() + picture.width(), std::max(size.height(), picture.height()));
    }
    QImage all(size, QImage::Format_ARGB32);
    all.fill(Qt::white);
    QPainter painter(&all);
    int x = 0;
    for (const QImage& picture : pictures) {
        painter.drawImage(x, 0, picture);
        x += picture.width();
    }
    return all;
}

class ReferencePictures : public testing::TestWithParam<std::string> {};

TEST_P(ReferencePictures, showTheControlInThisState) {
    const controls::Specimen specimen = specimenNamed(GetParam());
    ASSERT_TRUE(specimen.view);
    const NSSize size = specimen.view->frame().size;
    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask,
                                                NSMakeRect(40, 40, size.width + 2 * margin, size.height + 2 * margin),
                                                NSUInteger{NSWindowStyleMaskTitled});
    specimen.view->setFrameOrigin(NSMakePoint(margin, margin));
    window->contentView()->addSubview(specimen.view);
    window->makeKeyAndOrderFront(nullptr);
    if (specimen.pose) {
        specimen.pose();
    }
    QApplication::processEvents();
    QWidget* const content = qt::widget(window->contentView());
    ASSERT_NE(content, nullptr);
    EXPECT_TRUE(looksLikeReference(pictureAtAllScales(*content), QString::fromStdString(GetParam())));
    window->close();
}

INSTANTIATE_TEST_SUITE_P(Controls, ReferencePictures, testing::ValuesIn(specimenNames()), [](const auto& tested) {
    std::string name = tested.param;
    for (char& letter : name) {
        letter = std::isalnum(static_cast<unsigned char>(letter)) ? letter : '_';
    }
    return name;
});

} // namespace
} // namespace zr::test
