#include <zrbasic/platform/foundation/null.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

namespace zr {

namespace {

TEST(NullObject, isOneObjectInTheProcess) {
    EXPECT_NE(NSNull::null(), nullptr);
    EXPECT_EQ(NSNull::null(), NSNull::null());
    EXPECT_EQ(make<NSNull>().get(), NSNull::null());
    EXPECT_EQ(send<id>(NSNull::classObject(), "null"_sel).get(), NSNull::null());
    EXPECT_EQ(NSNull::null()->copy().get(), NSNull::null());
}

TEST(NullObject, differsFromTheNullPointerAndFromEverythingElse) {
    NSNull* const null = NSNull::null();
    EXPECT_FALSE(null->isEqual(nullptr));
    EXPECT_FALSE(null->isEqual("<null>"_ns));
    EXPECT_FALSE(null->isEqual(box(0)));
    EXPECT_FALSE(box(0)->isEqual(null));
    EXPECT_TRUE(null->isEqual(NSNull::null()));
    EXPECT_TRUE(null->isEqualTo(NSNull::null()));
}

TEST(NullObject, isRecognised) {
    EXPECT_TRUE(isNull(NSNull::null()));
    EXPECT_FALSE(isNull(nullptr));
    EXPECT_FALSE(isNull("<null>"_ns));
    EXPECT_FALSE(isNull(box(0)));
    EXPECT_TRUE(NSNull::null()->isKindOfClass(NSNull::classObject()));
}

TEST(NullObject, isDescribedInAngleBrackets) {
    EXPECT_EQ(NSNull::null()->description()->utf8(), "<null>");
    EXPECT_EQ(send<Ref<NSString>>(NSNull::null(), "description"_sel)->utf8(), "<null>");
    EXPECT_EQ(array({NSNull::null()})->description()->utf8(), "(\n    \"<null>\"\n)");
    EXPECT_EQ(array({NSNull::null()})->componentsJoinedByString(nullptr)->utf8(), "<null>");
}

} // namespace

} // namespace zr
