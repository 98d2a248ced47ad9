#include "desk.h"

#include "look.h"
#include "settings.h"

#include <examples/replay/price_text.h>
#include <examples/replay/report.h>

#include <zrbasic/collections/html_links.h>
#include <zrbasic/collections/url_query.h>
#include <zrbasic/core/text.h>
#include <zrbasic/model/table_column_layout.h>
#include <zrbasic/model/user_notification.h>
#include <zrbasic/model/user_notification_info.h>
#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/platform/appkit/split_view.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/ui/application.h>
#include <zrbasic/ui/callback_target.h>
#include <zrbasic/ui/font.h>
#include <zrbasic/ui/menu_item.h>
#include <zrbasic/ui/restart.h>
#include <zrbasic/ui/scroller.h>
#include <zrbasic/ui/timer.h>
#include <zrbasic/ui/window.h>
#include <zrbasic/ui/workspace.h>

namespace desk {

using namespace zr;

namespace {

constexpr NSSize extent{1120, 660};
constexpr double barHeight = 44;
constexpr double statusHeight = 26;
constexpr double ticketWidth = 300;
constexpr double messageHeight = 150;
/// Between two looks at the feed.
constexpr NSTimeInterval beat = 0.01;
constexpr double speeds[] = {1, 10, 100, replay::Feed::asFastAsItGoes};
/// Of all messages; older ones are let go.
constexpr std::size_t mostUnits = 5000;

constexpr NSUInteger command = NSEventModifierFlagCommand;
constexpr NSUInteger option = NSEventModifierFlagOption;

/// What lies behind everything, with lines between the parts.
class Ground : public ZRXView {
    ZR_OBJECT(Ground, ZRXView)
  public:
    void drawRect(NSRect) override {
        const NSSize size = bounds().size;
        setFill(NSColor::windowBackgroundColor());
        NSRectFill(bounds());
        setFill(NSColor::separatorColor());
        NSRectFill(NSMakeRect(0, barHeight - 1, size.width, 1));
        NSRectFill(NSMakeRect(0, size.height - statusHeight, size.width, 1));
        NSRectFill(NSMakeRect(size.width - ticketWidth, barHeight, 1, size.height - barHeight - statusHeight));
    }
    ZR_METHOD(drawRect, "drawRect:")
};

} // namespace

Desk::~Desk() {
    m_timer->invalidate();
    NSApplication::sharedApplication()->setMainMenu(nullptr);
}

void Desk::open(replay::Session& session, replay::Feed& feed) {
    m_session = &session;
    m_feed = &feed;
    recolor();
    UNUserNotificationCenter::currentNotificationCenter()->setDelegate(this);
    m_window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{NSZeroPoint, extent},
                              NSUInteger{NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                         NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable});
    m_window->setTitle("Desk"_ns);
    m_window->setDelegate(this);
    m_window->setMinSize(NSMakeSize(780, 520));
    const auto ground = make<Ground>(&Ground::initWithFrame, NSRect{NSZeroPoint, extent});
    m_window->setContentView(ground);
    const double width = extent.width - ticketWidth;
    const double height = extent.height - barHeight - statusHeight;

