#include "pictures.h"

#include "../../examples/controls/specimen.h"
#include "../appkit/appearance_testing.h"

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

/// The control on that ground, at those pixels a point, side by side.
QImage pictureAtScales(QWidget& widget, const QColor& ground, std::initializer_list<double> scales) {
    std::vector<QImage> pictures;
    QSize size;
    for (const double scale : scales) {
        const QImage& picture = pictures.emplace_back(pictureOf(widget, scale));
        size = QSize(size.width() + picture.width(), std::max(size.height(), picture.height()));
    }
    QImage all(size, QImage::Format_ARGB32);
    all.fill(ground);
    QPainter painter(&all);
    int x = 0;
    for (const QImage& picture : pictures) {
        painter.drawImage(x, 0, picture);
        x += picture.width();
    }
    return all;
}

/// In a window of its own, in its state.
class ReferencePictures : public testing::TestWithParam<std::string> {
  protected:
    ~ReferencePictures() override {
        if (m_window) {
            m_window->close();
        }
    }

    void show();

    /// Null unless it is shown.
    QWidget* content = nullptr;

  private:
    /// Keeps what the view does not.
    controls::Specimen m_specimen;
    Ref<NSWindow> m_window;
};

void ReferencePictures::show() {
    m_specimen = specimenNamed(GetParam());
    ASSERT_TRUE(m_specimen.view);
    const NSSize size = m_specimen.view->frame().size;
    m_window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask,
                              NSMakeRect(40, 40, size.width + 2 * margin, size.height + 2 * margin),
                              NSUInteger{NSWindowStyleMaskTitled});
    m_specimen.view->setFrameOrigin(NSMakePoint(margin, margin));
    m_window->contentView()->addSubview(m_specimen.view);
    m_window->makeKeyAndOrderFront(nullptr);
    if (m_specimen.pose) {
        m_specimen.pose();
    }
    QApplication::processEvents();
    content = qt::widget(m_window->contentView());
}

TEST_P(ReferencePictures, showTheControlInThisState) {
    show();
    ASSERT_NE(content, nullptr);
    const QImage picture = pictureAtScales(*content, Qt::white, {1, 1.5, 2});
    EXPECT_TRUE(looksLikeReference(picture, QString::fromStdString(GetParam())));
}

TEST_P(ReferencePictures, showTheControlInTheDarkAsWell) {
    const InAppearance dark(NSAppearanceNameDarkAqua());
    show();
    ASSERT_NE(content, nullptr);
    const QColor ground = content->window()->palette().color(QPalette::Window);
    EXPECT_TRUE(
        looksLikeReference(pictureAtScales(*content, ground, {1}), QString::fromStdString(GetParam()) + "-dark"));
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
