#include "desk_testing.h"

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/appkit/layer.h>

namespace zr::test {
namespace {

using desk::Way;

/// The order ticket alone, in a window with the keyboard.
class DeskTicket : public FieldWindow, protected QuotedInstruments {
  protected:
    void SetUp() override {
        ticket = make<desk::OrderTicket>(&desk::OrderTicket::initWithFrame, NSMakeRect(0, -240, 300, 400));
        ticket->onOrder = [this](const desk::Order& order) { ordered += order.text->utf8() + '\n'; };
        ticket->onRefusal = [this](NSString* reason) { refused += reason->utf8() + '\n'; };
        window->contentView()->addSubview(ticket);
        quote("ETHUSDT", "2241.78");
        ticket->setTracker(tracker(0));
        show();
    }

    Ref<ZRXTextField> field(NSString* name) const { return named<ZRXTextField>(name, ticket); }
    std::string price() const { return field("price"_ns)->stringValue()->utf8(); }
    void setPrice(NSString* text) const { field("price"_ns)->setStringValue(text); }
    Ref<NSPopUpButton> rounding() const { return named<NSPopUpButton>("rounding"_ns, ticket); }
    /// By keys, and ends with Tab.
    void typeInto(NSTextField* into, const char* text) {
        edit(into);
        line()->selectAll();
        type(text);
        press(Qt::Key_Tab);
    }
    bool hasKeyboard(NSTextField* of) const { return of->currentEditor() != nullptr; }
    /// Everything in order.
    void fillIn() const {
        setPrice("2241.78"_ns);
        field("quantity"_ns)->setStringValue("10"_ns);
        field("account"_ns)->setStringValue("DESK-1"_ns);
        named<NSTextField>("password"_ns, ticket)->setStringValue("secret-42"_ns);
    }
    /// What is said when this stands in a field.
    std::string reasonAgainst(NSString* name, const char* text) {
        fillIn();
        refused.clear();
        ordered.clear();
        named<NSTextField>(name, ticket)->setStringValue(NSString::fromUtf8(text));
        ticket->place("Buy"_ns);
        EXPECT_EQ(refused.empty(), !ordered.empty()) << text;
        return refused;
    }