    m_watchList = make<WatchList>();
    m_watchList->follow(m_session->trackers());
    m_watchList->onQuote = [this](replay::Tracker* tracker) { fill(tracker->instrument()->symbol()); };
    m_watchList->onSelection = [this] { m_ticket->setTracker(m_watchList->selected()); };
    m_watchList->onLayout = [this] { save("columns"_ns, arrangedColumnInfos(m_watchList->table())); };
    m_watchList->table()->setFrameSize(NSMakeSize(width, height - messageHeight - 1));
    const auto split = make<NSSplitView>(&NSSplitView::initWithFrame, NSMakeRect(0, barHeight, width, height));
    split->addSubview(m_watchList->table());
    split->addSubview(makeMessages(NSMakeRect(0, 0, width, messageHeight)));
    m_ticket =
        make<OrderTicket>(&OrderTicket::initWithFrame, NSMakeRect(width + 1, barHeight, ticketWidth - 1, height));
    m_ticket->onOrder = [this](const Order& order) { place(order); };
    m_ticket->onRefusal = [this](NSString* reason) { say(reason, true); };
    m_status = label(""_ns, NSMakeRect(12, extent.height - statusHeight + 5, extent.width - 24, 18), "status"_ns);
    const auto add = [&](NSView* view, NSUInteger mask) {
        view->setAutoresizingMask(mask);
        ground->addSubview(view);
    };
    add(makeBar(extent.width), NSViewWidthSizable);
    add(split, NSViewWidthSizable | NSViewHeightSizable);
    add(m_ticket, NSViewMinXMargin | NSViewHeightSizable);
    add(m_status, NSViewWidthSizable | NSViewMinYMargin);
    NSApplication::sharedApplication()->setMainMenu(makeMenu());
    say("Ready"_ns);
    m_timer = zr_scheduledTimerWithTimeInterval_repeats_block(beat, true, [this](NSTimer*) { advance(); });
    centerAtScreen(m_window);
    m_window->makeKeyAndOrderFront(nullptr);
    m_window->makeFirstResponder(m_watchList->table());
}

Ref<NSView> Desk::makeBar(double width) {
    Ref<NSView> bar = make<ZRXView>(&ZRXView::initWithFrame, NSMakeRect(0, 0, width, barHeight - 1));
    bar->addSubview(button("Menu"_ns, NSMakeRect(12, 9, 76, 26), "menu"_ns, [bar = bar.get()] {
        const auto menu = NSApplication::sharedApplication()->mainMenu();
        menu->popUpMenuPositioningItem_atLocation_inView(nullptr, NSMakePoint(12, 36), bar);
    }));
    m_pause = button("Pause"_ns, NSMakeRect(96, 9, 86, 26), "pause"_ns, [this] { pauseOrResume(); });
    bar->addSubview(m_pause);
    m_speed = make<NSPopUpButton>(&NSPopUpButton::initWithFrame_pullsDown, NSMakeRect(190, 9, 170, 26), false);
    m_speed->addItemsWithTitles(
        array({"As recorded"_ns, "10 times as fast"_ns, "100 times as fast"_ns, "As fast as it goes"_ns}));
    m_speed->setIdentifier("speed"_ns);
    m_speed->setAccessibilityLabel("Speed"_ns);
    setCallback(m_speed, [this](NSObject*) { m_feed->setSpeed(speeds[m_speed->indexOfSelectedItem()]); });
    bar->addSubview(m_speed);
    m_clock = label(""_ns, NSMakeRect(380, 13, width - 400, 18), "clock"_ns);
    m_clock->setAlignment(NSTextAlignmentRight);
    m_clock->setAutoresizingMask(NSViewWidthSizable);
    bar->addSubview(m_clock);
    return bar;
}

Ref<NSView> Desk::makeMessages(NSRect frame) {
    m_paper = make<ZRXView>(&ZRXView::initWithFrame, frame);
    m_paper->setWantsLayer(true);
    frame = NSMakeRect(6, 6, frame.size.width - 12, frame.size.height - 12);
    m_messages = make<NSTextView>(&NSTextView::initWithFrame, frame);
    m_messages->setEditable(false);
    m_messages->setVerticallyResizable(true);
    m_messages->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    m_messages->setDelegate(this);
    m_messages->setIdentifier("messages"_ns);
    m_messages->setAccessibilityLabel("Messages"_ns);
    const auto scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, frame);
    scrolling->setVerticalScroller(make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 10, 100)));
    scrolling->setHasVerticalScroller(true);
    scrolling->setAutohidesScrollers(true);
    scrolling->setDocumentView(m_messages);
    scrolling->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    m_paper->addSubview(scrolling);
    showMessages();
    return m_paper;
}

