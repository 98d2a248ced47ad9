#include <zrbasic/platform/appkit/cell.h>

#include <zrbasic/platform/appkit/control.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace zr {

EditJudgement NSCell::judgeEdit(TextEdit& edit, const TextEdit&) {
    const Ref<NSFormatter> formatter = m_formatter;
    if (!formatter) {
        return EditJudgement::Accepted;
    }
    Ref<NSString> replacement;
    Ref<NSString> error;
    if (send<bool>(formatter, "isPartialStringValid:newEditingString:errorDescription:"_sel, edit.text, &replacement,
                   &error)) {
        return EditJudgement::Accepted;
    }
    if (!replacement) {
        return EditJudgement::Refused;
    }
    edit.text = cast<NSString>(replacement->copy());
    edit.selection = {edit.text->length(), 0};
    return EditJudgement::Replaced;
}

NSUInteger NSCell::indexOfCharacterAt(NSPoint point, NSRect textRect) const {
    Toolkit& toolkit = currentToolkit();
    const Ref<NSAttributedString> text = attributedStringValue();
    const auto widthTo = [&](NSUInteger index) {
        return toolkit.naturalSizeOfText(text->attributedSubstringFromRange({0, index}), 0).width;
    };
    const NSUInteger length = text->length();
    const double room = textRect.size.width - widthTo(length);
    double x = point.x - textRect.origin.x;
    if (m_alignment == NSTextAlignmentRight) {
        x -= std::max(room, 0.0);
    } else if (m_alignment == NSTextAlignmentCenter) {
        x -= std::max(room, 0.0) / 2;
    }
    // The first place that is not to the left of the point, or the one before where that is nearer.
    NSUInteger low = 0;
    NSUInteger high = length;
    while (low < high) {
        const NSUInteger middle = low + (high - low) / 2;
        if (widthTo(middle) < x) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    if (low > 0 && x - widthTo(low - 1) < widthTo(low) - x) {
        --low;
    }
    const std::u16string_view units = text->view();
    const bool cutsPair =
        low > 0 && low < length && (units[low] & 0xFC00) == 0xDC00 && (units[low - 1] & 0xFC00) == 0xD800;
    return cutsPair ? low - 1 : low;
}

void NSCell::editWithFrame_inView_editor_delegate_event(NSRect frame, NSView* view, NSText* editor, NSObject* delegate,
                                                        NSEvent* event) {
    NSUInteger index = editingStringValue()->length();
    if (event && view) {
        const NSPoint point = view->convertPoint_fromView(event->locationInWindow(), nullptr);
        index = indexOfCharacterAt(point, drawingRectForBounds(frame));
    }
    beginEditing(frame, view, editor, delegate, {index, 0});
}

void NSCell::selectWithFrame_inView_editor_delegate_start_length(NSRect frame, NSView* view, NSText* editor,
                                                                 NSObject* delegate, NSInteger start,
                                                                 NSInteger length) {
    const NSRange selection{static_cast<NSUInteger>(std::max<NSInteger>(start, 0)),
                            static_cast<NSUInteger>(std::max<NSInteger>(length, 0))};
    beginEditing(frame, view, editor, delegate, selection);
}

void NSCell::beginEditing(NSRect frame, NSView* view, NSText* editor, NSObject* delegate, NSRange selection) {
    if (!editor || !view) {
        return;
    }
    // Delegates are asked and told meanwhile, and may do away with any of them.
    const Ref<NSCell> self(this);
    const Ref<NSView> keptView(view);
    const Ref<NSText> keptEditor(editor);
    const id keptDelegate(delegate);
    const bool isAtIt = m_isEditing && editor->superview() == view && editor->delegate() == delegate;
    if (!isAtIt) {
        const Ref<NSView> before = editor->superview();
        auto* const other = cast<NSControl>(before);
        if (other && other->cell()) {
            // It refused to end, or nobody asked it; there is only one editor.
            send<void>(other->cell(), "endEditing:"_sel, editor);
        }
        editor->setDelegate(nullptr);
    }
    send<Ref<NSText>>(this, "setUpFieldEditorAttributes:"_sel, editor);
    editor->setFrame(drawingRectForBounds(frame));
    if (isAtIt) {
        editor->setSelectedRange(selection);
        return;
    }
    m_valueBefore = m_value;
    m_attributedValueBefore = m_attributedValue;
    m_isEditing = true;
    editor->setString(editingStringValue());
    editor->setSelectedRange(selection);
    if (auto* const textView = cast<NSTextView>(editor)) {
        textView->setEditJudge([weak = Weak<NSCell>(this)](TextEdit& edit, const TextEdit& present) {
            const Ref<NSCell> cell = weak.lock();
            return cell ? cell->judgeEdit(edit, present) : EditJudgement::Accepted;
        });
    }
    view->addSubview(editor);
    editor->setDelegate(delegate);
    const Ref<NSWindow> window = view->window();
    if (!window) {
        return;
    }
    send<bool>(window, "makeFirstResponder:"_sel, editor);
    const bool isStillAtIt = m_isEditing && editor->superview() == view && editor->delegate() == delegate;
    if (!isStillAtIt) {
        return;
    }
    if (window->firstResponder() != editor) {
        send<void>(this, "endEditing:"_sel, editor);
    } else if (editor->selectedRange() != selection) {
        editor->setSelectedRange(selection);
    }
}

Ref<NSText> NSCell::setUpFieldEditorAttributes(NSText* editor) {
    if (!editor) {
        return nullptr;
    }
    editor->setFont(m_font);
    editor->setTextColor(colorOfText());
    editor->setAlignment(m_alignment);
    editor->setDrawsBackground(false);
    editor->setEditable(m_isEditable && m_isEnabled);
    editor->setSelectable(isSelectable());
    if (auto* const textView = cast<NSTextView>(editor)) {
        textView->setSecure(editsSecretly());
        // Where the idle text begins.
        textView->textContainer()->setLineFragmentPadding(0);
    }
    return Ref<NSText>(editor);
}

void NSCell::endEditing(NSText* editor) {
    m_isEditing = false;
    m_attributedValueBefore = nullptr;
    discard(std::exchange(m_valueBefore, nullptr));
    if (!editor) {
        return;
    }
    const Ref<NSText> kept(editor);
    // Before it leaves, which ends what it is doing.
    editor->setDelegate(nullptr);
    if (auto* const textView = cast<NSTextView>(editor)) {
        textView->setEditJudge({});
    }
    editor->removeFromSuperview();
}

} // namespace zr
