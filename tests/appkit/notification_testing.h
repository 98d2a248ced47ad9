#pragma once

#include "toolkit_testing.h"

#include <zrbasic/platform/appkit/notification_service.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace zr::test {

inline std::string shown(NSString* text) {
    return text ? text->utf8() : "(null)";
}

/// A desktop that writes down what it is asked for; a test is its user.
class FakeDesktop : public NotificationService {
  public:
    bool post(const NotificationPosting& posting, NotificationReceiver& to) override {
        log += "post " + shown(posting.title) + '|' + shown(posting.subtitle) + '|' + shown(posting.body);
        for (const NotificationButton& button : posting.buttons) {
            log += " [" + shown(button.title) + ']';
        }
        log += posting.hasSound ? " with sound\n" : "\n";
        postings.push_back(posting);
        receiver = &to;
        if (whilePosting) {
            whilePosting();
        }
        return canShow;
    }

    void withdraw(NSString* key) override {
        for (const NotificationPosting& posting : postings) {
            if (posting.key->isEqual(key)) {
                log += "withdraw " + shown(posting.title) + '\n';
                return;
            }
        }
        log += "withdraw unknown\n";
    }

    /// The user clicks what was posted at that place.
    void click(std::size_t index = 0) { receiver->notificationWasClicked(postings.at(index).key); }
    void clickButton(std::size_t index = 0, std::size_t button = 0) {
        const NotificationPosting posting = postings.at(index);
        receiver->notificationButtonWasClicked(posting.key, posting.buttons.at(button).identifier);
    }
    void close(std::size_t index = 0) { receiver->notificationWasClosed(postings.at(index).key); }

    std::string log;
    std::vector<NotificationPosting> postings;
    NotificationReceiver* receiver = nullptr;
    bool canShow = true;
    std::function<void()> whilePosting;
};

class FakeToolkit : public ToolkitInUse {
  public:
    [[nodiscard]] NotificationService* notificationService() override { return service; }

    NotificationService* service = nullptr;
};

/// With a toolkit whose desktop is `desktop`.
class Notifying : public testing::Test {
  protected:
    Notifying() { toolkit.service = &desktop; }

    /// Runs the main queue until nothing is left in it, now and later.
    static void runMainQueue() {
        while (const auto left = timeUntilMainQueueWork()) {
            runMainQueueUntil(dispatch_time(DISPATCH_TIME_NOW, left->count()));
        }
    }

    FakeDesktop desktop;
    FakeToolkit toolkit;
};

} // namespace zr::test
