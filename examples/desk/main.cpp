#include "desk.h"

#include <examples/actions/player.h>
#include <examples/replay/account.h>
#include <examples/replay/arguments.h>
#include <examples/replay/report.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/qt/session.h>

#include <QGuiApplication>
#include <QWidget>

#include <iostream>
#include <map>
#include <optional>

using namespace zr::literals;

namespace {

enum Status { done = 0, failed = 1, wrongUsage = 2 };

using Options = std::map<std::string, std::string, std::less<>>;

int run(Options options) {
    zr::qt::Session toolkit;
    replay::Console console(false);
    replay::Problems problems(console);
    const std::string& folder = options["--data"];
    const auto instruments = replay::readInstruments(folder + "/exchange_info.json", problems, console);
    replay::Session session(instruments.value_or(std::vector<zr::Ref<replay::Instrument>>()), "");
    replay::Feed feed(folder + "/ticks.ndjson", std::strtoul(options["--rounds"].c_str(), nullptr, 10), session,
                      problems);
    const auto application = zr::NSApplication::sharedApplication();
    const auto desk = zr::make<desk::Desk>();
    desk->open(session, feed);
    if (!instruments) {
        desk->say("The list of instruments cannot be read"_ns, true);
    }
    if (const auto account = replay::readAccount(folder + "/account.json", console)) {
        desk->tell(account->message());
    } else {
        desk->say("The account cannot be read"_ns, true);
    }
    // Nobody sees it there, so it shows what it can and ends.
    const bool isUnattended = QGuiApplication::platformName() == "offscreen";
    const std::string& speed = options["--speed"];
    const bool isFast = speed.empty() ? isUnattended : speed == "max";
    desk->setSpeed(isFast ? replay::Feed::asFastAsItGoes : std::max(std::strtod(speed.c_str(), nullptr), 1.0));

    const auto end = [&] { application->terminate(nullptr); };
    std::optional<actions::Player> player;
    if (!options["--script"].empty()) {
        player.emplace(options["--script"]);
        player->start(end);
    } else if (isUnattended) {
        desk->onEnd = end;
    }
    toolkit.run();

    Status status = done;
    const auto fail = [&](const std::string& why) {
        std::cerr << "desk: " << why << '\n';
        status = failed;
    };
    if (player && !player->fault().empty()) {
        fail(player->fault());
    }
    const QString picture = QString::fromStdString(options["--picture"]);
    if (!picture.isEmpty() && !zr::qt::widget(desk->window())->grab().save(picture)) {
        fail("the picture cannot be written to " + options["--picture"]);
    }
    if (isUnattended) {
        std::cout << replay::textReport(session, problems, std::nullopt, {}, false);
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    Options options{
        {"--data", ZR_EXAMPLE_DATA_DIR}, {"--speed", ""}, {"--rounds", "1"}, {"--script", ""}, {"--picture", ""}};
    if (!replay::Arguments(argc, argv).readInto(options)) {
        std::cerr << "usage: desk [--data FOLDER] [--speed TIMES|max] [--rounds COUNT] [--script FILE] "
                     "[--picture FILE]\n";
        return wrongUsage;
    }
    return run(std::move(options));
}
