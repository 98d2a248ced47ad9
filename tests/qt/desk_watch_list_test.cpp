#include "desk_testing.h"

#include <zrbasic/core/color.h>
#include <zrbasic/model/table_column_layout.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/null.h>

namespace zr::test {
namespace {

using desk::Way;

/// The watch list by itself, asked as its table asks it.
class DeskWatchList : public testing::Test, protected QuotedInstruments {
  protected:
    DeskWatchList() { list = makeList(session); }

    Ref<desk::WatchList> makeList(const replay::Session& quoted) {
        auto made = make<desk::WatchList>();
        made->onQuote = [this](replay::Tracker* of) { log += "quote " + of->instrument()->symbol()->utf8() + '\n'; };
        made->onSelection = [this] { log += "selection\n"; };
        made->onLayout = [this] { log += "layout\n"; };
        made->follow(quoted.trackers());
        return made;
    }

    Ref<NSTableColumn> column(NSString* name) const { return list->table()->tableColumnWithIdentifier(name); }
    std::string text(NSString* name, NSInteger row) const {
        return list->text(list->table(), column(name), row)->string()->utf8();
    }
    Ref<NSColor> textColor(NSString* name, NSInteger row) const {
        const auto styled = list->text(list->table(), column(name), row);
        const id color = styled->attribute_atIndex_effectiveRange(NSForegroundColorAttributeName(), 0, nullptr);
        return Ref<NSColor>(cast<NSColor>(color));
    }
    Ref<NSColor> background(NSString* name, NSInteger row) const {
        return list->background(list->table(), column(name), row);
    }
    /// The colour without its transparency; "-" for none.
    static std::string hex(const Ref<NSColor>& color) {
        return color ? hexStringValue(color->colorWithAlphaComponent(1))->utf8() : "-";
    }
    static std::string hex(Way way) { return hex(desk::highlight(way)); }
    static std::string layoutOf(desk::WatchList& of) {
        std::string layout;
        for (const id& element : of.table()->tableColumns()) {
            const auto* const each = cast<NSTableColumn>(element);
            layout +=
                (layout.empty() ? "" : " ") + std::string(each->isHidden() ? "-" : "") + each->identifier()->utf8();
        }
        return layout;
    }

