#pragma once

#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

namespace zr::test {

/// Writes into a log, and does what the test wants done meanwhile.
class NotificationListener : public NSObject {
    ZR_OBJECT(NotificationListener, NSObject)

  public:
    void hear(NSNotification* notification) {
        last = notification;
        *log += name;
        if (const auto running = action) {
            running();
        }
    }
    ZR_METHOD(hear, "hear:")

    void wake() { *log += name + "!"; }
    ZR_METHOD(wake, "wake")

    int count(NSObject*) { return ++calls; }
    ZR_METHOD(count, "count:")

    void pair(NSObject*, NSObject*) { *log += "never"; }
    ZR_METHOD(pair, "pair:with:")

    std::string* log = nullptr;
    std::string name;
    int calls = 0;
    Ref<NSNotification> last;
    std::function<void()> action;
};

/// A centre of its own for every test, and listeners that share a log.
class NotificationTest : public testing::Test {
  protected:
    Ref<NotificationListener> listener(const std::string& name) {
        Ref<NotificationListener> made = make<NotificationListener>();
        made->log = &log;
        made->name = name;
        return made;
    }
    Ref<NotificationListener> listening(const std::string& letter, NSString* name, NSObject* object = nullptr) {
        Ref<NotificationListener> made = listener(letter);
        center->addObserver_selector_name_object(made, "hear:"_sel, name, object);
        return made;
    }
    void post(NSString* name, NSObject* object = nullptr) { center->postNotificationName_object(name, object); }
    /// The log since it was last asked for.
    std::string heard() { return std::exchange(log, ""); }

    Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
    std::string log;
};

} // namespace zr::test
