#pragma once

#include <zrbasic/platform/appkit/text_view.h>

#include <QPointer>
#include <QTextBrowser>

#include <optional>

namespace zr::qt {

/// The text browser of Qt behind a text view. It fills the view's widget.
class TextBrowser final : public QTextBrowser {
  public:
    TextBrowser(NSTextView& view, QWidget& parent);
    ~TextBrowser() override;

    /// The object is on its way out: forgets it. Goes with the widget around it, or once no event is being handled.
    void retire();

    /// Takes text, selection or look from the object. Nothing is reported back.
    void followText();
    void followSelection();
    void followLook();

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    /// As in the line editor: nothing may be deleted under Qt's feet.
    class [[nodiscard]] Busy {
      public:
        explicit Busy(TextBrowser& browser) : m_browser(&browser), m_view(browser.m_view) { ++browser.m_busy; }
        ~Busy() {
            if (m_browser && --m_browser->m_busy == 0 && m_browser->m_isDoomed) {
                m_browser->deleteLater();
            }
        }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

        [[nodiscard]] bool isBrowserThere() const { return m_browser != nullptr; }

      private:
        QPointer<TextBrowser> m_browser;
        Ref<NSTextView> m_view;
    };

    struct Following {
        explicit Following(TextBrowser& of) : browser(of) { ++browser.m_following; }
        ~Following() { --browser.m_following; }
        Following(const Following&) = delete;
        Following& operator=(const Following&) = delete;

        TextBrowser& browser;
    };

    /// The character under a point of the viewport; nothing where there is none.
    [[nodiscard]] std::optional<NSUInteger> characterAt(QPoint point) const;
    /// The link of the character there; null for none.
    [[nodiscard]] id linkAt(QPoint point) const;
    [[nodiscard]] NSRange selection() const;
    void place();
    void report();
    /// Hands the event to an object that was told to do something with it, before Qt has its turn.
    void tellObject(QMouseEvent& event);
    void showCursorAt(QPoint point);

    /// Null when the object is on its way out.
    NSTextView* m_view;
    /// The text that was judged.
    QString m_accepted;
    id m_pressedLink;
    int m_busy = 0;
    int m_following = 0;
    /// To be deleted as soon as it is no longer busy.
    bool m_isDoomed = false;
};

} // namespace zr::qt
