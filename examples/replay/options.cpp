#include "options.h"

#include "arguments.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <string_view>
#include <system_error>

#include <unistd.h>

namespace replay {

namespace {

namespace fs = std::filesystem;

constexpr const char* instrumentsName = "exchange_info.json";
constexpr const char* quotesName = "ticks.ndjson";
constexpr const char* accountName = "account.json";

bool isFile(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

/// The recorded data lies beside the sources; a built program may have been moved away from them.
fs::path dataFolder(const char* program) {
    const fs::path besideProgram = fs::path(program ? program : "").parent_path() / "data";
    for (const fs::path& folder : {fs::path("examples") / "data", besideProgram}) {
        if (isFile(folder / instrumentsName)) {
            return folder;
        }
    }
    return ZR_EXAMPLE_DATA_DIR;
}

bool complain(const std::string& what) {
    std::cerr << "replay: " << what << ". Try --help.\n";
    return false;
}

/// Colour belongs on terminals, unless their user wants none anywhere.
bool wantsColourByItself() {
    const char* const refusal = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) == 1 && (!refusal || !*refusal);
}

bool readColour(const std::string& when, Options& options) {
    options.wantsColour = when == "always" || (when == "auto" && wantsColourByItself());
    return when == "always" || when == "never" || when == "auto";
}

bool readOne(Arguments& arguments, Options& options, std::string& folder) {
    const std::string name(arguments.name());
    for (const auto& [flag, variable] :
         {std::pair("--quiet", &options.isQuiet), std::pair("--json", &options.wantsJson),
          std::pair("--help", &options.wantsHelp)}) {
        if (name == flag) {
            *variable = true;
            return !arguments.hasJoinedValue() || complain(name + " takes no value");
        }
    }
    for (const auto& [option, variable] :
         {std::pair("--instruments", &options.instrumentsFile), std::pair("--quotes", &options.quotesFile),
          std::pair("--account", &options.accountFile), std::pair("--instrument", &options.instrument)}) {
        if (name == option) {
            return arguments.takeValue(*variable) || complain(name + " needs a value");
        }
    }
    if (name == "--color") {
        std::string when;
        return (arguments.takeValue(when) && readColour(when, options)) || complain("--color is always, never or auto");
    }
    if (name.empty() || name.front() == '-') {
        return complain("there is no option \"" + name + '"');
    }
    if (!folder.empty()) {
        return complain("one folder is enough");
    }
    folder = name;
    return true;
}

} // namespace

std::optional<Options> readOptions(int argc, const char* const* argv) {
    Options options;
    options.wantsColour = wantsColourByItself();
    std::string folder;
    Arguments arguments(argc, argv);
    while (arguments.next()) {
        if (!readOne(arguments, options, folder)) {
            return std::nullopt;
        }
    }
    const fs::path data = folder.empty() ? dataFolder(argc > 0 ? argv[0] : nullptr) : fs::path(folder);
    if (options.instrumentsFile.empty()) {
        options.instrumentsFile = (data / instrumentsName).string();
    }
    if (options.quotesFile.empty()) {
        options.quotesFile = (data / quotesName).string();
    }
    // Quotes alone are worth a replay, too.
    if (options.accountFile.empty() && isFile(data / accountName)) {
        options.accountFile = (data / accountName).string();
    }
    return options;
}

const char* helpText() {
    return "Usage: replay [OPTION]... [FOLDER]\n"
           "\n"
           "Replays recorded quotes of an exchange: fills models from what the server sent, watches\n"
           "their prices, finds prices off the instrument's tick, and types one into a price field.\n"
           "Then it shows the account's message, arranges the columns as they were left, and orders.\n"
           "\n"
           "  --instruments FILE   the exchange's instruments, one JSON text\n"
           "  --quotes FILE        the quotes, one JSON text a line\n"
           "  --account FILE       the account's message and columns, one JSON text\n"
           "  --instrument SYMBOL  this instrument alone\n"
           "  --json               the report as JSON\n"
           "  --color=WHEN         always, never, or auto: on a terminal\n"
           "  --quiet              no messages about what is skipped, no progress\n"
           "  --help               this text\n"
           "\n"
           "Without FILE, exchange_info.json, ticks.ndjson and, if it is there, account.json are taken\n"
           "from FOLDER, or from the recorded data that comes with the sources.\n"
           "\n"
           "What is damaged is named on the error output, counted and skipped. The exit status is 0\n"
           "when the files could be read, 1 when one could not, 2 for a wrong command line.\n";
}

} // namespace replay
