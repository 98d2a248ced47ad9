#include <zrbasic/platform/qt/view_capture_p.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/view_capture_x11_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>

#include <QApplication>
#include <QGraphicsEffect>
#include <QPainter>
#include <QScreen>

#include <cmath>
#include <optional>
#include <vector>

namespace zr::qt {
namespace {

/// The widget that shows a window, if it can be seen; a window in somebody else's widget has no peer that would know.
QWidget* shownWidget(NSWindow* window) {
    const QWidgetList topLevels = QApplication::topLevelWidgets();
    for (QWidget* const widget : topLevels) {
        if (widget->isVisible() && !widget->isMinimized() && windowOf(widget) == window) {
            return widget;
        }
    }
    return nullptr;
}

/// The pixels of a rectangle on the screen; nothing for what no screen has.
std::optional<QRect> screenPart(NSRect rect) {
    constexpr double farthest = 1 << 20;
    for (const double edge : {NSMinX(rect), NSMinY(rect), NSMaxX(rect), NSMaxY(rect)}) {
        if (!(std::fabs(edge) <= farthest)) {
            return std::nullopt;
        }
    }
    const QRect part = pixelRect(rect, 0, true);
    return part.isEmpty() ? std::nullopt : std::optional(part);
}

/// The windows from the given one to the one in front.
std::vector<Ref<NSWindow>> windowsFrom(NSWindow& window) {
    std::vector<Ref<NSWindow>> windows;
    const Ref<NSArray> ordered = NSApplication::sharedApplication()->orderedWindows();
    for (const id& element : ordered->elements()) {
        windows.insert(windows.begin(), Ref<NSWindow>(cast<NSWindow>(element)));
        if (element == &window) {
            return windows;
        }
    }
    // One in somebody else's widget, of which nobody knows what lies in front of it.
    return {Ref<NSWindow>(&window)};
}

#ifdef ZR_HAS_X11
/// Null on any other platform.
_XDisplay* displayServer() {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        return nullptr;
    }
    const auto* const native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->display() : nullptr;
}

bool drawScreen(QPainter& painter, QWidget& target, QScreen& screen, const QRect& part) {
    _XDisplay* const server = displayServer();
    if (!server) {
        return false;
    }
    target.repaint();
    const double scale = screen.devicePixelRatio();
    QRegion visible;
    for (const QRect& place : x11::placesFromWindowUp(server, target.winId())) {
        // Qt's screens begin where the server's do, and count from there in their own measure.
        const QPointF corner = QPointF(place.topLeft() - screen.geometry().topLeft()) / scale;
        visible += QRectF(corner, QSizeF(place.size()) / scale).toAlignedRect();
    }
    const QPixmap picture = screen.grabWindow(0, part.x(), part.y(), part.width(), part.height());
    if (picture.isNull()) {
        return false;
    }
    QRegion screens;
    for (const QScreen* const one : screen.virtualSiblings()) {
        screens += one->geometry().translated(-screen.geometry().topLeft());
    }
    // Where no screen is, the picture has whatever was in the memory.
    painter.setClipRegion(visible & screens);
    painter.drawPixmap(part, picture, picture.rect());
    return true;
}
#else
bool drawScreen(QPainter&, QWidget&, QScreen&, const QRect&) {
    return false;
}
#endif

} // namespace

Ref<NSBitmapImageRep> captureOf(NSWindow& window, NSRect rect) {
    QScreen* const screen = QGuiApplication::primaryScreen();
    QWidget* const target = shownWidget(&window);
    const std::optional<QRect> part = screenPart(rect);
    if (!screen || !target || !part) {
        return nullptr;
    }
    const double scale = screen->devicePixelRatio();
    const QSize pixels = (QSizeF(part->size()) * scale).toSize();
    Ref<NSBitmapImageRep> bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(pixels.width(), pixels.height());
    if (!bitmap) {
        return nullptr;
    }
    bitmap->setSize(rect.size);
    QImage image = imageOver(*bitmap);
    QPainter painter(&image);
    painter.scale(scale, scale);
    painter.translate(-part->topLeft());
    if (drawScreen(painter, *target, *screen, *part)) {
        return bitmap;
    }
    for (const Ref<NSWindow>& shown : windowsFrom(window)) {
        if (QWidget* const widget = shownWidget(shown)) {
            painter.save();
            painter.translate(widget->mapToGlobal(QPoint()) - screen->geometry().topLeft());
            widget->render(&painter);
            painter.restore();
        }
    }
    return bitmap;
}

bool WidgetPeer::drawInto(NSBitmapImageRep& bitmap, NSRect rect) {
    QWidget* const drawn = widget();
    QImage image = imageOver(bitmap);
    // No widget is larger, so it would not show all of a view that is.
    const bool isTooLarge = rect.size.width > QWIDGETSIZE_MAX || rect.size.height > QWIDGETSIZE_MAX;
    if (!drawn || image.isNull() || isTooLarge) {
        return false;
    }
    const QPointer<QGraphicsEffect> effect = drawn->graphicsEffect();
    const bool isInEffect = effect && effect->isEnabled();
    if (isInEffect) {
        effect->setEnabled(false);
    }
    const NSRect bounds = m_view.bounds();
    const double fromTop = m_view.isFlipped() ? NSMinY(rect) - NSMinY(bounds) : NSMaxY(bounds) - NSMaxY(rect);
    QPainter painter(&image);
    painter.scale(image.width() / rect.size.width, image.height() / rect.size.height);
    painter.translate(NSMinX(bounds) - NSMinX(rect) - overhang().left(), -fromTop - overhang().top());
    drawn->render(&painter, {}, {}, QWidget::DrawChildren);
    if (isInEffect && effect) {
        effect->setEnabled(true);
    }
    return true;
}

} // namespace zr::qt
