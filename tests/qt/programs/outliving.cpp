#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/session.h>
#include <zrbasic/ui/html_label.h>
#include <zrbasic/ui/text_field.h>

#include <QApplication>
#include <QWidget>

#include <vector>

// Windows and views that outlive the application: they go when the process has ended its main function, long after Qt
// has, and nothing must come of it.

namespace {

using namespace zr;

std::vector<id>& kept() {
    static std::vector<id> objects;
    return objects;
}

} // namespace

int main(int argc, char** argv) {
    // Made before the application, so that it goes last.
    kept().reserve(8);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const qt::Session session;

    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(20, 20, 300, 100),
                                                NSUInteger{NSWindowStyleMaskTitled});
    const Ref<ZRXTextField> field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSMakeRect(10, 10, 120, 24));
    const Ref<ZRXHTMLLabel> label = make<ZRXHTMLLabel>(&ZRXHTMLLabel::initWithFrame, NSMakeRect(10, 40, 120, 24));
    window->contentView()->addSubview(field);
    window->contentView()->addSubview(label);
    window->makeKeyAndOrderFront(nullptr);
    window->makeFirstResponder(field);

    const Ref<ZRXTextField> guest = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSMakeRect(0, 0, 120, 24));
    QWidget* const guestWidget = qt::widget(guest);
    guestWidget->show();
    QApplication::processEvents();

    const bool isShown = window->isVisible() && qt::widget(window) != nullptr && guestWidget->isVisible();
    kept() = {window, field, label, guest};
    return isShown ? 0 : 1;
}
