#include <zrbasic/platform/foundation/affine_transform.h>

#include "checks.h"

#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zr {
namespace {

using test::raisedName;

Ref<NSAffineTransform> fresh() {
    return NSAffineTransform::transform();
}

void expectNear(NSPoint actual, NSPoint expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
}

TEST(AffineTransform, changesNothingAtFirst) {
    EXPECT_EQ(fresh()->transformStruct(), NSAffineTransformStruct{});
    EXPECT_EQ(fresh()->transformPoint({3, -4}), NSMakePoint(3, -4));
    EXPECT_EQ(fresh()->transformSize({3, -4}), NSMakeSize(3, -4));
    EXPECT_EQ(make<NSAffineTransform>(&NSAffineTransform::initWithTransform, nullptr)->transformStruct(),
              NSAffineTransformStruct{});
}

TEST(AffineTransform, doesWhatIsAddedLastFirst) {
    const auto transform = fresh();
    transform->translateXBy_yBy(10, 20);
    transform->scaleXBy_yBy(2, 3);
    EXPECT_EQ(transform->transformPoint({1, 1}), NSMakePoint(12, 23));
    EXPECT_EQ(transform->transformSize({1, 1}), NSMakeSize(2, 3)) << "a size is not shifted";
    const auto other = fresh();
    other->scaleBy(2);
    other->translateXBy_yBy(10, 20);
    EXPECT_EQ(other->transformPoint({1, 1}), NSMakePoint(22, 42));
}

TEST(AffineTransform, turnsCounterclockwise) {
    const auto transform = fresh();
    transform->rotateByDegrees(30);
    expectNear(transform->transformPoint({2, 0}), {std::sqrt(3), 1});
    const auto radians = fresh();
    radians->rotateByRadians(std::acos(0.5));
    expectNear(radians->transformPoint({2, 0}), {1, std::sqrt(3)});
    const auto steep = fresh();
    steep->rotateByDegrees(-100);
    expectNear(steep->transformPoint({1, 0}), {std::cos(100 * M_PI / 180), -std::sin(100 * M_PI / 180)});
}

TEST(AffineTransform, turnsWholeQuartersExactly) {
    struct {
        double degrees;
        NSPoint expected;
    } const rows[] = {{0, {1, 2}},    {90, {-2, 1}},  {180, {-1, -2}},  {270, {2, -1}},  {360, {1, 2}},
                      {-90, {2, -1}}, {450, {-2, 1}}, {-180, {-1, -2}}, {-270, {-2, 1}}, {360e9, {1, 2}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.degrees);
        const auto transform = fresh();
        transform->rotateByDegrees(row.degrees);
        EXPECT_EQ(transform->transformPoint({1, 2}), row.expected);
    }
}

TEST(AffineTransform, joinsWithOthersBeforeAndAfter) {
    const auto shift = fresh();
    shift->translateXBy_yBy(10, 0);
    const auto both = fresh();
    both->scaleBy(2);
    both->prependTransform(shift);
    EXPECT_EQ(both->transformPoint({1, 1}), NSMakePoint(22, 2));
    both->appendTransform(shift);
    EXPECT_EQ(both->transformPoint({1, 1}), NSMakePoint(32, 2));
    both->appendTransform(both);
    EXPECT_EQ(both->transformPoint({1, 1}), NSMakePoint(94, 4));
    both->prependTransform(nullptr);
    both->appendTransform(nullptr);
    EXPECT_EQ(both->transformPoint({1, 1}), NSMakePoint(94, 4));
}

TEST(AffineTransform, isUndoneByItsInverse) {
    const auto transform = fresh();
    transform->setTransformStruct({2, 1, -3, 5, 7, 11});
    const NSPoint there = transform->transformPoint({4, 9});
    transform->invert();
    expectNear(transform->transformPoint(there), {4, 9});
    const auto flat = fresh();
    flat->scaleXBy_yBy(0, 1);
    EXPECT_EQ(raisedName([&] { flat->invert(); }), NSGenericException);
    flat->setTransformStruct({NAN, 0, 0, 1, 0, 0});
    EXPECT_EQ(raisedName([&] { flat->invert(); }), NSGenericException);
}

TEST(AffineTransform, keepsNumbersThatAreNotFinite) {
    const auto transform = fresh();
    transform->translateXBy_yBy(std::numeric_limits<double>::infinity(), 1);
    EXPECT_TRUE(std::isinf(transform->transformPoint({0, 0}).x));
    for (const double degrees : {double(NAN), double(INFINITY)}) {
        const auto turned = fresh();
        turned->rotateByDegrees(degrees);
        EXPECT_TRUE(std::isnan(turned->transformPoint({1, 1}).x));
    }
}

TEST(AffineTransform, equalsOneOfTheSameNumbers) {
    const auto transform = fresh();
    transform->translateXBy_yBy(1, 2);
    const auto copy = cast<NSAffineTransform>(transform->copy());
    EXPECT_TRUE(transform->isEqual(copy));
    EXPECT_EQ(transform->hash(), copy->hash());
    copy->scaleBy(2);
    EXPECT_FALSE(transform->isEqual(copy)) << "a copy is one of its own";
    EXPECT_FALSE(transform->isEqual("transform"_ns));
    EXPECT_FALSE(transform->isEqual(nullptr));
}

TEST(AffineTransform, answersMessages) {
    const id transform = send<id>(NSAffineTransform::classObject(), "transform"_sel);
    send<void>(transform, "translateXBy:yBy:"_sel, 1.0, 2.0);
    send<void>(transform, "scaleXBy:yBy:"_sel, 2.0, 3.0);
    send<void>(transform, "rotateByDegrees:"_sel, 90.0);
    EXPECT_EQ(send<NSPoint>(transform, "transformPoint:"_sel, NSMakePoint(1, 0)), NSMakePoint(1, 5));
    EXPECT_EQ(send<NSAffineTransformStruct>(transform, "transformStruct"_sel).tY, 2);
}

} // namespace
} // namespace zr
