#include <zrbasic/platform/qt/keyboard_layout_x11_p.h>

#ifdef ZR_HAS_X11

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <string_view>

namespace zr::qt::x11 {
namespace {

/// The part of `text` up to `separator`, or to its end, which is taken off `text`.
std::string_view takePart(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

} // namespace

std::vector<std::string> keyboardLayouts(Connection server) {
    const Atom rules = XInternAtom(server, "_XKB_RULES_NAMES", True);
    if (rules == None) {
        return {};
    }
    Atom type = None;
    int format = 0;
    unsigned long length = 0;
    unsigned long left = 0;
    unsigned char* bytes = nullptr;
    constexpr long mostWords = 1024;
    const int result = XGetWindowProperty(server, DefaultRootWindow(server), rules, 0, mostWords, False, XA_STRING,
                                          &type, &format, &length, &left, &bytes);
    std::vector<std::string> layouts;
    if (result == Success && bytes && type == XA_STRING && format == 8) {
        // Rules, model, layouts, variants, options, with zeros behind them.
        std::string_view text(reinterpret_cast<const char*>(bytes), length);
        takePart(text, '\0');
        takePart(text, '\0');
        std::string_view names = takePart(text, '\0');
        std::string_view variants = takePart(text, '\0');
        while (!names.empty() && layouts.size() < XkbNumKbdGroups) {
            std::string& layout = layouts.emplace_back(takePart(names, ','));
            // A layout and its variants type different things.
            if (const std::string_view variant = takePart(variants, ','); !variant.empty()) {
                layout.append("(").append(variant).append(")");
            }
        }
    }
    if (bytes) {
        XFree(bytes);
    }
    return layouts;
}

int currentKeyboardLayout(Connection server) {
    XkbStateRec state{};
    return XkbGetState(server, XkbUseCoreKbd, &state) == Success ? state.group : -1;
}

void lockKeyboardLayout(Connection server, unsigned index) {
    XkbLockGroup(server, XkbUseCoreKbd, index);
    XFlush(server);
}

} // namespace zr::qt::x11

#endif
