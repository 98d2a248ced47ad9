#include <zrbasic/platform/qt/line_editor_widget_p.h>

#include <zrbasic/platform/appkit/control.h>
#include <zrbasic/platform/appkit/text_field_cell.h>
#include <zrbasic/platform/qt/accessibility_p.h>
#include <zrbasic/platform/qt/canvas_p.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/editor_style_p.h>
#include <zrbasic/platform/qt/palette_p.h>

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <limits>

namespace zr::qt {

namespace {

/// The margin that a line editor of Qt keeps around its text, in pixels.
constexpr int sideMargin = 2;
constexpr int topMargin = 1;

} // namespace

LineEditor::LineEditor(NSTextView& view, QWidget& parent) : QLineEdit(&parent), m_view(&view) {
    setFrame(false);
    setStyle(editorStyle());
    setMaxLength(std::numeric_limits<int>::max());
    setContextMenuPolicy(Qt::DefaultContextMenu);
    // The tab key goes where the views say.
    setFocusPolicy(Qt::ClickFocus);
    followLook();
    followText();
    addGate();
    connect(this, &QLineEdit::textChanged, this, [this] {
        showInsertionPoint();
        report();
    });
    connect(this, &QLineEdit::selectionChanged, this, [this] {
        hideCursor();
        report();
    });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] {
        showInsertionPoint();
        report();
    });
    parent.installEventFilter(this);
    place();
}

LineEditor::~LineEditor() = default;

void LineEditor::retire() {
    m_view = nullptr;
    m_blink.stop();
    if (m_busy > 0) {
        // The widget around it may go at once.
        setParent(nullptr);
        m_isDoomed = true;
    }
}

// What the object says

void LineEditor::followText() {
    if (m_view == nullptr || m_isJudging) {
        return;
    }
    const QString wanted = toQt(m_view->string());
    m_accepted = wanted;
    if (wanted != text()) {
        const Following following(*this);
        if (m_inSession) {
            replaceText(wanted);
        } else {
            setText(wanted);
        }
        setAlignment(alignmentOfLine());
    }
    followSelection();
}

void LineEditor::replaceText(const QString& wanted) {
    // As an edit, which the user can undo: setting a text would forget all edits.
    const QString present = text();
    const qsizetype shorter = std::min(wanted.size(), present.size());
    const auto front = std::mismatch(wanted.begin(), wanted.begin() + shorter, present.begin()).first - wanted.begin();
    qsizetype back = 0;
    while (back < shorter - front && wanted[wanted.size() - 1 - back] == present[present.size() - 1 - back]) {
        ++back;
    }
    setSelection(static_cast<int>(front), static_cast<int>(present.size() - front - back));
    insert(wanted.mid(front, wanted.size() - front - back));
    if (text() != wanted) {
        setText(wanted);
    }
}

void LineEditor::followSelection() {
    if (m_view == nullptr || m_isJudging) {
        return;
    }
    const NSRange wanted = m_view->selectedRange();
    if (wanted == selection()) {
        return;
    }
    const Following following(*this);
    const auto length = static_cast<NSUInteger>(text().size());
    const NSUInteger start = std::min(wanted.location, length);
    const NSUInteger count = std::min(wanted.length, length - start);
    if (count == 0) {
        deselect();
        setCursorPosition(static_cast<int>(start));
    } else {
        setSelection(static_cast<int>(start), static_cast<int>(count));
    }
}

NSRange LineEditor::selection() const {
    if (hasSelectedText()) {
        return NSMakeRange(static_cast<NSUInteger>(selectionStart()), static_cast<NSUInteger>(selectionLength()));
    }
    return NSMakeRange(static_cast<NSUInteger>(cursorPosition()), 0);
}

void LineEditor::followLook() {
    if (m_view == nullptr) {
        return;
    }
    const Following following(*this);
    setFont(toQt(m_view->font()));
    QPalette colors = paletteOfAppearance();
    colors.setColor(QPalette::Text, toQt(m_view->textColor()));
    colors.setColor(QPalette::Base, Qt::transparent);
    if (colors != palette()) {
        setPalette(colors);
    }
    setEchoMode(m_view->isSecure() ? QLineEdit::Password : QLineEdit::Normal);
    setReadOnly(!m_view->isEditable());
    setAlignment(alignmentOfLine());
    update();
}

