#include <zrbasic/platform/qt/editor_style_p.h>

#include <QApplication>
#include <QPointer>
#include <QProxyStyle>

namespace zr::qt {

namespace {

class EditorStyle final : public QProxyStyle {
  public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        switch (hint) {
            case SH_LineEdit_PasswordCharacter:
                return passwordCharacter;
            case SH_LineEdit_PasswordMaskDelay:
                return 0;
            default:
                return QProxyStyle::styleHint(hint, option, widget, result);
        }
    }
};

} // namespace

QStyle* editorStyle() {
    // Owned by the application object: a style must not outlive it, and there may be another one later.
    static QPointer<QStyle> style;
    if (!style) {
        style = new EditorStyle;
        style->setParent(qApp);
    }
    return style;
}

} // namespace zr::qt
