#include <zrbasic/platform/qt/accessibility_p.h>

#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QAccessible>
#include <QAccessibleWidget>

#include <algorithm>

namespace zr::qt {

namespace {

/// Where a widget keeps the text that was last told of it.
constexpr char announcedText[] = "zrAnnouncedText";

/// By its class or by its cell: either may have been chosen without the other.
bool isSecret(const NSView& view) {
    const auto* const field = cast<NSTextField>(&view);
    return field && (cast<NSSecureTextField>(field) || cast<NSSecureTextFieldCell>(field->cell().get()));
}

bool isEditableText(const NSView& view) {
    const auto* const field = cast<NSTextField>(&view);
    return field && field->isEditable();
}

NSButtonType typeOf(const NSButton& button) {
    const Ref<NSCell> cell = button.cell();
    const auto* const buttonCell = cast<NSButtonCell>(cell.get());
    return buttonCell ? buttonCell->buttonType() : NSButtonTypeMomentaryPushIn;
}

bool isCheckable(NSButtonType type) {
    return type == NSButtonTypeSwitch || type == NSButtonTypeRadio || type == NSButtonTypePushOnPushOff ||
           type == NSButtonTypeToggle || type == NSButtonTypeOnOff;
}

QAccessible::Role roleOf(const NSView& view) {
    if (const auto* const button = cast<NSPopUpButton>(&view)) {
        return button->pullsDown() ? QAccessible::ButtonMenu : QAccessible::ComboBox;
    }
    if (const auto* const button = cast<NSButton>(&view)) {
        switch (typeOf(*button)) {
            case NSButtonTypeSwitch:
                return QAccessible::CheckBox;
            case NSButtonTypeRadio:
                return QAccessible::RadioButton;
            default:
                return QAccessible::PushButton;
        }
    }
    if (cast<NSTextField>(&view)) {
        return isEditableText(view) ? QAccessible::EditableText : QAccessible::StaticText;
    }
    return QAccessible::Client;
}

/// What the field says, for everybody to read.
QString readableText(const NSView& view) {
    const auto* const field = cast<NSTextField>(&view);
    QString text;
    if (field && !isSecret(view)) {
        // A formatter makes it, and readers ask by way of Qt.
        duringEvent([&] { text = toQt(field->stringValue()); });
    }
    return text;
}

/// A pop-up button that shows what is chosen.
bool isChoice(const NSView& view) {
    const auto* const button = cast<NSPopUpButton>(&view);
    return button && !button->pullsDown();
}

QString valueOf(const NSView& view) {
    if (isChoice(view)) {
        return toQt(static_cast<const NSPopUpButton&>(view).title());
    }
    return isEditableText(view) ? readableText(view) : QString();
}

class ViewAccessible : public QAccessibleWidget {
  public:
    explicit ViewAccessible(QWidget* of) : QAccessibleWidget(of) {}

    QAccessible::Role role() const override {
        const Ref<NSView> shown = view();
        return shown ? roleOf(*shown) : QAccessible::Client;
    }

    QString text(QAccessible::Text kind) const override {
        const Ref<NSView> shown = view();
        if (!shown) {
            return {};
        }
        switch (kind) {
            case QAccessible::Name:
                return accessibleName(*shown);
            case QAccessible::Description:
                return toQt(shown->toolTip());
            case QAccessible::Value:
                return valueOf(*shown);
            default:
                return QAccessibleWidget::text(kind);
        }
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const Ref<NSView> shown = view();
        if (!shown) {
            return state;
        }
        state.focusable = shown->acceptsFirstResponder();
        if (const auto* const control = cast<NSControl>(shown.get())) {
            state.disabled = !control->isEnabled();
        }
        if (const auto* const button = cast<NSButton>(shown.get())) {
            state.checkable = isCheckable(typeOf(*button));
            state.checked = state.checkable && button->state() == NSControlStateValueOn;
            state.checkStateMixed = state.checkable && button->state() == NSControlStateValueMixed;
            state.pressed = button->isHighlighted();
            if (cast<NSPopUpButton>(button)) {
                state.hasPopup = state.expandable = true;
                state.expanded = button->isHighlighted();
                state.collapsed = !state.expanded;
            }
        } else if (cast<NSTextField>(shown.get())) {
            state.editable = isEditableText(*shown);
            state.readOnly = !state.editable;
            state.passwordEdit = isSecret(*shown);
            state.selectableText = state.editable;
        }
        return state;
    }

    QStringList actionNames() const override {
        QStringList names;
        if (isPressable()) {
            names << pressAction();
        }
        return names + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        const Ref<NSView> shown = view();
        if (name != pressAction() || !isPressable()) {
            QAccessibleWidget::doAction(name);
            return;
        }
        duringEvent([&] {
            if (cast<NSButton>(shown.get())) {
                send<void>(shown, "performClick:"_sel, nullptr);
            } else if (const auto* const control = cast<NSControl>(shown.get())) {
                send<bool>(shown, "sendAction:to:"_sel, control->action(), control->target());
            }
        });
    }

  protected:
    [[nodiscard]] Ref<NSView> view() const { return Ref<NSView>(viewOf(widget())); }

