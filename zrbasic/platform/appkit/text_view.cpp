#include <zrbasic/platform/appkit/text_view.h>

#include <zrbasic/platform/appkit/clip_view.h>
#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/delegate_telling_p.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string_overwriting_p.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <utility>

namespace zr {
namespace {

/// With a colour for what has none.
Ref<NSAttributedString> inPlainColor(const Ref<NSAttributedString>& text) {
    const Ref<NSMutableAttributedString> colored =
        make<NSMutableAttributedString>(&NSAttributedString::initWithAttributedString, text);
    text->enumerateAttribute_inRange_options_usingBlock(
        NSForegroundColorAttributeName(), {0, text->length()}, 0, [&colored](NSObject* color, NSRange range, bool&) {
            if (!color) {
                colored->addAttribute_value_range(NSForegroundColorAttributeName(), look::plainText(), range);
            }
        });
    return colored;
}

/// While this stands, the toolkit's editor is not told of what changes.
class [[nodiscard]] TakingEdit {
  public:
    explicit TakingEdit(bool& flag) : m_flag(flag) { m_flag = true; }
    ~TakingEdit() { m_flag = false; }
    TakingEdit(const TakingEdit&) = delete;
    TakingEdit& operator=(const TakingEdit&) = delete;

  private:
    bool& m_flag;
};

/// The bullets that stand for a text that nobody may read.
Ref<NSAttributedString> bulletsFor(NSAttributedString& text) {
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes,
                                    NSString::fromUtf16(std::u16string(text.length(), u'\u2022')),
                                    text.length() == 0 ? nullptr : text.attributesAtIndex_effectiveRange(0, nullptr));
}

} // namespace

ZR_DEFINE_CLASS(NSTextView) {
    is.method<&NSTextView::textStorage>("textStorage");
    is.method<&NSTextView::layoutManager>("layoutManager");
    is.method<&NSTextView::textContainer>("textContainer");
    is.method<&NSTextView::insertionPointColor>("insertionPointColor");
    is.method<&NSTextView::setInsertionPointColor>("setInsertionPointColor:");
    is.method<&NSTextView::displaysLinkToolTips>("displaysLinkToolTips");
    is.method<&NSTextView::setDisplaysLinkToolTips>("setDisplaysLinkToolTips:");
    is.method<&NSTextView::isVerticallyResizable>("isVerticallyResizable");
    is.method<&NSTextView::setVerticallyResizable>("setVerticallyResizable:");
    is.method<&NSTextView::insertText>("insertText:");
    is.method<&NSTextView::insertText_replacementRange>("insertText:replacementRange:");
    is.method<&NSTextView::deleteBackward>("deleteBackward:");
    is.method<&NSTextView::deleteForward>("deleteForward:");
    is.method<&NSTextView::selectAll>("selectAll:");
    is.method<static_cast<void (NSTextView::*)(NSObject*)>(&NSTextView::copy)>("copy:");
    is.method<&NSTextView::cut>("cut:");
    is.method<&NSTextView::paste>("paste:");
    is.method<&NSTextView::insertNewline>("insertNewline:");
    is.method<&NSTextView::insertTab>("insertTab:");
    is.method<&NSTextView::insertBacktab>("insertBacktab:");
    is.method<&NSTextView::cancelOperation>("cancelOperation:");
    is.method<&NSTextView::clickedOnLink_atIndex>("clickedOnLink:atIndex:");
}

NSTextView::NSTextView() : m_layoutManager(make<NSLayoutManager>()), m_textContainer(make<NSTextContainer>()) {
    m_layoutManager->setTextView(this);
    m_textContainer->setTextView(this);
}

NSTextView::~NSTextView() = default;

id NSTextView::initWithFrame(NSRect frame) {
    return NSText::initWithFrame(frame);
}

Ref<NSString> NSTextView::string() const {
    return m_layoutManager->textStorage()->string();
}

Ref<NSTextStorage> NSTextView::textStorage() const {
    return m_layoutManager->textStorage();
}

