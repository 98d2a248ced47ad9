#include "expecting.h"

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/qt/session.h>

#include <QApplication>
#include <QStyle>
#include <QToolTip>

#include <cmath>

using namespace zr;
using expecting::allGood;
using expecting::expect;

namespace {

bool isShownAs(const QColor& color, NSColor* role) {
    return std::abs(color.redF() - role->redComponent()) < 0.01 &&
           std::abs(color.greenF() - role->greenComponent()) < 0.01 &&
           std::abs(color.blueF() - role->blueComponent()) < 0.01;
}

void setAppearance(NSString* name) {
    NSApplication::sharedApplication()->setAppearance(NSAppearance::appearanceNamed(name));
}

void expectColorsOfAppearance(const char* what) {
    const QPalette palette = QApplication::palette();
    expect(isShownAs(palette.color(QPalette::Window), NSColor::windowBackgroundColor()) &&
               isShownAs(palette.color(QPalette::Base), NSColor::textBackgroundColor()) &&
               isShownAs(palette.color(QPalette::Button), NSColor::controlColor()) &&
               isShownAs(palette.color(QPalette::Link), NSColor::linkColor()),
           what);
    expect(QToolTip::palette().color(QPalette::ToolTipText) == palette.color(QPalette::WindowText), what);
    expect(
        std::abs(palette.color(QPalette::Window).lightnessF() - palette.color(QPalette::WindowText).lightnessF()) > 0.5,
        what);
}

} // namespace

// A session that makes the application object has all of it look as the appearance says, whatever style and colours the
// desktop, or its user, has chosen for programs of Qt.
int main() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_STYLE_OVERRIDE", "Windows");
    {
        const qt::Session session;
        expect(QApplication::style()->objectName().compare("fusion", Qt::CaseInsensitive) == 0,
               "the style is the same");
        expectColorsOfAppearance("light at first");
        setAppearance(NSAppearanceNameDarkAqua());
        expectColorsOfAppearance("dark when that is set");
    }
    {
        const qt::Session session;
        expectColorsOfAppearance("and in the next session");
        setAppearance(nullptr);
        expectColorsOfAppearance("light again");
    }
    return allGood ? 0 : 1;
}
