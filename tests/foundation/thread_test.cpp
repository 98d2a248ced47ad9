#include <zrbasic/platform/foundation/thread.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace zr;

TEST(Thread, knowsTheMainThread) {
    EXPECT_TRUE(NSThread::isMainThread());
    bool isMain = true;
    bool isMainByMessage = true;
    std::thread([&] {
        isMain = NSThread::isMainThread();
        isMainByMessage = send<bool>(NSThread::classObject(), "isMainThread"_sel);
    }).join();
    EXPECT_FALSE(isMain);
    EXPECT_FALSE(isMainByMessage);
    EXPECT_TRUE(NSThread::isMainThread()) << "and again";
    EXPECT_TRUE(send<bool>(NSThread::classObject(), "isMainThread"_sel));
}

} // namespace
