#include <zrbasic/core/number_formatters.h>
#include <zrbasic/platform/foundation/pattern_p.h>

#include <benchmark/benchmark.h>
#include <unicode/uregex.h>
#include <array>
#include <string>

// One keystroke in a price field is one check of the whole text, against a pattern that the formatter's switches
// select. Compared with what a user would write instead: one engine for that pattern, compiled beforehand and reused.

namespace {

using namespace zr;

constexpr std::u16string_view pricePattern = u"^[+\\-]?\\d*\\.?\\d*$";

struct Keystroke {
    const char16_t* text;
    bool isAccepted;
};

// "-1234.56" typed one character after the other, with a slip at its end.
constexpr std::array<Keystroke, 9> typing{{
    {u"-", true},
    {u"-1", true},
    {u"-12", true},
    {u"-123", true},
    {u"-1234", true},
    {u"-1234.", true},
    {u"-1234.5", true},
    {u"-1234.56", true},
    {u"-1234.56x", false},
}};

std::array<Ref<NSString>, typing.size()> typedStrings() {
    std::array<Ref<NSString>, typing.size()> strings;
    for (std::size_t i = 0; i < typing.size(); ++i)
        strings[i] = NSString::fromUtf16(typing[i].text);
    return strings;
}

bool isAccepted(NSFormatter* formatter, NSString* text) {
    Ref<NSString> replacement;
    Ref<NSString> error;
    return formatter->isPartialStringValid_newEditingString_errorDescription(text, &replacement, &error);
}

class ReusedEngine {
  public:
    ReusedEngine() {
        m_engine =
            uregex_open(pricePattern.data(), static_cast<std::int32_t>(pricePattern.size()), 0, nullptr, &m_status);
    }
    ~ReusedEngine() { uregex_close(m_engine); }

    bool finds(std::u16string_view text) {
        uregex_setText(m_engine, text.data(), static_cast<std::int32_t>(text.size()), &m_status);
        return uregex_find(m_engine, 0, &m_status) && U_SUCCESS(m_status);
    }

  private:
    UErrorCode m_status = U_ZERO_ERROR;
    URegularExpression* m_engine = nullptr;
};

// An application with windows has threads, and objects are then counted with locked instructions.
void becomeMultithreaded() {
    [[maybe_unused]] static const bool once = [] {
        std::thread([] {}).join();
        return true;
    }();
}

// Times one keystroke at a time; `accepts` is first checked against what each one must come to.
template <class Accepts>
void timeTyping(benchmark::State& state, Accepts accepts) {
    becomeMultithreaded();
    const auto strings = typedStrings();
    for (std::size_t i = 0; i < typing.size(); ++i) {
        if (accepts(strings[i].get()) != typing[i].isAccepted) {
            state.SkipWithError("wrong verdict");
            return;
        }
    }
    std::size_t next = 0;
    for (auto _ : state) {
        bool accepted = accepts(strings[next].get());
        benchmark::DoNotOptimize(accepted);
        next = next + 1 == strings.size() ? 0 : next + 1;
    }
}

void reusedEngineKeystroke(benchmark::State& state) {
    ReusedEngine engine;
    timeTyping(state, [&engine](NSString* text) { return engine.finds(text->view()); });
}
BENCHMARK(reusedEngineKeystroke);

void priceFormatterKeystroke(benchmark::State& state) {
    const Ref<ZRPriceNumberInputFormatter> formatter = make<ZRPriceNumberInputFormatter>();
    static const auto before = detail::patternCompilationCount();
    timeTyping(state, [&formatter](NSString* text) { return isAccepted(formatter, text); });
    // One over all runs: a field's pattern is never compiled again.
    const auto compilations = detail::patternCompilationCount() - before;
    state.counters["compilations"] = static_cast<double>(compilations);
    if (compilations != 1)
        state.SkipWithError("the pattern was not compiled exactly once");
}
BENCHMARK(priceFormatterKeystroke);

// Three fields of one window in turn, so that no keystroke finds the pattern of the one before.
void threeFieldsInTurnKeystroke(benchmark::State& state) {
    const Ref<ZRPriceNumberInputFormatter> price = make<ZRPriceNumberInputFormatter>();
    const Ref<ZRIntegerInputFormatter> quantity = formatterWithNumberMaxLength(8);
    const Ref<ZRPhoneNumberInputFormater> phone = make<ZRPhoneNumberInputFormater>();
    const std::array<NSFormatter*, 3> fields{price.get(), quantity.get(), phone.get()};
    const Ref<NSString> text = NSString::fromUtf16(u"12345");
    static const auto before = detail::patternCompilationCount();
    becomeMultithreaded();
    std::size_t next = 0;
    for (auto _ : state) {
        bool accepted = isAccepted(fields[next], text);
        benchmark::DoNotOptimize(accepted);
        if (!accepted) {
            state.SkipWithError("wrong verdict");
            return;
        }
        next = next == 2 ? 0 : next + 1;
    }
    const auto compilations = detail::patternCompilationCount() - before;
    state.counters["compilations"] = static_cast<double>(compilations);
    // The price field's is there already when that benchmark ran before.
    if (compilations > 3)
        state.SkipWithError("a pattern was compiled more than once");
}
BENCHMARK(threeFieldsInTurnKeystroke);

// What every keystroke would cost without the cache.
void compileAndMatch(benchmark::State& state) {
    timeTyping(state, [](NSString* text) {
        ReusedEngine engine;
        return engine.finds(text->view());
    });
}
BENCHMARK(compileAndMatch);

} // namespace
