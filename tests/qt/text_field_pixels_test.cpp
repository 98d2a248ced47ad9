#include "field_testing.h"
#include "pictures.h"

#include <zrbasic/platform/appkit/layer.h>

#include <array>

namespace zr::test {
namespace {

constexpr std::array scales{1.0, 1.5, 2.0};

/// Of the whole field, with the editor in it while there is one.
class FieldPixels : public FieldWindow {
  protected:
    QImage picture(NSView* view, double scale = 1) {
        QWidget* const host = qt::widget(window.get());
        const QImage all = pictureOf(*host, scale);
        const NSRect frame = view->frame();
        const double height = window->contentView()->frame().size.height;
        const QRectF part(frame.origin.x * scale, (height - frame.origin.y - frame.size.height) * scale,
                          frame.size.width * scale, frame.size.height * scale);
        return all.copy(part.toAlignedRect());
    }

    static int count(const QImage& image, const QColor& color) {
        int found = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                found += image.pixelColor(x, y) == color ? 1 : 0;
            }
        }
        return found;
    }

    /// Edits the field with an insertion point that cannot be seen, and gives both pictures.
    void expectSamePixels(ZRXTextField* field) {
        std::array<QImage, scales.size()> idle;
        for (std::size_t i = 0; i < scales.size(); ++i) {
            idle[i] = picture(field, scales[i]);
        }
        ASSERT_GT(count(idle[0], Qt::black), 0);
        edit(field);
        cast<NSTextView>(editor())->setInsertionPointColor(NSColor::clearColor());
        editor()->setSelectedRange(NSMakeRange(0, 0));
        for (std::size_t i = 0; i < scales.size(); ++i) {
            SCOPED_TRACE(scales[i]);
            const PictureDifference found = difference(idle[i], picture(field, scales[i]));
            EXPECT_FALSE(found.isOfAnotherSize);
            EXPECT_EQ(found.largest, 0);
            EXPECT_EQ(found.pixels, 0);
        }
        window->makeFirstResponder(nullptr);
    }
};

TEST_F(FieldPixels, notOnePixelMovesWhenEditingBegins) {
    const auto field = add({{20, 100}, {200, 24}});
    show();
    for (const char* const text : {"Wavy 12.50", "jay", "gypq|", "-1"}) {
        SCOPED_TRACE(text);
        field->setStringValue(NSString::fromUtf8(text));
        expectSamePixels(field);
    }
}

TEST_F(FieldPixels, norInAnyAlignment) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setStringValue("Jumping fox 7"_ns);
    show();
    for (const NSTextAlignment alignment : {NSTextAlignmentLeft, NSTextAlignmentRight, NSTextAlignmentCenter,
                                            NSTextAlignmentNatural, NSTextAlignmentJustified}) {
        SCOPED_TRACE(alignment);
        field->setAlignment(alignment);
        expectSamePixels(field);
    }
}

TEST_F(FieldPixels, norWithAnyFontSizeOrPadding) {
    const auto field = add({{20, 90}, {221, 35}});
    field->setStringValue("Quantity"_ns);
    show();
    for (const double size : {9.0, 12.5, 17.0, 20.0}) {
        SCOPED_TRACE(size);
        field->setFont(NSFont::boldSystemFontOfSize(size));
        field->setXPadding(size);
        expectSamePixels(field);
    }
}

TEST_F(FieldPixels, norForTextThatIsWrittenToTheLeft) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setStringValue(NSString::fromUtf8("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D 12"));
    show();
    for (const NSTextAlignment alignment : {NSTextAlignmentNatural, NSTextAlignmentLeft, NSTextAlignmentRight}) {
        SCOPED_TRACE(alignment);
        field->setAlignment(alignment);
        expectSamePixels(field);
    }
}

TEST_F(FieldPixels, naturalTextBeginsWhereItsDirectionSays) {
    const auto field = add({{20, 100}, {200, 24}});
    show();
    const auto half = [&](bool isRight) {
        const QImage all = picture(field);
        const QImage part = all.copy(isRight ? 100 : 4, 4, 96, 16);
        int dark = 0;
        for (int y = 0; y < part.height(); ++y) {
            for (int x = 0; x < part.width(); ++x) {
                dark += part.pixelColor(x, y).alpha() > 100 ? 1 : 0;
            }
        }
        return dark;
    };
    edit(field);
    cast<NSTextView>(editor())->setInsertionPointColor(NSColor::clearColor());
    typeText("lll");
    EXPECT_GT(half(false), 0);
    EXPECT_EQ(half(true), 0);
    press(Qt::Key_A, Qt::ControlModifier);
    typeText(QString::fromUtf8("\xD7\x9D\xD7\x9D\xD7\x9D"));
    EXPECT_EQ(half(false), 0);
    EXPECT_GT(half(true), 0);
    editor()->setString("lll"_ns);
    EXPECT_GT(half(false), 0);
    EXPECT_EQ(half(true), 0);
}

TEST_F(FieldPixels, norOnFractionsOfPoints) {
    const auto field = add({{20.5, 99.25}, {200.5, 24.5}});
    field->setStringValue("Fraction"_ns);
    show();
    expectSamePixels(field);
}

