#include <zrbasic/platform/qt/session.h>
#include <zrbasic/ui/text_field.h>

#include <QApplication>
#include <QVBoxLayout>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

// A field of the library in a layout of a Qt application, the way an existing application begins.
int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    const zr::qt::Session session;

    QWidget form;
    QVBoxLayout layout(&form);
    const auto field = zr::make<zr::ZRXTextField>(&zr::ZRXTextField::initWithFrame, zr::NSMakeRect(0, 0, 120, 24));
    layout.addWidget(zr::qt::widget(field));
    form.resize(200, 60);
    form.show();
    QApplication::processEvents();

    if (field->frame().size.width <= 120) {
        std::fprintf(stderr, "the layout did not give the field its width\n");
        return 1;
    }
    return 0;
}
