#include "desk_testing.h"

#include <examples/desk/settings.h>

#include <zrbasic/core/color.h>
#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/clip_view.h>
#include <zrbasic/platform/appkit/color_panel.h>
#include <zrbasic/platform/foundation/url.h>

#include <algorithm>

namespace zr::test {
namespace {

using desk::Way;

std::size_t timesIn(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1)) {
        ++count;
    }
    return count;
}

class DeskWindow : public DeskOnScreen {};

TEST_F(DeskWindow, cellsFollowTheQuotesWhateverIsSelected) {
    quote("ETHUSDT", "2241.78");
    quote("BNBUSDT", "307.3");
    select(0);
    EXPECT_EQ(named<NSTextField>("price"_ns)->stringValue()->utf8(), "2241.78");
    quote("BNBUSDT", "307.4");
    quote("ETHUSDT", "2241.79");
    EXPECT_EQ(shown("last"_ns, 1), "307.4");
    EXPECT_EQ(shown("last"_ns, 0), "2241.79");
    EXPECT_EQ(table()->selectedRow(), 0);
    EXPECT_EQ(named<NSTextField>("price"_ns)->stringValue()->utf8(), "2241.78") << "the user's price stays";
    select(1);
    EXPECT_EQ(named<NSTextField>("ticketTitle"_ns)->stringValue()->utf8(), "BNBUSDT");
    EXPECT_EQ(named<NSTextField>("price"_ns)->stringValue()->utf8(), "307.4");
    table()->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSet(), false);
    EXPECT_EQ(named<NSTextField>("ticketTitle"_ns)->stringValue()->utf8(), "No instrument");
}

TEST_F(DeskWindow, theNextQuoteFillsAllOrdersOfItsInstrument) {
    quote("ETHUSDT", "2241.78");
    quote("BNBUSDT", "307.3");
    select(0);
    buy("2241.78"_ns);
    buy("2241.79"_ns);
    select(1);
    buy("307.3"_ns);
    buy("307.4"_ns);
    EXPECT_EQ(timesIn(messages(), "is with the exchange"), 4u);
    EXPECT_EQ(timesIn(messages(), "is filled"), 0u);
    quote("BNBUSDT", "307.4");
    EXPECT_EQ(timesIn(messages(), "is filled"), 2u) << messages();
    EXPECT_EQ(timesIn(messages(), "is filled: Buy 10 BNBUSDT at 307.3\n"), 1u);
    EXPECT_EQ(timesIn(messages(), "is filled: Buy 10 BNBUSDT at 307.4"), 1u);
    quote("BNBUSDT", "307.5");
    EXPECT_EQ(timesIn(messages(), "is filled"), 2u) << "once";
    quote("ETHUSDT", "2241.78");
    EXPECT_EQ(timesIn(messages(), "is filled"), 4u) << "a price that is the same is a quote as well";
    EXPECT_TRUE(eventually([this] { return status().starts_with("Filled"); }));
}

TEST_F(DeskWindow, oldMessagesAreLetGo) {
    const std::string words(980, 'x');
    for (int i = 100; i < 140; ++i) {
        desk->tell(NSString::fromUtf8("message " + std::to_string(i) + ' ' + words));
    }
    const std::string told = messages();
    EXPECT_LE(told.size(), 5000u);
    EXPECT_GT(told.size(), 4000u);
    EXPECT_TRUE(told.starts_with("message 135 x")) << "whole lines only";
    EXPECT_TRUE(told.ends_with("\nmessage 139 " + words));
    const auto text = named<NSTextView>("messages"_ns);
    const auto clip = text->superview();
    const NSRect seen = cast<NSClipView>(clip)->documentVisibleRect();
    EXPECT_GT(seen.origin.y, 100) << "the last one is in sight";
    EXPECT_GE(NSMaxY(seen), text->frame().size.height - 1);
    desk->tell(nullptr);
    desk->tell(""_ns);
    EXPECT_EQ(messages(), told);
    desk->tell(NSString::fromUtf8(std::string(30000, 'x')));
    EXPECT_EQ(messages(), std::string(30000, 'x')) << "of a single one everything stays";
    desk->tell("short"_ns);
    EXPECT_EQ(messages(), "short");
}

