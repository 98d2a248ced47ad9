#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <simdjson.h>

// An exchange's replies (a list of 30 instruments, 64 KB; 5,235 quotes of about 113 bytes, one a line) read into
// dictionaries, beside simdjson reading the same bytes into its own read-only tree. The difference is what it costs to
// have objects that live on, compare, and are found by key.

namespace zr {

namespace {

constexpr std::size_t quotes = 5235;

std::string contentOf(const char* name) {
    std::ifstream file(std::string(ZR_EXAMPLE_DATA_DIR "/") + name, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

/// With room behind it, so that nobody needs a copy.
std::string padded(std::string text) {
    text.append(simdjson::SIMDJSON_PADDING, ' ');
    return text;
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

void readInstruments(benchmark::State& state) {
    const std::string text = contentOf("exchange_info.json");
    const std::string buffer = padded(text);
    for (auto _ : state) {
        const id root = NSJSONSerialization::objectWithText(std::string_view(buffer).substr(0, text.size()), 0, nullptr,
                                                            buffer.size());
        auto* const symbols = cast<NSArray>(cast<NSDictionary>(root)->peek("symbols"_ns));
        if (!symbols || symbols->count() != 30) {
            state.SkipWithError("not all instruments were read");
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(readInstruments);

void readInstrumentsWithSimdjsonAlone(benchmark::State& state) {
    const std::string text = contentOf("exchange_info.json");
    const std::string buffer = padded(text);
    simdjson::dom::parser parser;
    for (auto _ : state) {
        simdjson::dom::array symbols;
        if (parser.parse(buffer.data(), text.size(), false)["symbols"].get(symbols) || symbols.size() != 30) {
            state.SkipWithError("not all instruments were read");
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(readInstrumentsWithSimdjsonAlone);

void readQuotes(benchmark::State& state) {
    const std::string text = contentOf("ticks.ndjson");
    const std::string buffer = padded(text);
    const auto lines = linesOf(std::string_view(buffer).substr(0, text.size()));
    const char* const end = buffer.data() + buffer.size();
    for (auto _ : state) {
        std::size_t read = 0;
        for (const std::string_view line : lines) {
            const id quote =
                NSJSONSerialization::objectWithText(line, 0, nullptr, static_cast<std::size_t>(end - line.data()));
            read += quote && cast<NSDictionary>(quote)->count() == 8;
        }
        if (read != quotes) {
            state.SkipWithError("not all quotes were read");
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * quotes));
}
BENCHMARK(readQuotes);

void readQuotesWithSimdjsonAlone(benchmark::State& state) {
    const std::string text = contentOf("ticks.ndjson");
    const std::string buffer = padded(text);
    const auto lines = linesOf(std::string_view(buffer).substr(0, text.size()));
    simdjson::dom::parser parser;
    for (auto _ : state) {
        std::size_t read = 0;
        for (const std::string_view line : lines) {
            simdjson::dom::object quote;
            read += !parser.parse(line.data(), line.size(), false).get(quote) && quote.size() == 8;
        }
        if (read != quotes) {
            state.SkipWithError("not all quotes were read");
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * quotes));
}
BENCHMARK(readQuotesWithSimdjsonAlone);

void writeInstruments(benchmark::State& state) {
    const std::string text = contentOf("exchange_info.json");
    const id root = NSJSONSerialization::objectWithText(text, 0, nullptr);
    std::size_t length = 0;
    for (auto _ : state) {
        const std::string written = NSJSONSerialization::textWithObject(root, 0, nullptr);
        length = written.size();
        if (written.empty()) {
            state.SkipWithError("nothing was written");
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * length));
}
BENCHMARK(writeInstruments);

} // namespace

} // namespace zr