Qt::Alignment LineEditor::alignmentOfLine() const {
    const auto natural = [this] {
        const QString shown = text() + m_preedit;
        const bool isToLeft = shown.isEmpty() ? isRightToLeft() : shown.isRightToLeft();
        return isToLeft ? Qt::AlignRight : Qt::AlignLeft;
    };
    // Absolute, or Qt would turn it around once more for a text that is written to the left.
    constexpr Qt::Alignment place = Qt::AlignTop | Qt::AlignAbsolute;
    switch (m_view->alignment()) {
        case NSTextAlignmentRight:
            return place | Qt::AlignRight;
        case NSTextAlignmentCenter:
            return place | Qt::AlignHCenter;
        case NSTextAlignmentNatural:
            return place | natural();
        default:
            return place | Qt::AlignLeft;
    }
}

void LineEditor::place() {
    if (const QWidget* const around = parentWidget()) {
        setGeometry(around->rect().marginsAdded({sideMargin, topMargin, sideMargin, 0}));
    }
}

void LineEditor::beginSession() {
    if (m_view == nullptr) {
        return;
    }
    const NSView* const edited = m_view->superview();
    if (m_inSession && edited == m_sessionIn) {
        return;
    }
    m_inSession = true;
    m_sessionIn = edited;
    {
        // Setting a text, even the same one, is what makes Qt forget the edits before.
        const Following following(*this);
        m_accepted = toQt(m_view->string());
        setText(m_accepted);
    }
    setAccessibleName(edited ? qt::accessibleName(*m_view->superview()) : QString());
    followLook();
    followSelection();
    showInsertionPoint();
}

void LineEditor::endSession() {
    m_inSession = false;
    m_sessionIn = nullptr;
    m_preedit.clear();
    const Following following(*this);
    m_accepted.clear();
    setText(QString());
}

// What shows

void LineEditor::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (m_view == nullptr) {
        return;
    }
    QPainter painter(this);
    drawPlaceholder(painter);
    drawInsertionPoint(painter);
}

void LineEditor::drawPlaceholder(QPainter& painter) {
    const auto* const control = cast<NSControl>(m_view->superview().get());
    const auto* const cell = control ? cast<NSTextFieldCell>(control->cell().get()) : nullptr;
    if (cell == nullptr || !text().isEmpty() || !m_preedit.isEmpty()) {
        return;
    }
    const Ref<NSAttributedString> placeholder = cell->textForEmpty();
    if (!placeholder) {
        return;
    }
    painter.save();
    painter.translate(sideMargin, topMargin);
    const NSSize size = m_view->frame().size;
    PainterCanvas canvas(painter, size, false);
    canvas.drawText(placeholder, {NSZeroPoint, size}, cell->usesSingleLineMode());
    painter.restore();
}

void LineEditor::drawInsertionPoint(QPainter& painter) {
    if (!hasFocus() || isReadOnly() || hasSelectedText() || !m_isPointShown) {
        return;
    }
    // Qt's rectangle reaches a few pixels to both sides of where the next character would begin.
    const QRect around = cursorRect();
    const int x = std::clamp(around.center().x() + 1, sideMargin, std::max(sideMargin, width() - sideMargin - 1));
    painter.fillRect(QRect(x, around.top(), 1, around.height()), toQt(m_view->insertionPointColor()));
}

void LineEditor::hideCursor() {
    // Qt inverts what is under it, so its colour cannot be chosen; at some scales it shows however thin it is. The loss
    // of the keyboard to a popup changes nothing but that it is hidden.
    const Following following(*this);
    QFocusEvent event(QEvent::FocusOut, Qt::PopupFocusReason);
    QLineEdit::focusOutEvent(&event);
}

void LineEditor::showInsertionPoint() {
    m_isPointShown = true;
    const int period = QApplication::cursorFlashTime();
    if (hasFocus() && period > 0) {
        m_blink.start(period / 2, this);
    } else {
        m_blink.stop();
    }
    update();
}

void LineEditor::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_blink.timerId()) {
        m_isPointShown = !m_isPointShown;
        update();
        return;
    }
    QLineEdit::timerEvent(event);
}

} // namespace zr::qt
