#include <zrbasic/platform/qt/text_browser_p.h>

#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/input_delivery_p.h>
#include <zrbasic/platform/qt/palette_p.h>
#include <zrbasic/platform/qt/styled_document_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QAbstractTextDocumentLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>

namespace zr::qt {

namespace {

/// A container wider than this never breaks a line.
constexpr double endlessWidth = 1e6;

} // namespace

TextBrowser::TextBrowser(NSTextView& view, QWidget& parent) : QTextBrowser(&parent), m_view(&view) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Where a link leads is the object's to say.
    setOpenLinks(false);
    setMinimumSize(0, 0);
    viewport()->setMouseTracking(true);
    followLook();
    followText();
    connect(this, &QTextEdit::textChanged, this, [this] { report(); });
    connect(this, &QTextEdit::selectionChanged, this, [this] { report(); });
    connect(this, &QTextEdit::cursorPositionChanged, this, [this] { report(); });
    parent.installEventFilter(this);
    place();
}

TextBrowser::~TextBrowser() = default;

void TextBrowser::retire() {
    m_view = nullptr;
    m_pressedLink = nullptr;
    if (m_busy > 0) {
        // The widget around it may go at once.
        setParent(nullptr);
        m_isDoomed = true;
    }
}

// What the object says

void TextBrowser::followText() {
    if (m_view == nullptr) {
        return;
    }
    {
        const Following following(*this);
        const Ref<NSTextStorage> storage = m_view->textStorage();
        fillDocument(*document(), *storage, m_view->textContainer()->lineFragmentPadding());
        m_accepted = toPlainText();
    }
    followSelection();
    viewport()->update();
}

void TextBrowser::followSelection() {
    if (m_view == nullptr || selection() == m_view->selectedRange()) {
        return;
    }
    const Following following(*this);
    const NSRange wanted = m_view->selectedRange();
    const auto last = static_cast<NSUInteger>(std::max(document()->characterCount() - 1, 0));
    QTextCursor cursor = textCursor();
    cursor.setPosition(static_cast<int>(std::min(wanted.location, last)));
    cursor.setPosition(static_cast<int>(std::min(NSMaxRange(wanted), last)), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void TextBrowser::followLook() {
    if (m_view == nullptr) {
        return;
    }
    const Following following(*this);
    QPalette colors = paletteOfAppearance();
    const Ref<NSColor> background = m_view->backgroundColor();
    const bool hasBackground = m_view->drawsBackground() && background;
    colors.setColor(QPalette::Base, hasBackground ? toQt(background) : QColor(Qt::transparent));
    colors.setColor(QPalette::Text, toQt(m_view->textColor()));
    if (colors != palette()) {
        setPalette(colors);
    }
    viewport()->setAutoFillBackground(hasBackground);
    document()->setDefaultFont(toQt(m_view->font()));
    Qt::TextInteractionFlags use = Qt::LinksAccessibleByMouse;
    if (m_view->isSelectable()) {
        use |= Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;
    }
    if (m_view->isEditable()) {
        use |= Qt::TextEditorInteraction;
    }
    setTextInteractionFlags(use);
    setUndoRedoEnabled(m_view->isEditable());
    setFocusPolicy(m_view->isSelectable() ? Qt::ClickFocus : Qt::NoFocus);

    const Ref<NSTextContainer> container = m_view->textContainer();
    const double width = container->containerSize().width;
    if (container->widthTracksTextView()) {
        setLineWrapMode(QTextEdit::WidgetWidth);
    } else if (width < endlessWidth) {
        setLineWrapMode(QTextEdit::FixedPixelWidth);
        setLineWrapColumnOrWidth(static_cast<int>(std::max(width, 0.0)));
    } else {
        setLineWrapMode(QTextEdit::NoWrap);
    }
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void TextBrowser::place() {
    if (const QWidget* const around = parentWidget()) {
        setGeometry(around->rect());
    }
}

bool TextBrowser::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        place();
    }
    return QTextBrowser::eventFilter(watched, event);
}

void TextBrowser::scrollContentsBy(int dx, int dy) {
    // What is read stands still in its view; whoever wants to scroll puts the view into a scroll view.
    const bool isScrolled = horizontalScrollBar()->value() != 0 || verticalScrollBar()->value() != 0;
    if (isReadOnly() && isScrolled) {
        horizontalScrollBar()->setValue(0);
        verticalScrollBar()->setValue(0);
        return;
    }
    QTextBrowser::scrollContentsBy(dx, dy);
}

// What the user does

bool TextBrowser::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete && m_busy > 0) {
        // A loop that runs inside of a handler.
        m_isDoomed = true;
        return true;
    }
    const Busy busy(*this);
    return QTextBrowser::event(event);
}

bool TextBrowser::viewportEvent(QEvent* event) {
    const Busy busy(*this);
    if (m_view != nullptr && event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        const id link = m_view->displaysLinkToolTips() ? linkAt(help->pos()) : nullptr;
        if (link) {
            const auto* const url = cast<NSURL>(link);
            QToolTip::showText(help->globalPos(), toQt(url ? url->absoluteString() : link->description()), this);
            return true;
        }
        // The view's own, if it has one.
        event->ignore();
        return false;
    }
    return QTextBrowser::viewportEvent(event);
}

