#pragma once

#include <QObject>
#include <QPalette>

class QWidget;

/// How Qt's own widgets look, light or dark, as the application's appearance says and whatever the desktop would like.
namespace zr::qt {

[[nodiscard]] const QPalette& paletteOfAppearance();
/// Of a text that nobody has given a colour.
[[nodiscard]] QColor plainTextColor();
/// Of a link that nobody has given a colour.
[[nodiscard]] QColor linkTextColor();

/// Has a widget of ours look as the appearance says, now and whenever that changes. For top-level widgets without a
/// parent, as menus may be, and for widgets that may lie in other people's windows; what hangs on one of ours, a menu, a
/// tool tip, a message box, is dressed on its way to the screen.
void dress(QWidget& widget);

/// Brings everything of ours up to date: the application's appearance is another one.
void followAppearance();

/// Stands as long as a session does. An application that the session has made looks as the appearance says in all its
/// parts; of one that somebody else has made, only what is ours does.
class LookOfSession final : public QObject {
  public:
    explicit LookOfSession(bool isApplicationOurs);
    ~LookOfSession() override;

    bool eventFilter(QObject* receiver, QEvent* event) override;
};

} // namespace zr::qt