Ref<NSLayoutManager> NSTextView::layoutManager() const {
    return m_layoutManager;
}

Ref<NSTextContainer> NSTextView::textContainer() const {
    return m_textContainer;
}

void NSTextView::setString(NSString* string) {
    const Ref<NSAttributedString> text = make<NSAttributedString>(
        &NSAttributedString::initWithString_attributes, string ? string : NSString::string().get(), plainAttributes());
    if (m_isSecure) {
        overwriteText();
    }
    m_selectedRange = {text->length(), 0};
    textStorage()->setAttributedString(text);
    tellPeer(ViewChange::Selection);
}

// Where it stood, and in the string that the storage may have given away last.
void NSTextView::overwriteText() {
    Ref<NSString> known = string();
    const NSRange all{0, known->length()};
    const Ref<NSTextStorage> storage = textStorage();
    {
        const TakingEdit taking(m_isTakingEdit);
        storage->replaceCharactersInRange_withString(all, NSString::fromUtf16(std::u16string(all.length, u'\0')));
    }
    detail::overwriteSoleString(std::move(known));
}

Ref<NSDictionary> NSTextView::plainAttributes() const {
    Ref<NSMutableDictionary> attributes = make<NSMutableDictionary>();
    attributes->setObject_forKey(m_font, NSFontAttributeName());
    if (m_textColor) {
        attributes->setObject_forKey(m_textColor, NSForegroundColorAttributeName());
    }
    if (m_alignment != NSTextAlignmentNatural) {
        const Ref<NSMutableParagraphStyle> style = make<NSMutableParagraphStyle>();
        style->setAlignment(m_alignment);
        attributes->setObject_forKey(style, NSParagraphStyleAttributeName());
    }
    return attributes;
}

void NSTextView::setAttribute(NSString* name, NSObject* value) {
    const Ref<NSTextStorage> storage = textStorage();
    const NSRange all{0, storage->length()};
    if (all.length == 0) {
        tellPeer(ViewChange::Content);
    } else if (value) {
        storage->addAttribute_value_range(name, value, all);
    } else {
        storage->removeAttribute_range(name, all);
    }
}

void NSTextView::setFont(NSFont* font) {
    m_font = font ? Ref<NSFont>(font) : NSFont::systemFontOfSize(NSFont::systemFontSize());
    setAttribute(NSFontAttributeName(), m_font);
}

void NSTextView::setTextColor(NSColor* color) {
    m_textColor = Ref<NSColor>(color);
    setAttribute(NSForegroundColorAttributeName(), m_textColor);
}

void NSTextView::setAlignment(NSTextAlignment alignment) {
    m_alignment = alignment;
    const Ref<NSTextStorage> storage = textStorage();
    if (storage->length() == 0) {
        tellPeer(ViewChange::Content);
    }
    // What else a paragraph's style says stays.
    const Ref<NSAttributedString> present = cast<NSAttributedString>(storage->copy());
    present->enumerateAttribute_inRange_options_usingBlock(
        NSParagraphStyleAttributeName(), {0, present->length()}, 0, [&](NSObject* value, NSRange range, bool&) {
            const Ref<NSMutableParagraphStyle> style = make<NSMutableParagraphStyle>();
            style->setParagraphStyle(cast<NSParagraphStyle>(value));
            style->setAlignment(alignment);
            storage->addAttribute_value_range(NSParagraphStyleAttributeName(), style, range);
        });
}

Ref<NSColor> NSTextView::insertionPointColor() const {
    return m_insertionPointColor ? m_insertionPointColor : look::plainText();
}

void NSTextView::setInsertionPointColor(NSColor* color) {
    m_insertionPointColor = Ref<NSColor>(color);
    tellPeer(ViewChange::Content);
}

void NSTextView::setDisplaysLinkToolTips(bool displays) {
    m_displaysLinkToolTips = displays;
    tellPeer(ViewChange::ToolTip);
}

