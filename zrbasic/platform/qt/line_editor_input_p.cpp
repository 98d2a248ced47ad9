#include <zrbasic/platform/qt/line_editor_widget_p.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QValidator>

#include <algorithm>

// What the user does in the editor.
namespace zr::qt {

namespace {

bool breaksLine(QChar unit) {
    const char16_t code = unit.unicode();
    return (code >= u'\n' && code <= u'\r') || code == 0x85 || code == 0x2028 || code == 0x2029;
}

/// The view whose widget `widget` is, or lies in.
NSView* viewAround(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (NSView* const view = viewOf(widget)) {
            return view;
        }
    }
    return nullptr;
}

} // namespace

/// Where Qt asks about every edit: typing, pasting, undoing, and what an input method enters.
class LineEditor::Gate final : public QValidator {
  public:
    explicit Gate(LineEditor& line) : QValidator(&line), m_line(line) {}

    State validate(QString& text, int& position) const override { return m_line.judge(text, position); }

  private:
    LineEditor& m_line;
};

void LineEditor::addGate() {
    setValidator(new Gate(*this));
}

QValidator::State LineEditor::judge(QString& text, int& position) {
    // Qt asks again about a text that stands, as when the editor loses the keyboard, and about a replacement.
    if (m_view == nullptr || m_following > 0 || text == m_accepted) {
        return QValidator::Acceptable;
    }
    if (m_isJudging) {
        return QValidator::Invalid;
    }
    if (!std::any_of(m_accepted.cbegin(), m_accepted.cend(), breaksLine)) {
        // What is dropped, or pasted with the middle button, has not been through the object's clipboard.
        std::replace_if(text.begin(), text.end(), breaksLine, QChar(u' '));
    }
    const Busy busy(*this);
    TextEdit edit{fromQt(text), NSMakeRange(static_cast<NSUInteger>(std::max(position, 0)), 0)};
    // What raises has not agreed.
    EditJudgement judgement = EditJudgement::Refused;
    const Ref<NSString> before = m_view->string();
    m_isJudging = true;
    duringEvent([&] { judgement = m_view->judgeEdit(edit); });
    if (!busy.isLineThere()) {
        return QValidator::Invalid;
    }
    m_isJudging = false;
    if (m_view != nullptr && !m_view->string()->isEqual(before)) {
        // Whoever judged has set another text. Qt cannot take that in the middle of an edit.
        QMetaObject::invokeMethod(this, &LineEditor::followText, Qt::QueuedConnection);
        return QValidator::Invalid;
    }
    if (m_view == nullptr || judgement == EditJudgement::Refused) {
        return QValidator::Invalid;
    }
    if (judgement == EditJudgement::Replaced) {
        text = toQt(edit.text);
        position = static_cast<int>(text.size());
    }
    m_accepted = text;
    return QValidator::Acceptable;
}

void LineEditor::report() {
    if (m_view == nullptr || m_following > 0 || text() != m_accepted) {
        return;
    }
    const Busy busy(*this);
    const TextEdit edit{fromQt(text()), selection()};
    if (edit.selection == m_view->selectedRange() && m_view->string()->isEqual(edit.text)) {
        return;
    }
    setAlignment(alignmentOfLine());
    duringEvent([&] { m_view->editWasMade(edit); });
}

void LineEditor::settle() {
    if (m_view == nullptr || m_following > 0 || text() == m_accepted) {
        return;
    }
    {
        // Undoing, and deleting from a password, are not taken back by Qt when they are refused.
        const Following following(*this);
        redo();
        if (text() != m_accepted) {
            undo();
        }
        if (text() != m_accepted) {
            setText(m_accepted);
        }
    }
    followSelection();
}

bool LineEditor::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete && m_busy > 0) {
        // A loop that runs inside of a handler.
        m_isDoomed = true;
        return true;
    }
    if (m_view == nullptr) {
        return QLineEdit::event(event);
    }
    const Busy busy(*this);
    // Qt looks at the tab key before anybody else is asked.
    if (event->type() == QEvent::KeyPress && handleKey(*static_cast<QKeyEvent*>(event))) {
        return true;
    }
    // Qt puts questions of the input method in the middle of an edit; what stands then is not settled yet.
    const bool mayEdit = event->type() != QEvent::InputMethodQuery && m_busy == 1;
    const bool isDone = QLineEdit::event(event);
    if (mayEdit && busy.isLineThere()) {
        settle();
    }
    return isDone;
}

bool LineEditor::handleKey(QKeyEvent& event) {
    constexpr auto commandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((event.modifiers() & commandKeys) != 0) {
        return false;
    }
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            command("insertNewline:"_sel);
            break;
        case Qt::Key_Tab:
            command(event.modifiers() & Qt::ShiftModifier ? "insertBacktab:"_sel : "insertTab:"_sel);
            break;
        case Qt::Key_Backtab:
            command("insertBacktab:"_sel);
            break;
        case Qt::Key_Escape:
            command("cancelOperation:"_sel);
            break;
        default:
            return false;
    }
    event.accept();
    return true;
}

