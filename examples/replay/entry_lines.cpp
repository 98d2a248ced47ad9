#include "entry_lines.h"

namespace replay {

namespace {

/// The position behind the string that begins at `quote`.
std::size_t endOfString(std::string_view json, std::size_t quote) {
    std::size_t position = quote + 1;
    while (position < json.size() && json[position] != '"') {
        position += json[position] == '\\' ? 2 : 1;
    }
    return position + 1;
}

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

} // namespace

std::vector<std::size_t> linesOfEntries(std::string_view json, std::string_view key) {
    std::vector<std::size_t> lines;
    std::size_t line = 1;
    int depth = 0;
    bool isKeyBefore = false;
    bool isInList = false;
    bool expectsEntry = false;
    for (std::size_t position = 0; position < json.size(); ++position) {
        const char character = json[position];
        line += character == '\n';
        if (isBlank(character) || character == ':') {
            continue;
        }
        if (character == ']' || character == '}') {
            isInList = isInList && depth > 2;
            expectsEntry = false;
            --depth;
            continue;
        }
        if (character == ',') {
            expectsEntry = isInList && depth == 2;
            continue;
        }
        if (expectsEntry) {
            lines.push_back(line);
            expectsEntry = false;
        }
        if (character == '[' || character == '{') {
            ++depth;
            if (character == '[' && depth == 2 && isKeyBefore) {
                // Of equal keys the last one counts.
                lines.clear();
                isInList = true;
                expectsEntry = true;
            }
        }
        isKeyBefore = false;
        if (character == '"') {
            const std::size_t end = endOfString(json, position);
            isKeyBefore = depth == 1 && json.substr(position + 1, end - position - 2) == key;
            position = end - 1;
        }
    }
    return lines;
}

} // namespace replay
