#pragma once

#include <zrbasic/platform/appkit/text_view.h>

#include <QBasicTimer>
#include <QLineEdit>
#include <QPointer>
#include <QValidator>

namespace zr::qt {

/// The line editor of Qt behind a window's field editor. It fills the editor's widget, and is a little larger than
/// that, for Qt keeps a margin around the text and cells do not.
class LineEditor final : public QLineEdit {
  public:
    LineEditor(NSTextView& view, QWidget& parent);
    ~LineEditor() override;

    /// The object is on its way out: forgets it. Goes with the widget around it, or once no event is being handled.
    void retire();

    /// Takes the text, the selection, or the look from the object. Nothing is reported back.
    void followText();
    void followSelection();
    void followLook();
    /// Another control is edited now, or the same one once more: what was done before cannot be undone any more.
    void beginSession();
    /// Forgets the text.
    void endSession();

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    class Gate;

    /// While Qt is at work in the editor it must not be deleted, whatever becomes of the object.
    class [[nodiscard]] Busy {
      public:
        explicit Busy(LineEditor& line) : m_line(&line), m_view(line.m_view) { ++line.m_busy; }
        ~Busy() {
            if (m_line && --m_line->m_busy == 0 && m_line->m_isDoomed) {
                m_line->deleteLater();
            }
        }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

        [[nodiscard]] bool isLineThere() const { return m_line != nullptr; }

      private:
        QPointer<LineEditor> m_line;
        Ref<NSTextView> m_view;
    };

    /// While the editor follows the object, nothing is judged or reported.
    class [[nodiscard]] Following {
      public:
        explicit Following(LineEditor& line) : m_line(line) { ++line.m_following; }
        ~Following() { --m_line.m_following; }
        Following(const Following&) = delete;
        Following& operator=(const Following&) = delete;

      private:
        LineEditor& m_line;
    };

    void addGate();
    QValidator::State judge(QString& text, int& position);
    void report();
    /// Qt's own insertion point shows as soon as a selection ends.
    void hideCursor();
    /// Puts back what was refused and stands in the editor all the same.
    void settle();
    bool handleKey(QKeyEvent& event);
    void command(SEL action);
    void leave();

    void place();
    void replaceText(const QString& wanted);
    [[nodiscard]] NSRange selection() const;
    [[nodiscard]] Qt::Alignment alignmentOfLine() const;
    void drawPlaceholder(QPainter& painter);
    void drawInsertionPoint(QPainter& painter);
    void showInsertionPoint();

    /// Null when the object is on its way out.
    NSTextView* m_view;
    /// The text that was judged, and so is not judged again.
    QString m_accepted;
    /// What the input method shows and has not yet entered.
    QString m_preedit;
    const NSView* m_sessionIn = nullptr;
    QBasicTimer m_blink;
    int m_busy = 0;
    int m_following = 0;
    bool m_isJudging = false;
    bool m_inSession = false;
    bool m_isPointShown = true;
    /// To be deleted as soon as it is no longer busy.
    bool m_isDoomed = false;
};

} // namespace zr::qt
