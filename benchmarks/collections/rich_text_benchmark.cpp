// Attributed texts, beside what one would write by hand.
//
// "links": a message of 4096 code units with 20 anchors in it, spread evenly. The yardstick is one pass of a search
// that was compiled before, which only says where the anchors are. "runs": a text of 1000 runs of 4 letters, which all
// get one more attribute. "pieces": 200 pieces, strings and texts of one attribute in turn, joined into one.

#include <zrbasic/collections/attribute_editing.h>
#include <zrbasic/collections/html_links.h>
#include <zrbasic/collections/rich_text.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>
#include <unicode/uregex.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace zr;

constexpr std::size_t messageLength = 4096;
constexpr int linkCount = 20;
constexpr NSUInteger runCount = 1000;
constexpr NSUInteger runLength = 4;
constexpr int pieceCount = 200;

std::u16string message() {
    std::u16string text;
    for (int link = 0; link < linkCount; ++link) {
        text += u"<a href=\"https://example.com/news?id=" + std::u16string(1, static_cast<char16_t>(u'a' + link)) +
                u"\">read more</a>";
        const std::size_t end = messageLength * static_cast<std::size_t>(link + 1) / linkCount;
        for (std::size_t word = 0; text.size() < end; ++word) {
            text += word % 7 == 6 ? u' ' : u"market"[word % 7];
        }
    }
    return text;
}

NSUInteger linksIn(NSAttributedString* text) {
    NSUInteger count = 0;
    text->enumerateAttribute_inRange_options_usingBlock(
        "NSLink"_ns, {0, text->length()}, 0, [&count](NSObject* link, NSRange, bool&) { count += link ? 1 : 0; });
    return count;
}

void linksDefaultStyle(benchmark::State& state) {
    const Ref<NSString> text = NSString::fromUtf16(message());
    if (linksIn(replaceHTMLLinksFromString(text)) != linkCount) {
        state.SkipWithError("not all links were found");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(replaceHTMLLinksFromString(text));
    }
}
BENCHMARK(linksDefaultStyle);

void linksWithBuilder(benchmark::State& state) {
    const Ref<NSString> text = NSString::fromUtf16(message());
    const Ref<NSDictionary> attributes = dictionary({{"NSLink"_ns, box(1)}});
    const auto builder = [&attributes](NSString*) { return attributes; };
    if (linksIn(replaceHTMLLinksFromString_attributes_linkAttributeBuilder(text, nullptr, builder)) != linkCount) {
        state.SkipWithError("not all links were found");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(replaceHTMLLinksFromString_attributes_linkAttributeBuilder(text, nullptr, builder));
    }
}
BENCHMARK(linksWithBuilder);

void linksSearchOnly(benchmark::State& state) {
    const std::u16string text = message();
    const std::u16string_view pattern = uR"(<a\s+href=["'](.*?)["']>(.*?)</a>)";
    UErrorCode error = U_ZERO_ERROR;
    URegularExpression* const expression =
        uregex_open(pattern.data(), static_cast<int32_t>(pattern.size()), UREGEX_CASE_INSENSITIVE, nullptr, &error);
    const auto search = [&] {
        uregex_setText(expression, text.data(), static_cast<int32_t>(text.size()), &error);
        int count = 0;
        while (uregex_findNext(expression, &error)) {
            benchmark::DoNotOptimize(uregex_start(expression, 1, &error));
            benchmark::DoNotOptimize(uregex_start(expression, 2, &error));
            ++count;
        }
        return count;
    };
    if (U_FAILURE(error) || search() != linkCount) {
        state.SkipWithError("not all links were found");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(search());
    }
    uregex_close(expression);
}
BENCHMARK(linksSearchOnly);

Ref<NSMutableAttributedString> textOfRuns() {
    const Ref<NSMutableAttributedString> text = make<NSMutableAttributedString>();
    for (NSUInteger run = 0; run < runCount; ++run) {
        text->append(u"text", dictionary({{"A"_ns, box(static_cast<NSInteger>(run))}}));
    }
    return text;
}

