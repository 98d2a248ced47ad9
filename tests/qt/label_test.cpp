#include "field_testing.h"
#include "pictures.h"

#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/ui/label.h>

namespace zr::test {
namespace {

class LabelTarget : public NSObject {
    ZR_OBJECT(LabelTarget, NSObject)
  public:
    void act(NSObject* sender) {
        ++presses;
        from = Ref<NSObject>(sender);
    }
    ZR_METHOD(act, "act:")

    int presses = 0;
    id from;
};

class LabelOnScreen : public FieldWindow {
  protected:
    void SetUp() override {
        label = make<ZRXLabel>(&ZRXLabel::initWithStyle, NSUInteger(2));
        label->setFrame({{20, 100}, {160, 24}});
        label->setStringValue("Forgotten?"_ns);
        window->contentView()->addSubview(label);
        show();
        pointAt({10, 150});
    }

    /// Moves the real pointer, in points of the window with y upwards.
    void pointAt(NSPoint point) {
        QTest::mouseMove(handle(), pixelOf(window->contentView(), point));
        QCoreApplication::processEvents();
    }
    void enter() { pointAt({60, 112}); }
    void leave() { pointAt({10, 150}); }

    [[nodiscard]] bool isUnderlined() const {
        const id value = label->attributedStringValue()->attribute_atIndex_effectiveRange(
            NSUnderlineStyleAttributeName(), 0, nullptr);
        return value && cast<NSNumber>(value.get())->integerValue() == NSUnderlineStyleSingle;
    }
    /// Pixels of the text's colour in the longest row.
    [[nodiscard]] int longestRow() const {
        const QImage all = pictureOf(*qt::widget(window.get()));
        int longest = 0;
        for (int y = 36; y < 60; ++y) {
            int row = 0;
            for (int x = 20; x < 180; ++x) {
                const QColor pixel = all.pixelColor(x, y);
                row += pixel.alpha() > 200 && pixel.lightness() < 60 ? 1 : 0;
            }
            longest = std::max(longest, row);
        }
        return longest;
    }
    [[nodiscard]] Qt::CursorShape cursor() const {
        QWidget* const host = qt::widget(window.get());
        const QWidget* const under = host->childAt(pixelOf(window->contentView(), {60, 112}));
        return under ? under->cursor().shape() : host->cursor().shape();
    }

    Ref<ZRXLabel> label;
};

TEST_F(LabelOnScreen, styleTwoIsUnderlinedWhileThePointerIsOverIt) {
    EXPECT_FALSE(isUnderlined());
    const int plain = longestRow();
    enter();
    EXPECT_TRUE(eventually([this] { return isUnderlined(); }));
    EXPECT_GT(longestRow(), plain + 20);
    leave();
    EXPECT_TRUE(eventually([this] { return !isUnderlined(); }));
    EXPECT_LE(longestRow(), plain);
}

TEST_F(LabelOnScreen, anotherStyleTakesTheUnderlineAwayAtOnce) {
    enter();
    ASSERT_TRUE(eventually([this] { return isUnderlined(); }));
    EXPECT_EQ(cursor(), Qt::PointingHandCursor);
    label->setStyle(0);
    EXPECT_FALSE(isUnderlined());
    enter();
    EXPECT_TRUE(eventually([this] { return cursor() == Qt::ArrowCursor; }));
}

TEST_F(LabelOnScreen, stylesBesideTwoAreNeverUnderlined) {
    for (const NSUInteger style : {NSUInteger(0), NSUInteger(1), NSUInteger(5)}) {
        SCOPED_TRACE(style);
        label->setStyle(style);
        enter();
        EXPECT_FALSE(isUnderlined());
        EXPECT_EQ(cursor(), style == 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
        leave();
        EXPECT_FALSE(isUnderlined());
    }
}

TEST_F(LabelOnScreen, aPressSendsTheActionWhateverTheStyle) {
    const auto target = make<LabelTarget>();
    label->setTarget(target);
    label->setAction("act:"_sel);
    for (const NSUInteger style : {NSUInteger(0), NSUInteger(1), NSUInteger(2)}) {
        SCOPED_TRACE(style);
        label->setStyle(style);
        target->presses = 0;
        QTest::mousePress(handle(), Qt::LeftButton, {}, pixelOf(label, {20, 12}));
        EXPECT_EQ(target->presses, 1);
        EXPECT_EQ(target->from, label);
        QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixelOf(label, {20, 12}));
        EXPECT_EQ(target->presses, 1);
    }
}

TEST_F(LabelOnScreen, aPressIsNoEditing) {
    QTest::mouseClick(handle(), Qt::LeftButton, {}, pixelOf(label, {20, 12}));
    EXPECT_EQ(line(), nullptr);
    EXPECT_FALSE(label->currentEditor());
}

TEST_F(LabelOnScreen, theUnderlineFollowsALabelThatWasMadeLarger) {
    label->setFrame({{20, 60}, {160, 64}});
    pointAt({60, 70});
    EXPECT_TRUE(eventually([this] { return isUnderlined(); }));
    pointAt({60, 40});
    EXPECT_TRUE(eventually([this] { return !isUnderlined(); }));
}

} // namespace
} // namespace zr::test
