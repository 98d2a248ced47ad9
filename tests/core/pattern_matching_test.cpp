#include <zrbasic/core/pattern_matching.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/regular_expression.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <gtest/gtest.h>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace zr {
namespace {

std::string text(NSObject* object) {
    if (object == nullptr)
        return "null";
    if (auto* array = cast<NSArray>(object)) {
        std::string result;
        for (const id& element : *array) {
            result += result.empty() ? '[' : ' ';
            result += text(element);
        }
        return (result.empty() ? "[" : result) + "]";
    }
    return cast<NSString>(object)->utf8();
}

const std::vector<Ref<NSString>>& uselessPatterns() {
    static const auto& patterns =
        *new std::vector<Ref<NSString>>{nullptr, ""_ns, "("_ns, "a{2,1}"_ns, "\\"_ns, "[b-a]"_ns};
    return patterns;
}

TEST(FirstMatch, isASubstringAndCaseSensitive) {
    EXPECT_EQ(text(matchResultWithPattern("a12 34"_ns, "\\d+"_ns)), "12");
    EXPECT_EQ(text(matchResultWithPattern("ab"_ns, "B"_ns)), "null");
    EXPECT_EQ(text(matchResultWithPattern("abc"_ns, "x*"_ns)), "") << "an empty match is a match";
    EXPECT_EQ(text(matchResultWithPattern(""_ns, "x*"_ns)), "");
    EXPECT_EQ(text(matchResultWithPattern(u"x😀y"_ns, "[^a-z]"_ns)), "😀");
    EXPECT_EQ(text(matchResultWithPattern(nullptr, "a"_ns)), "null");
    for (NSString* pattern : uselessPatterns())
        EXPECT_EQ(text(matchResultWithPattern("a(b"_ns, pattern)), "null");
}

TEST(AllMatches, areInOrderAndDisregardCase) {
    EXPECT_EQ(text(matchResultsWithPattern("aAbA"_ns, "a"_ns)), "[a A A]");
    EXPECT_EQ(text(matchResultsWithPattern("xyz"_ns, "a"_ns)), "[]");
    EXPECT_EQ(text(matchResultsWithPattern("baac"_ns, "a*"_ns)), "[ aa  ]");
    EXPECT_EQ(text(matchResultsWithPattern(nullptr, "a"_ns)), "null");
    for (NSString* pattern : uselessPatterns())
        EXPECT_EQ(text(matchResultsWithPattern("a(b"_ns, pattern)), "[]");
}

TEST(GroupsOfMatches, leaveOutGroupsThatTookNoPart) {
    EXPECT_EQ(text(matchSubResultsWithPattern("ab"_ns, "(a)|(b)"_ns)), "[[a a] [b b]]");
    EXPECT_EQ(text(matchSubResultsWithPattern("k=v;K=w"_ns, "(k)=(\\w)"_ns)), "[[k=v k v] [K=w K w]]");
    EXPECT_EQ(text(matchSubResultsWithPattern("b"_ns, "(a?)(b)"_ns)), "[[b  b]]") << "an empty group took part";
    EXPECT_EQ(text(matchSubResultsWithPattern("xyz"_ns, "(a)"_ns)), "[]");
    EXPECT_EQ(text(matchSubResultsWithPattern(nullptr, "(a)"_ns)), "null");
    for (NSString* pattern : uselessPatterns())
        EXPECT_EQ(text(matchSubResultsWithPattern("a(b"_ns, pattern)), "[]");
}

TEST(GroupsOfMatches, areHandedToTheCallbackInOrder) {
    std::string log;
    matchWithPattern_matchResult("aB"_ns, "([a-z])"_ns, [&log](NSArray* texts) { log += text(texts); });
    EXPECT_EQ(log, "[a a][B B]");
    matchWithPattern_matchResult("aB"_ns, "x"_ns, [&log](NSArray*) { log += "called"; });
    matchWithPattern_matchResult(nullptr, "."_ns, [&log](NSArray*) { log += "called"; });
    matchWithPattern_matchResult("aB"_ns, nullptr, [&log](NSArray*) { log += "called"; });
    matchWithPattern_matchResult("aB"_ns, "."_ns, nullptr);
    EXPECT_EQ(log, "[a a][B B]");
}

TEST(GroupsOfMatches, areThoseOfTheBeginningWhateverTheCallbackDoes) {
    Ref<NSMutableString> receiver = NSMutableString::stringWithString("a1b2"_ns);
    std::string log;
    matchWithPattern_matchResult(receiver, "\\d"_ns, [&](NSArray* texts) {
        log += text(texts);
        if (receiver)
            receiver->setString(""_ns);
        receiver = nullptr;
    });
    EXPECT_EQ(log, "[1][2]");
}

TEST(GroupsOfMatches, letExceptionsThroughAndGiveTheLockBack) {
    const Ref<NSString> receiver = NSString::fromUtf8("aa");
    EXPECT_THROW(
        matchWithPattern_matchResult(receiver, "a"_ns, [](NSArray*) { NSException::raise(NSGenericException, "x"); }),
        NSException);
    std::atomic<bool> taken{false};
    std::thread([&] {
        const Synchronized lock(receiver);
        taken = true;
    }).join();
    EXPECT_TRUE(taken);
}

TEST(GroupsOfMatches, holdTheReceiversLockWhileTheyAreCollected) {
    const Ref<NSString> receiver = NSString::fromUtf8("a");
    std::atomic<bool> taken{false};
    std::thread other;
    matchWithPattern_matchResult(receiver, "a"_ns, [&](NSArray*) {
        const Synchronized again(receiver);
        other = std::thread([&] {
            const Synchronized lock(receiver);
            taken = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(taken) << "the lock must be held during the callback";
        EXPECT_EQ(text(matchResultsWithPattern(receiver, "a"_ns)), "[a]") << "the same thread may take it again";
    });
    other.join();
    EXPECT_TRUE(taken);
}

TEST(WholeMatch, spansTheReceiver) {
    EXPECT_TRUE(isLegalObjectWithPattern("ab"_ns, "a|ab"_ns));
    EXPECT_FALSE(isLegalObjectWithPattern("abc"_ns, "a|ab"_ns));
    EXPECT_FALSE(isLegalObjectWithPattern("AB"_ns, "ab"_ns));
    EXPECT_FALSE(isLegalObjectWithPattern("123\n"_ns, "^\\d+$"_ns)) << "a line feed at the end is not overlooked";
    EXPECT_TRUE(isLegalObjectWithPattern(""_ns, "a?"_ns));
    EXPECT_FALSE(isLegalObjectWithPattern(nullptr, "a?"_ns));
    for (NSString* pattern : uselessPatterns())
        EXPECT_FALSE(isLegalObjectWithPattern(""_ns, pattern));
}

TEST(TemplateReplacement, fillsInGroupsAndDisregardsCase) {
    EXPECT_EQ(text(stringByReplacingWithPattern_withString("xABy"_ns, "(a)(b)"_ns, "$2$1"_ns)), "xBAy");
    EXPECT_EQ(text(stringByReplacingWithPattern_withString("abc"_ns, "x*"_ns, "-"_ns)), "-a-b-c-");
    EXPECT_EQ(text(stringByReplacingWithPattern_withString("13812345678"_ns, "(\\d{3})\\d{4}"_ns, "$1****"_ns)),
              "138****5678");
    EXPECT_EQ(text(stringByReplacingWithPattern_withString("abc"_ns, "b"_ns, ""_ns)), "ac");
    EXPECT_EQ(text(stringByReplacingWithPattern_withString("abc"_ns, "x"_ns, "-"_ns)), "abc");
    EXPECT_EQ(text(stringByReplacingWithPattern_withString("a"_ns, "(a)"_ns, "\\$1"_ns)), "$1");
}

TEST(TemplateReplacement, givesTheReceiverItselfWhereThereIsNothingToDoItWith) {
    const Ref<NSString> receiver = NSString::fromUtf8("a(b");
    for (NSString* pattern : uselessPatterns())
        EXPECT_EQ(stringByReplacingWithPattern_withString(receiver, pattern, "-"_ns), receiver);
    EXPECT_EQ(stringByReplacingWithPattern_withString(receiver, "a"_ns, nullptr), receiver);
    EXPECT_FALSE(stringByReplacingWithPattern_withString(nullptr, "a"_ns, "-"_ns));
}

TEST(CallbackReplacement, walksFromTheLastMatchToTheFirst) {
    std::string log;
    const Ref<NSString> result = stringByReplacingWithPattern_replaceBlock(
        "a1b22c333"_ns, "[A-Z](\\d+)"_ns, [&log](NSMutableString* working, NSTextCheckingResult* match, bool&) {
            log += text(working) + ":" + text(working->substringWithRange(match->range())) + " ";
            return NSString::stringWithFormat("<%@>"_ns, working->substringWithRange(match->rangeAtIndex(1)));
        });
    EXPECT_EQ(text(result), "<1><22><333>");
    EXPECT_EQ(log, "a1b22c333:c333 a1b22<333>:b22 a1<22><333>:a1 ");
}

TEST(CallbackReplacement, stopsBehindTheReplacementThatSaidSo) {
    int calls = 0;
    const auto stopAtSecond = [&calls](NSMutableString*, NSTextCheckingResult*, bool& stop) {
        stop = ++calls == 2;
        return "-"_ns;
    };
    EXPECT_EQ(text(stringByReplacingWithPattern_replaceBlock("1 2 3 4"_ns, "\\d"_ns, stopAtSecond)), "1 2 - -");
    EXPECT_EQ(calls, 2);
}

TEST(CallbackReplacement, replacesWithNothingForNull) {
    const auto nothing = [](NSMutableString*, NSTextCheckingResult*, bool&) { return Ref<NSString>(); };
    EXPECT_EQ(text(stringByReplacingWithPattern_replaceBlock("a1b2"_ns, "\\d"_ns, nothing)), "ab");
    const auto dash = [](NSMutableString*, NSTextCheckingResult*, bool&) { return "-"_ns; };
    EXPECT_EQ(text(stringByReplacingWithPattern_replaceBlock("abc"_ns, "x*"_ns, dash)), "-a-b-c-");
}

TEST(CallbackReplacement, givesTheReceiverItselfWhereNothingMatches) {
    const Ref<NSString> receiver = NSString::fromUtf8("a(b");
    int calls = 0;
    const auto count = [&calls](NSMutableString*, NSTextCheckingResult*, bool&) {
        ++calls;
        return "-"_ns;
    };
    EXPECT_EQ(stringByReplacingWithPattern_replaceBlock(receiver, "x"_ns, count), receiver);
    for (NSString* pattern : uselessPatterns())
        EXPECT_EQ(stringByReplacingWithPattern_replaceBlock(receiver, pattern, count), receiver);
    EXPECT_EQ(stringByReplacingWithPattern_replaceBlock(receiver, "a"_ns, nullptr), receiver);
    EXPECT_FALSE(stringByReplacingWithPattern_replaceBlock(nullptr, "a"_ns, count));
    EXPECT_EQ(calls, 0);
}

TEST(CallbackReplacement, leavesAMutableReceiverAlone) {
    const Ref<NSMutableString> receiver = NSMutableString::stringWithString("a1"_ns);
    const Ref<NSString> result = stringByReplacingWithPattern_replaceBlock(
        receiver, "\\d"_ns, [&](NSMutableString* working, NSTextCheckingResult*, bool&) {
            EXPECT_NE(working, receiver.get());
            return "-"_ns;
        });
    EXPECT_EQ(text(result), "a-");
    EXPECT_EQ(text(receiver), "a1");
}

TEST(CallbackReplacement, raisesWhenTheCallbackTakesTheTextAway) {
    const auto empty = [](NSMutableString* working, NSTextCheckingResult*, bool&) {
        working->setString(""_ns);
        return "-"_ns;
    };
    try {
        static_cast<void>(stringByReplacingWithPattern_replaceBlock("a1"_ns, "\\d"_ns, empty));
        FAIL() << "the match no longer lies in the text";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSRangeException);
    }
}

TEST(ComparisonByPattern, comparesTheMatchesAsTexts) {
    EXPECT_EQ(compare_usingRegularExpression("A10"_ns, "B9"_ns, "\\d+"_ns), NSOrderedAscending)
        << "10 comes before 9: texts, not numbers";
    EXPECT_EQ(compare_usingRegularExpression("B9"_ns, "A10"_ns, "\\d+"_ns), NSOrderedDescending);
    EXPECT_EQ(compare_usingRegularExpression("B9"_ns, "A9"_ns, "\\d+"_ns), NSOrderedSame);
    EXPECT_EQ(compare_usingRegularExpression("1a"_ns, "1b"_ns, "[A-Z]"_ns), NSOrderedAscending)
        << "case-sensitive, so neither matches";
}

TEST(ComparisonByPattern, comparesTheStringsWhereOneHasNoMatch) {
    EXPECT_EQ(compare_usingRegularExpression("B"_ns, "A9"_ns, "\\d+"_ns), NSOrderedDescending);
    EXPECT_EQ(compare_usingRegularExpression("B1"_ns, "A9"_ns, "\\d*"_ns), NSOrderedDescending) << "empty matches";
    for (NSString* pattern : uselessPatterns())
        EXPECT_EQ(compare_usingRegularExpression("B1"_ns, "A9"_ns, pattern), NSOrderedDescending);
}

TEST(ComparisonByPattern, putsEverythingBehindNull) {
    EXPECT_EQ(compare_usingRegularExpression("a"_ns, nullptr, "\\d"_ns), NSOrderedDescending);
    EXPECT_EQ(compare_usingRegularExpression(""_ns, nullptr, nullptr), NSOrderedDescending);
    EXPECT_EQ(compare_usingRegularExpression(nullptr, "a"_ns, "\\d"_ns), NSOrderedSame);
}

TEST(PatternOperations, endWhateverTheyAreGiven) {
    std::string hostile = "a@";
    for (int i = 0; i < 30; ++i)
        hostile += "aa.";
    const Ref<NSString> receiver = NSString::fromUtf8(hostile + "-");
    const Ref<NSString> pattern = "^(([a-z]+)+\\.?)+@(([a-z]+)+\\.?)+$"_ns;
    const std::clock_t start = std::clock();
    EXPECT_EQ(text(matchResultWithPattern(receiver, pattern)), "null");
    EXPECT_EQ(text(matchResultsWithPattern(receiver, pattern)), "[]");
    EXPECT_FALSE(isLegalObjectWithPattern(receiver, pattern));
    EXPECT_EQ(stringByReplacingWithPattern_withString(receiver, pattern, "x"_ns)->utf8(), receiver->utf8());
    EXPECT_LT(std::clock() - start, 3 * CLOCKS_PER_SEC);
}

TEST(PatternOperations, answerMessages) {
    EXPECT_EQ(text(send<Ref<NSString>>("a1"_ns, "matchResultWithPattern:"_sel, "\\d"_ns)), "1");
    EXPECT_EQ(text(send<id>("a1"_ns, "matchResultsWithPattern:"_sel, "\\w"_ns)), "[a 1]");
    EXPECT_EQ(text(send<id>("a1"_ns, "matchSubResultsWithPattern:"_sel, "(\\d)"_ns)), "[[1 1]]");
    EXPECT_TRUE(send<bool>("a1"_ns, "isLegalObjectWithPattern:"_sel, "a\\d"_ns));
    EXPECT_EQ(text(send<id>("a1"_ns, "stringByReplacingWithPattern:withString:"_sel, "\\d"_ns, "2"_ns)), "a2");
    EXPECT_EQ(send<NSInteger>("a1"_ns, "compare:usingRegularExpression:"_sel, "b0"_ns, "\\d"_ns), 1);
    std::string log;
    const auto write = [&log](NSArray* texts) { log += text(texts); };
    send("a1"_ns, "matchWithPattern:matchResult:"_sel, "\\d"_ns, FunctionRef<void(NSArray*)>(write));
    EXPECT_EQ(log, "[1]");
    const auto dash = [](NSMutableString*, NSTextCheckingResult*, bool&) { return "-"_ns; };
    EXPECT_EQ(
        text(send<id>("a1"_ns, "stringByReplacingWithPattern:replaceBlock:"_sel, "\\d"_ns, ZRXReplaceBlock(dash))),
        "a-");
}

} // namespace
} // namespace zr
