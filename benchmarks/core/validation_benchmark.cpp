#include <zrbasic/core/validation.h>
#include <zrbasic/core/validation_p.h>
#include <zrbasic/platform/foundation/string.h>

#include <benchmark/benchmark.h>
#include <unicode/uregex.h>
#include <array>
#include <string>

// One check of an account screen, beside what a user would write instead: the same pattern, compiled beforehand, in an
// engine that is kept and asked about the whole text. The texts are what people type, a good and a bad one in turn;
// "long" is one of 10,000 digits, and the same with a letter behind.

namespace {

using namespace zr;

struct Subject {
    bool (*check)(NSObject*);
    std::u16string_view pattern;
    std::u16string_view good;
    std::u16string_view bad;
};

constexpr Subject url{isLegalURLString, detail::urlPattern, u"https://quotes.example.com/depth?code=AU2412",
                      u"https://quotes.example.com/depth code"};
constexpr Subject phone{isLegalPhoneNumber, detail::phoneNumberPattern, u"13812345678", u"1381234567"};
constexpr Subject email{isLegalEmailAddress, detail::emailAddressPattern, u"first.last@mail.example.com",
                        u"first.last@mail.example-"};
constexpr Subject password{isLegalPassword, detail::passwordPattern, u"correct7horse", u"correcthorse"};
constexpr Subject english{isLegalCommonEnglishCharacters, detail::commonEnglishPattern, u"AU2412@exchange",
                          u"AU2412交易所"};
constexpr Subject price{isLegalFuturesPrice, detail::futuresPricePattern, u"-109'16", u"109'16'5"};
constexpr Subject number{isPureNumberString, detail::pureNumberPattern, u"20241119093000", u"2024-11-19"};
constexpr Subject identityCard{isLegalIdCardNumber, detail::idCardNumberPattern, u"11010519491231002X",
                               u"1101051949123100"};

const Subject& longNumber() {
    static const std::u16string good(10'000, u'7');
    static const std::u16string bad = good + u'x';
    static const Subject subject{isPureNumberString, detail::pureNumberPattern, good, bad};
    return subject;
}

class ReusedEngine {
  public:
    explicit ReusedEngine(std::u16string_view pattern) {
        m_engine = uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), 0, nullptr, &m_status);
    }
    ~ReusedEngine() { uregex_close(m_engine); }

    bool matches(std::u16string_view text) {
        uregex_setText(m_engine, text.data(), static_cast<std::int32_t>(text.size()), &m_status);
        return uregex_matches(m_engine, -1, &m_status) && U_SUCCESS(m_status);
    }

  private:
    UErrorCode m_status = U_ZERO_ERROR;
    URegularExpression* m_engine = nullptr;
};

template <class Check>
void run(benchmark::State& state, const Subject& subject, Check check) {
    const std::array<Ref<NSString>, 2> texts{NSString::fromUtf16(subject.good), NSString::fromUtf16(subject.bad)};
    if (!check(texts[0]) || check(texts[1])) {
        state.SkipWithError("wrong answer");
        return;
    }
    std::size_t next = 0;
    for (auto _ : state) {
        bool isLegal = check(texts[next]);
        benchmark::DoNotOptimize(isLegal);
        next ^= 1;
    }
}

void check(benchmark::State& state, const Subject& subject) {
    run(state, subject, [&subject](NSString* text) { return subject.check(text); });
}

void reusedEngine(benchmark::State& state, const Subject& subject) {
    ReusedEngine engine(subject.pattern);
    run(state, subject, [&engine](NSString* text) { return engine.matches(text->view()); });
}

#define VALIDATION_BENCHMARKS(function)                      \
    BENCHMARK_CAPTURE(function, url, url);                   \
    BENCHMARK_CAPTURE(function, phone, phone);               \
    BENCHMARK_CAPTURE(function, email, email);               \
    BENCHMARK_CAPTURE(function, password, password);         \
    BENCHMARK_CAPTURE(function, english, english);           \
    BENCHMARK_CAPTURE(function, price, price);               \
    BENCHMARK_CAPTURE(function, number, number);             \
    BENCHMARK_CAPTURE(function, identityCard, identityCard); \
    BENCHMARK_CAPTURE(function, long, longNumber())

VALIDATION_BENCHMARKS(check);
VALIDATION_BENCHMARKS(reusedEngine);

} // namespace