Ref<NSMenu> Desk::makeMenu() {
    Ref<NSMenu> menu = make<NSMenu>();
    const auto add = [&menu](NSString* title, NSUInteger modifiers, NSString* key, std::function<void()> action) {
        const auto item = itemWithTitle_action_keyEquivalent(title, {}, key);
        item->setKeyEquivalentModifierMask(modifiers);
        setCallback(item, [action = std::move(action)](NSObject*) { action(); });
        menu->addItem(item);
    };
    add("Buy"_ns, command, "b"_ns, [this] { m_ticket->place("Buy"_ns); });
    add("Sell"_ns, command, "B"_ns, [this] { m_ticket->place("Sell"_ns); });
    add("Price up by a tick"_ns, option, u"\uF700"_ns, [this] { m_ticket->nudge(true); });
    add("Price down by a tick"_ns, option, u"\uF701"_ns, [this] { m_ticket->nudge(false); });
    menu->addItem(NSMenuItem::separatorItem());
    add("Pause or resume"_ns, command, "p"_ns, [this] { pauseOrResume(); });
    const auto columns = itemWithTitle_action("Columns"_ns, {});
    columns->setSubmenu(m_watchList->columnMenu());
    menu->addItem(columns);
    menu->addItem(NSMenuItem::separatorItem());
    add("Settings\u2026"_ns, command, ","_ns, [this] {
        showSettings(
            [this](NSString* key, NSObject* value) {
                save(key, value);
                recolor();
            },
            [] { ZRRestartApplication::restartApplication(); });
    });
    add("Quit"_ns, command, "q"_ns, [] { NSApplication::sharedApplication()->terminate(nullptr); });
    return menu;
}

void Desk::recolor() {
    const auto application = NSApplication::sharedApplication();
    application->setAppearance(
        NSAppearance::appearanceNamed(isDarkMode(application) ? NSAppearanceNameDarkAqua() : NSAppearanceNameAqua()));
    if (m_window) {
        m_watchList->table()->reloadData();
        showMessages();
        say(m_status->stringValue(), m_isAlarm);
    }
}

void Desk::setSpeed(double speed) {
    m_feed->setSpeed(speed);
    const auto* const place = std::find(std::begin(speeds), std::end(speeds), speed);
    m_speed->selectItemAtIndex(place != std::end(speeds) ? place - std::begin(speeds) : -1);
}

void Desk::pauseOrResume() {
    m_isPaused = !m_isPaused;
    m_pause->setTitle(m_isPaused ? "Resume"_ns : "Pause"_ns);
    if (m_isPaused) {
        pause(m_timer);
    } else {
        m_feed->goOn();
        resume(m_timer);
    }
}

void Desk::advance() {
    const bool isOver = !m_feed->advance();
    m_watchList->refresh();
    m_clock->setStringValue(NSString::fromUtf8(replay::timeText(m_session->lastTime()) + "   " +
                                               replay::grouped(m_session->quotes()) + " quotes"));
    if (isOver) {
        m_timer->invalidate();
        const std::size_t skipped = m_feed->skipped();
        if (!m_feed->error().empty()) {
            say(NSString::fromUtf8("The feed cannot be read: " + m_feed->error()), true);
        } else if (!m_isAlarm) {
            say(NSString::fromUtf8("Everything was played" +
                                   (skipped > 0 ? "; lines left out: " + replay::grouped(skipped) : "")),
                skipped > 0);
        }
        if (onEnd) {
            onEnd();
        }
    }
}

void Desk::place(const Order& order) {
    const int number = m_nextNumber++;
    m_openOrders.emplace(number, order);
    const auto address = appendQueryItemsFromDictionary(
        NSURL::URLWithString("https://desk.example/order"_ns),
        dictionary({{"number"_ns, box(number)}, {"symbol"_ns, order.symbol}, {"price"_ns, order.price}}));
    tell(NSString::stringWithFormat("<a href=\"%@\">Order %d</a> is with the exchange: %@"_ns,
                                    address->absoluteString(), number, order.text));
    say(NSString::stringWithFormat("Order %d is with the exchange"_ns, number));
}

