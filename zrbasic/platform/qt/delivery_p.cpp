#include <zrbasic/platform/qt/delivery_p.h>

#include <zrbasic/platform/qt/modal_gate_p.h>

#include <QApplication>
#include <QPointer>

#include <algorithm>
#include <utility>
#include <vector>

namespace zr::qt {
namespace {

int deliveries = 0;

/// Asked to be deleted while something of them was running.
std::vector<QPointer<DeliveringWidget>>& postponed() {
    static auto& widgets = *new std::vector<QPointer<DeliveringWidget>>;
    return widgets;
}

/// Whether there is a control of Qt in it, whose own code may be on its way through this very call.
bool hasControls(const QWidget& widget) {
    for (const QObject* const child : widget.children()) {
        const auto* const inner = qobject_cast<const QWidget*>(child);
        if (inner && !inner->testAttribute(Qt::WA_TransparentForMouseEvents)) {
            return true;
        }
    }
    return false;
}

} // namespace

Delivery::Delivery() {
    ++deliveries;
}

Delivery::~Delivery() {
    --deliveries;
}

bool Delivery::isUnderWay() {
    return deliveries > 0;
}

void takeOut(QWidget& widget) {
    // Qt would look for another widget to take the keyboard, and so pass it on to views that nobody has asked for.
    QWidget* const focused = QApplication::focusWidget();
    if (focused && (focused == &widget || widget.isAncestorOf(focused))) {
        focused->clearFocus();
    }
    widget.hide();
    if (widget.parentWidget()) {
        widget.setParent(nullptr);
    }
}

void discard(QWidget* widget) {
    if (!widget || !QCoreApplication::instance()) {
        return;
    }
    const QPointer<QWidget> kept(widget);
    takeOut(*widget);
    if (!kept) {
        return;
    }
    if (Delivery::isUnderWay() || widget->windowHandle() || hasControls(*widget)) {
        widget->deleteLater();
    } else {
        delete widget;
    }
}

bool DeliveringWidget::isDelivering() const {
    if (m_deliveries > 0) {
        return true;
    }
    const auto inner = findChildren<QWidget*>();
    return std::any_of(inner.begin(), inner.end(), [](const QWidget* child) {
        const auto* const widget = dynamic_cast<const DeliveringWidget*>(child);
        return widget && widget->m_deliveries > 0;
    });
}

bool DeliveringWidget::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete) {
        if (isDelivering()) {
            postponed().emplace_back(this);
            return true;
        }
        // Nothing of this object may be touched afterwards.
        return handle(*event);
    }
    const Delivery delivery;
    // With a press Qt goes on to look at the window's widget, even when this one does not lie in that any more.
    const QPointer<DeliveringWidget> topLevel(
        isInput(event->type()) && !isWindow() ? dynamic_cast<DeliveringWidget*>(window()) : nullptr);
    ++m_deliveries;
    if (topLevel) {
        ++topLevel->m_deliveries;
    }
    const bool isHandled = handle(*event);
    if (topLevel) {
        --topLevel->m_deliveries;
    }
    if (--m_deliveries > 0) {
        return isHandled;
    }
    const auto again = std::exchange(postponed(), {});
    for (const QPointer<DeliveringWidget>& widget : again) {
        if (widget) {
            widget->deleteLater();
        }
    }
    return isHandled;
}

bool DeliveringWidget::handle(QEvent& event) {
    return QWidget::event(&event);
}

} // namespace zr::qt
