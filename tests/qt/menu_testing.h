#pragma once

#include "view_testing.h"

#include <zrbasic/platform/appkit/menu.h>

#include <QMenu>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <string>
#include <vector>

namespace zr::test {

/// Writes down which items were chosen, and whether a menu was still open then.
class MenuChoices : public NSObject {
    ZR_OBJECT(MenuChoices, NSObject)
  public:
    void choose(NSObject* item) {
        const auto* const chosen = cast<NSMenuItem>(item);
        log += chosen ? chosen->title()->utf8() + ' ' : "? ";
        if (QApplication::activePopupWidget()) {
            log += "(too early) ";
        }
        if (whenChosen) {
            // Kept, as it may change what it is called from.
            const auto work = whenChosen;
            work();
        }
    }
    ZR_METHOD(choose, "choose:")

    std::string log;
    std::function<void()> whenChosen;
};

/// The user of menus: does one thing after the other, each as soon as a menu is open. What nobody closes is closed
/// after 5 seconds.
class MenuUser {
  public:
    using Step = std::function<void(QMenu&)>;

    explicit MenuUser(std::vector<Step> steps) : m_steps(std::move(steps)) {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start(2);
        m_patience.start();
    }
    ~MenuUser() {
        m_timer.stop();
        EXPECT_EQ(m_done, m_steps.size()) << "not all was done";
        EXPECT_FALSE(m_gaveUp) << "a menu did not close";
    }
    MenuUser(const MenuUser&) = delete;
    MenuUser& operator=(const MenuUser&) = delete;

  private:
    void look() {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu && m_done < m_steps.size()) {
            m_patience.restart();
            m_steps[m_done++](*menu);
        } else if (menu && m_patience.elapsed() > 5000) {
            m_gaveUp = true;
            menu->close();
        }
    }

    std::vector<Step> m_steps;
    std::size_t m_done = 0;
    bool m_gaveUp = false;
    QTimer m_timer;
    QElapsedTimer m_patience;
};

/// A key press as the desktop hands it to whoever is in front.
inline MenuUser::Step pressing(Qt::Key key) {
    return [key](QMenu& menu) { QTest::keyClick(&menu, key); };
}

inline QAction* actionNamed(const QMenu& menu, const QString& text) {
    for (QAction* const action : menu.actions()) {
        if (action->text().section(u'\t', 0, 0) == text) {
            return action;
        }
    }
    return nullptr;
}

inline MenuUser::Step clicking(const char* text) {
    return [text](QMenu& menu) {
        QAction* const action = actionNamed(menu, QString::fromUtf8(text));
        ASSERT_TRUE(action) << text;
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    };
}

/// What the lines say, in order: "-" for a separator, brackets around what cannot be chosen, a star at what is ticked.
inline std::string linesOf(const QMenu& menu) {
    QStringList lines;
    for (const QAction* const action : menu.actions()) {
        if (action->isSeparator()) {
            lines << QStringLiteral("-");
            continue;
        }
        const QString text = action->text() + (action->isChecked() ? QStringLiteral("*") : QString());
        lines << (action->isEnabled() ? text : u'(' + text + u')');
    }
    return lines.join(u'|').toStdString();
}

} // namespace zr::test