    UserChoices choices;
    std::string log;
    Ref<desk::WatchList> list;
};

const char* const usualLayout = "instrument last change low high volume tick offTick quotes";

TEST_F(DeskWatchList, aPriceThatChangesLightsUpAndGoesOut) {
    quote("ETHUSDT", "2241.78");
    EXPECT_EQ(hex(background("last"_ns, 0)), "-") << "the first one is no change";
    quote("ETHUSDT", "2241.780");
    EXPECT_EQ(hex(background("last"_ns, 0)), "-") << "nor is an equal one";
    quote("ETHUSDT", "2241.79");
    EXPECT_EQ(hex(background("last"_ns, 0)), hex(Way::Up));
    EXPECT_EQ(hex(textColor("last"_ns, 0)), hex(Way::Up));
    EXPECT_LE(background("last"_ns, 0)->alphaComponent(), 0.3);
    EXPECT_EQ(hex(background("last"_ns, 1)), "-") << "the other instrument";
    EXPECT_EQ(hex(background("low"_ns, 0)), "-") << "another column";
    quote("ETHUSDT", "2241.7");
    EXPECT_EQ(hex(background("last"_ns, 0)), hex(Way::Down));
    EXPECT_TRUE(eventually([this] { return !background("last"_ns, 0); }));
    EXPECT_EQ(hex(textColor("last"_ns, 0)), hex(Way::Down)) << "which way it went is still to be seen";
}

TEST_F(DeskWatchList, aPriceOffTheTickIsMarked) {
    quote("BNBUSDT", "307.37", R"(,"h":"308","l":"307.11")");
    quote("ETHUSDT", "2241.78", R"(,"h":"2242","l":"2240.01")");
    EXPECT_EQ(hex(background("last"_ns, 1)), hex(desk::noticeColor()));
    EXPECT_EQ(hex(background("offTick"_ns, 1)), hex(desk::noticeColor()));
    EXPECT_EQ(text("offTick"_ns, 1), "2");
    EXPECT_EQ(hex(background("last"_ns, 0)), "-");
    EXPECT_EQ(hex(background("offTick"_ns, 0)), "-");
    EXPECT_EQ(text("offTick"_ns, 0), "0");
    quote("BNBUSDT", "307.4");
    EXPECT_TRUE(eventually([this] { return !background("last"_ns, 1); })) << "on the tick again";
    EXPECT_EQ(hex(background("offTick"_ns, 1)), hex(desk::noticeColor())) << "which is not forgotten";
}

TEST_F(DeskWatchList, cellsSayWhatWasQuoted) {
    for (const auto& name : {"last"_ns, "change"_ns, "low"_ns, "high"_ns, "volume"_ns, "offTick"_ns, "quotes"_ns}) {
        EXPECT_EQ(text(name, 0), "") << name->utf8() << " before the first quote";
    }
    EXPECT_EQ(text("instrument"_ns, 0) + ' ' + text("tick"_ns, 0), "ETHUSDT 0.01");
    EXPECT_EQ(text("instrument"_ns, 1) + ' ' + text("tick"_ns, 1), "BNBUSDT 0.1");
    quote("ETHUSDT", "2352", R"(,"o":"2240","h":"2360.5","l":"2230.05","v":"288.162")");
    EXPECT_EQ(text("last"_ns, 0), "2352.00");
    EXPECT_EQ(text("change"_ns, 0), "+5.00 %");
    EXPECT_EQ(hex(textColor("change"_ns, 0)), hex(Way::Up));
    EXPECT_EQ(text("low"_ns, 0) + ' ' + text("high"_ns, 0), "2230.05 2360.50");
    EXPECT_EQ(text("quotes"_ns, 0), "1");
    quote("ETHUSDT", "2128", R"(,"o":"2240")");
    EXPECT_EQ(text("change"_ns, 0), "-5.00 %");
    EXPECT_EQ(hex(textColor("change"_ns, 0)), hex(Way::Down));
    quote("ETHUSDT", "2240", R"(,"o":"2240")");
    EXPECT_EQ(text("change"_ns, 0), "+0.00 %");
    EXPECT_EQ(hex(textColor("change"_ns, 0)), hex(NSColor::labelColor()));
}

TEST_F(DeskWatchList, tellsOfEveryQuoteOnce) {
    quote("ETHUSDT", "2241.78");
    quote("ETHUSDT", "2241.78");
    quote("BNBUSDT", "307.4");
    EXPECT_EQ(log, "quote ETHUSDT\nquote ETHUSDT\nquote BNBUSDT\n");
}

TEST_F(DeskWatchList, isGoneWithItsTable) {
    const Weak<NSTableView> table(list->table());
    const Weak<desk::WatchList> itself(list);
    list = nullptr;
    EXPECT_FALSE(itself.lock());
    EXPECT_FALSE(table.lock());
    quote("ETHUSDT", "2241.78");
    EXPECT_EQ(log, "") << "nobody follows any more";
}

TEST_F(DeskWatchList, keepsNoInstrumentAlive) {
    std::optional<QuotedInstruments> own(std::in_place);
    const Weak<replay::Tracker> followed(own->tracker(0));
    auto follower = makeList(own->session);
    own->quote("ETHUSDT", "2241.78");
    follower = nullptr;
    own.reset();
    EXPECT_FALSE(followed.lock());
}

TEST_F(DeskWatchList, theUsersLayoutIsThereTheNextTime) {
    list->table()->moveColumn_toColumn(0, 2);
    column("low"_ns)->setHidden(true);
    column("high"_ns)->setWidth(123);
    EXPECT_NE(log.find("layout\n"), std::string::npos) << log;
    NSUserDefaults::standardUserDefaults()->setObject_forKey(arrangedColumnInfos(list->table()), "columns"_ns);
    list = makeList(session);
    EXPECT_EQ(layoutOf(*list), "last change instrument -low high volume tick offTick quotes");
    EXPECT_EQ(column("high"_ns)->width(), 123);
    std::string ticked;
    for (const id& element : list->columnMenu()->itemArray()) {
        const auto* const item = cast<NSMenuItem>(element);
        ticked += item->state() == NSControlStateValueOn ? item->title()->utf8() + ' ' : "- ";
    }
    EXPECT_EQ(ticked, "Last Change Instrument - High Volume Tick Off tick Quotes ");
}

TEST_F(DeskWatchList, aDamagedLayoutIsNone) {
    const auto record = [](id name, id width, id isHidden) {
        return dictionary({{"identifier"_ns, name}, {"width"_ns, width}, {"hidden"_ns, isHidden}});
    };
    const std::pair<const char*, id> table[] = {
        {"a text", "all"_ns},
        {"a number", box(7)},
        {"nothing", array({})},
        {"numbers", array({box(1), box(2)})},
        {"texts", array({"last"_ns, "low"_ns})},
        {"empty records", array({dictionary({}), dictionary({})})},
        {"unknown columns", array({record("bid"_ns, box(80), box(false)), record("ask"_ns, box(80), box(true))})},
        {"widths that are none", array({record("last"_ns, "wide"_ns, box(false))})},
        {"names that are none", array({record(box(7), box(80), box(false))})},
    };
    for (const auto& [name, layout] : table) {
        SCOPED_TRACE(name);
        NSUserDefaults::standardUserDefaults()->setObject_forKey(layout, "columns"_ns);
        EXPECT_EQ(layoutOf(*makeList(session)), usualLayout);
    }
    NSUserDefaults::standardUserDefaults()->setObject_forKey(
        array({record("last"_ns, box(-1e300), box(false)), record("low"_ns, box(1e300), box(false)),
               record("last"_ns, box(90), box(true))}),
        "columns"_ns);
    list = makeList(session);
    EXPECT_EQ(list->table()->numberOfColumns(), 9);
    EXPECT_EQ(column("last"_ns)->width(), 40) << "no narrower than that";
    EXPECT_EQ(text("instrument"_ns, 0), "ETHUSDT");
}

TEST_F(DeskWatchList, theUsersOwnColoursCount) {
    const auto defaults = NSUserDefaults::standardUserDefaults();
    defaults->setObject_forKey("#123456"_ns, desk::highlightKey(Way::Up));
    quote("ETHUSDT", "2241.78");
    quote("ETHUSDT", "2241.79");
    EXPECT_EQ(hex(textColor("last"_ns, 0)), hex(colorWithHexString("#123456"_ns)));
    for (const auto& damaged : {"green"_ns, ""_ns, "#12"_ns, u"\u4E00"_ns}) {
        SCOPED_TRACE(damaged->utf8());
        defaults->setObject_forKey(damaged, desk::highlightKey(Way::Up));
        EXPECT_NE(hex(textColor("last"_ns, 0)), "-");
    }
    defaults->setObject_forKey(box(true), desk::highlightKey(Way::Up));
    EXPECT_NE(hex(textColor("last"_ns, 0)), "-");
}

} // namespace
} // namespace zr::test
