#include <zrbasic/platform/foundation/pattern_p.h>

#include <gtest/gtest.h>
#include <atomic>
#include <barrier>
#include <string>
#include <thread>
#include <vector>

namespace zr::detail {
namespace {

constexpr int threadCount = 8;

template <typename Work>
void runAtOnce(Work work) {
    std::barrier start(threadCount);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&start, &work, thread] {
            start.arrive_and_wait();
            work(thread);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

std::u16string numbered(std::u16string text, int number) {
    for (const char digit : std::to_string(number))
        text += static_cast<char16_t>(digit);
    return text;
}

TEST(PatternCacheUnderThreads, compilesAPatternOnceHoweverManyWantIt) {
    const auto before = patternCompilationCount();
    std::atomic<int> found{0};
    runAtOnce([&found](int) {
        for (int i = 0; i < 200; ++i)
            found += firstMatch(u"shared ([a-z]+) \\d{1,3}", 0, u"a shared pattern 12").location == 2 ? 1 : 0;
    });
    EXPECT_EQ(found, threadCount * 200);
    EXPECT_EQ(patternCompilationCount(), before + 1);
}

TEST(PatternCacheUnderThreads, compilesAFailingPatternOnce) {
    const auto before = patternCompilationCount();
    std::atomic<int> found{0};
    runAtOnce([&found](int) {
        for (int i = 0; i < 200; ++i)
            found += matchesWhole(u"shared [failure", 0, u"shared [failure") ? 1 : 0;
    });
    EXPECT_EQ(found, 0);
    EXPECT_EQ(patternCompilationCount(), before + 1);
}

TEST(PatternCacheUnderThreads, staysRightWhileItOverflows) {
    std::atomic<int> wrong{0};
    runAtOnce([&wrong](int thread) {
        for (int i = 0; i < 600; ++i) {
            const int number = i * 7 % 400 + thread;
            const std::u16string text = numbered(u"n", number);
            wrong += matchesWhole(numbered(u"(n)", number), 0, text) ? 0 : 1;
            wrong += matchesWhole(numbered(u"(n)", number + 1), 0, text) ? 1 : 0;
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(PatternCacheUnderThreads, sharesACompiledPatternBetweenThreads) {
    const PatternRef pattern = compiledPattern(u"(a)(b)?", patternCaseInsensitive);
    std::atomic<std::size_t> count{0};
    runAtOnce([&](int) {
        for (int i = 0; i < 200; ++i)
            count += allMatches(pattern, u"AB a ab").count();
    });
    EXPECT_EQ(count, std::size_t{threadCount} * 200 * 3);
}

} // namespace
} // namespace zr::detail