  private:
    /// A button, or a label that does something.
    [[nodiscard]] bool isPressable() const {
        const Ref<NSView> shown = view();
        const auto* const control = cast<NSControl>(shown.get());
        if (!control || !control->isEnabled()) {
            return false;
        }
        return cast<NSButton>(shown.get()) || (!isEditableText(*shown) && control->action());
    }
};

/// A field that can be edited: its text, and while it is edited the insertion point in that.
class FieldAccessible final : public ViewAccessible, public QAccessibleTextInterface {
  public:
    using ViewAccessible::ViewAccessible;

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface) {
            return static_cast<QAccessibleTextInterface*>(this);
        }
        return ViewAccessible::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override { return ViewAccessible::text(kind); }

    QString text(int start, int end) const override {
        const QString all = content();
        const auto first = std::clamp<qsizetype>(start, 0, all.size());
        return all.mid(first, std::clamp<qsizetype>(end, first, all.size()) - first);
    }
    int characterCount() const override { return static_cast<int>(content().size()); }

    int selectionCount() const override { return selectedRange().length > 0 ? 1 : 0; }
    void selection(int index, int* start, int* end) const override {
        const NSRange range = index == 0 ? selectedRange() : NSRange();
        *start = static_cast<int>(range.location);
        *end = static_cast<int>(NSMaxRange(range));
    }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override {
        if (index == 0) {
            setCursorPosition(cursorPosition());
        }
    }
    void setSelection(int index, int start, int end) override {
        if (index == 0 && start >= 0 && end >= start) {
            select(NSMakeRange(static_cast<NSUInteger>(start), static_cast<NSUInteger>(end - start)));
        }
    }
    int cursorPosition() const override { return static_cast<int>(NSMaxRange(selectedRange())); }
    void setCursorPosition(int position) override {
        select(NSMakeRange(static_cast<NSUInteger>(std::max(position, 0)), 0));
    }

    // Where single letters are is told by the editor, which lies in the field while that is edited.
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

  private:
    [[nodiscard]] QString content() const {
        const Ref<NSView> shown = view();
        return shown ? readableText(*shown) : QString();
    }

    [[nodiscard]] Ref<NSText> editor() const {
        const Ref<NSView> shown = view();
        const auto* const control = cast<NSControl>(shown.get());
        return control ? control->currentEditor() : nullptr;
    }

    [[nodiscard]] NSRange selectedRange() const {
        const Ref<NSText> text = editor();
        return text ? text->selectedRange() : NSRange();
    }

    void select(NSRange range) {
        if (const Ref<NSText> text = editor()) {
            text->setSelectedRange(range);
        }
    }
};

QAccessibleInterface* describe(const QString&, QObject* object) {
    auto* const widget = qobject_cast<QWidget*>(object);
    const NSView* const view = viewOf(widget);
    if (view == nullptr) {
        return nullptr;
    }
    if (cast<NSTextField>(view)) {
        return new FieldAccessible(widget);
    }
    return new ViewAccessible(widget);
}

} // namespace

void installAccessibility() {
    removeAccessibility();
    QAccessible::installFactory(describe);
}

void removeAccessibility() {
    QAccessible::removeFactory(describe);
}

QString accessibleName(NSView& view) {
    if (const Ref<NSString> label = view.accessibilityLabel()) {
        return toQt(label);
    }
    if (const auto* const button = cast<NSButton>(&view)) {
        // What is chosen does not say of what.
        return isChoice(view) ? QString() : toQt(button->title());
    }
    if (const auto* const field = cast<NSTextField>(&view)) {
        return field->isEditable() ? toQt(field->placeholderString()) : readableText(view);
    }
    return {};
}

Announcements announcementsOf(NSView& view, ViewChange change, QWidget& widget) {
    Announcements result;
    const auto addState = [&](QAccessible::State changed) {
        result.push_back(std::make_unique<QAccessibleStateChangeEvent>(&widget, changed));
    };
    QAccessible::State changed;
    switch (change) {
        case ViewChange::Content: {
            if (const auto* const button = cast<NSButton>(&view); button && isCheckable(typeOf(*button))) {
                changed.checked = true;
                addState(changed);
            }
            const bool isEdited = isEditableText(view);
            const QString before = widget.property(announcedText).toString();
            const QString now = isEdited || isChoice(view) ? valueOf(view) : accessibleName(view);
            if (before == now) {
                break;
            }
            widget.setProperty(announcedText, now);
            if (isEdited) {
                result.push_back(std::make_unique<QAccessibleTextUpdateEvent>(&widget, 0, before, now));
            } else if (isChoice(view)) {
                result.push_back(std::make_unique<QAccessibleValueChangeEvent>(&widget, now));
            } else {
                result.push_back(std::make_unique<QAccessibleEvent>(&widget, QAccessible::NameChanged));
            }
            break;
        }
        case ViewChange::Enabled:
            changed.disabled = true;
            addState(changed);
            break;
        case ViewChange::Accessibility:
            result.push_back(std::make_unique<QAccessibleEvent>(&widget, QAccessible::NameChanged));
            break;
        default:
            break;
    }
    return result;
}

void announceChange(NSView& view, ViewChange change) {
    auto* const peer = dynamic_cast<WidgetPeer*>(view.peer());
    QWidget* const widget = peer && QAccessible::isActive() ? peer->presentWidget() : nullptr;
    if (widget == nullptr) {
        return;
    }
    for (const std::unique_ptr<QAccessibleEvent>& event : announcementsOf(view, change, *widget)) {
        QAccessible::updateAccessibility(event.get());
    }
}

} // namespace zr::qt
