#include "temporary_folder.h"

#include <examples/replay/column_layout.h>
#include <examples/replay/desk.h>
#include <examples/replay/message_text.h>

#include <zrbasic/platform/appkit/table_column.h>
#include <zrbasic/platform/appkit/user_notification.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/null.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace replay {

using namespace zr;

namespace {

using testing::HasSubstr;
using testing::Not;

PriceEntry entry() {
    auto instrument = make<Instrument>();
    instrument->setSymbol("ETHUSDT"_ns);
    instrument->setTick(NSDecimalNumber::decimalNumberWithString("0.01"_ns));
    return typePrice(instrument, box(2241.78));
}

/// The columns in order, "-" before the hidden ones.
std::string columnsOf(NSTableView* table) {
    std::string text;
    const auto columns = table->tableColumns();
    for (const id& element : columns->elements()) {
        auto* const column = cast<NSTableColumn>(element);
        text += (text.empty() ? "" : " ") + std::string(column->isHidden() ? "-" : "") + column->identifier()->utf8();
    }
    return text;
}

TEST(ReplayMessage, isGreyWithUnderlinedBlueLinksOnATerminal) {
    const auto message = styledMessage("Read <a href=\"https://a.example/\">this</a>.\nNow"_ns);
    EXPECT_EQ(messageText(message, 2, false), "  Read this.\n  Now\n");
    EXPECT_EQ(messageText(message, 1, true),
              " \033[38;2;139;148;158mRead \033[0m\033[38;2;56;139;253;4mthis\033[0m"
              "\033[38;2;139;148;158m.\033[0m\n \033[38;2;139;148;158mNow\033[0m\n");
    EXPECT_EQ(styledMessage(nullptr), nullptr);
    EXPECT_EQ(messageText(styledMessage(""_ns), 0, true), "\n");
}

TEST(ReplayMessage, listsItsLinks) {
    const auto message = styledMessage("<a href='https://a.example/?x=1'>one</a><A HREF=\"/two\">two</A>"_ns);
    const auto links = linksOf(message);
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[0].text, "one");
    EXPECT_EQ(links[0].target, "https://a.example/?x=1");
    EXPECT_EQ(links[1].text, "two");
    EXPECT_EQ(links[1].target, "/two");
}

TEST(ReplayMessage, bringsNoControlCharactersToTheTerminal) {
    const auto message = styledMessage("a\033[31m<a href='https://a.example/'>b\007</a>\r"_ns);
    EXPECT_EQ(messageText(message, 0, false), "a?[31mb??\n");
}

TEST(ReplayColumns, stayWhereTheyAreWithoutALayout) {
    const std::string usual = "instrument tick quotes changes offTick low high last";
    EXPECT_EQ(columnsOf(instrumentTable()), usual);
    EXPECT_EQ(columnsOf(instrumentTable(nullptr)), usual);
    EXPECT_EQ(columnsOf(instrumentTable(array({NSNull::null(), "last"_ns, box(1)}))), usual);
}

TEST(ReplayColumns, areArrangedAsTheUserLeftThem) {
    const auto record = [](const char* identifier, double width, bool isHidden) {
        return dictionary({{"identifier"_ns, NSString::fromUtf8(identifier)},
                           {"width"_ns, box(width)},
                           {"hidden"_ns, box(isHidden)}});
    };
    const auto table =
        instrumentTable(array({record("last", 90, false), record("gone", 50, false), record("low", 40, true)}));
    EXPECT_EQ(columnsOf(table), "last instrument -low tick quotes changes offTick high");
    EXPECT_EQ(table->tableColumnWithIdentifier("last"_ns)->width(), 90);
}

TEST(ReplayOrder, isReadBackFromItsRefreshedAddress) {
    const OrderLink link = linkOrder(entry());
    const std::string built = link.built->absoluteString()->utf8();
    const std::string refreshed = link.refreshed->absoluteString()->utf8();
    const std::string start = "https://desk.example/order?symbol=ETHUSDT&price=2241.78&quantity=10&random=";
    EXPECT_EQ(built.substr(0, start.size()), start);
    EXPECT_EQ(refreshed.substr(0, start.size()), start);
    EXPECT_EQ(refreshed.substr(refreshed.find('#')), "#note=day%20order&side=buy");
    EXPECT_EQ(link.query->count(), 4u);
    EXPECT_TRUE(link.query->peek("price"_ns)->isEqual("2241.78"_ns));
    EXPECT_TRUE(link.fragment->isEqual(dictionary({{"note"_ns, "day%20order"_ns}, {"side"_ns, "buy"_ns}})));
}

TEST(ReplayFill, comesBackAsAClickOnItsButton) {
    const FillNotice fill = notifyOfFill(entry());
    EXPECT_EQ(fill.title, "ETHUSDT filled");
    EXPECT_EQ(fill.text, "Bought 10 at 2241.78");
    EXPECT_EQ(fill.button, "Show order");
    ASSERT_NE(fill.response, nullptr);
    EXPECT_EQ(fill.response->activationType(), NSUserNotificationActivationTypeActionButtonClicked);
    EXPECT_TRUE(fill.response->userInfo()->peek("order"_ns)->isEqual(box(4711)));
    EXPECT_EQ(fill.response->userInfo()->count(), 2u) << "the order and the notification's own identifier";
}

TEST(ReplayDesk, leavesOutWhatThereIsNothingOf) {
    const Desk empty = openDesk(nullptr, std::nullopt);
    EXPECT_EQ(deskText(empty, false), "");
    for (const auto& key : {"message"_ns, "columns"_ns, "order"_ns, "fill"_ns}) {
        EXPECT_EQ(deskObject(empty)->objectForKey(key), NSNull::null());
    }
    const auto account = make<Account>();
    const std::string text = deskText(openDesk(account, std::nullopt), false);
    EXPECT_THAT(text, HasSubstr("Columns as the user left them\n\n  COLUMN "));
    EXPECT_THAT(text, Not(HasSubstr("Message")));
    EXPECT_THAT(text, Not(HasSubstr("Order")));
}

class ReplayAccount : public test::TemporaryFolder {};

TEST_F(ReplayAccount, isFilledFromTheServersReply) {
    Console console(true);
    const auto account = readAccount(ZR_EXAMPLE_DATA_DIR "/account.json", console);
    ASSERT_NE(account, nullptr);
    const std::string text = deskText(openDesk(account, entry()), false);
    EXPECT_THAT(text, HasSubstr("  Margin is at 81 %: add funds or read the terms.\n"));
    EXPECT_THAT(text, HasSubstr("  add funds    https://desk.example/funds?add=1\n"));
    EXPECT_THAT(text, HasSubstr("  LOW           96.5   hidden\n"));
    EXPECT_THAT(text, HasSubstr("  fragment   note       day order\n"));
    EXPECT_THAT(text, HasSubstr("  response   the button was clicked, for order 4711\n"));
}

TEST_F(ReplayAccount, takesNothingOfTheWrongKind) {
    Console console(true);
    for (const char* reply : {"{}", R"({"message":null,"columns":null})", R"({"message":7,"columns":"x"})",
                              R"({"message":["a"],"columns":{"a":1}})"}) {
        SCOPED_TRACE(reply);
        const auto account = readAccount(write("account.json", reply).string(), console);
        ASSERT_NE(account, nullptr);
        const Desk desk = openDesk(account, std::nullopt);
        EXPECT_EQ(desk.message, nullptr);
        EXPECT_EQ(columnsOf(desk.table), columnsOf(instrumentTable()));
    }
}

} // namespace

} // namespace replay
