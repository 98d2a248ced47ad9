#include <zrbasic/platform/runtime/exception.h>

namespace zr {

struct NSException::Text {
    std::string name;
    std::string reason;
    std::string what;
};

NSException::NSException(std::string_view name, std::string_view reason) {
    auto text = std::make_shared<Text>();
    text->name = name;
    text->reason = reason;
    text->what = text->name + ": " + text->reason;
    m_text = std::move(text);
}

NSException::NSException(const NSException&) noexcept = default;
NSException& NSException::operator=(const NSException&) noexcept = default;
NSException::~NSException() = default;

const std::string& NSException::name() const noexcept {
    return m_text->name;
}

const std::string& NSException::reason() const noexcept {
    return m_text->reason;
}

const char* NSException::what() const noexcept {
    return m_text->what.c_str();
}

void NSException::raise(std::string_view name, std::string_view reason) {
    throw NSException(name, reason);
}

} // namespace zr
