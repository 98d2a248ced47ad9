#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/json_serialization.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace zr {

namespace {

TEST(JsonThreads, textsAreReadAndWrittenOnManyThreadsAtOnce) {
    const std::string text = R"({"s":"ETHUSDT","c":2241.78,"list":[1,true,null,{"s":"again"}]})";
    const id shared = NSJSONSerialization::objectWithText(text, 0, nullptr);
    ASSERT_TRUE(shared);
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                const id own = NSJSONSerialization::objectWithText(text, 0, nullptr);
                right += own && own->isEqual(shared);
                right += NSJSONSerialization::textWithObject(shared, 0, nullptr) == text;
                right += !NSJSONSerialization::objectWithText(text.substr(0, text.size() - 1), 0, nullptr);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, 4 * 200 * 3);
}

TEST(JsonThreads, whatAThreadReadOutlivesIt) {
    id object;
    std::thread([&object] {
        object = NSJSONSerialization::objectWithText(R"([{"price":"1.5","price2":0.00001000}])", 0, nullptr);
    }).join();
    ASSERT_TRUE(object);
    EXPECT_EQ(NSJSONSerialization::textWithObject(object, 0, nullptr), R"([{"price":"1.5","price2":0.00001}])");
}

} // namespace

} // namespace zr
