#include <zrbasic/platform/foundation/coder.h>

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

TEST(Coder, isEmptyUnlessASubclassSaysOtherwise) {
    const auto coder = make<NSCoder>();
    EXPECT_FALSE(coder->containsValueForKey("NSFrame"_ns));
    EXPECT_EQ(coder->decodeObjectForKey("NSFrame"_ns), nullptr);
    EXPECT_EQ(coder->decodeRectForKey("NSFrame"_ns), NSZeroRect);
    EXPECT_FALSE(send<bool>(coder, "containsValueForKey:"_sel, NSNull::null()));
    EXPECT_EQ(send<id>(coder, "decodeObjectForKey:"_sel, nullptr), nullptr);
    EXPECT_EQ(send<NSRect>(coder, "decodeRectForKey:"_sel, nullptr), NSZeroRect);
}

} // namespace
} // namespace zr
