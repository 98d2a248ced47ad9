#include "order_ticket.h"

#include "look.h"

#include <examples/replay/price_text.h>

#include <zrbasic/core/number_formatters.h>
#include <zrbasic/core/tick.h>
#include <zrbasic/core/validation.h>
#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/ui/callback_target.h>
#include <zrbasic/ui/font.h>
#include <zrbasic/ui/view.h>

namespace desk {

using namespace zr;

namespace {

constexpr double margin = 20;
constexpr double fieldX = 96;
constexpr double rowHeight = 38;

/// In the colours of the appearance.
template <class Field>
void dress(const Ref<Field>& field) {
    field->setTextColor(NSColor::labelColor());
    field->setPlaceholderColor(NSColor::placeholderTextColor());
    field->setBorderColor(NSColor::separatorColor());
    field->setHighlightedBorderColor(NSColor::controlAccentColor());
    field->setCursorColor(NSColor::controlAccentColor());
    field->layer()->setBackgroundColor(NSColor::textBackgroundColor());
}

void setBorder(NSTextField* field, NSColor* color) {
    send<void>(field, "setBorderColor:"_sel, color);
}

} // namespace

template <class Field>
Ref<Field> OrderTicket::addField(NSString* name, NSString* identifier, NSFormatter* formatter, double y) {
    addSubview(label(name, NSMakeRect(margin, y + 6, fieldX - margin, 18)));
    const NSRect place = NSMakeRect(fieldX, y, frame().size.width - fieldX - margin, 26);
    const Ref<Field> field = make<Field>(&Field::initWithFrame, place);
    field->setIdentifier(identifier);
    field->setAccessibilityLabel(name);
    field->setPlaceholderString(name);
    field->setFormatter(formatter);
    field->setDelegate(this);
    addSubview(field);
    return field;
}

id OrderTicket::initWithFrame(NSRect frame) {
    const id self = ZRXView::initWithFrame(frame);
    const double width = frame.size.width;
    const double half = (width - fieldX - margin - 8) / 2;
    double y = margin;
    m_title = label("No instrument"_ns, NSMakeRect(margin, y, width - 2 * margin, 22), "ticketTitle"_ns);
    m_title->setFont(ZRBoldFont(15));
    addSubview(m_title);
    const auto prices = make<ZRPriceNumberInputFormatter>();
    prices->setReplacedStringPairs(dictionary({{u"\uFF0C"_ns, "."_ns}, {","_ns, "."_ns}}));
    m_price = addField<ZRXTextField>("Price"_ns, "price"_ns, prices, y += rowHeight);
    m_price->setAlignment(NSTextAlignmentRight);
    y += rowHeight;
    addSubview(button(u"\u2212 1 tick"_ns, NSMakeRect(fieldX, y, half, 26), "down"_ns, [this] { nudge(false); }));
    addSubview(button("+ 1 tick"_ns, NSMakeRect(fieldX + half + 8, y, half, 26), "up"_ns, [this] { nudge(true); }));
    y += rowHeight;
    addSubview(label("Rounding"_ns, NSMakeRect(margin, y + 6, fieldX - margin, 18)));
    const NSRect wide = NSMakeRect(fieldX, y, 2 * half + 8, 26);
    m_rounding = make<NSPopUpButton>(&NSPopUpButton::initWithFrame_pullsDown, wide, false);
    m_rounding->setIdentifier("rounding"_ns);
    m_rounding->setAccessibilityLabel("Rounding"_ns);
    // In the order of NSRoundPlain, NSRoundDown and NSRoundUp.
    m_rounding->addItemsWithTitles(array({"To the nearest tick"_ns, "Down to a tick"_ns, "Up to a tick"_ns}));
    setCallback(m_rounding, [this](NSObject*) { roundPrice(); });
    addSubview(m_rounding);
    m_quantity = addField<ZRXTextField>("Quantity"_ns, "quantity"_ns, formatterWithNumberMaxLength(9), y += rowHeight);
    m_quantity->setAlignment(NSTextAlignmentRight);
    m_account = addField<ZRXTextField>("Account"_ns, "account"_ns, inputFormatterWithMaxLength(12), y += rowHeight);
    m_password =
        addField<ZRXSecureTextField>("Password"_ns, "password"_ns, inputFormatterWithMaxLength(24), y += rowHeight);
    y += rowHeight + 6;
    addSubview(button("Buy"_ns, NSMakeRect(fieldX, y, half, 28), "buy"_ns, [this] { place("Buy"_ns); }));
    addSubview(button("Sell"_ns, NSMakeRect(fieldX + half + 8, y, half, 28), "sell"_ns, [this] { place("Sell"_ns); }));
    viewDidChangeEffectiveAppearance();
    return self;
}

void OrderTicket::viewDidChangeEffectiveAppearance() {
    for (const auto& field : {m_price, m_quantity, m_account}) {
        dress(field);
    }
    dress(m_password);
}

void OrderTicket::setTracker(replay::Tracker* tracker) {
    m_tracker = Ref<replay::Tracker>(tracker);
    m_title->setStringValue(tracker ? tracker->instrument()->symbol() : "No instrument"_ns);
    show(tracker ? tracker->last() : nullptr);
}

Ref<NSDecimalNumber> OrderTicket::price() const {
    return replay::decimalFrom(m_price->stringValue());
}

void OrderTicket::show(NSNumber* price) {
    m_price->setStringValue(price ? NSString::fromUtf8(replay::textOf(price, m_tracker->decimals())) : ""_ns);
    setBorder(m_price, NSColor::separatorColor());
}

void OrderTicket::roundPrice() {
    if (const auto typed = price(); typed && m_tracker) {
        const auto mode = static_cast<NSUInteger>(m_rounding->indexOfSelectedItem());
        show(roundWithTick_roundingMode(typed, m_tracker->instrument()->tick(), mode));
    }
}

void OrderTicket::nudge(bool isUp) {
    const auto from = price() ? price() : m_tracker ? m_tracker->last() : nullptr;
    if (from && m_tracker) {
        const auto tick = m_tracker->instrument()->tick();
        // What lies between two ticks goes to the next one.
        const auto on = roundWithTick_roundingMode(from, tick, isUp ? NSRoundDown : NSRoundUp)->decimalValue();
        const auto before = NSDecimalNumber::decimalNumberWithDecimal(on);
        show(isUp ? before->decimalNumberByAdding(tick) : before->decimalNumberBySubtracting(tick));
    }
}

Ref<NSString> OrderTicket::fault(NSTextField* field) const {
    const Ref<NSString> text = field->stringValue();
    if (field == m_price) {
        const auto typed = price();
        if (!typed || typed->compare(NSDecimalNumber::zero()) != NSOrderedDescending) {
            return "The price must be above 0"_ns;
        }
        const bool isOnTick = !m_tracker || roundMatchWithTick(typed, m_tracker->instrument()->tick());
        return isOnTick ? nullptr : "The price lies between two ticks"_ns;
    }
    if (field == m_quantity) {
        return text->integerValue() > 0 ? nullptr : "The quantity must be above 0"_ns;
    }
    if (field == m_account) {
        return text->length() > 0 && isLegalCommonEnglishCharacters(text) ? nullptr : "The account is not valid"_ns;
    }
    return isLegalPassword(text) ? nullptr : "A password has 8 to 24 characters, and not letters alone"_ns;
}

void OrderTicket::textDidChange(NSNotification* notification) {
    setBorder(cast<NSTextField>(notification->object()), NSColor::controlAccentColor());
}

void OrderTicket::editingDidEnd(NSNotification* notification) {
    const auto field = cast<NSTextField>(notification->object());
    if (field == m_price) {
        roundPrice();
    }
    // An empty field is not wrong yet.
    const bool isWrong = field->stringValue()->length() > 0 && fault(field);
    setBorder(field, isWrong ? highlight(Way::Down) : NSColor::separatorColor());
}

void OrderTicket::place(NSString* side) {
    window()->endEditingFor(nullptr);
    for (const id& element : array({m_price, m_quantity, m_account, m_password})) {
        auto* const field = static_cast<NSTextField*>(element.get());
        const Ref<NSString> wrong = m_tracker ? fault(field) : "Select an instrument first"_ns;
        if (wrong) {
            window()->makeFirstResponder(field);
            setBorder(field, highlight(Way::Down));
            beginShakeAnimation(field);
            NSBeep();
            onRefusal(wrong);
            return;
        }
    }
    const auto symbol = m_tracker->instrument()->symbol();
    const auto price = m_price->stringValue();
    onOrder({symbol, price,
             NSString::stringWithFormat("%@ %@ %@ at %@"_ns, side, m_quantity->stringValue(), symbol, price)});
}

} // namespace desk
