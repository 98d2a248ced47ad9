#include <zrbasic/platform/qt/line_editor_p.h>

#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/line_editor_widget_p.h>
#include <zrbasic/platform/qt/peers_p.h>

#include <QFontMetrics>

#include <algorithm>

namespace zr::qt {

LineEditorPeer::LineEditorPeer(NSTextView& editor) : WidgetPeer(editor), m_editor(editor) {}

LineEditorPeer::~LineEditorPeer() {
    // It may be handling the very event that ended the object.
    if (m_line) {
        m_line->retire();
    }
}

void LineEditorPeer::populate(QWidget& widget) {
    WidgetPeer::populate(widget);
    m_line = new LineEditor(m_editor, widget);
    m_line->show();
}

QWidget* LineEditorPeer::keyboardWidget() {
    return m_line;
}

bool LineEditorPeer::drawsView() const {
    return false;
}

QMargins LineEditorPeer::overhang() const {
    // A line is drawn whole even where its cell leaves it less room; so must it be edited.
    const int line = QFontMetrics(toQt(m_editor.font())).lineSpacing() + 2;
    const int room = pixelRect({NSZeroPoint, m_editor.frame().size}, 0, true).height();
    return {0, 0, 0, std::max(0, line - std::max(0, room))};
}

void LineEditorPeer::viewChanged(ViewChange change) {
    WidgetPeer::viewChanged(change);
    if (!m_line) {
        return;
    }
    switch (change) {
        case ViewChange::Content:
            m_line->followLook();
            m_line->followText();
            break;
        case ViewChange::Selection:
            m_line->followSelection();
            break;
        case ViewChange::Display:
        case ViewChange::Enabled:
            m_line->followLook();
            break;
        default:
            break;
    }
}

void LineEditorPeer::takeKeyboard() {
    if (m_line) {
        m_line->beginSession();
    }
    WidgetPeer::takeKeyboard();
}

std::unique_ptr<ViewPeer> makeLineEditorPeer(NSTextView& editor) {
    return std::make_unique<LineEditorPeer>(editor);
}

} // namespace zr::qt
