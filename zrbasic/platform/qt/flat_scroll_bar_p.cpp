#include <zrbasic/platform/qt/flat_scroll_bar_p.h>

#include <QEvent>

namespace zr::qt {
namespace {

// A style sheet, because it also decides where a press lands: the arrows are really gone.
constexpr const char* sheet =
    "QScrollBar { background: %1; border: none; }"
    "QScrollBar:vertical { width: 10px; }"
    "QScrollBar:horizontal { height: 10px; }"
    "QScrollBar::handle { background: %2; border-radius: 3px; margin: 2px; }"
    "QScrollBar::handle:vertical { min-height: 24px; }"
    "QScrollBar::handle:horizontal { min-width: 24px; }"
    "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
    "QScrollBar::add-page, QScrollBar::sub-page { background: none; }";

} // namespace

FlatScrollBar::FlatScrollBar(Qt::Orientation orientation, QWidget* parent) : QScrollBar(orientation, parent) {
    followParent();
}

FlatScrollBar::~FlatScrollBar() = default;

// A widget with a style sheet of its own is not told of other palettes.
void FlatScrollBar::followParent() {
    if (parentWidget()) {
        parentWidget()->installEventFilter(this);
        followPalette();
    }
}

bool FlatScrollBar::event(QEvent* event) {
    if (event->type() == QEvent::ParentAboutToChange && parentWidget()) {
        parentWidget()->removeEventFilter(this);
    } else if (event->type() == QEvent::ParentChange) {
        followParent();
    }
    return QScrollBar::event(event);
}

bool FlatScrollBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::PaletteChange && watched == parentWidget()) {
        followPalette();
    }
    return QScrollBar::eventFilter(watched, event);
}

// The names of a palette's colours, in a style sheet, would be looked up once and for all.
void FlatScrollBar::followPalette() {
    const QColor track = parentWidget()->palette().color(QPalette::Base);
    const QColor text = parentWidget()->palette().color(QPalette::Text);
    const QColor knob((3 * track.red() + text.red()) / 4, (3 * track.green() + text.green()) / 4,
                      (3 * track.blue() + text.blue()) / 4);
    if (track.rgb() != m_track || knob.rgb() != m_knob) {
        m_track = track.rgb();
        m_knob = knob.rgb();
        setStyleSheet(QString::fromLatin1(sheet).arg(track.name(), knob.name()));
    }
}

} // namespace zr::qt
