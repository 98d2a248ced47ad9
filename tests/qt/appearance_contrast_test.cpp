#include "../appkit/appearance_testing.h"
#include "field_testing.h"
#include "table_on_screen.h"
#include "view_testing.h"

#include <zrbasic/platform/appkit/box.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/tab_view.h>
#include <zrbasic/ui/html_label.h>

#include <QImage>

#include <algorithm>
#include <map>

namespace zr::test {
namespace {

constexpr double scale = 3;

double luminanceOf(QRgb pixel) {
    return luminance(qRed(pixel) / 255.0, qGreen(pixel) / 255.0, qBlue(pixel) / 255.0);
}

/// A widget as it stands on the screen, with whatever lies behind it, enlarged so that letters have pixels of nothing
/// but their own colour.
QImage enlarged(QWidget& widget) {
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::magenta);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    image.setDevicePixelRatio(1);
    return image;
}

/// Of what is written there, in points, against what most of that place is.
double contrastIn(const QImage& image, QRect place) {
    const QRect pixels(place.topLeft() * scale, place.size() * scale);
    std::map<QRgb, int> counts;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    const auto ground = std::max_element(counts.begin(), counts.end(),
                                         [](const auto& one, const auto& other) { return one.second < other.second; });
    double best = 1;
    for (const auto& [pixel, count] : counts) {
        // A few are no letter.
        if (count > 10) {
            best = std::max(best, contrast(luminanceOf(pixel), luminanceOf(ground->first)));
        }
    }
    return best;
}

class AppearanceContrast : public FieldWindow, public testing::WithParamInterface<bool> {
  protected:
    /// How well one can read what stands in the view, `inset` points off its edges.
    double contrastOf(NSView* view, QMargins inset = {4, 4, 4, 4}) const {
        settle();
        const NSRect rect = view->convertRect_toView(view->bounds(), nullptr);
        const QPoint upperLeft = pixelOf(view, {0, view->isFlipped() ? 0 : view->bounds().size.height});
        const QRect place(upperLeft, QSize(int(rect.size.width), int(rect.size.height)));
        return contrastIn(enlarged(*qt::widget(window.get())), place.marginsRemoved(inset));
    }

    Ref<NSButton> addButton(Ref<NSButton> button) const {
        button->setFrame({{10, 20}, {140, 26}});
        window->contentView()->addSubview(button);
        return button;
    }

