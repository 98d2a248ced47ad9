#include <zrbasic/platform/qt/menu_p.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/button_cell.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/event_translation_p.h>
#include <zrbasic/platform/qt/palette_p.h>
#include <zrbasic/platform/qt/session.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QKeySequence>
#include <QMenu>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace zr::qt {
namespace {

/// As it is: what Qt would take for a mark of its own is none.
QString plain(QString text) {
    // A tab sets off a shortcut, and a line break would leave its line.
    for (QChar& unit : text) {
        if (unit.category() == QChar::Other_Control || unit.category() == QChar::Separator_Line ||
            unit.category() == QChar::Separator_Paragraph) {
            unit = u' ';
        }
    }
    return text.replace(u'&', QStringLiteral("&&"));
}

/// The key as the desktop writes it. Shown alone: what it does is the window's business, or it would be done twice.
QString shortcutOf(const NSMenuItem& item) {
    const QString key = toQt(item.keyEquivalent());
    if (key.size() != 1) {
        return {};
    }
    const QChar unit = key.front();
    NSUInteger mask = item.keyEquivalentModifierMask();
    if (unit.isUpper()) {
        mask |= NSEventModifierFlagShift;
    }
    const int special = keyOf(unit.unicode());
    const int code = special != 0 ? special : unit.toUpper().unicode();
    const QKeySequence sequence(QKeyCombination(keyboardModifiers(mask), static_cast<Qt::Key>(code)));
    return sequence.toString(QKeySequence::NativeText);
}

/// Qt knows boxes that are checked and such that are not.
QIcon mixedMark(const QMenu& menu) {
    constexpr int side = 16;
    const auto inColor = [&menu](QPalette::ColorGroup group, QPalette::ColorRole role) {
        QPixmap pixmap(QSize(side, side) * menu.devicePixelRatioF());
        pixmap.setDevicePixelRatio(menu.devicePixelRatioF());
        pixmap.fill(Qt::transparent);
        QPainter(&pixmap).fillRect(QRect(4, 7, 8, 2), menu.palette().color(group, role));
        return pixmap;
    };
    QIcon icon(inColor(QPalette::Active, QPalette::WindowText));
    icon.addPixmap(inColor(QPalette::Active, QPalette::HighlightedText), QIcon::Active);
    icon.addPixmap(inColor(QPalette::Disabled, QPalette::WindowText), QIcon::Disabled);
    return icon;
}

/// Those on the screen; may hold some that are gone.
std::vector<QPointer<QMenu>>& openMenus() {
    static auto& menus = *new std::vector<QPointer<QMenu>>;
    return menus;
}

/// A menu of Qt, made from one of ours as that is now.
class Popup {
  public:
    Popup(const NSMenu& menu, QWidget* parent) : m_menu(new QMenu(parent)) {
        openMenus().push_back(m_menu);
        fill(*m_menu, menu);
        const double least = std::min(menu.minimumWidth(), double(QWIDGETSIZE_MAX));
        m_menu->setMinimumWidth(static_cast<int>(std::ceil(least)));
    }
    ~Popup() {
        std::erase(openMenus(), m_menu);
        delete m_menu.data();
    }
    Popup(const Popup&) = delete;
    Popup& operator=(const Popup&) = delete;

    [[nodiscard]] bool isEmpty() const { return m_menu->isEmpty(); }
    void show(QPoint at, const NSMenuItem* item);
    [[nodiscard]] bool isClosed() const { return !m_menu || m_menu->isHidden(); }
    /// Null for nothing, and for what is not to be had any more.
    [[nodiscard]] Ref<NSMenuItem> chosen() const { return m_chosen.lock(); }

  private:
    void fill(QMenu& popup, const NSMenu& menu);
    void add(QMenu& popup, const Ref<NSMenuItem>& item);