TEST_F(DeskWindow, messagesShowTheirTagsAsLinks) {
    desk->tell("<a href=\"https://desk.example/a\">Read</a> & <b>think</b>"_ns);
    EXPECT_EQ(messages(), "Read & <b>think</b>");
    desk->tell("<a href=\"not a url\">nowhere</a>"_ns);
    EXPECT_EQ(messages(), "Read & <b>think</b>\nnowhere");
}

TEST_F(DeskWindow, aLinkSaysWhereItLeads) {
    const auto text = named<NSTextView>("messages"_ns);
    EXPECT_TRUE(desk->clickedOnLink(text, NSURL::URLWithString("https://desk.example/terms"_ns), 0));
    EXPECT_EQ(status(), "Opened https://desk.example/terms");
    desk->say("before"_ns);
    for (const id& other : {id(), id("https://desk.example/"_ns), id(box(7))}) {
        EXPECT_TRUE(desk->clickedOnLink(text, other, 0)) << "nobody else is to try";
        EXPECT_EQ(status(), "before");
    }
}

TEST_F(DeskWindow, alarmsStandOutInTheStatusLine) {
    const auto line = named<NSTextField>("status"_ns);
    desk->say("wrong"_ns, true);
    EXPECT_TRUE(line->textColor()->isEqual(desk::highlight(Way::Down)));
    desk->say("right"_ns);
    EXPECT_TRUE(line->textColor()->isEqual(NSColor::secondaryLabelColor()));
    desk->say(nullptr);
    EXPECT_EQ(status(), "");
}

TEST_F(DeskWindow, goesWithEverythingInIt) {
    const Weak<NSWindow> window(desk->window());
    const Weak<NSTableView> list(table());
    const Weak<desk::Desk> itself(desk);
    NSApplication::sharedApplication()->setMainMenu(nullptr);
    desk->window()->orderOut(nullptr);
    desk = nullptr;
    settle();
    EXPECT_FALSE(itself.lock());
    EXPECT_FALSE(window.lock());
    EXPECT_FALSE(list.lock());
}

/// Counts how often a widget is painted.
class Paints : public QObject {
  public:
    explicit Paints(QWidget* of) { of->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }

    int count = 0;
};

class DeskSettings : public DeskOnScreen {
  protected:
    static Ref<NSWindow> window() { return windowWithIdentifier(NSApplication::sharedApplication(), "settings"_ns); }
    static long windows() {
        const Ref<NSArray> all = NSApplication::sharedApplication()->windows();
        return std::count_if(all->elements().begin(), all->elements().end(), [](const id& element) {
            return "settings"_ns->isEqual(cast<NSWindow>(element)->identifier());
        });
    }
    /// By its key.
    void open() const {
        QTest::keyClick(qt::widget(desk->window()), Qt::Key_Comma, Qt::ControlModifier);
        ASSERT_TRUE(eventually([] { return window() && window()->isVisible(); }));
    }
    static Ref<NSButton> control(NSString* name) { return test::named<NSButton>(name, window()->contentView()); }
    static Ref<NSString> saved(NSString* key) { return NSUserDefaults::standardUserDefaults()->stringForKey(key); }
    /// Whether the first row's price is written in blue letters.
    bool isPriceBlue() const {
        const QTableView& shown = *shownTable();
        const auto place = int(table()->columnWithIdentifier("last"_ns));
        const QRect cell = shown.visualRect(shown.model()->index(0, place));
        const QImage image = shown.viewport()->grab(cell).toImage();
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                pixels += color.blue() > 160 && color.blue() - color.red() > 100;
            }
        }
        return pixels > 10;
    }
};

TEST_F(DeskSettings, areOneWindow) {
    open();
    EXPECT_EQ(windows(), 1);
    const Weak<NSWindow> first(window());
    desk->window()->makeKeyAndOrderFront(nullptr);
    ASSERT_TRUE(eventually([this] { return desk->window()->isKeyWindow(); }));
    open();
    settle();
    EXPECT_EQ(windows(), 1);
    EXPECT_TRUE(window() == first.lock());
    EXPECT_TRUE(eventually([] { return window()->isKeyWindow(); })) << "it comes to the front";
}