void LineEditor::command(SEL action) {
    duringEvent([&] { send<void>(m_view, "doCommandBySelector:"_sel, action); });
}

void LineEditor::keyPressEvent(QKeyEvent* event) {
    showInsertionPoint();
    // The clipboard is the object's affair, which lets nothing out of a password and no line breaks in.
    if (m_view != nullptr && (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::Cut) ||
                              event->matches(QKeySequence::Paste))) {
        event->accept();
        const SEL operation = event->matches(QKeySequence::Copy)  ? "copy:"_sel
                              : event->matches(QKeySequence::Cut) ? "cut:"_sel
                                                                  : "paste:"_sel;
        duringEvent([&] { send<void>(m_view, operation, nullptr); });
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void LineEditor::inputMethodEvent(QInputMethodEvent* event) {
    m_preedit = event->preeditString();
    QLineEdit::inputMethodEvent(event);
    if (m_view != nullptr) {
        setAlignment(alignmentOfLine());
    }
}

void LineEditor::focusInEvent(QFocusEvent* event) {
    // Not Qt's business: it would show its insertion point, and select everything after the tab key.
    event->accept();
    followSelection();
    showInsertionPoint();
}

void LineEditor::focusOutEvent(QFocusEvent* event) {
    {
        const Following following(*this);
        QLineEdit::focusOutEvent(event);
    }
    m_blink.stop();
    update();
    switch (event->reason()) {
        case Qt::ActiveWindowFocusReason:
        case Qt::PopupFocusReason:
        case Qt::MenuBarFocusReason:
            return;
        default:
            leave();
    }
}

void LineEditor::leave() {
    // While the object leaves its control the keyboard goes away as well; then all is being seen to already.
    if (m_view == nullptr || !isVisible()) {
        return;
    }
    const Busy busy(*this);
    const Ref<NSWindow> home = m_view->window();
    if (!home || home->firstResponder() != m_view) {
        return;
    }
    const QWidget* const next = QApplication::focusWidget();
    if (next == this || (next != nullptr && next->window() != window())) {
        return;
    }
    NSView* const taker = viewAround(next);
    bool hasLeft = true;
    duringEvent([&] { hasLeft = send<bool>(home, "makeFirstResponder:"_sel, taker); });
    if (!hasLeft && busy.isLineThere()) {
        setFocus(Qt::OtherFocusReason);
    }
}

bool LineEditor::eventFilter(QObject* watched, QEvent* event) {
    if (m_view != nullptr && watched == parentWidget()) {
        switch (event->type()) {
            case QEvent::Resize:
                place();
                break;
            case QEvent::Hide:
                endSession();
                break;
            case QEvent::Show:
                beginSession();
                break;
            default:
                break;
        }
    }
    return QLineEdit::eventFilter(watched, event);
}

void LineEditor::contextMenuEvent(QContextMenuEvent* event) {
    if (m_view == nullptr) {
        return;
    }
    // Our own, because what is chosen from it must not run while the editor can be deleted.
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const char* title, bool isPossible, auto operation) {
        QAction* const item =
            menu->addAction(QCoreApplication::translate("LineEditor", title), this, [this, operation] {
                const Busy busy(*this);
                (this->*operation)();
                if (busy.isLineThere()) {
                    settle();
                }
            });
        item->setObjectName(QString::fromUtf8(title));
        item->setEnabled(isPossible);
    };
    const bool isSecure = m_view->isSecure();
    if (!isReadOnly()) {
        add(QT_TRANSLATE_NOOP("LineEditor", "Undo"), isUndoAvailable(), &QLineEdit::undo);
        add(QT_TRANSLATE_NOOP("LineEditor", "Redo"), isRedoAvailable(), &QLineEdit::redo);
        menu->addSeparator();
        if (!isSecure) {
            add(QT_TRANSLATE_NOOP("LineEditor", "Cut"), hasSelectedText(), &QLineEdit::cut);
        }
    }
    if (!isSecure) {
        add(QT_TRANSLATE_NOOP("LineEditor", "Copy"), hasSelectedText(), &QLineEdit::copy);
    }
    if (!isReadOnly()) {
        add(QT_TRANSLATE_NOOP("LineEditor", "Paste"), true, &QLineEdit::paste);
    }
    menu->addSeparator();
    add(QT_TRANSLATE_NOOP("LineEditor", "Select All"), !text().isEmpty(), &QLineEdit::selectAll);
    menu->popup(event->globalPos());
}

} // namespace zr::qt