    const InAppearance m_appearance{GetParam() ? NSAppearanceNameDarkAqua() : NSAppearanceNameAqua()};
};

INSTANTIATE_TEST_SUITE_P(Both, AppearanceContrast, testing::Bool(),
                         [](const auto& tested) { return tested.param ? "dark" : "light"; });

TEST_P(AppearanceContrast, ofFieldsIsEnoughToReadThem) {
    const auto field = add<NSTextField>({{10, 100}, {140, 26}});
    field->setStringValue("2241.78"_ns);
    const auto label = add<NSTextField>({{10, 60}, {140, 26}});
    label->setEditable(false);
    label->setBezeled(false);
    label->setDrawsBackground(false);
    label->setStringValue("Price"_ns);
    const auto waiting = add<NSTextField>({{160, 60}, {140, 26}});
    waiting->setPlaceholderString("Price"_ns);
    show();
    EXPECT_GE(contrastOf(field), 4.5);
    EXPECT_GE(contrastOf(label), 4.5);
    EXPECT_GE(contrastOf(waiting), 3);
    field->setEnabled(false);
    EXPECT_GE(contrastOf(field), 2);
    EXPECT_LT(contrastOf(field), 10) << "and it can be told from one that is enabled";
}

TEST_P(AppearanceContrast, ofAFieldThatIsEditedIsAsGood) {
    const auto field = add<NSTextField>({{10, 100}, {140, 26}});
    field->setStringValue("2241.78"_ns);
    const auto waiting = add<NSTextField>({{160, 60}, {140, 26}});
    waiting->setPlaceholderString("Price"_ns);
    show();
    edit(field);
    EXPECT_GE(contrastOf(field), GetParam() ? 4.5 : 3) << "white on the colour of selections";
    line()->deselect();
    EXPECT_GE(contrastOf(field), 4.5);
    edit(waiting);
    EXPECT_GE(contrastOf(waiting, {8, 4, 4, 4}), 3);
}

TEST_P(AppearanceContrast, ofTheInsertionPointIsEnoughToFindIt) {
    const auto field = add<NSTextField>({{10, 100}, {140, 26}});
    show();
    edit(field);
    EXPECT_GE(contrastOf(field, {2, 4, 4, 4}), 4.5) << "there is nothing else in it";
}

TEST_P(AppearanceContrast, ofButtonsIsEnoughToReadThem) {
    const auto button = addButton(NSButton::buttonWithTitle_target_action("Cancel"_ns, nullptr, {}));
    show();
    EXPECT_GE(contrastOf(button), 4.5);
    button->highlight(true);
    EXPECT_GE(contrastOf(button), 4.5) << "pressed";
    button->highlight(false);
    button->setKeyEquivalent("\r"_ns);
    EXPECT_GE(contrastOf(button), 4.5) << "the default one";
    button->highlight(true);
    EXPECT_GE(contrastOf(button), 4.5) << "pressed";
    button->setEnabled(false);
    EXPECT_GE(contrastOf(button), 2);
}

TEST_P(AppearanceContrast, ofPopUpButtonsIsEnoughToReadThem) {
    const auto button = add<NSPopUpButton>({{10, 20}, {140, 26}});
    button->addItemWithTitle("Limit"_ns);
    show();
    EXPECT_GE(contrastOf(button, {4, 4, 40, 4}), 4.5);
    EXPECT_GE(contrastOf(button, {110, 4, 4, 4}), 4.5) << "the arrows";
    button->setEnabled(false);
    EXPECT_GE(contrastOf(button, {4, 4, 40, 4}), 2);
}

TEST_P(AppearanceContrast, ofCheckBoxesIsEnoughToReadThem) {
    const auto box = addButton(NSButton::checkboxWithTitle_target_action("Reduce only"_ns, nullptr, {}));
    const QMargins title{20, 4, 4, 4};
    const QMargins mark{1, 7, 125, 7};
    show();
    EXPECT_GE(contrastOf(box, title), 4.5);
    box->setState(NSControlStateValueOn);
    EXPECT_GE(contrastOf(box, title), 4.5);
    EXPECT_GE(contrastOf(box, mark), 4.5) << "the tick";
    box->setEnabled(false);
    EXPECT_GE(contrastOf(box, title), 2);
    EXPECT_GE(contrastOf(box, mark), 2) << "the tick";
}

TEST_P(AppearanceContrast, ofTabsAndTitlesOfBoxesIsEnoughToReadThem) {
    const auto tabs = add<NSTabView>({{10, 90}, {200, 60}});
    for (const char* const name : {"Orders", "Fills"}) {
        const Ref<NSTabViewItem> item =
            make<NSTabViewItem>(&NSTabViewItem::initWithIdentifier, NSString::fromUtf8(name));
        item->setLabel(NSString::fromUtf8(name));
        tabs->addTabViewItem(item);
    }
    const auto box = add<NSBox>({{10, 10}, {200, 60}});
    box->setTitle("Account"_ns);
    show();
    const int firstEnds = int(NSMaxX(tabs->rectOfTabAtIndex(0)));
    EXPECT_GE(contrastOf(tabs, {2, 2, 200 - firstEnds + 2, 40}), 4.5) << "the selected one";
    EXPECT_GE(contrastOf(tabs, {firstEnds + 2, 2, 100, 40}), 4.5);
    EXPECT_GE(contrastOf(box, {4, 2, 4, 46}), 4.5);
}

TEST_P(AppearanceContrast, ofTextViewsIsEnoughToReadThem) {
    const auto text = add<NSTextView>({{10, 80}, {300, 30}});
    text->setString("Margin call"_ns);
    const auto html = add<ZRXHTMLLabel>({{10, 20}, {300, 30}});
    html->setHTMLString("<a href='https://example.com'>rules</a>"_ns);
    show();
    EXPECT_GE(contrastOf(text), 4.5);
    EXPECT_GE(contrastOf(html), 4.5) << "a link, in what HTML makes of it";
    html->setCustomizedHTMLString("<a href=\"https://example.com\">rules</a>"_ns);
    EXPECT_GE(contrastOf(html), 4.5);
    html->setHTMLString("rules"_ns);
    EXPECT_GE(contrastOf(html), 4.5);
    text->setSelectedRange({0, 11});
    EXPECT_GE(contrastOf(text), GetParam() ? 4.5 : 3) << "selected";
}

class AppearanceContrastOfTables : public TableOnScreen, public testing::WithParamInterface<bool> {
  protected:
    double contrastAt(const QWidget& viewport, QRect place) const {
        settle();
        QWidget& all = *shown->window();
        return contrastIn(enlarged(all),
                          QRect(inWindow(viewport, place.topLeft()), place.size()).adjusted(1, 2, -2, -3));
    }
    double contrastOfRow(int row) const {
        return contrastAt(*shown->viewport(), shown->visualRect(shown->model()->index(row, 0)));
    }

    const InAppearance m_appearance{GetParam() ? NSAppearanceNameDarkAqua() : NSAppearanceNameAqua()};
};

INSTANTIATE_TEST_SUITE_P(Both, AppearanceContrastOfTables, testing::Bool(),
                         [](const auto& tested) { return tested.param ? "dark" : "light"; });

TEST_P(AppearanceContrastOfTables, isEnoughToReadRowsAndTitles) {
    EXPECT_GE(contrastOfRow(0), 4.5);
    EXPECT_GE(contrastAt(*header().viewport(), {0, 0, header().sectionSize(0), header().height()}), 4.5);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1), false);
    EXPECT_GE(contrastOfRow(1), 4.5) << "selected";
    const QPoint inRow(1, shown->rowViewportPosition(1) + 4);
    EXPECT_NE(enlarged(*shown->window()).pixelColor(inWindow(*shown->viewport(), inRow) * scale),
              shown->palette().color(QPalette::Base))
        << "and one can see that it is";
    table->setEnabled(false);
    EXPECT_GE(contrastOfRow(0), 2);
}

} // namespace
} // namespace zr::test
