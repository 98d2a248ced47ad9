#include <zrbasic/platform/foundation/string.h>

#include <zrbasic/platform/foundation/character_set.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/uuid.h>

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace zr {
namespace {

constexpr int threadCount = 4;

// Runs `action` on several threads that start together.
template <typename Action>
void together(Action action) {
    std::atomic<int> waiting{threadCount};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&waiting, &action, i] {
            for (--waiting; waiting > 0;) {
                std::this_thread::yield();
            }
            action(i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(SharedStrings, areReadByManyThreads) {
    const Ref<NSString> shared = NSString::fromUtf16(u"caf\u00E9 12 \U0001F600");
    const NSUInteger hash = NSString::fromUtf16(shared->view())->hash();
    std::atomic<int> failures{0};
    together([&](int) {
        for (int i = 0; i < 200; ++i) {
            const Ref<NSString> kept = shared;
            failures += kept->hash() == hash ? 0 : 1;
            failures += kept->rangeOfString(u"e\u0301"_ns) == NSMakeRange(3, 1) ? 0 : 1;
            failures += kept->compare("caff"_ns) == NSOrderedAscending ? 0 : 1;
            failures += kept->uppercaseString()->isEqualToString(u"CAF\u00C9 12 \U0001F600"_ns) ? 0 : 1;
        }
    });
    EXPECT_EQ(failures, 0);
}

TEST(SharedStrings, constantsAreMadeOnce) {
    std::vector<NSObject*> letters(threadCount);
    std::vector<NSObject*> dates(threadCount);
    std::vector<NSObject*> literals(threadCount);
    together([&](int i) {
        const auto place = static_cast<std::size_t>(i);
        letters[place] = NSCharacterSet::lowercaseLetterCharacterSet().get();
        dates[place] = NSDate::distantPast().get();
        literals[place] = "made by whichever thread is first"_ns.get();
    });
    for (const auto& made : {letters, dates, literals}) {
        EXPECT_EQ(std::set<NSObject*>(made.begin(), made.end()).size(), 1U);
    }
}

TEST(SharedStrings, formattingNeedsNoLock) {
    std::atomic<int> failures{0};
    together([&](int i) {
        for (int k = 0; k < 200; ++k) {
            const Ref<NSString> text = NSString::stringWithFormat("%d %.2f %@"_ns, i, 1.5, "x"_ns);
            failures += text->hasSuffix(" 1.50 x"_ns) ? 0 : 1;
        }
    });
    EXPECT_EQ(failures, 0);
}

TEST(RandomIdentifiers, neverRepeatAcrossThreads) {
    std::vector<std::vector<std::string>> made(threadCount);
    together([&](int i) {
        for (int k = 0; k < 500; ++k) {
            made[static_cast<std::size_t>(i)].push_back(detail::randomUUIDText());
        }
    });
    std::set<std::string> all;
    for (const auto& own : made) {
        all.insert(own.begin(), own.end());
    }
    EXPECT_EQ(all.size(), threadCount * 500U);
}

} // namespace
} // namespace zr