void Desk::fill(NSString* symbol) {
    for (auto place = m_openOrders.begin(); place != m_openOrders.end();) {
        const auto [number, order] = *place;
        if (!order.symbol->isEqual(symbol)) {
            ++place;
            continue;
        }
        place = m_openOrders.erase(place);
        tell(NSString::stringWithFormat("Order %d is filled: %@"_ns, number, order.text));
        const auto content = notificationWithTitle_informativeText<UNMutableNotificationContent>(
            NSString::stringWithFormat("%@ filled"_ns, symbol), order.text);
        setupActionButtonTitle(content, "Show order"_ns);
        addUserInfo(content, dictionary({{"order"_ns, box(number)}}));
        UNUserNotificationCenter::currentNotificationCenter()->addNotificationRequest_withCompletionHandler(
            UNNotificationRequest::requestWithIdentifier_content_trigger(notificationID(content), content, nullptr),
            [this](NSError* error) {
                say(error ? "Filled; the desktop shows no notifications"_ns : "Filled"_ns, error != nullptr);
            });
    }
}

void Desk::userNotificationCenter_didReceiveNotificationResponse_withCompletionHandler(UNUserNotificationCenter*,
                                                                                       UNNotificationResponse* response,
                                                                                       std::function<void()> done) {
    const auto info = ZRUserNotificationInfo::infoWithData_withActionIdentifier(
        response->notification()->request()->content(), response->actionIdentifier());
    const bool isButton = info->activationType() == NSUserNotificationActivationTypeActionButtonClicked;
    say(NSString::stringWithFormat("Order %@: the %@ was clicked"_ns, info->userInfo()->objectForKey("order"_ns),
                                   isButton ? "button"_ns : "notification"_ns));
    m_window->makeKeyAndOrderFront(nullptr);
    done();
}

void Desk::windowWillClose(NSNotification*) {
    NSApplication::sharedApplication()->terminate(nullptr);
}

bool Desk::clickedOnLink(NSTextView*, NSObject* link, NSUInteger) {
    if (auto* const url = cast<NSURL>(link)) {
        zr_openURL(url);
        say(NSString::stringWithFormat("Opened %@"_ns, url));
    }
    return true;
}

void Desk::tell(NSString* message) {
    if (ZRXTextValid(message)) {
        m_told.append(m_told.empty() ? u"" : u"\n").append(message->view());
        while (m_told.size() > mostUnits && m_told.find(u'\n') != std::u16string::npos) {
            m_told.erase(0, m_told.find(u'\n') + 1);
        }
        showMessages();
        scrollRectToVisible(m_messages, NSMakeRect(0, m_messages->frame().size.height - 1, 1, 1));
    }
}

void Desk::showMessages() {
    m_paper->layer()->setBackgroundColor(NSColor::textBackgroundColor());
    m_messages->textStorage()->setAttributedString(replaceHTMLLinksFromString_withTextColor_linkColor_font(
        NSString::fromUtf16(m_told), NSColor::labelColor(), NSColor::linkColor(), ZRFont(12)));
}

void Desk::save(NSString* key, NSObject* value) {
    const auto defaults = NSUserDefaults::standardUserDefaults();
    defaults->setObject_forKey(value, key);
    if (!defaults->synchronize()) {
        say("Settings cannot be saved; they last until the desk is closed"_ns, true);
    }
}

void Desk::say(NSString* text, bool isAlarm) {
    m_isAlarm = isAlarm;
    m_status->setTextColor(isAlarm ? highlight(Way::Down) : NSColor::secondaryLabelColor());
    m_status->setStringValue(text);
}

} // namespace desk