void NSTextView::setSecure(bool isSecure) {
    m_isSecure = isSecure;
    tellPeer(ViewChange::Content);
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSTextView::setFrameSize(NSSize size) {
    const bool changes = frame().size != size;
    NSText::setFrameSize(size);
    if (changes && (m_textContainer->widthTracksTextView() || m_textContainer->heightTracksTextView())) {
        layoutChanged();
    }
}

void NSTextView::textWasReplaced() {
    m_selectedRange = cutToText(m_selectedRange);
    if (!m_isTakingEdit) {
        tellPeer(ViewChange::Content);
    }
    layoutChanged();
}

void NSTextView::layoutChanged() {
    send<void>(this, "invalidateIntrinsicContentSize"_sel);
    send<void>(this, "setNeedsDisplay:"_sel, true);
    fitHeight();
}

void NSTextView::setVerticallyResizable(bool resizable) {
    m_isVerticallyResizable = resizable;
    fitHeight();
}

void NSTextView::fitHeight() {
    if (!m_isVerticallyResizable) {
        return;
    }
    const Ref<NSView> around = superview();
    const double least = cast<NSClipView>(around.get()) ? around->bounds().size.height : 0;
    const double height = std::max(layoutManager()->usedRectForTextContainer(textContainer()).size.height, least);
    // Setting it brings us here again, until it fits.
    if (height != frame().size.height) {
        send<void>(this, "setFrameSize:"_sel, NSMakeSize(frame().size.width, height));
    }
}

NSRange NSTextView::cutToText(NSRange range) const {
    const NSUInteger length = textStorage()->length();
    const NSUInteger location = std::min(range.location, length);
    return {location, std::min(range.length, length - location)};
}

void NSTextView::setEditJudge(EditJudge judge) {
    m_judge = std::move(judge);
}

EditJudgement NSTextView::judgeEdit(TextEdit& edit) {
    const Ref<NSTextView> self(this);
    if (!edit.text) {
        edit.text = NSString::string();
    }
    EditJudgement judgement = beginEditing() ? EditJudgement::Accepted : EditJudgement::Refused;
    const TextEdit present{string(), m_selectedRange};
    // A copy, because the judge may set another one.
    const EditJudge judge = m_judge;
    if (judgement == EditJudgement::Accepted && judge) {
        judgement = judge(edit, present);
    }
    if (judgement == EditJudgement::Refused) {
        edit = present;
    } else if (judgement == EditJudgement::Replaced) {
        if (!edit.text) {
            edit.text = NSString::string();
        }
        edit.selection = {edit.text->length(), 0};
    }
    return judgement;
}

void NSTextView::takeText(std::u16string_view text) {
    const Ref<NSTextStorage> storage = textStorage();
    const std::u16string_view present = storage->view();
    if (present.empty()) {
        storage->append(text, plainAttributes());
        return;
    }
    const std::size_t shorter = std::min(text.size(), present.size());
    std::size_t front = 0;
    while (front < shorter && text[front] == present[front]) {
        ++front;
    }
    std::size_t back = 0;
    while (back < shorter - front && text[text.size() - 1 - back] == present[present.size() - 1 - back]) {
        ++back;
    }
    storage->replaceCharactersInRange_withString({front, present.size() - front - back},
                                                 NSString::fromUtf16(text.substr(front, text.size() - front - back)));
}

void NSTextView::editWasMade(const TextEdit& edit) {
    const Ref<NSTextView> self(this);
    const Ref<NSString> text = edit.text ? edit.text : NSString::string();
    const bool changes = text->view() != textStorage()->view();
    // Cut to the text when that has come.
    m_selectedRange = edit.selection;
    if (!changes) {
        m_selectedRange = cutToText(m_selectedRange);
        return;
    }
    {
        const TakingEdit taking(m_isTakingEdit);
        takeText(text->view());
    }
    beginEditing();
    post(NSTextDidChangeNotification(), "textDidChange:"_sel, nullptr);
}

void NSTextView::clickedOnLink_atIndex(NSObject* link, NSUInteger index) {
    const Ref<NSTextView> self(this);
    const id kept(link);
    const id delegate = this->delegate();
    if (delegate && delegate->respondsToSelector("textView:clickedOnLink:atIndex:"_sel) &&
        send<bool>(delegate, "textView:clickedOnLink:atIndex:"_sel, this, link, index)) {
        return;
    }
    Ref<NSURL> url(cast<NSURL>(link));
    if (auto* const text = cast<NSString>(link)) {
        url = NSURL::URLWithString(text);
    }
    if (url) {
        currentToolkit().openURL(url);
    }
}

bool NSTextView::delegateAllows(SEL question) {
    const id delegate = this->delegate();
    return !delegate || !delegate->respondsToSelector(question) || send<bool>(delegate, question, this);
}

bool NSTextView::beginEditing() {
    if (m_isEditing) {
        return true;
    }
    if (!m_isEditable || !delegateAllows("textShouldBeginEditing:"_sel)) {
        return false;
    }
    // The delegate may have begun it meanwhile.
    if (!std::exchange(m_isEditing, true)) {
        m_isActive = true;
        post(NSTextDidBeginEditingNotification(), "textDidBeginEditing:"_sel, nullptr);
    }
    return m_isEditing;
}

void NSTextView::endEditing(NSTextMovement movement) {
    const Ref<NSTextView> self(this);
    m_movement = movement;
    if (const Ref<NSWindow> window = this->window()) {
        send<bool>(window, "makeFirstResponder:"_sel, nullptr);
    } else {
        send<bool>(this, "resignFirstResponder"_sel);
    }
    // Left over when the end was not allowed.
    m_movement = NSTextMovementOther;
}

void NSTextView::post(NSString* name, SEL operation, NSDictionary* userInfo) {
    tellDelegateAndPost(this, delegate(), operation, name, userInfo);
}

bool NSTextView::acceptsFirstResponder() const {
    return m_isSelectable;
}

bool NSTextView::becomeFirstResponder() {
    if (!m_isSelectable) {
        return false;
    }
    const Ref<NSTextView> self(this);
    m_isActive = true;
    beginEditing();
    return true;
}

bool NSTextView::resignFirstResponder() {
    const Ref<NSTextView> self(this);
    if (m_isEditing && !delegateAllows("textShouldEndEditing:"_sel)) {
        return false;
    }
    // Told once, although whoever is told may take the view out of its window, which resigns again.
    const bool wasActive = std::exchange(m_isActive, false);
    const bool wasEditing = std::exchange(m_isEditing, false);
    const NSTextMovement movement = std::exchange(m_movement, NSTextMovementOther);
    if (wasEditing || (wasActive && m_isFieldEditor)) {
        const Ref<NSDictionary> userInfo =
            NSDictionary::dictionaryWithObject_forKey(box(movement), NSTextMovementKey());
        post(NSTextDidEndEditingNotification(), "textDidEndEditing:"_sel, userInfo);
    }
    return true;
}

NSSize NSTextView::intrinsicContentSize() const {
    const Ref<NSTextStorage> storage = textStorage();
    return storage->length() == 0 ? NSZeroSize
                                  : currentToolkit().naturalSizeOfText(storage, m_textContainer->lineFragmentPadding());
}

void NSTextView::drawRect(NSRect dirtyRect) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    const Ref<NSColor> background = backgroundColor();
    if (m_drawsBackground && background) {
        context->canvas().fillRect(dirtyRect, background, NSCompositingOperationSourceOver);
    }
    const Ref<NSTextStorage> storage = textStorage();
    const Ref<NSAttributedString> shown = m_isSecure ? bulletsFor(*storage) : Ref<NSAttributedString>(storage);
    if (shown->length() != 0) {
        context->canvas().drawText(inPlainColor(shown),
                                   NSInsetRect(bounds(), m_textContainer->lineFragmentPadding(), 0), m_isFieldEditor);
    }
}

} // namespace zr
