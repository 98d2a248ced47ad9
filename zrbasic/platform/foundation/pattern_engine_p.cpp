#include <zrbasic/platform/foundation/pattern_engine_p.h>
#include <zrbasic/platform/foundation/pattern_guard_p.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <ctime>

namespace zr::detail {
namespace {

constexpr std::size_t largestPattern = 100'000;

// The engine reports every 10,000 backtracking steps, which take about 60 to 120 microseconds.
constexpr std::int64_t stepsPerTick = 10'000;
constexpr std::int64_t ticksPerMatch = 500;
constexpr std::int64_t stepsPerUnit = 32;

constexpr std::int64_t nanosecondsPerMatch = 100'000'000;
constexpr std::int64_t nanosecondsPerUnit = 500;

std::atomic<std::uint64_t> compilations{0};

std::int64_t threadNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

UBool allowTick(const void* context, std::int32_t) {
    return static_cast<WorkLimit*>(const_cast<void*>(context))->allowsTick();
}

UBool allowPosition(const void* context, std::int64_t) {
    return static_cast<WorkLimit*>(const_cast<void*>(context))->allowsPosition();
}

std::uint32_t engineFlags(std::uint32_t options) {
    constexpr std::array<std::pair<std::uint32_t, std::uint32_t>, 7> flags{{
        {patternCaseInsensitive, UREGEX_CASE_INSENSITIVE},
        {patternAllowsComments, UREGEX_COMMENTS},
        {patternIgnoresMetacharacters, UREGEX_LITERAL},
        {patternDotMatchesLineSeparators, UREGEX_DOTALL},
        {patternAnchorsMatchLines, UREGEX_MULTILINE},
        {patternUsesUnixLineSeparators, UREGEX_UNIX_LINES},
        {patternUsesUnicodeWordBoundaries, UREGEX_UWORD},
    }};
    std::uint32_t result = 0;
    for (const auto& [option, flag] : flags)
        result |= (options & option) != 0 ? flag : 0;
    return result;
}

URegularExpression* openExpression(std::u16string_view text, std::uint32_t options) {
    UErrorCode status = U_ZERO_ERROR;
    auto* expression =
        uregex_open(text.data(), static_cast<std::int32_t>(text.size()), engineFlags(options), nullptr, &status);
    if (U_SUCCESS(status))
        return expression;
    uregex_close(expression);
    return nullptr;
}

} // namespace

void WorkLimit::restart(std::size_t textLength) {
    const auto length = static_cast<std::int64_t>(textLength);
    m_ticksLeft = ticksPerMatch + length * stepsPerUnit / stepsPerTick;
    m_nanosecondsLeft = nanosecondsPerMatch + length * nanosecondsPerUnit;
    m_startedAt = -1;
}

bool WorkLimit::allowsTime() {
    const std::int64_t now = threadNanoseconds();
    if (m_startedAt < 0)
        m_startedAt = now;
    return now - m_startedAt < m_nanosecondsLeft;
}

void WorkLimit::stopClock() {
    m_nanosecondsLeft -= threadNanoseconds() - m_startedAt;
    m_startedAt = -1;
}

void CompiledPattern::compile() {
    compilations.fetch_add(1, std::memory_order_relaxed);
    if (m_text.empty() || m_text.size() > largestPattern)
        return;
    if ((m_options & patternIgnoresMetacharacters) == 0) {
        const GuardedPattern guarded = guardedPattern(m_text, (m_options & patternAllowsComments) != 0);
        if (guarded.isTooCostly)
            return;
        if (guarded.isRewritten)
            m_expression = openExpression(guarded.text, m_options);
    }
    if (m_expression == nullptr)
        m_expression = openExpression(m_text, m_options);
    UErrorCode status = U_ZERO_ERROR;
    if (m_expression != nullptr)
        m_groupCount = static_cast<std::size_t>(std::max(0, uregex_groupCount(m_expression, &status)));
}

ReadyMatcher::ReadyMatcher(PatternRef from) : pattern(std::move(from)) {
    if (pattern->expression() == nullptr)
        return;
    UErrorCode status = U_ZERO_ERROR;
    expression = uregex_clone(pattern->expression(), &status);
    uregex_setMatchCallback(expression, allowTick, &work, &status);
    uregex_setFindProgressCallback(expression, allowPosition, &work, &status);
    if (U_SUCCESS(status))
        return;
    uregex_close(expression);
    expression = nullptr;
}

ReadyMatcher::~ReadyMatcher() {
    uregex_close(expression);
}

bool isValid(const PatternRef& pattern) {
    return pattern->expression() != nullptr;
}

std::size_t groupCount(const PatternRef& pattern) {
    return pattern->groupCount();
}

std::uint64_t patternCompilationCount() {
    return compilations.load(std::memory_order_relaxed);
}

} // namespace zr::detail