    QPointer<QMenu> m_menu;
    std::vector<std::pair<const NSMenuItem*, QAction*>> m_actions;
    Weak<NSMenuItem> m_chosen;
};

void Popup::fill(QMenu& popup, const NSMenu& menu) {
    dress(popup);
    popup.setSeparatorsCollapsible(false);
    // A press beside it is spent on closing it.
    popup.setAttribute(Qt::WA_NoMouseReplay);
    const Ref<NSArray> items = menu.itemArray();
    for (const id& element : items->elements()) {
        const Ref<NSMenuItem> item(cast<NSMenuItem>(element));
        if (!item->isHidden()) {
            add(popup, item);
        }
    }
}

void Popup::add(QMenu& popup, const Ref<NSMenuItem>& item) {
    if (item->isSeparatorItem()) {
        popup.addSeparator();
        return;
    }
    QString title = plain(toQt(item->title()));
    const Ref<NSMenu> submenu = item->submenu();
    QAction* action = nullptr;
    if (submenu) {
        QMenu* const inner = popup.addMenu(title);
        fill(*inner, *submenu);
        action = inner->menuAction();
    } else {
        if (const QString shortcut = plain(shortcutOf(*item)); !shortcut.isEmpty()) {
            title += u'\t' + shortcut;
        }
        action = popup.addAction(title);
        // Told of by Qt while it closes the menu, so not yet the time to do anything.
        QObject::connect(action, &QAction::triggered, &popup,
                         [this, weak = Weak<NSMenuItem>(item)] { m_chosen = weak; });
    }
    // Qt would read one from titles that look like one, as on a desktop with a menu bar at the top.
    action->setMenuRole(QAction::NoRole);
    action->setEnabled(item->isEnabled());
    if (item->state() == NSControlStateValueOn) {
        action->setCheckable(true);
        action->setChecked(true);
    } else if (item->state() == NSControlStateValueMixed) {
        action->setIcon(mixedMark(popup));
        action->setIconVisibleInMenu(true);
    }
    m_actions.emplace_back(item.get(), action);
}

void Popup::show(QPoint at, const NSMenuItem* item) {
    QAction* first = nullptr;
    for (const auto& [known, action] : m_actions) {
        if (known == item) {
            first = action;
        }
    }
    if (first) {
        m_menu->ensurePolished();
        at -= m_menu->actionGeometry(first).topLeft();
    }
    m_menu->popup(at);
    if (first && m_menu) {
        m_menu->setActiveAction(first);
    }
}

/// Null for a view that nothing on a screen stands for.
QWidget* topLevelOf(NSView& view) {
    for (Ref<NSView> at(&view); at; at = at->superview()) {
        const auto* const peer = dynamic_cast<const WidgetPeer*>(at->peer());
        if (peer && peer->presentWidget()) {
            return peer->presentWidget()->window();
        }
    }
    return nullptr;
}

/// On Qt's desktop; none for a view that is on no screen.
std::optional<QPoint> placeOf(NSPoint location, NSView* view) {
    if (!std::isfinite(location.x) || !std::isfinite(location.y)) {
        return {};
    }
    if (!view) {
        return desktopRect({location, NSZeroSize}).topLeft();
    }
    const QWidget* const topLevel = topLevelOf(*view);
    if (!topLevel || !topLevel->isVisible()) {
        return {};
    }
    const QPointF inWindow = topLevelPoint(*topLevel, view->convertPoint_toView(location, nullptr));
    return topLevel->mapToGlobal(inWindow).toPoint();
}

/// Where a view is on the screen; for none, everywhere.
class Home {
  public:
    explicit Home(NSView* view)
        : m_view(view),
          m_window(view ? view->window() : nullptr),
          m_topLevel(view ? topLevelOf(*view) : nullptr),
          m_isNeeded(view) {}

    /// The view is elsewhere now, or nowhere.
    [[nodiscard]] bool isLost() const {
        const Ref<NSView> view = m_view.lock();
        const Ref<NSWindow> window = m_window.lock();
        return m_isNeeded && (!view || !window || view->window() != window || !window->isVisible() || !m_topLevel ||
                              topLevelOf(*view) != m_topLevel);
    }

  private:
    Weak<NSView> m_view;
    Weak<NSWindow> m_window;
    QPointer<QWidget> m_topLevel;
    bool m_isNeeded;
};

/// The item that the user has chosen; null for none.
Ref<NSMenuItem> chosenFrom(const NSMenu& menu, const NSMenuItem* item, NSPoint location, NSView* view) {
    const std::optional<QPoint> place = placeOf(location, view);
    const Home home(view);
    if (!place || home.isLost()) {
        return nullptr;
    }
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    QWidget* const parent = view ? topLevelOf(*view) : widget(application->keyWindow());
    Popup popup(menu, parent);
    if (popup.isEmpty()) {
        return nullptr;
    }
    popup.show(*place, item);
    // The toolkit is another one once the session has ended.
    const Toolkit* const toolkit = &currentToolkit();
    const auto isCutShort = [&] {
        return application->isTerminated() || &currentToolkit() != toolkit || home.isLost();
    };
    handleEventsUntil([&] { return popup.isClosed() || isCutShort(); });
    return isCutShort() ? nullptr : popup.chosen();
}

} // namespace

bool runMenu(NSMenu& menu, NSMenuItem* item, NSPoint location, NSView* view) {
    const Ref<NSMenu> kept(&menu);
    const Ref<NSMenuItem> keptItem(item);
    const Ref<NSView> keptView(view);
    const Ref<NSMenuItem> chosen = chosenFrom(menu, item, location, view);
    // Changed, taken out or disabled meanwhile, it cannot be had.
    const Ref<NSMenu> home = chosen ? chosen->menu() : nullptr;
    if (!home || !chosen->isEnabled()) {
        return false;
    }
    send<void>(home, "performActionForItemAtIndex:"_sel, home->indexOfItem(chosen));
    return true;
}

void closeMenus() {
    const auto menus = openMenus();
    for (const QPointer<QMenu>& menu : menus) {
        delete menu.data();
    }
}

} // namespace zr::qt
