#include <zrbasic/platform/qt/view_capture_x11_p.h>

#ifdef ZR_HAS_X11

#include <X11/Xlib.h>

#include <algorithm>

namespace zr::qt::x11 {
namespace {

struct Family {
    Window root = None;
    Window parent = None;
    /// From the one at the back to the one at the front.
    std::vector<Window> children;
};

Family familyOf(Display* server, Window window) {
    Family family;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(server, window, &family.root, &family.parent, &children, &count) != 0 && children) {
        family.children.assign(children, children + count);
        XFree(children);
    }
    return family;
}

/// Nobody else's window goes while this stands: to ask about one that is gone would be an error.
class [[nodiscard]] HeldServer {
  public:
    explicit HeldServer(Display* server) : m_server(server) { XGrabServer(m_server); }
    ~HeldServer() {
        XUngrabServer(m_server);
        XFlush(m_server);
    }
    HeldServer(const HeldServer&) = delete;
    HeldServer& operator=(const HeldServer&) = delete;

  private:
    Display* m_server;
};

} // namespace

std::vector<QRect> placesFromWindowUp(_XDisplay* server, unsigned long window) {
    const HeldServer held(server);
    Window outermost = window;
    Family family = familyOf(server, outermost);
    while (family.parent != None && family.parent != family.root) {
        outermost = family.parent;
        family = familyOf(server, outermost);
    }
    const std::vector<Window> all = familyOf(server, DefaultRootWindow(server)).children;
    std::vector<QRect> places;
    for (auto shown = std::find(all.begin(), all.end(), outermost); shown != all.end(); ++shown) {
        XWindowAttributes is;
        if (XGetWindowAttributes(server, *shown, &is) != 0 && is.map_state == IsViewable && is.c_class == InputOutput) {
            places.emplace_back(is.x, is.y, is.width + 2 * is.border_width, is.height + 2 * is.border_width);
        }
    }
    return places;
}

} // namespace zr::qt::x11

#endif
