#include <zrbasic/platform/qt/message_box_p.h>

#include <zrbasic/platform/appkit/alert.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/palette_p.h>
#include <zrbasic/platform/qt/session.h>

#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <algorithm>
#include <vector>

namespace zr::qt {
namespace {

QMessageBox::Icon iconOf(const NSAlert& alert) {
    switch (alert.alertStyle()) {
        case NSAlertStyleInformational:
            return QMessageBox::Information;
        case NSAlertStyleCritical:
            return QMessageBox::Critical;
        case NSAlertStyleWarning:
            break;
    }
    return QMessageBox::Warning;
}

/// A message box that may go earlier than its owner: with the window that it lies in front of.
class Box {
  public:
    explicit Box(NSAlert& alert);
    ~Box() { delete m_box.data(); }
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;

    void show();
    [[nodiscard]] bool isAnswered() const { return !m_box || m_box->isHidden(); }
    [[nodiscard]] NSInteger answer() const;

  private:
    void addButton(const QString& title, bool isCancel);

    QPointer<QMessageBox> m_box;
    std::vector<QPushButton*> m_buttons;
    std::size_t m_escape = 0;
    bool m_hasCancel = false;
};

Box::Box(NSAlert& alert) : m_box(new QMessageBox(widget(NSApplication::sharedApplication()->keyWindow()))) {
    dress(*m_box);
    m_box->setIcon(iconOf(alert));
    // Texts come from servers and users too, and must not be taken for HTML.
    m_box->setTextFormat(Qt::PlainText);
    m_box->setText(toQt(alert.messageText()));
    m_box->setInformativeText(toQt(alert.informativeText()));
    for (QLabel* const label : m_box->findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    const Ref<NSArray> buttons = alert.buttons();
    for (const id& element : buttons->elements()) {
        const auto* const button = cast<NSButton>(element);
        const Ref<NSString> title = button ? button->title() : nullptr;
        addButton(toQt(title), title && title->isEqual("Cancel"_ns));
    }
    if (m_buttons.empty()) {
        addButton(QMessageBox::tr("OK"), false);
    }
    m_box->setDefaultButton(m_buttons.front());
    m_box->setEscapeButton(m_buttons[m_escape]);
}

void Box::addButton(const QString& title, bool isCancel) {
    // An ampersand would mark a shortcut. Buttons of one role stay in their order.
    m_buttons.push_back(m_box->addButton(QString(title).replace(u'&', QStringLiteral("&&")), QMessageBox::ActionRole));
    if (!m_hasCancel) {
        m_escape = m_buttons.size() - 1;
        m_hasCancel = isCancel;
    }
}

void Box::show() {
    m_box->setWindowModality(Qt::ApplicationModal);
    m_box->show();
    m_box->raise();
    m_box->activateWindow();
}

NSInteger Box::answer() const {
    const auto pressed = std::find(m_buttons.begin(), m_buttons.end(), m_box ? m_box->clickedButton() : nullptr);
    const std::ptrdiff_t index = pressed - m_buttons.begin();
    return pressed == m_buttons.end() ? static_cast<NSInteger>(m_escape) : index;
}

} // namespace

NSInteger runMessageBox(NSAlert& alert) {
    const Ref<NSAlert> kept(&alert);
    Box box(alert);
    box.show();
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    // An application that ends does not wait for an answer.
    handleEventsUntil([&] { return box.isAnswered() || application->isTerminated(); });
    return box.isAnswered() ? box.answer() : -1;
}

} // namespace zr::qt
