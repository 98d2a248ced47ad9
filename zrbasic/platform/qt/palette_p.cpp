#include <zrbasic/platform/qt/palette_p.h>

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/line_editor_widget_p.h>
#include <zrbasic/platform/qt/text_browser_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>

#include <QApplication>
#include <QEvent>
#include <QToolTip>

namespace zr::qt {
namespace {

/// On widgets that were dressed.
constexpr const char* mark = "zrFollowsAppearance";

bool isApplicationDressed = false;

QPalette made(bool isDark) {
    const QColor window = toQt(NSColor::windowBackgroundColor());
    const QColor button = toQt(NSColor::controlColor());
    // Shadows and edges between those two.
    QPalette palette(button, window);
    const auto set = [&palette](QPalette::ColorRole role, const QColor& color) { palette.setColor(role, color); };
    const QColor text = plainTextColor();
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        set(role, text);
    }
    const QColor paper = toQt(NSColor::textBackgroundColor());
    set(QPalette::Window, window);
    set(QPalette::Button, button);
    set(QPalette::Base, paper);
    set(QPalette::AlternateBase, window);
    set(QPalette::ToolTipBase, isDark ? button : paper);
    set(QPalette::BrightText, Qt::white);
    set(QPalette::PlaceholderText, toQt(NSColor::placeholderTextColor()));
    // Behind a text that is edited; rows have a paler one (see table_widget_p.cpp).
    set(QPalette::Highlight, isDark ? QColor(43, 102, 176) : QColor(48, 140, 198));
    set(QPalette::HighlightedText, Qt::white);
    const QColor link = linkTextColor();
    set(QPalette::Link, link);
    set(QPalette::LinkVisited, link);
    const QColor disabled = toQt(NSColor::disabledControlTextColor());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText,
                            QPalette::PlaceholderText}) {
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, toQt(NSColor::separatorColor()));
    palette.setColor(QPalette::Disabled, QPalette::Base, paper);
    return palette;
}

bool isOurs(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (widget->property(mark).toBool() || dynamic_cast<const ViewWidget*>(widget)) {
            return true;
        }
    }
    return false;
}

void dressApplication() {
    QApplication::setPalette(paletteOfAppearance());
    QToolTip::setPalette(paletteOfAppearance());
}

} // namespace

const QPalette& paletteOfAppearance() {
    if (NSAppearance::currentDrawingAppearance()->isDark()) {
        static const QPalette dark = made(true);
        return dark;
    }
    static const QPalette light = made(false);
    return light;
}

QColor plainTextColor() {
    return NSAppearance::currentDrawingAppearance()->isDark() ? toQt(NSColor::labelColor()) : QColor(Qt::black);
}

QColor linkTextColor() {
    return toQt(NSColor::linkColor());
}

void dress(QWidget& widget) {
    widget.setProperty(mark, true);
    widget.setPalette(paletteOfAppearance());
}

void followAppearance() {
    if (isApplicationDressed) {
        dressApplication();
    }
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* const widget : widgets) {
        if (widget->property(mark).toBool()) {
            widget->setPalette(paletteOfAppearance());
        } else if (auto* const line = dynamic_cast<LineEditor*>(widget)) {
            line->followLook();
        } else if (auto* const browser = dynamic_cast<TextBrowser*>(widget)) {
            browser->followLook();
            browser->followText();
        }
    }
}

LookOfSession::LookOfSession(bool isApplicationOurs) {
    isApplicationDressed = isApplicationOurs;
    if (isApplicationOurs) {
        // Not the desktop's, which would draw in colours of its own.
        QApplication::setStyle(QStringLiteral("Fusion"));
        dressApplication();
    }
    qApp->installEventFilter(this);
}

LookOfSession::~LookOfSession() {
    isApplicationDressed = false;
}

bool LookOfSession::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::Polish && receiver->isWidgetType()) {
        auto& widget = static_cast<QWidget&>(*receiver);
        if (widget.isWindow() && !dynamic_cast<const HostWidget*>(&widget) && isOurs(widget.parentWidget())) {
            dress(widget);
        }
    }
    return false;
}

} // namespace zr::qt