void runsOverTheWhole(benchmark::State& state) {
    const Ref<NSMutableAttributedString> text = textOfRuns();
    addAttribute_value(text, "B"_ns, box(0));
    if (text->runs().runs().size() != runCount ||
        text->attributesAtIndex_effectiveRange(runLength * runCount - 1, nullptr)->count() != 2) {
        state.SkipWithError("not every run has the attribute");
        return;
    }
    const Ref<NSNumber> values[] = {box(1), box(2)};
    std::size_t turn = 0;
    for (auto _ : state) {
        addAttribute_value(text, "B"_ns, values[turn++ % 2]);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(runCount));
}
BENCHMARK(runsOverTheWhole);

// One run at a time, which is how a parser would colour its words.
void runsOneByOne(benchmark::State& state) {
    const Ref<NSMutableAttributedString> text = textOfRuns();
    const Ref<NSNumber> values[] = {box(1), box(2)};
    std::size_t turn = 0;
    for (auto _ : state) {
        for (NSUInteger run = 0; run < runCount; ++run) {
            text->addAttribute_value_range("B"_ns, values[turn % 2], {run * runLength, runLength});
        }
        ++turn;
    }
    if (text->runs().runs().size() != runCount) {
        state.SkipWithError("runs were lost");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(runCount));
}
BENCHMARK(runsOneByOne);

using Attributes = std::map<std::string, std::shared_ptr<int>>;
struct Run {
    std::size_t end;
    std::shared_ptr<const Attributes> attributes;
};

void runsByHand(benchmark::State& state) {
    std::vector<Run> runs;
    for (std::size_t run = 0; run < runCount; ++run) {
        runs.push_back({(run + 1) * runLength,
                        std::make_shared<Attributes>(Attributes{{"A", std::make_shared<int>(static_cast<int>(run))}})});
    }
    const std::shared_ptr<int> values[] = {std::make_shared<int>(1), std::make_shared<int>(2)};
    std::size_t turn = 0;
    for (auto _ : state) {
        for (Run& run : runs) {
            const auto changed = std::make_shared<Attributes>(*run.attributes);
            (*changed)["B"] = values[turn % 2];
            run.attributes = changed;
        }
        ++turn;
        benchmark::ClobberMemory();
    }
    if (runs.back().attributes->size() != 2) {
        state.SkipWithError("not every run has the attribute");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(runCount));
}
BENCHMARK(runsByHand);

void piecesJoined(benchmark::State& state) {
    const Ref<NSMutableArray> source = NSMutableArray::array();
    for (int piece = 0; piece < pieceCount; ++piece) {
        if (piece % 2 == 0) {
            source->addObject("a plain piece "_ns);
        } else {
            source->addObject(make<NSAttributedString>(&NSAttributedString::initWithString_attributes,
                                                       "and one with an attribute"_ns,
                                                       dictionary({{"A"_ns, box(piece)}})));
        }
    }
    if (attributedStringWithSource(source)->runs().runs().size() != pieceCount) {
        state.SkipWithError("not every piece is a run");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(attributedStringWithSource(source));
    }
    state.SetItemsProcessed(state.iterations() * pieceCount);
}
BENCHMARK(piecesJoined);

void piecesByHand(benchmark::State& state) {
    struct Piece {
        std::u16string text;
        std::shared_ptr<const Attributes> attributes;
    };
    std::vector<Piece> pieces;
    const auto none = std::make_shared<Attributes>();
    for (int piece = 0; piece < pieceCount; ++piece) {
        if (piece % 2 == 0) {
            pieces.push_back({u"a plain piece ", none});
        } else {
            pieces.push_back({u"and one with an attribute",
                              std::make_shared<Attributes>(Attributes{{"A", std::make_shared<int>(piece)}})});
        }
    }
    std::size_t runs = 0;
    for (auto _ : state) {
        std::u16string text;
        std::vector<Run> joined;
        for (const Piece& piece : pieces) {
            text += piece.text;
            joined.push_back({text.size(), piece.attributes});
        }
        runs = joined.size();
        benchmark::DoNotOptimize(text.data());
        benchmark::DoNotOptimize(joined.data());
    }
    if (runs != pieceCount) {
        state.SkipWithError("not every piece is a run");
    }
    state.SetItemsProcessed(state.iterations() * pieceCount);
}
BENCHMARK(piecesByHand);

} // namespace
