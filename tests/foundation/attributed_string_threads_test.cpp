#include <zrbasic/platform/foundation/attributed_string.h>

#include "run_listing.h"

#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace zr {
namespace {

TEST(AttributedStringThreads, readOneTextAtOnce) {
    const Ref<NSMutableAttributedString> changing =
        make<NSMutableAttributedString>(&NSAttributedString::initWithString, "abcdef"_ns);
    changing->addAttribute_value_range("A"_ns, box(1), {0, 3});
    const Ref<NSAttributedString> text = cast<NSAttributedString>(changing->copy());
    const Ref<NSAttributedString> never = make<NSAttributedString>();
    const auto read = [&] {
        for (int turn = 0; turn < 200; ++turn) {
            (void)text->string()->length();
            (void)text->attributedSubstringFromRange({1, 4})->isEqual(text);
            (void)text->hash();
            (void)never->string();
        }
    };
    std::vector<std::thread> others;
    for (int count = 0; count < 3; ++count) {
        others.emplace_back(read);
    }
    read();
    for (std::thread& other : others) {
        other.join();
    }
    EXPECT_EQ(test::runListing(text), "abc{A=1}def{}");
    EXPECT_EQ(never->string()->length(), 0U);
}

} // namespace
} // namespace zr
