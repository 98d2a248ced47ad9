#include <examples/desk/desk.h>

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/platform/qt/session.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <thread>
#include <vector>

#include <unistd.h>

// The trading desk while 100,000 recorded quotes run through it as fast as it goes, and somebody types into a field all
// the time: how long a key waits until it has been dealt with, painting included. Beside it the same keys at a desk
// whose feed rests.

namespace {

using namespace zr;
using Clock = std::chrono::steady_clock;

constexpr std::size_t quotesWanted = 100000;
constexpr std::size_t quotesInFile = 5235;
constexpr std::chrono::milliseconds betweenKeys{5};

double residentMegabytes() {
    std::ifstream stream("/proc/self/statm");
    double all = 0;
    double resident = 0;
    stream >> all >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// Presses keys from a thread of its own, whatever the main thread is busy with.
class Typist {
  public:
    explicit Typist(NSWindow* window) : m_window(qt::widget(window)->windowHandle()) {
        m_thread = std::thread([this] {
            while (!m_isOver) {
                QMetaObject::invokeMethod(
                    QCoreApplication::instance(), [this, pressed = Clock::now()] { type(pressed); },
                    Qt::QueuedConnection);
                std::this_thread::sleep_for(betweenKeys);
            }
        });
    }
    ~Typist() {
        m_isOver = true;
        m_thread.join();
        QCoreApplication::sendPostedEvents();
    }
    Typist(const Typist&) = delete;
    Typist& operator=(const Typist&) = delete;

    /// Milliseconds from the press to its end, in rising order.
    [[nodiscard]] std::vector<double> waits() const {
        auto sorted = m_waits;
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }

  private:
    void type(Clock::time_point pressed) {
        const bool isDigit = m_waits.size() % 2 == 0;
        QKeyEvent event(QEvent::KeyPress, isDigit ? Qt::Key_7 : Qt::Key_Backspace, Qt::NoModifier,
                        isDigit ? QStringLiteral("7") : QStringLiteral("\b"));
        QCoreApplication::sendEvent(m_window, &event);
        QEvent paint(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(m_window, &paint);
        m_waits.push_back(std::chrono::duration<double, std::milli>(Clock::now() - pressed).count());
    }

    QWindow* m_window;
    std::thread m_thread;
    std::atomic<bool> m_isOver = false;
    std::vector<double> m_waits;
};

Ref<NSView> viewNamed(NSView* around, NSString* identifier) {
    if (identifier->isEqual(around->identifier())) {
        return Ref<NSView>(around);
    }
    for (const id& subview : around->subviews()) {
        if (const auto found = viewNamed(static_cast<NSView*>(subview.get()), identifier)) {
            return found;
        }
    }
    return nullptr;
}

/// Plays until so many quotes are through, or for half a second when none are wanted, with somebody typing.
void play(benchmark::State& state, std::size_t quotes) {
    const UserDefaultsFolderOverride nowhere("");
    const std::string folder = ZR_EXAMPLE_DATA_DIR;
    replay::Console console(true);
    replay::Problems problems(console);
    const auto instruments = replay::readInstruments(folder + "/exchange_info.json", problems, console);
    std::vector<double> waits;
    double early = 0;
    double late = 0;
    std::size_t played = 0;
    for (auto _ : state) {
        const qt::Session toolkit;
        replay::Session session(*instruments, "");
        replay::Feed feed(folder + "/ticks.ndjson", quotes / quotesInFile + 1, session, problems);
        const auto desk = make<desk::Desk>();
        desk->open(session, feed);
        desk->setSpeed(quotes > 0 ? replay::Feed::asFastAsItGoes : 1e-9);
        const auto window = Ref<NSWindow>(desk->window());
        window->makeFirstResponder(viewNamed(window->contentView(), "quantity"_ns));
        const auto end = Clock::now() + std::chrono::milliseconds(500);
        {
            Typist typist(window);
            currentToolkit().runLoopUntil([&] {
                // What is made once is made by then.
                if (early == 0 && session.quotes() > quotes / 4) {
                    early = residentMegabytes();
                }
                return quotes > 0 ? session.quotes() >= quotes : Clock::now() > end;
            });
            waits = typist.waits();
        }
        late = residentMegabytes();
        played = session.quotes();
        window->orderOut(nullptr);
    }
    if (waits.empty() || (quotes > 0 && played < quotes)) {
        state.SkipWithError("nothing was typed or played");
        return;
    }
    state.counters["keys"] = static_cast<double>(waits.size());
    state.counters["median_ms"] = waits[waits.size() / 2];
    state.counters["longest_ms"] = waits.back();
    state.counters["quotes_per_s"] = benchmark::Counter(static_cast<double>(played), benchmark::Counter::kIsRate);
    state.counters["grown_MB"] = late - early;
}

void typingWhileQuotesRun(benchmark::State& state) {
    play(state, quotesWanted);
}

void typingAtRest(benchmark::State& state) {
    play(state, 0);
}

BENCHMARK(typingWhileQuotesRun)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(typingAtRest)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

} // namespace
