#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/runtime/message.h>

// What the keyboard and the clipboard do to a text.
namespace zr {

bool NSTextView::makeEdit(NSRange range, std::u16string_view replacement) {
    const Ref<NSTextView> self(this);
    if (!beginEditing()) {
        return false;
    }
    // Whoever was told of the beginning may have set another text.
    range = cutToText(range);
    std::u16string text(textStorage()->view());
    text.replace(range.location, range.length, replacement);
    TextEdit edit{NSString::fromUtf16(std::move(text)), {range.location + replacement.size(), 0}};
    if (judgeEdit(edit) == EditJudgement::Refused) {
        return false;
    }
    const bool changes = edit.text->view() != textStorage()->view();
    m_selectedRange = edit.selection;
    if (changes) {
        takeText(edit.text->view());
    }
    m_selectedRange = cutToText(m_selectedRange);
    tellPeer(ViewChange::Selection);
    if (changes) {
        post(NSTextDidChangeNotification(), "textDidChange:"_sel, nullptr);
    }
    return changes;
}

bool NSTextView::insertText(NSObject* string) {
    return insertText_replacementRange(string, {static_cast<NSUInteger>(NSNotFound), 0});
}

bool NSTextView::insertText_replacementRange(NSObject* string, NSRange range) {
    Ref<NSString> inserted = NSString::string();
    if (auto* const attributed = cast<NSAttributedString>(string)) {
        inserted = attributed->string();
    } else if (string) {
        inserted = Ref<NSString>(cast<NSString>(string));
    }
    const Ref<NSTextView> self(this);
    if (!inserted || !beginEditing()) {
        return false;
    }
    const bool isSelection = range.location == static_cast<NSUInteger>(NSNotFound);
    return makeEdit(isSelection ? m_selectedRange : range, inserted->view());
}

void NSTextView::deleteBackward(NSObject*) {
    NSRange range = m_selectedRange;
    if (range.length == 0 && range.location > 0) {
        const Ref<NSString> text = string();
        range.length = detail::codePointBefore(text->view(), range.location).length;
        range.location -= range.length;
    }
    if (range.length != 0) {
        makeEdit(range, {});
    }
}

void NSTextView::deleteForward(NSObject*) {
    NSRange range = m_selectedRange;
    const Ref<NSString> text = string();
    const std::u16string_view units = text->view();
    if (range.length == 0 && range.location < units.size()) {
        range.length = detail::codePointAt(units, range.location).length;
    }
    if (range.length != 0) {
        makeEdit(range, {});
    }
}

void NSTextView::selectAll(NSObject*) {
    setSelectedRange({0, textStorage()->length()});
}

void NSTextView::copy(NSObject*) {
    if (!m_isSecure && m_selectedRange.length != 0) {
        currentToolkit().setClipboardText(string()->substringWithRange(m_selectedRange));
    }
}

void NSTextView::cut(NSObject* sender) {
    if (m_isSecure || !m_isEditable) {
        return;
    }
    copy(sender);
    if (m_selectedRange.length != 0) {
        makeEdit(m_selectedRange, {});
    }
}

void NSTextView::paste(NSObject*) {
    const Ref<NSString> pasted = currentToolkit().clipboardText();
    if (!pasted) {
        return;
    }
    std::u16string text(pasted->view());
    if (m_isFieldEditor) {
        for (char16_t& unit : text) {
            const bool breaksLine =
                (unit >= u'\n' && unit <= u'\r') || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
            unit = breaksLine ? u' ' : unit;
        }
    }
    makeEdit(m_selectedRange, text);
}

void NSTextView::insertNewline(NSObject*) {
    if (m_isFieldEditor) {
        endEditing(NSTextMovementReturn);
    } else if (m_isEditable) {
        makeEdit(m_selectedRange, u"\n");
    } else {
        handOn("insertNewline:"_sel);
    }
}

void NSTextView::insertTab(NSObject* sender) {
    const Ref<NSWindow> window = this->window();
    if (m_isFieldEditor) {
        endEditing(NSTextMovementTab);
    } else if (m_isEditable) {
        makeEdit(m_selectedRange, u"\t");
    } else if (window) {
        send<void>(window, "selectNextKeyView:"_sel, sender);
    } else {
        handOn("insertTab:"_sel);
    }
}

void NSTextView::insertBacktab(NSObject* sender) {
    const Ref<NSWindow> window = this->window();
    if (m_isFieldEditor) {
        endEditing(NSTextMovementBacktab);
    } else if (window) {
        send<void>(window, "selectPreviousKeyView:"_sel, sender);
    } else {
        handOn("insertBacktab:"_sel);
    }
}

void NSTextView::cancelOperation(NSObject*) {
    if (m_isFieldEditor) {
        endEditing(NSTextMovementCancel);
    } else {
        handOn("cancelOperation:"_sel);
    }
}

void NSTextView::handOn(SEL command) {
    if (const Ref<NSResponder> next = nextResponder()) {
        send<void>(next, "doCommandBySelector:"_sel, command);
    } else {
        NSBeep();
    }
}

void NSTextView::doCommandBySelector(SEL action) {
    const Ref<NSTextView> self(this);
    const id delegate = this->delegate();
    if (delegate && delegate->respondsToSelector("textView:doCommandBySelector:"_sel) &&
        send<bool>(delegate, "textView:doCommandBySelector:"_sel, this, action)) {
        return;
    }
    NSText::doCommandBySelector(action);
}

} // namespace zr
