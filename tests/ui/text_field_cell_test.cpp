#include <zrbasic/ui/text_field.h>

#include <zrbasic/platform/appkit/event.h>
#include "../appkit/canvas_testing.h"
#include "../appkit/measuring_testing.h"
#include "../appkit/text_field_testing.h"

#include <limits>

namespace zr {
namespace {

using test::MeasuringToolkit;

struct Centring {
    const char* name;
    NSRect frame;
    double ascender;
    double descender;
    NSRect adjusted;
};

constexpr Centring table[] = {
    {"whole", {{0, 0}, {100, 24}}, 12, -3, {{5, 5}, {90, 14}}},
    {"rounded down", {{0, 0}, {100, 30}}, 12.4, -3.1, {{5, 7}, {90, 16}}},
    {"rounded down below zero", {{0, 0}, {100, 17}}, 12, -3, {{5, 1}, {90, 15}}},
    {"moved", {{10.5, -20}, {100, 24}}, 12, -3, {{15.5, -15}, {90, 14}}},
    {"too small", {{0, 0}, {8, 4}}, 2, 0, {{5, 2}, {-2, 0}}},
    {"smaller still", {{0, 0}, {0, 2}}, 1, 0, {{5, 2}, {-10, -2}}},
    {"negative", {{0, 0}, {-4, -10}}, 12, -3, {{5, -12}, {-14, 14}}},
    {"nothing", {{0, 0}, {0, 0}}, 12, -3, {{5, -7}, {-10, 14}}},
};

TEST(TextFieldCell, centresItsTextInWholePoints) {
    MeasuringToolkit toolkit;
    const auto plain = make<ZRXTextFieldCell>();
    plain->setXPadding(5);
    const auto secure = make<ZRXSecureTextFieldCell>();
    for (const Centring& row : table) {
        SCOPED_TRACE(row.name);
        toolkit.metrics = {row.ascender, row.descender, 0};
        EXPECT_EQ(test::written(plain->adjustedFrameToVerticallyCenterText(row.frame)), test::written(row.adjusted));
        EXPECT_EQ(test::written(secure->adjustedFrameToVerticallyCenterText(row.frame)), test::written(row.adjusted));
    }
}

TEST(TextFieldCell, toleratesFramesThatAreNone) {
    const auto cell = make<ZRXTextFieldCell>();
    const double infinity = std::numeric_limits<double>::infinity();
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(NSIsEmptyRect(cell->adjustedFrameToVerticallyCenterText({{0, 0}, {none, none}})));
    EXPECT_TRUE(NSIsEmptyRect(cell->adjustedFrameToVerticallyCenterText({{0, 0}, {100, infinity}})));
    EXPECT_EQ(cell->adjustedFrameToVerticallyCenterText({{0, 0}, {100, 1e18}}).size.width, 100);
}

TEST(TextFieldCell, insetsByItsPaddingAndTheSecureOneAlwaysByFive) {
    MeasuringToolkit toolkit;
    const auto field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSRect{{0, 0}, {100, 24}});
    field->setStringValue("abc"_ns);
    EXPECT_EQ(test::drawn(field).log,
              "fill 0,0 100x24 clear\n"
              "text 'abc' 5,5 90x14 on one line\n");
    field->setXPadding(20);
    EXPECT_EQ(test::drawn(field).log,
              "fill 0,0 100x24 clear\n"
              "text 'abc' 20,5 60x14 on one line\n");
    field->setXPadding(-3);
    EXPECT_EQ(test::written(test::drawn(field).texts.at(0).rect), "-3,5 106x14");
    field->setXPadding(50);
    EXPECT_EQ(test::drawn(field).log, "fill 0,0 100x24 clear\n") << "no room for text";
    const auto secure = make<ZRXSecureTextField>(&ZRXSecureTextField::initWithFrame, NSRect{{0, 0}, {100, 24}});
    secure->setStringValue("abc"_ns);
    EXPECT_EQ(test::written(test::drawn(secure).texts.at(0).rect), "5,5 90x14");
}

TEST(TextFieldCell, fillsTheWholeFrameOnceWithItsBackground) {
    MeasuringToolkit toolkit;
    const auto field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSRect{{0, 0}, {100, 24}});
    field->setBackgroundColor(NSColor::redColor());
    for (const bool draws : {true, false}) {
        field->setDrawsBackground(draws);
        EXPECT_EQ(test::drawn(field).log, "fill 0,0 100x24 red\n");
    }
    field->setBackgroundColor(nullptr);
    EXPECT_EQ(test::drawn(field).log, "");
    const auto secure = make<ZRXSecureTextFieldCell>();
    secure->setBackgroundColor(NSColor::greenColor());
    const auto record = test::recorded([&secure] {
        secure->drawInteriorWithFrame_inView({{1, 2}, {30, 40}}, nullptr);
    });
    EXPECT_EQ(record.log, "fill 1,2 30x40 green\n");
    secure->drawInteriorWithFrame_inView({{1, 2}, {30, 40}}, nullptr);
}

