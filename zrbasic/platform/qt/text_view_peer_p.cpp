#include <zrbasic/platform/qt/text_view_peer_p.h>

#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/qt/peers_p.h>
#include <zrbasic/platform/qt/text_browser_p.h>

namespace zr::qt {

TextViewPeer::TextViewPeer(NSTextView& view) : WidgetPeer(view), m_textView(view) {}

TextViewPeer::~TextViewPeer() {
    // It may be handling the very event that ended the object.
    if (m_browser) {
        m_browser->retire();
    }
}

void TextViewPeer::populate(QWidget& widget) {
    WidgetPeer::populate(widget);
    m_browser = new TextBrowser(m_textView, widget);
    m_browser->show();
}

QWidget* TextViewPeer::keyboardWidget() {
    return m_browser;
}

bool TextViewPeer::drawsView() const {
    return false;
}

void TextViewPeer::viewChanged(ViewChange change) {
    WidgetPeer::viewChanged(change);
    if (!m_browser) {
        return;
    }
    switch (change) {
        case ViewChange::Content:
            m_browser->followLook();
            m_browser->followText();
            break;
        case ViewChange::Selection:
            m_browser->followSelection();
            break;
        case ViewChange::Frame:
        case ViewChange::Layout:
        case ViewChange::Enabled:
            // The container may follow the frame, or not.
            m_browser->followLook();
            break;
        default:
            break;
    }
}

std::unique_ptr<ViewPeer> makeTextViewPeer(NSTextView& view) {
    return std::make_unique<TextViewPeer>(view);
}

} // namespace zr::qt