TEST_F(DeskSettings, areForgottenWhenTheyAreClosed) {
    open();
    const Weak<NSWindow> closed(window());
    const Weak<NSView> content(window()->contentView());
    control("closeSettings"_ns)->performClick(nullptr);
    EXPECT_TRUE(eventually([&] {
        settle();
        return !closed.lock();
    }));
    EXPECT_FALSE(content.lock());
    EXPECT_EQ(windows(), 0);
    open();
    EXPECT_EQ(windows(), 1);
}

TEST_F(DeskSettings, darkIsSeenAtOnce) {
    desk->tell("hello"_ns);
    const auto lightness = [this](QPoint at) {
        return qt::widget(desk->window())->grab().toImage().pixelColor(at).lightness();
    };
    // In the ground of the ticket, in the messages and in the table.
    const QPoint places[] = {{1000, 500}, {400, 600}, {400, 300}};
    for (const QPoint place : places) {
        EXPECT_GT(lightness(place), 200);
    }
    open();
    EXPECT_EQ(control("dark"_ns)->state(), NSControlStateValueOff);
    control("dark"_ns)->performClick(nullptr);
    EXPECT_EQ(saved("AppleInterfaceStyle"_ns)->utf8(), "Dark");
    for (const QPoint place : places) {
        EXPECT_LT(lightness(place), 80) << place.x();
    }
    control("dark"_ns)->performClick(nullptr);
    EXPECT_EQ(saved("AppleInterfaceStyle"_ns), nullptr);
    for (const QPoint place : places) {
        EXPECT_GT(lightness(place), 200) << place.x();
    }
}

TEST_F(DeskSettings, aColourFromThePanelArrivesInTheTable) {
    quote("ETHUSDT", "2241.78");
    quote("ETHUSDT", "2241.79");
    open();
    control(desk::highlightKey(Way::Up))->performClick(nullptr);
    const auto panel = NSColorPanel::sharedColorPanel();
    EXPECT_TRUE(panel->isVisible());
    EXPECT_FALSE(isPriceBlue());
    EXPECT_EQ(saved(desk::highlightKey(Way::Up)), nullptr) << "nothing was chosen yet";
    EXPECT_EQ(hexStringValue(panel->color())->utf8(), hexStringValue(desk::highlight(Way::Up))->utf8());
    settle();
    const Paints paints(shownTable()->viewport());
    panel->setColor(colorWithHexString("#3366CC"_ns));
    EXPECT_TRUE(eventually([&paints] { return paints.count > 0; }));
    EXPECT_EQ(hexStringValue(desk::highlight(Way::Up))->utf8(), hexStringValue(panel->color())->utf8());
    EXPECT_TRUE(isPriceBlue());
    const std::string chosen = hexStringValue(panel->color())->utf8();
    control(desk::highlightKey(Way::Down))->performClick(nullptr);
    EXPECT_EQ(hexStringValue(desk::highlight(Way::Up))->utf8(), chosen) << "now the panel is for the other one";
    panel->setColor(colorWithHexString("#CC9900"_ns));
    EXPECT_EQ(hexStringValue(desk::highlight(Way::Up))->utf8(), chosen);
    EXPECT_EQ(hexStringValue(desk::highlight(Way::Down))->utf8(), hexStringValue(panel->color())->utf8());
    panel->orderOut(nullptr);
}

TEST_F(DeskSettings, aPanelThatOutlivesThemChangesNothing) {
    open();
    control(desk::highlightKey(Way::Up))->performClick(nullptr);
    const Weak<NSWindow> closed(window());
    window()->performClose(nullptr);
    EXPECT_TRUE(eventually([&] {
        settle();
        return !closed.lock();
    }));
    NSColorPanel::sharedColorPanel()->setColor(colorWithHexString("#010203"_ns));
    EXPECT_EQ(saved(desk::highlightKey(Way::Up)), nullptr);
    NSColorPanel::sharedColorPanel()->orderOut(nullptr);
}

} // namespace
} // namespace zr::test