template <class Field>
class EditedStyledField : public test::FieldsInWindow<Field> {};

using BothEditedFields = testing::Types<ZRXTextField, ZRXSecureTextField>;
TYPED_TEST_SUITE(EditedStyledField, BothEditedFields);

TYPED_TEST(EditedStyledField, hasTheEditorWhereTheTextWasDrawn) {
    MeasuringToolkit toolkit;
    this->field->setStringValue("abc"_ns);
    const NSRect idle = test::drawn(this->field).texts.at(0).rect;
    this->window->makeFirstResponder(this->field);
    ASSERT_TRUE(this->isEdited(this->field));
    EXPECT_EQ(test::written(this->editor()->frame()), test::written(idle));
    EXPECT_EQ(test::drawn(this->field).log, "fill 0,0 120x24 clear\n");
    this->field->setFrameSize({200, 40});
    EXPECT_EQ(test::written(this->editor()->frame()), "5,13 190x14");
}

TYPED_TEST(EditedStyledField, hasTheInsertionPointWhereItIsClicked) {
    MeasuringToolkit toolkit;
    this->field->setStringValue("abcdef"_ns);
    EventFields fields;
    fields.location = {10 + 5 + 31, 110};
    this->field->mouseDown(NSEvent::eventWithFields(fields));
    ASSERT_TRUE(this->isEdited(this->field));
    EXPECT_EQ(this->editor()->selectedRange(), (NSRange{3, 0}));
    EXPECT_EQ(test::written(this->editor()->frame()), "5,5 110x14");
}

TEST(TextFieldCell, takesTheEditorAlongWithItsPadding) {
    MeasuringToolkit toolkit;
    const auto window = make<NSWindow>();
    const auto field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSRect{{0, 0}, {100, 24}});
    window->contentView()->addSubview(field);
    window->makeFirstResponder(field);
    field->setXPadding(10);
    EXPECT_EQ(test::written(field->currentEditor()->frame()), "10,5 80x14");
}

/// Puts the text somewhere else.
class LowCell : public ZRXTextFieldCell {
    ZR_OBJECT(LowCell, ZRXTextFieldCell)
  public:
    NSRect adjustedFrameToVerticallyCenterText(NSRect) override { return {{1, 1}, {50, 10}}; }
};

TEST(TextFieldCell, asksItselfWhereTheTextStands) {
    const auto cell = make<LowCell>();
    cell->setStringValue("abc"_ns);
    const auto record = test::recorded([&cell] { cell->drawInteriorWithFrame_inView({{0, 0}, {100, 24}}, nullptr); });
    EXPECT_EQ(record.log, "text 'abc' 1,1 50x10\n");
    cell->editWithFrame_inView_editor_delegate_event(NSZeroRect, nullptr, nullptr, nullptr, nullptr);
    cell->selectWithFrame_inView_editor_delegate_start_length(NSZeroRect, nullptr, nullptr, nullptr, -1, -1);
    cell->endEditing(nullptr);
    EXPECT_EQ(cell->setUpFieldEditorAttributes(nullptr), nullptr);
}

} // namespace
} // namespace zr