std::optional<NSUInteger> TextBrowser::characterAt(QPoint point) const {
    const QPointF place = point + QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const int index = document()->documentLayout()->hitTest(place, Qt::ExactHit);
    if (index < 0) {
        return std::nullopt;
    }
    return static_cast<NSUInteger>(index);
}

id TextBrowser::linkAt(QPoint point) const {
    const std::optional<NSUInteger> index = characterAt(point);
    if (m_view == nullptr || !index) {
        return nullptr;
    }
    const Ref<NSTextStorage> storage = m_view->textStorage();
    return *index < storage->length()
               ? storage->attribute_atIndex_effectiveRange(NSLinkAttributeName(), *index, nullptr)
               : nullptr;
}

void TextBrowser::tellObject(QMouseEvent& event) {
    if (m_view == nullptr) {
        return;
    }
    tellBeside(*m_view, translated(event, *viewport()));
}

void TextBrowser::mousePressEvent(QMouseEvent* event) {
    tellObject(*event);
    m_pressedLink = event->button() == Qt::LeftButton ? linkAt(event->position().toPoint()) : nullptr;
    QTextBrowser::mousePressEvent(event);
}

void TextBrowser::mouseMoveEvent(QMouseEvent* event) {
    tellObject(*event);
    QTextBrowser::mouseMoveEvent(event);
    showCursorAt(event->position().toPoint());
}

void TextBrowser::showCursorAt(QPoint point) {
    if (m_view == nullptr) {
        return;
    }
    if (linkAt(point)) {
        viewport()->setCursor(Qt::PointingHandCursor);
    } else if (m_view->isSelectable()) {
        viewport()->setCursor(Qt::IBeamCursor);
    } else {
        viewport()->unsetCursor();
    }
}

void TextBrowser::mouseReleaseEvent(QMouseEvent* event) {
    tellObject(*event);
    const id pressed = std::exchange(m_pressedLink, nullptr);
    const QPoint point = event->position().toPoint();
    // Drawing the mouse over a link selects its text.
    const bool isClick = m_view != nullptr && pressed && event->button() == Qt::LeftButton &&
                         !textCursor().hasSelection() && linkAt(point) == pressed;
    if (!isClick) {
        QTextBrowser::mouseReleaseEvent(event);
        return;
    }
    const NSUInteger index = characterAt(point).value_or(0);
    {
        // Qt marks a link that was clicked by selecting it.
        const Following following(*this);
        const QTextCursor before = textCursor();
        QTextBrowser::mouseReleaseEvent(event);
        setTextCursor(before);
    }
    duringEvent([&] { send<void>(m_view, "clickedOnLink:atIndex:"_sel, pressed, index); });
}

void TextBrowser::keyPressEvent(QKeyEvent* event) {
    constexpr auto commandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    SEL command;
    if (m_view != nullptr && (event->modifiers() & commandKeys) == 0) {
        if (event->key() == Qt::Key_Escape) {
            command = "cancelOperation:"_sel;
        } else if (event->key() == Qt::Key_Backtab) {
            command = "insertBacktab:"_sel;
        } else if (event->key() == Qt::Key_Tab && !m_view->isEditable()) {
            command = "insertTab:"_sel;
        }
    }
    if (!command) {
        QTextBrowser::keyPressEvent(event);
        return;
    }
    event->accept();
    duringEvent([&] { send<void>(m_view, "doCommandBySelector:"_sel, command); });
}

void TextBrowser::wheelEvent(QWheelEvent* event) {
    // For the view, and what it lies in.
    event->ignore();
}

void TextBrowser::focusInEvent(QFocusEvent* event) {
    QTextBrowser::focusInEvent(event);
    const Ref<NSWindow> home = m_view ? m_view->window() : nullptr;
    if (home && home->firstResponder() != m_view) {
        duringEvent([&] { send<bool>(home, "makeFirstResponder:"_sel, m_view); });
    }
}

NSRange TextBrowser::selection() const {
    const QTextCursor cursor = textCursor();
    return NSMakeRange(static_cast<NSUInteger>(cursor.selectionStart()),
                       static_cast<NSUInteger>(cursor.selectionEnd() - cursor.selectionStart()));
}

void TextBrowser::report() {
    if (m_view == nullptr || m_following > 0) {
        return;
    }
    const Busy busy(*this);
    const QString text = toPlainText();
    const bool isEdit = text != m_accepted;
    TextEdit edit{isEdit ? fromQt(text) : m_view->string(), selection()};
    if (isEdit) {
        // Qt cannot be asked before it edits a document, so what is refused is put back.
        EditJudgement judgement = EditJudgement::Refused;
        duringEvent([&] { judgement = m_view->judgeEdit(edit); });
        if (!busy.isBrowserThere() || m_view == nullptr) {
            return;
        }
        if (judgement == EditJudgement::Refused) {
            followText();
            return;
        }
        m_accepted = text;
    }
    const bool isReplaced = isEdit && toQt(edit.text) != text;
    duringEvent([&] { m_view->editWasMade(edit); });
    if (isReplaced && busy.isBrowserThere()) {
        followText();
    }
}

} // namespace zr::qt