TEST_F(FieldPixels, theInsertionPointHasTheWindowsColourForEveryField) {
    const auto field = add({{20, 100}, {200, 24}});
    const auto other = add({{20, 40}, {200, 24}});
    show();
    field->setCustomizeCursorColor(NSColor::colorWithSRGBRed_green_blue_alpha(1, 0, 0, 1));
    EXPECT_EQ(count(picture(field), Qt::red), 0);
    edit(field);
    const int height = count(picture(field), Qt::red);
    EXPECT_GT(height, 8);
    EXPECT_LE(height, 24);
    edit(other);
    EXPECT_EQ(count(picture(field), Qt::red), 0);
    EXPECT_EQ(count(picture(other), Qt::red), height);
    other->setCustomizeCursorColor(nullptr);
    EXPECT_EQ(count(picture(other), Qt::red), 0);
    EXPECT_GT(count(picture(other), Qt::black), 8);
}

TEST_F(FieldPixels, theCursorColourCountsFromMovingIntoTheWindow) {
    const auto field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSRect{{20, 100}, {200, 24}});
    field->setCursorColor(NSColor::colorWithSRGBRed_green_blue_alpha(0, 0, 1, 1));
    window->contentView()->addSubview(field);
    field->setCursorColor(NSColor::colorWithSRGBRed_green_blue_alpha(1, 0, 0, 1));
    show();
    edit(field);
    EXPECT_GT(count(picture(field), Qt::blue), 8);
    EXPECT_EQ(count(picture(field), Qt::red), 0);
}

TEST_F(FieldPixels, theInsertionPointIsSeenAtBothEndsOfEveryAlignment) {
    const auto field = add({{20, 100}, {120, 24}});
    field->setStringValue("iiii"_ns);
    show();
    field->setCustomizeCursorColor(NSColor::colorWithSRGBRed_green_blue_alpha(1, 0, 0, 1));
    for (const NSTextAlignment alignment : {NSTextAlignmentLeft, NSTextAlignmentRight, NSTextAlignmentCenter}) {
        SCOPED_TRACE(alignment);
        field->setAlignment(alignment);
        edit(field);
        press(Qt::Key_Home);
        EXPECT_GT(count(picture(field), Qt::red), 8);
        press(Qt::Key_End);
        EXPECT_GT(count(picture(field), Qt::red), 8);
        window->makeFirstResponder(nullptr);
    }
}

TEST_F(FieldPixels, aSelectionHidesTheInsertionPoint) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setStringValue("abc"_ns);
    show();
    field->setCustomizeCursorColor(NSColor::colorWithSRGBRed_green_blue_alpha(1, 0, 0, 1));
    edit(field);
    ASSERT_EQ(line()->selectedText(), "abc");
    EXPECT_EQ(count(picture(field), Qt::red), 0);
    const QColor highlight = line()->palette().color(QPalette::Active, QPalette::Highlight);
    EXPECT_GT(count(picture(field), highlight), 20);
}

TEST_F(FieldPixels, theEditorFillsTheAdjustedFrame) {
    const auto field = add({{20, 100}, {200, 24}});
    show();
    edit(field);
    auto* const cell = cast<ZRXTextFieldCell>(field->cell().get());
    const NSRect adjusted = cell->adjustedFrameToVerticallyCenterText(field->bounds());
    EXPECT_EQ(editor()->frame(), adjusted);
    EXPECT_EQ(adjusted.origin.x, 5);
    QWidget* const host = qt::widget(window.get());
    // A line editor keeps 2 pixels free at both sides, and 1 above.
    const QPoint corner = line()->mapTo(host, QPoint(2, 1));
    EXPECT_EQ(corner, pixelOf(field, {adjusted.origin.x, NSMaxY(adjusted)}));
    EXPECT_EQ(line()->width() - 4, int(adjusted.size.width));
    // A line is higher than what is left of a low field, and is shown whole.
    EXPECT_GT(line()->height() - 1, int(adjusted.size.height));
    EXPECT_GT(line()->height() - 1, line()->fontMetrics().height());
}

TEST_F(FieldPixels, thePlaceholderStaysUntilSomethingIsTyped) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setPlaceholderString("Account"_ns);
    field->setPlaceholderColor(NSColor::colorWithSRGBRed_green_blue_alpha(1, 0, 0, 1));
    field->setAlignment(NSTextAlignmentCenter);
    show();
    const int idle = count(picture(field), Qt::red);
    ASSERT_GT(idle, 0);
    edit(field);
    cast<NSTextView>(editor())->setInsertionPointColor(NSColor::clearColor());
    EXPECT_EQ(count(picture(field), Qt::red), idle);
    commit({}, "x");
    EXPECT_EQ(count(picture(field), Qt::red), 0);
    commit({});
    EXPECT_EQ(count(picture(field), Qt::red), idle);
    type("x");
    EXPECT_EQ(count(picture(field), Qt::red), 0);
    press(Qt::Key_Backspace);
    EXPECT_EQ(count(picture(field), Qt::red), idle);
}

} // namespace
} // namespace zr::test
