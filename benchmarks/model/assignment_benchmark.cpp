#include <zrbasic/model/assignment.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>

#include <string>
#include <thread>
#include <unordered_map>
#include <variant>

// Twelve properties filled from a server's reply: five texts, four boxed numbers, two doubles and a flag. Beside it,
// what a program without this library would write: a plain struct that looks its fields up in a hash map of variants.

namespace {

using namespace zr;

class QuoteModel : public NSObject {
    ZR_OBJECT(QuoteModel, NSObject)

  public:
    ZR_PROPERTY(Copied<NSString>, symbol, setSymbol)
    ZR_PROPERTY(Copied<NSString>, name, setName)
    ZR_PROPERTY(Copied<NSString>, exchange, setExchange)
    ZR_PROPERTY(Copied<NSString>, currency, setCurrency)
    ZR_PROPERTY(Copied<NSString>, status, setStatus)
    ZR_PROPERTY(Ref<NSNumber>, bid, setBid)
    ZR_PROPERTY(Ref<NSNumber>, ask, setAsk)
    ZR_PROPERTY(Ref<NSNumber>, last, setLast)
    ZR_PROPERTY(Ref<NSNumber>, volume, setVolume)
    ZR_PROPERTY(double, change, setChange)
    ZR_PROPERTY(double, changePercent, setChangePercent)
    ZR_PROPERTY(bool, tradable, setTradable)
};

struct PlainQuote {
    std::string symbol, name, exchange, currency, status;
    double bid = 0, ask = 0, last = 0;
    std::int64_t volume = 0;
    double change = 0, changePercent = 0;
    bool tradable = false;
};

using Variant = std::variant<std::monostate, std::string, double, std::int64_t, bool>;
using PlainReply = std::unordered_map<std::string, Variant>;

template <class T>
void fill(T& field, const PlainReply& reply, const std::string& key) {
    if (const auto entry = reply.find(key); entry != reply.end()) {
        if (const T* const value = std::get_if<T>(&entry->second)) {
            field = *value;
        }
    }
}

void fill(PlainQuote& quote, const PlainReply& reply) {
    static const std::string keys[] = {"symbol", "name", "exchange", "currency", "status",        "bid",
                                       "ask",    "last", "volume",   "change",   "changePercent", "tradable"};
    fill(quote.symbol, reply, keys[0]);
    fill(quote.name, reply, keys[1]);
    fill(quote.exchange, reply, keys[2]);
    fill(quote.currency, reply, keys[3]);
    fill(quote.status, reply, keys[4]);
    fill(quote.bid, reply, keys[5]);
    fill(quote.ask, reply, keys[6]);
    fill(quote.last, reply, keys[7]);
    fill(quote.volume, reply, keys[8]);
    fill(quote.change, reply, keys[9]);
    fill(quote.changePercent, reply, keys[10]);
    fill(quote.tradable, reply, keys[11]);
}

/// Counting references is cheaper until a process starts its first thread, for us and for the standard library alike.
void startThreadOnce() {
    static const bool started = [] {
        std::thread([] {}).join();
        return true;
    }();
    benchmark::DoNotOptimize(started);
}

void modelFromDictionary(benchmark::State& state) {
    if (state.range(0) != 0) {
        startThreadOnce();
    }
    // Not in the order in which the model declares them, as servers will have it.
    const Ref<NSDictionary> reply = dictionary({{"last"_ns, box(64000.9)},
                                                {"symbol"_ns, "BTCUSDT"_ns},
                                                {"tradable"_ns, box(true)},
                                                {"bid"_ns, box(64000.5)},
                                                {"currency"_ns, "USDT"_ns},
                                                {"change"_ns, box(-12.5)},
                                                {"ask"_ns, box(64001.0)},
                                                {"name"_ns, "Bitcoin"_ns},
                                                {"volume"_ns, box(std::int64_t{123456})},
                                                {"status"_ns, "TRADING"_ns},
                                                {"changePercent"_ns, box(-0.02)},
                                                {"exchange"_ns, "SPOT"_ns}});
    const auto quote = make<QuoteModel>();
    assignPropertiesFromDictionary(quote, reply);
    if (!quote->symbol()->isEqualToString("BTCUSDT"_ns) || quote->volume()->longLongValue() != 123456 ||
        quote->change() != -12.5 || !quote->tradable()) {
        state.SkipWithError("the model was not filled");
        return;
    }
    for (auto _ : state) {
        assignPropertiesFromDictionary(quote, reply);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 12);
}

void modelFromModel(benchmark::State& state) {
    if (state.range(0) != 0) {
        startThreadOnce();
    }
    const auto source = make<QuoteModel>();
    source->setSymbol("BTCUSDT"_ns);
    source->setLast(box(64000.9));
    source->setChange(-12.5);
    const auto target = make<QuoteModel>();
    assignPropertiesFrom(target, source);
    if (target->symbol() != source->symbol() || target->last() != source->last() || target->change() != -12.5) {
        state.SkipWithError("the model was not filled");
        return;
    }
    for (auto _ : state) {
        assignPropertiesFrom(target, source);
        benchmark::ClobberMemory();
    }
}

void structFromHashMap(benchmark::State& state) {
    if (state.range(0) != 0) {
        startThreadOnce();
    }
    const PlainReply reply = {{"symbol", "BTCUSDT"}, {"name", "Bitcoin"},      {"exchange", "SPOT"},
                              {"currency", "USDT"},  {"status", "TRADING"},    {"bid", 64000.5},
                              {"ask", 64001.0},      {"last", 64000.9},        {"volume", std::int64_t{123456}},
                              {"change", -12.5},     {"changePercent", -0.02}, {"tradable", true}};
    PlainQuote quote;
    fill(quote, reply);
    if (quote.symbol != "BTCUSDT" || quote.volume != 123456 || quote.change != -12.5 || !quote.tradable) {
        state.SkipWithError("the struct was not filled");
        return;
    }
    for (auto _ : state) {
        fill(quote, reply);
        benchmark::DoNotOptimize(quote);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 12);
}

// In this order: a thread, once started, is felt by everything behind it.
BENCHMARK(structFromHashMap)->ArgName("threads")->Arg(0);
BENCHMARK(modelFromDictionary)->ArgName("threads")->Arg(0);
BENCHMARK(modelFromModel)->ArgName("threads")->Arg(0);
BENCHMARK(structFromHashMap)->ArgName("threads")->Arg(1);
BENCHMARK(modelFromDictionary)->ArgName("threads")->Arg(1);
BENCHMARK(modelFromModel)->ArgName("threads")->Arg(1);

} // namespace
