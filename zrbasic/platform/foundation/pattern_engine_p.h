#pragma once

#include <zrbasic/platform/foundation/pattern_p.h>

#include <unicode/uregex.h>
#include <cstring>
#include <mutex>
#include <utility>

// What stands between patterns and the engine; only the pattern sources include this.

namespace zr::detail {

/// What one walk over a text may cost.
///
/// Mostly counted in the engine's own backtracking steps. The second limit, for work that the engine does not count,
/// is processor time of this thread, so that a busy machine changes no result.
class WorkLimit {
  public:
    void restart(std::size_t textLength);

    bool allowsTick() { return --m_ticksLeft > 0 && allowsTime(); }

    bool allowsPosition() {
        if (--m_positionsUntilReading > 0)
            return true;
        m_positionsUntilReading = positionsPerClockReading;
        return allowsTime();
    }

    /// Between two searches the caller's own work must not count.
    void pause() {
        if (m_startedAt >= 0)
            stopClock();
    }

  private:
    static constexpr int positionsPerClockReading = 256;

    bool allowsTime();
    void stopClock();

    std::int64_t m_ticksLeft = 0;
    std::int64_t m_nanosecondsLeft = 0;
    // Below 0 until the clock was read. Reading it costs more than most matches do, so that is put off.
    std::int64_t m_startedAt = -1;
    int m_positionsUntilReading = positionsPerClockReading;
};

class CompiledPattern {
  public:
    CompiledPattern(std::u16string_view text, std::uint32_t options) : m_text(text), m_options(options) {}
    ~CompiledPattern() { uregex_close(m_expression); }
    CompiledPattern(const CompiledPattern&) = delete;
    CompiledPattern& operator=(const CompiledPattern&) = delete;

    /// Several threads may want a new pattern at once; one compiles it and the others wait for that one only.
    void compileOnce() { std::call_once(m_isCompiled, &CompiledPattern::compile, this); }

    const std::u16string& text() const { return m_text; }
    std::uint32_t options() const { return m_options; }
    /// Null when the pattern does not compile.
    const URegularExpression* expression() const { return m_expression; }
    std::size_t groupCount() const { return m_groupCount; }

    bool is(std::u16string_view text, std::uint32_t options) const {
        // Compares memory: the standard library goes unit by unit here, and this runs with every keystroke.
        return m_options == options && m_text.size() == text.size() &&
               (text.empty() || std::memcmp(m_text.data(), text.data(), text.size() * sizeof(char16_t)) == 0);
    }

  private:
    void compile();

    const std::u16string m_text;
    const std::uint32_t m_options;
    std::once_flag m_isCompiled;
    URegularExpression* m_expression = nullptr;
    std::size_t m_groupCount = 0;
};

/// A copy of the compiled engine with a state of its own, for one thread.
struct ReadyMatcher {
    explicit ReadyMatcher(PatternRef from);
    ~ReadyMatcher();
    ReadyMatcher(const ReadyMatcher&) = delete;
    ReadyMatcher& operator=(const ReadyMatcher&) = delete;

    PatternRef pattern;
    URegularExpression* expression = nullptr;
    WorkLimit work;
    bool isBusy = false;
    /// Its stack has grown; it is not kept.
    bool isWornOut = false;
};

/// A matcher that this thread keeps ready, to be given back; null when it is in use or the thread is ending.
[[nodiscard]] ReadyMatcher* borrowMatcher(std::u16string_view pattern, std::uint32_t options);
[[nodiscard]] ReadyMatcher* borrowMatcher(const PatternRef& pattern);
void giveBackMatcher(ReadyMatcher* matcher);

} // namespace zr::detail
