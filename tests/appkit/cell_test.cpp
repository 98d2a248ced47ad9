#include <zrbasic/platform/appkit/cell.h>

#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/text_field_cell.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include "canvas_testing.h"
#include "measuring_testing.h"

#include <gtest/gtest.h>
#include <string>

namespace zr {
namespace {

using test::DrawingRecord;
using test::MeasuringToolkit;

/// Reads and writes prices: "$5" is 5. Edits begin with the number alone.
class DollarFormatter : public NSFormatter {
    ZR_OBJECT(DollarFormatter, NSFormatter)
  public:
    Ref<NSString> stringForObjectValue(NSObject* object) override {
        auto* const number = cast<NSNumber>(object);
        return number ? NSString::stringWithFormat("$%@"_ns, number) : nullptr;
    }
    Ref<NSString> editingStringForObjectValue(NSObject* object) override {
        auto* const number = cast<NSNumber>(object);
        return number ? number->stringValue() : nullptr;
    }
    bool getObjectValue_forString_errorDescription(id* object, NSString* string, Ref<NSString>* error) override {
        const double value = string->doubleValue();
        if (value == 0) {
            *error = "no price"_ns;
            return false;
        }
        *object = box(value);
        return true;
    }
    bool isPartialStringValid_newEditingString_errorDescription(NSString* partialString, Ref<NSString>* newString,
                                                                Ref<NSString>*) override {
        if (partialString->hasPrefix("$"_ns)) {
            *newString = partialString->substringFromIndex(1);
            return false;
        }
        return partialString->doubleValue() >= 0;
    }
};

std::string shown(NSCell* cell) {
    return cell->stringValue()->utf8();
}

TEST(CellValue, isTheEmptyTextAtFirst) {
    const auto cell = make<NSCell>();
    EXPECT_TRUE(cell->objectValue()->isEqual(""_ns));
    EXPECT_EQ(shown(cell), "");
    EXPECT_EQ(cell->editingStringValue()->length(), 0U);
    EXPECT_EQ(cell->attributedStringValue()->length(), 0U);
    EXPECT_EQ(shown(make<NSCell>(&NSCell::initTextCell, "abc"_ns)), "abc");
    EXPECT_EQ(shown(make<NSCell>(&NSCell::initTextCell, nullptr)), "");
}

TEST(CellValue, mayBeAnyObjectAndShowsAsItsDescription) {
    const auto cell = make<NSCell>();
    cell->setObjectValue(box(12.5));
    EXPECT_EQ(shown(cell), "12.5");
    EXPECT_EQ(cell->doubleValue(), 12.5);
    EXPECT_EQ(cell->integerValue(), 12);
    cell->setObjectValue(nullptr);
    EXPECT_EQ(shown(cell), "");
    EXPECT_EQ(cell->objectValue(), nullptr);
    EXPECT_EQ(cell->doubleValue(), 0);
    cell->setObjectValue(NSNull::null());
    EXPECT_EQ(shown(cell), NSNull::null()->description()->utf8());
    cell->setIntegerValue(-7);
    EXPECT_EQ(shown(cell), "-7");
    cell->setStringValue(" 3.25 lots"_ns);
    EXPECT_EQ(cell->doubleValue(), 3.25) << "of the text, where there is no number";
    EXPECT_EQ(cell->integerValue(), 3);
}

TEST(CellValue, doesNotChangeWithTheStringThatItWasSetTo) {
    const auto cell = make<NSCell>();
    const auto text = NSMutableString::stringWithString("abc"_ns);
    cell->setStringValue(text);
    text->appendString("d"_ns);
    EXPECT_EQ(shown(cell), "abc");
    cell->setObjectValue(text);
    text->appendString("e"_ns);
    EXPECT_EQ(shown(cell), "abcd");
}

TEST(CellValue, ofAHugeTextIsKept) {
    const auto cell = make<NSCell>();
    cell->setStringValue(NSString::fromUtf16(std::u16string(1000000, u'x')));
    EXPECT_EQ(cell->stringValue()->length(), 1000000U);
    EXPECT_EQ(cell->integerValue(), 0);
}

TEST(CellFormatter, givesTheTextAndReadsIt) {
    const auto cell = make<NSCell>();
    cell->setFormatter(make<DollarFormatter>());
    cell->setObjectValue(box(5));
    EXPECT_EQ(shown(cell), "$5");
    EXPECT_EQ(cell->editingStringValue()->utf8(), "5");
    cell->setStringValue("7.5"_ns);
    EXPECT_TRUE(cell->objectValue()->isEqual(box(7.5)));
    EXPECT_EQ(shown(cell), "$7.5");
    cell->setStringValue("none"_ns);
    EXPECT_EQ(shown(cell), "$7.5") << "what cannot be read is not taken";
    EXPECT_FALSE(cell->takeText(nullptr));
    EXPECT_EQ(shown(cell), "$7.5");
}

TEST(CellFormatter, isNotAskedAboutNothing) {
    const auto cell = make<NSCell>();
    // The plain formatter raises for every value.
    cell->setFormatter(alloc<NSFormatter>());
    cell->setObjectValue(nullptr);
    EXPECT_EQ(shown(cell), "");
    EXPECT_EQ(cell->editingStringValue()->length(), 0U);
    cell->setObjectValue(box(1));
    EXPECT_THROW((void)cell->stringValue(), NSException);
    EXPECT_THROW(cell->setStringValue("1"_ns), NSException);
    EXPECT_TRUE(cell->objectValue()->isEqual(box(1)));
}

TEST(CellFormatter, leavesAValueThatItHasNoTextForToItself) {
    const auto cell = make<NSCell>();
    cell->setFormatter(make<DollarFormatter>());
    cell->setObjectValue("abc"_ns);
    EXPECT_EQ(shown(cell), "abc");
    EXPECT_EQ(cell->editingStringValue()->utf8(), "abc");
    cell->setFormatter(nullptr);
    EXPECT_EQ(cell->formatter(), nullptr);
}

TEST(CellJudge, acceptsEverythingWithoutAFormatter) {
    const auto cell = make<NSCell>();
    TextEdit edit{"abc"_ns, {1, 2}};
    EXPECT_EQ(cell->judgeEdit(edit, {"ab"_ns, {2, 0}}), EditJudgement::Accepted);
    EXPECT_EQ(edit.text->utf8(), "abc");
    EXPECT_EQ(edit.selection, (NSRange{1, 2}));
}

TEST(CellJudge, refusesAcceptsAndReplacesAsTheFormatterSays) {
    const auto cell = make<NSCell>();
    cell->setFormatter(make<DollarFormatter>());
    TextEdit edit{"-1"_ns, {2, 0}};
    EXPECT_EQ(cell->judgeEdit(edit, {""_ns, {}}), EditJudgement::Refused);
    edit = {"12"_ns, {1, 0}};
    EXPECT_EQ(cell->judgeEdit(edit, {"2"_ns, {}}), EditJudgement::Accepted);
    EXPECT_EQ(edit.selection, (NSRange{1, 0}));
    edit = {"$12"_ns, {1, 0}};
    EXPECT_EQ(cell->judgeEdit(edit, {"12"_ns, {}}), EditJudgement::Replaced);
    EXPECT_EQ(edit.text->utf8(), "12");
    EXPECT_EQ(edit.selection, (NSRange{2, 0})) << "the insertion point stands at the end";
}

TEST(CellText, wearsFontColorAndParagraphStyleOfTheCell) {
    const auto cell = make<NSTextFieldCell>();
    cell->setStringValue("abc"_ns);
    cell->setFont(NSFont::boldSystemFontOfSize(20));
    cell->setTextColor(NSColor::redColor());
    cell->setAlignment(NSTextAlignmentRight);
    cell->setLineBreakMode(NSLineBreakByTruncatingMiddle);
    const auto text = cell->attributedStringValue();
    NSRange range;
    const auto attributes = text->attributesAtIndex_effectiveRange(0, &range);
    EXPECT_EQ(range, (NSRange{0, 3}));
    EXPECT_TRUE(attributes->objectForKey(NSFontAttributeName())->isEqual(NSFont::boldSystemFontOfSize(20)));
    EXPECT_TRUE(attributes->objectForKey(NSForegroundColorAttributeName())->isEqual(NSColor::redColor()));
    auto* const style = cast<NSParagraphStyle>(attributes->objectForKey(NSParagraphStyleAttributeName()).get());
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(style->alignment(), NSTextAlignmentRight);
    EXPECT_EQ(style->lineBreakMode(), NSLineBreakByTruncatingMiddle);
    cell->setFont(nullptr);
    cell->setTextColor(nullptr);
    EXPECT_TRUE(cell->font()->isEqual(NSFont::systemFontOfSize(13)));
    EXPECT_TRUE(cell->textColor()->isEqual(NSColor::blackColor()));
}

TEST(CellText, keepsTheAttributesThatItWasSetWith) {
    const auto cell = make<NSTextFieldCell>();
    cell->setTextColor(NSColor::greenColor());
    cell->setAttributedStringValue(
        make<NSAttributedString>(&NSAttributedString::initWithString_attributes, "abc"_ns,
                                 dictionary({{NSForegroundColorAttributeName(), NSColor::redColor()}})));
    EXPECT_EQ(shown(cell), "abc");
    const auto attributes = cell->attributedStringValue()->attributesAtIndex_effectiveRange(0, nullptr);
    EXPECT_TRUE(attributes->objectForKey(NSForegroundColorAttributeName())->isEqual(NSColor::redColor()));
    EXPECT_TRUE(attributes->objectForKey(NSFontAttributeName())->isEqual(cell->font())) << "where it says nothing";
    cell->setStringValue("abc"_ns);
    EXPECT_TRUE(cell->attributedStringValue()
                    ->attribute_atIndex_effectiveRange(NSForegroundColorAttributeName(), 0, nullptr)
                    ->isEqual(NSColor::greenColor()));
    cell->setAttributedStringValue(nullptr);
    EXPECT_EQ(shown(cell), "");
}

TEST(CellSize, isThatOfTheTextOrOfALineWithRoomForABorder) {
    MeasuringToolkit toolkit;
    const auto cell = make<NSTextFieldCell>();
    EXPECT_EQ(cell->cellSize(), (NSSize{0, 16})) << "a line: 12 above, 3 below, 1 between";
    cell->setStringValue("abcde"_ns);
    EXPECT_EQ(cell->cellSize(), (NSSize{50, 16}));
    cell->setBordered(true);
    EXPECT_EQ(cell->cellSize(), (NSSize{54, 20}));
    EXPECT_EQ(cell->drawingRectForBounds({{0, 0}, {100, 24}}), (NSRect{{2, 2}, {96, 20}}));
    cell->setBordered(false);
    EXPECT_EQ(cell->drawingRectForBounds({{0, 0}, {100, 24}}), (NSRect{{0, 0}, {100, 24}}));
}

TEST(CellFrame, isABorderOrABezelOrNone) {
    const auto cell = make<NSCell>();
    cell->setBezeled(true);
    EXPECT_TRUE(cell->isBezeled());
    cell->setBordered(true);
    EXPECT_FALSE(cell->isBezeled());
    EXPECT_TRUE(cell->isBordered());
    cell->setBezeled(true);
    EXPECT_FALSE(cell->isBordered());
    cell->setBordered(false);
    EXPECT_FALSE(cell->isBezeled()) << "no border means no bezel either";
}

/// Draws `cell` in 100 by 24 points.
DrawingRecord drawnAlone(NSCell* cell) {
    return test::recorded([cell] {
        send<void>(cell, "drawWithFrame:inView:"_sel, NSRect{{0, 0}, {100, 24}}, nullptr);
    });
}

TEST(CellDrawing, isBezelThenBackgroundThenLineThenText) {
    const auto cell = make<NSTextFieldCell>();
    cell->setStringValue("abc"_ns);
    EXPECT_EQ(drawnAlone(cell).log, "text 'abc' 0,0 100x24\n");
    cell->setBezeled(true);
    cell->setDrawsBackground(true);
    cell->setBackgroundColor(NSColor::redColor());
    cell->setUsesSingleLineMode(true);
    EXPECT_EQ(drawnAlone(cell).log,
              "fill round 0 0 0,0 100x24 white\n"
              "fill 0,0 100x24 red\n"
              "line 1 round 0 0,0 100x24 light\n"
              "text 'abc' 2,2 96x20 on one line\n");
    cell->setDrawsBackground(false);
    cell->setBezelStyle(NSTextFieldRoundedBezel);
    EXPECT_EQ(drawnAlone(cell).log,
              "fill round 4 4 0,0 100x24 white\n"
              "line 1 round 4 0,0 100x24 light\n"
              "text 'abc' 2,2 96x20 on one line\n");
}

TEST(CellDrawing, isGreyWhenTheCellIsNotEnabled) {
    const auto cell = make<NSTextFieldCell>();
    cell->setStringValue("abc"_ns);
    cell->setTextColor(NSColor::redColor());
    cell->setEnabled(false);
    const DrawingRecord record = drawnAlone(cell);
    ASSERT_EQ(record.texts.size(), 1U);
    EXPECT_TRUE(
        record.attribute(NSForegroundColorAttributeName())->isEqual(NSColor::redColor()->colorWithAlphaComponent(0.5)));
    EXPECT_TRUE(cell->textColor()->isEqual(NSColor::redColor()));
}

TEST(CellDrawing, isNothingWithoutAContextOrRoom) {
    const auto cell = make<NSTextFieldCell>();
    cell->setStringValue("abc"_ns);
    cell->setBezeled(true);
    send<void>(cell, "drawWithFrame:inView:"_sel, NSRect{{0, 0}, {100, 24}}, nullptr);
    const DrawingRecord record = test::recorded([&cell] {
        cell->drawWithFrame_inView({{0, 0}, {-10, 24}}, nullptr);
        cell->drawInteriorWithFrame_inView({{0, 0}, {4, 24}}, nullptr);
        cell->setStringValue(nullptr);
        cell->drawInteriorWithFrame_inView({{0, 0}, {100, 24}}, nullptr);
    });
    EXPECT_EQ(record.log, "");
}

TEST(CellPlaceholder, isDrawnInPlaceOfAnEmptyText) {
    const auto cell = make<NSTextFieldCell>();
    EXPECT_EQ(cell->textForEmpty(), nullptr);
    cell->setFont(NSFont::systemFontOfSize(20));
    cell->setPlaceholderString("Price"_ns);
    DrawingRecord record = drawnAlone(cell);
    EXPECT_EQ(record.log, "text 'Price' 0,0 100x24\n");
    EXPECT_TRUE(record.attribute(NSFontAttributeName())->isEqual(NSFont::systemFontOfSize(20)));
    EXPECT_TRUE(record.attribute(NSForegroundColorAttributeName())->isEqual(NSColor::grayColor()));
    cell->setStringValue("5"_ns);
    EXPECT_EQ(drawnAlone(cell).log, "text '5' 0,0 100x24\n");
    cell->setStringValue(""_ns);
    cell->setPlaceholderString(nullptr);
    EXPECT_EQ(drawnAlone(cell).log, "");
}

TEST(CellPlaceholder, withAttributesTakesNothingFromTheCell) {
    const auto cell = make<NSTextFieldCell>();
    cell->setFont(NSFont::systemFontOfSize(20));
    cell->setPlaceholderString("Price"_ns);
    cell->setPlaceholderAttributedString(
        make<NSAttributedString>(&NSAttributedString::initWithString_attributes, "Lots"_ns,
                                 dictionary({{NSForegroundColorAttributeName(), NSColor::redColor()}})));
    EXPECT_EQ(cell->placeholderString()->utf8(), "Lots");
    const DrawingRecord record = drawnAlone(cell);
    EXPECT_EQ(record.log, "text 'Lots' 0,0 100x24\n");
    EXPECT_TRUE(record.attribute(NSForegroundColorAttributeName())->isEqual(NSColor::redColor()));
    EXPECT_TRUE(record.attribute(NSFontAttributeName())->isEqual(NSFont::systemFontOfSize(13)));
    cell->setPlaceholderString("Price"_ns);
    EXPECT_EQ(cell->placeholderAttributedString(), nullptr);
    cell->setPlaceholderAttributedString(nullptr);
    EXPECT_EQ(cell->placeholderString(), nullptr);
}

TEST(Cells, ofThePlainKindHaveNoTargetAndActionCellsDo) {
    const auto plain = make<NSCell>();
    plain->setTarget(plain);
    plain->setAction("act:"_sel);
    EXPECT_EQ(plain->target(), nullptr);
    EXPECT_FALSE(plain->action());
    const auto cell = make<NSActionCell>();
    {
        const auto target = make<NSObject>();
        cell->setTarget(target);
        cell->setAction("act:"_sel);
        EXPECT_EQ(cell->target(), target);
    }
    EXPECT_EQ(cell->target(), nullptr) << "the target is not kept";
    EXPECT_EQ(cell->action(), "act:"_sel);
}

TEST(SecureCell, showsABulletForEveryUnit) {
    const auto cell = make<NSSecureTextFieldCell>();
    cell->setStringValue("pass\U0001F511"_ns);
    EXPECT_EQ(cell->attributedStringValue()->string()->view(), std::u16string(6, u'\u2022'));
    EXPECT_EQ(shown(cell), "pass\U0001F511");
    EXPECT_EQ(drawnAlone(cell).texts.at(0).text->string()->view(), std::u16string(6, u'\u2022'));
    cell->setAttributedStringValue(make<NSAttributedString>(&NSAttributedString::initWithString, "secret"_ns));
    EXPECT_EQ(drawnAlone(cell).texts.at(0).text->string()->view(), std::u16string(6, u'\u2022'));
}

} // namespace
} // namespace zr
