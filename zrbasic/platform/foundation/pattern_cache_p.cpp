#include <zrbasic/platform/foundation/pattern_engine_p.h>

#include <array>
#include <functional>
#include <iterator>
#include <list>
#include <unordered_map>

namespace zr::detail {
namespace {

constexpr std::size_t cacheCapacity = 256;
constexpr std::size_t readyMatchersPerThread = 32;

struct PatternKey {
    std::u16string_view text;
    std::uint32_t options;

    friend bool operator==(const PatternKey&, const PatternKey&) = default;
};

struct PatternKeyHash {
    std::size_t operator()(const PatternKey& key) const {
        return std::hash<std::u16string_view>()(key.text) ^ (key.options * std::size_t{0x9E3779B97F4A7C15});
    }
};

class PatternCache {
  public:
    PatternRef find(std::u16string_view text, std::uint32_t options) {
        const std::lock_guard lock(m_mutex);
        if (const auto found = m_index.find({text, options}); found != m_index.end()) {
            m_recent.splice(m_recent.begin(), m_recent, found->second);
            return m_recent.front();
        }
        if (m_recent.size() >= cacheCapacity)
            dropOne();
        m_recent.push_front(std::make_shared<CompiledPattern>(text, options));
        m_index.emplace(PatternKey{m_recent.front()->text(), options}, m_recent.begin());
        return m_recent.front();
    }

  private:
    // A pattern that some thread keeps ready is in use although it is not asked for here any more, so it goes last.
    void dropOne() {
        auto victim = std::prev(m_recent.end());
        for (auto candidate = m_recent.end(); candidate != m_recent.begin();) {
            if ((--candidate)->use_count() == 1) {
                victim = candidate;
                break;
            }
        }
        m_index.erase({(*victim)->text(), (*victim)->options()});
        m_recent.erase(victim);
    }

    std::mutex m_mutex;
    std::list<PatternRef> m_recent;
    std::unordered_map<PatternKey, std::list<PatternRef>::iterator, PatternKeyHash> m_index;
};

// The matchers that one thread keeps ready.
class ThreadMatchers {
  public:
    // Null when the place is taken by a walk that is still going on.
    ReadyMatcher* take(std::u16string_view text, std::uint32_t options) {
        if (m_last != nullptr && m_last->pattern->is(text, options))
            return takeIfIdle(m_last);
        std::unique_ptr<ReadyMatcher>& place = placeFor(text, options);
        if (place != nullptr && place->isBusy)
            return nullptr;
        if (place == nullptr || !place->pattern->is(text, options))
            fill(place, compiledPattern(text, options));
        return takeIfIdle(place.get());
    }

    ReadyMatcher* take(const PatternRef& pattern) {
        if (m_last != nullptr && m_last->pattern == pattern)
            return takeIfIdle(m_last);
        std::unique_ptr<ReadyMatcher>& place = placeFor(pattern->text(), pattern->options());
        if (place != nullptr && place->isBusy)
            return nullptr;
        if (place == nullptr || place->pattern != pattern)
            fill(place, pattern);
        return takeIfIdle(place.get());
    }

    void giveBack(ReadyMatcher* matcher) {
        matcher->isBusy = false;
        if (!matcher->isWornOut)
            return;
        std::unique_ptr<ReadyMatcher>& place = placeFor(matcher->pattern->text(), matcher->pattern->options());
        place.reset();
        m_last = nullptr;
    }

  private:
    std::unique_ptr<ReadyMatcher>& placeFor(std::u16string_view text, std::uint32_t options) {
        return m_places[PatternKeyHash()({text, options}) % readyMatchersPerThread];
    }

    void fill(std::unique_ptr<ReadyMatcher>& place, const PatternRef& pattern) {
        auto matcher = std::make_unique<ReadyMatcher>(pattern);
        m_last = nullptr;
        place = std::move(matcher);
    }

    ReadyMatcher* takeIfIdle(ReadyMatcher* matcher) {
        if (matcher->isBusy)
            return nullptr;
        m_last = matcher;
        matcher->isBusy = true;
        return matcher;
    }

    std::array<std::unique_ptr<ReadyMatcher>, readyMatchersPerThread> m_places;
    ReadyMatcher* m_last = nullptr;
};

// A plain pointer is quicker to reach than an object with a destructor; the reaper is touched once per thread.
thread_local ThreadMatchers* currentMatchers = nullptr;
thread_local bool isThreadEnding = false;

struct ThreadReaper {
    ~ThreadReaper() {
        isThreadEnding = true;
        delete std::exchange(currentMatchers, nullptr);
    }
    void watch() const {}
};

// Null while the thread's own data is being destroyed.
ThreadMatchers* threadMatchers() {
    if (currentMatchers == nullptr && !isThreadEnding) {
        static thread_local const ThreadReaper reaper;
        reaper.watch();
        currentMatchers = new ThreadMatchers;
    }
    return currentMatchers;
}

} // namespace

PatternRef compiledPattern(std::u16string_view text, std::uint32_t options) {
    // Never torn down, because patterns may be asked for until the process ends.
    static PatternCache& cache = *new PatternCache;
    PatternRef pattern = cache.find(text, options);
    pattern->compileOnce();
    return pattern;
}

ReadyMatcher* borrowMatcher(std::u16string_view pattern, std::uint32_t options) {
    ThreadMatchers* matchers = threadMatchers();
    return matchers == nullptr ? nullptr : matchers->take(pattern, options);
}

ReadyMatcher* borrowMatcher(const PatternRef& pattern) {
    ThreadMatchers* matchers = threadMatchers();
    return matchers == nullptr ? nullptr : matchers->take(pattern);
}

void giveBackMatcher(ReadyMatcher* matcher) {
    currentMatchers->giveBack(matcher);
}

} // namespace zr::detail