    Ref<desk::OrderTicket> ticket;
    std::string ordered;
    std::string refused;
};

TEST_F(DeskTicket, roundsATypedPriceByTheChosenMode) {
    quote("BNBUSDT", "307");
    struct Row {
        std::size_t tracker;
        NSInteger mode;
        const char* typed;
        const char* rounded;
    };
    const Row table[] = {
        {0, 0, "2241.784", "2241.78"},
        {0, 0, "2241.785", "2241.79"},
        {0, 0, "2241.78", "2241.78"},
        {0, 1, "2241.789", "2241.78"},
        {0, 1, "2241.78", "2241.78"},
        {0, 2, "2241.781", "2241.79"},
        {0, 2, "2241.78", "2241.78"},
        {0, 1, "0.009", "0.00"},
        {0, 2, "0.001", "0.01"},
        {1, 0, "307.35", "307.4"},
        {1, 1, "307.39", "307.3"},
        {1, 2, "307.31", "307.4"},
        {1, 0, "5", "5.0"},
        {0, 0, "", ""},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(row.typed) + " by mode " + std::to_string(row.mode));
        ticket->setTracker(tracker(row.tracker));
        rounding()->selectItemAtIndex(row.mode);
        if (*row.typed) {
            typeInto(field("price"_ns), row.typed);
        } else {
            edit(field("price"_ns));
            line()->clear();
            press(Qt::Key_Tab);
        }
        EXPECT_EQ(price(), row.rounded);
    }
}

TEST_F(DeskTicket, anotherModeRoundsWhatStandsThere) {
    setPrice("2241.787"_ns);
    rounding()->selectItemAtIndex(1);
    rounding()->sendAction_to(rounding()->action(), rounding()->target());
    EXPECT_EQ(price(), "2241.78");
    setPrice("2241.781"_ns);
    rounding()->selectItemAtIndex(2);
    rounding()->sendAction_to(rounding()->action(), rounding()->target());
    EXPECT_EQ(price(), "2241.79");
    setPrice("abc"_ns);
    rounding()->sendAction_to(rounding()->action(), rounding()->target());
    EXPECT_EQ(price(), "abc") << "no price, nothing to round";
}

TEST_F(DeskTicket, nudgesToTheNextTick) {
    quote("BNBUSDT", "307.37");
    struct Row {
        std::size_t tracker;
        const char* from;
        bool isUp;
        const char* to;
    };
    const Row table[] = {
        {0, "2241.78", true, "2241.79"},   {0, "2241.78", false, "2241.77"}, {0, "2241.787", true, "2241.79"},
        {0, "2241.787", false, "2241.78"}, {0, "0", false, "-0.01"},         {0, "0.00", true, "0.01"},
        {0, "-0.005", true, "0.00"},       {0, "", true, "2241.79"},         {0, "", false, "2241.77"},
        {1, "", true, "307.40"},           {1, "", false, "307.30"},         {1, "307.4", true, "307.50"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(row.from) + (row.isUp ? " up" : " down"));
        ticket->setTracker(tracker(row.tracker));
        setPrice(NSString::fromUtf8(row.from));
        ticket->nudge(row.isUp);
        EXPECT_EQ(price(), row.to);
    }
    named<NSButton>("up"_ns, ticket)->performClick(nullptr);
    EXPECT_EQ(price(), "307.60");
    named<NSButton>("down"_ns, ticket)->performClick(nullptr);
    EXPECT_EQ(price(), "307.50");
}

TEST_F(DeskTicket, withoutAPriceOrAnInstrumentNothingIsNudged) {
    ticket->setTracker(tracker(1));
    EXPECT_EQ(price(), "") << "it was not yet quoted";
    ticket->nudge(true);
    EXPECT_EQ(price(), "");
    ticket->setTracker(nullptr);
    EXPECT_EQ(named<NSTextField>("ticketTitle"_ns, ticket)->stringValue()->utf8(), "No instrument");
    setPrice("5"_ns);
    ticket->nudge(true);
    EXPECT_EQ(price(), "5");
    typeInto(field("price"_ns), "5.5");
    EXPECT_EQ(price(), "5.5") << "without a tick nothing is rounded";
}

TEST_F(DeskTicket, anotherInstrumentBringsItsPrice) {
    quote("BNBUSDT", "307.37");
    ticket->setTracker(tracker(1));
    EXPECT_EQ(named<NSTextField>("ticketTitle"_ns, ticket)->stringValue()->utf8(), "BNBUSDT");
    EXPECT_EQ(price(), "307.37");
    ticket->setTracker(tracker(0));
    EXPECT_EQ(price(), "2241.78");
}

TEST_F(DeskTicket, everyFieldHasItsRules) {
    const std::tuple<Ref<NSString>, const char*, const char*> table[] = {
        {"price"_ns, "", "The price must be above 0\n"},
        {"price"_ns, "0", "The price must be above 0\n"},
        {"price"_ns, "0.00", "The price must be above 0\n"},
        {"price"_ns, "-2241.78", "The price must be above 0\n"},
        {"price"_ns, "abc", "The price must be above 0\n"},
        {"price"_ns, "2241.", "The price must be above 0\n"},
        {"price"_ns, "2241.785", ""},
        {"price"_ns, "0.01", ""},
        {"quantity"_ns, "", "The quantity must be above 0\n"},
        {"quantity"_ns, "0", "The quantity must be above 0\n"},
        {"quantity"_ns, "000", "The quantity must be above 0\n"},
        {"quantity"_ns, "-1", "The quantity must be above 0\n"},
        {"quantity"_ns, "1", ""},
        {"quantity"_ns, "999999999", ""},
        {"account"_ns, "", "The account is not valid\n"},
        {"account"_ns, "DESK 1", "The account is not valid\n"},
        {"account"_ns, "\xC3\x84", "The account is not valid\n"},
        {"account"_ns, "~", ""},
        {"password"_ns, "", "A password has 8 to 24 characters, and not letters alone\n"},
        {"password"_ns, "secret4", "A password has 8 to 24 characters, and not letters alone\n"},
        {"password"_ns, "secretly", "A password has 8 to 24 characters, and not letters alone\n"},
        {"password"_ns, "secret 42", "A password has 8 to 24 characters, and not letters alone\n"},
        {"password"_ns, "secret-42secret-42secret4", "A password has 8 to 24 characters, and not letters alone\n"},
        {"password"_ns, "secret-42secret-42secret", ""},
        {"password"_ns, "secret-4", ""},
    };
    for (const auto& [name, text, reason] : table) {
        SCOPED_TRACE(name->utf8() + ": " + text);
        EXPECT_EQ(reasonAgainst(name, text), reason);
    }
}

TEST_F(DeskTicket, aQuoteOffTheTickIsNoPriceToOrderAt) {
    quote("BNBUSDT", "307.37");
    ticket->setTracker(tracker(1));
    ticket->place("Buy"_ns);
    EXPECT_EQ(refused, "The price lies between two ticks\n");
    EXPECT_EQ(price(), "307.37") << "what was not typed is not rounded";
    press(Qt::Key_Tab);
    EXPECT_EQ(price(), "307.40");
}

TEST_F(DeskTicket, aRefusedFieldIsShownToTheUser) {
    for (const auto& name : {"price"_ns, "quantity"_ns, "account"_ns, "password"_ns}) {
        SCOPED_TRACE(name->utf8());
        const auto refusedField = named<NSTextField>(name, ticket);
        const std::uint64_t beeps = beepCount();
        EXPECT_NE(reasonAgainst(name, ""), "");
        EXPECT_TRUE(hasKeyboard(refusedField));
        EXPECT_EQ(beepCount(), beeps + 1);
        EXPECT_TRUE(send<Ref<NSColor>>(refusedField, "borderColor"_sel)->isEqual(desk::highlight(Way::Down)));
        EXPECT_TRUE(refusedField->layer()->animationForKey("key"_ns)) << "it shakes";
        EXPECT_TRUE(eventually([&] { return !refusedField->layer()->animationForKey("key"_ns); }));
    }
}

TEST_F(DeskTicket, theFirstWrongFieldIsNamed) {
    ticket->setTracker(nullptr);
    ticket->place("Buy"_ns);
    ticket->setTracker(tracker(0));
    setPrice(""_ns);
    ticket->place("Buy"_ns);
    setPrice("2241.78"_ns);
    ticket->place("Buy"_ns);
    EXPECT_EQ(refused, "Select an instrument first\nThe price must be above 0\nThe quantity must be above 0\n");
    EXPECT_EQ(ordered, "");
}

TEST_F(DeskTicket, whatIsBeingTypedCounts) {
    fillIn();
    edit(field("price"_ns));
    line()->selectAll();
    type("2241.797");
    named<NSButton>("sell"_ns, ticket)->performClick(nullptr);
    EXPECT_EQ(ordered, "Sell 10 ETHUSDT at 2241.80\n");
    EXPECT_EQ(refused, "");
}

TEST_F(DeskTicket, aWrongFieldIsMarkedWhenItsEditingEnds) {
    const auto account = named<NSTextField>("account"_ns, ticket);
    const auto password = named<NSTextField>("password"_ns, ticket);
    const auto border = [](NSTextField* of) { return send<Ref<NSColor>>(of, "borderColor"_sel); };
    typeInto(password, "letters");
    EXPECT_TRUE(border(password)->isEqual(desk::highlight(Way::Down)));
    edit(password);
    type("x");
    EXPECT_TRUE(border(password)->isEqual(NSColor::controlAccentColor())) << "while it is typed";
    typeInto(password, "secret-42");
    EXPECT_TRUE(border(password)->isEqual(NSColor::separatorColor()));
    edit(account);
    press(Qt::Key_Tab);
    EXPECT_TRUE(border(account)->isEqual(NSColor::separatorColor())) << "an empty one is not wrong yet";
}

TEST_F(DeskTicket, takesNoWrongKeys) {
    edit(field("price"_ns));
    line()->selectAll();
    type("2k2x");
    commit(QString::fromUtf8("\xEF\xBC\x8C"));
    type("5-");
    EXPECT_EQ(line()->text().toStdString(), "22.5");
    edit(field("quantity"_ns));
    type("1.0a1234567899");
    EXPECT_EQ(line()->text().toStdString(), "101234567");
    edit(field("account"_ns));
    type("DESK-1234567890");
    EXPECT_EQ(line()->text().toStdString(), "DESK-1234567");
}

TEST_F(DeskTicket, followsTheAppearance) {
    const UserChoices choices;
    // In the price field, beside its text.
    const auto lightness = [this] {
        const QPoint place = pixelOf(field("price"_ns), {20, 13});
        return qt::widget(window.get())->grab().toImage().pixelColor(place).lightness();
    };
    EXPECT_GT(lightness(), 200);
    NSApplication::sharedApplication()->setAppearance(NSAppearance::appearanceNamed(NSAppearanceNameDarkAqua()));
    EXPECT_LT(lightness(), 80);
    NSApplication::sharedApplication()->setAppearance(nullptr);
    EXPECT_GT(lightness(), 200);
}

} // namespace
} // namespace zr::test
