#include "options.h"
#include "report.h"
#include "session.h"

#include <zrbasic/platform/runtime/exception.h>

#include <exception>
#include <iostream>

namespace {

enum Status { done = 0, unreadable = 1, wrongUsage = 2 };

/// Types a price for the first instrument that was quoted, or else the first one; none when there is no sensible one.
std::optional<replay::PriceEntry> typedEntry(const replay::Session& session) {
    const replay::Tracker* chosen = nullptr;
    for (const auto& tracker : session.trackers()) {
        if (!chosen || (chosen->quotes() == 0 && tracker->quotes() > 0)) {
            chosen = tracker;
        }
    }
    if (!chosen) {
        return std::nullopt;
    }
    try {
        return replay::typePrice(chosen->instrument(), chosen->last());
    } catch (const zr::NSException&) {
        // A tick so small or so large that no price of ten characters can be divided by it.
        return std::nullopt;
    }
}

int run(const replay::Options& options) {
    replay::Console console(options.isQuiet);
    replay::Problems problems(console);
    const auto instruments = replay::readInstruments(options.instrumentsFile, problems, console);
    if (!instruments) {
        return unreadable;
    }
    replay::Session session(*instruments, options.instrument);
    if (!options.instrument.empty() && !session.hasTrackers()) {
        console.say("replay: there is no usable instrument \"" + replay::printable(options.instrument) + "\" in " +
                    options.instrumentsFile);
        return wrongUsage;
    }
    if (!session.run(options.quotesFile, problems, console)) {
        return unreadable;
    }
    const bool hasAccount = !options.accountFile.empty();
    const auto account = hasAccount ? replay::readAccount(options.accountFile, console) : nullptr;
    if (hasAccount && !account) {
        return unreadable;
    }
    const auto entry = typedEntry(session);
    const auto desk = replay::openDesk(account, entry);
    std::cout << (options.wantsJson ? jsonReport(session, problems, entry, desk)
                                    : textReport(session, problems, entry, desk, options.wantsColour));
    std::cout.flush();
    if (!std::cout) {
        console.say("replay: the report cannot be written");
        return unreadable;
    }
    return done;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const auto options = replay::readOptions(argc, argv);
        if (!options) {
            return wrongUsage;
        }
        if (options->wantsHelp) {
            std::cout << replay::helpText();
            return done;
        }
        return run(*options);
    } catch (const std::exception& exception) {
        std::cerr << "replay: " << exception.what() << '\n';
        return unreadable;
    }
}
