#pragma once

#include "order_ticket.h"
#include "watch_list.h"

#include <examples/replay/feed.h>

#include <zrbasic/platform/appkit/notification_center.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/timer.h>

#include <map>

namespace desk {

/// The desk's window, and what goes on in it.
class Desk : public zr::NSObject, public zr::UNUserNotificationCenterDelegate {
    ZR_OBJECT(Desk, zr::NSObject, zr::UNUserNotificationCenterDelegate)
  public:
    ~Desk() override;

    /// Both must outlive the desk.
    void open(replay::Session& session, replay::Feed& feed);
    [[nodiscard]] zr::NSWindow* window() const { return m_window; }
    /// In the status line, until the next one.
    void say(zr::NSString* text, bool isAlarm = false);
    /// Among the messages: text with anchor tags; null and empty ones are none.
    void tell(zr::NSString* message);
    /// How many times as fast as recorded; 0 is as fast as it goes.
    void setSpeed(double speed);

    /// Called when everything was played.
    std::function<void()> onEnd;

    void userNotificationCenter_didReceiveNotificationResponse_withCompletionHandler(
        zr::UNUserNotificationCenter*, zr::UNNotificationResponse* response, std::function<void()> done) override;
    /// The desk is all there is: closing it ends the application.
    void windowWillClose(zr::NSNotification*);
    ZR_METHOD(windowWillClose, "windowWillClose:")
    bool clickedOnLink(zr::NSTextView*, zr::NSObject* link, zr::NSUInteger);
    ZR_METHOD(clickedOnLink, "textView:clickedOnLink:atIndex:")

  private:
    zr::Ref<zr::NSView> makeBar(double width);
    zr::Ref<zr::NSView> makeMessages(zr::NSRect frame);
    zr::Ref<zr::NSMenu> makeMenu();
    void showMessages();
    void advance();
    void pauseOrResume();
    void place(const Order& order);
    void fill(zr::NSString* symbol);
    void save(zr::NSString* key, zr::NSObject* value);
    /// Shows everything in the colours of the moment.
    void recolor();

    replay::Session* m_session = nullptr;
    replay::Feed* m_feed = nullptr;
    zr::Ref<zr::NSTimer> m_timer;
    bool m_isPaused = false;
    zr::Ref<zr::NSWindow> m_window;
    zr::Ref<WatchList> m_watchList;
    zr::Ref<OrderTicket> m_ticket;
    zr::Ref<zr::NSView> m_paper;
    zr::Ref<zr::NSTextView> m_messages;
    zr::Ref<zr::NSPopUpButton> m_speed;
    zr::Ref<zr::NSButton> m_pause;
    zr::Ref<zr::NSTextField> m_clock;
    zr::Ref<zr::NSTextField> m_status;
    bool m_isAlarm = false;
    std::u16string m_told;
    /// By number; the next quote of its instrument fills an order.
    std::map<int, Order> m_openOrders;
    int m_nextNumber = 4712;
};

} // namespace desk
