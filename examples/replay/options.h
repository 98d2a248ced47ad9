#pragma once

#include <optional>
#include <string>

namespace replay {

/// What the command line asks for.
struct Options {
    std::string instrumentsFile;
    std::string quotesFile;
    /// Empty for none.
    std::string accountFile;
    /// Empty for all instruments.
    std::string instrument;
    bool isQuiet = false;
    bool wantsJson = false;
    bool wantsHelp = false;
    bool wantsColour = false;
};

/// Reads the command line and finds the files that it does not name. Nothing, after a message on the error output,
/// when it makes no sense.
[[nodiscard]] std::optional<Options> readOptions(int argc, const char* const* argv);

[[nodiscard]] const char* helpText();

} // namespace replay
