#include "notification_listening.h"

#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zr;
using test::NotificationListener;

class NotificationBlock : public test::NotificationTest {};

TEST_F(NotificationBlock, forgetsTheDeadThatNobodyPostsTo) {
    const auto token = std::make_shared<int>(0);
    {
        const Ref<NSObject> object = make<NSObject>();
        (void)center->addObserverForName_object_usingBlock("quote"_ns, object, [token](NSNotification*) {});
    }
    EXPECT_EQ(token.use_count(), 2);
    std::vector<Ref<NotificationListener>> others;
    for (int i = 0; i < 200; ++i) {
        others.push_back(listening("x", "other"_ns));
    }
    EXPECT_EQ(token.use_count(), 1) << "let go when others came";
    post("other"_ns);
    EXPECT_EQ(heard(), std::string(200, 'x')) << "who lives was not touched";
}

TEST_F(NotificationBlock, callsABlockUntilItsTokenIsRemoved) {
    const auto captured = std::make_shared<int>(0);
    Ref<NSNotification> last;
    id token = center->addObserverForName_object_usingBlock(
        "quote"_ns, nullptr, [captured, &last](NSNotification* notification) { last = notification; });
    ASSERT_TRUE(token);
    const Weak<NSObject> watched(token);
    post("quote"_ns, box(1));
    ASSERT_TRUE(last);
    EXPECT_TRUE(last->object()->isEqual(box(1)));
    center->removeObserver_name_object(token, "other"_ns, nullptr);
    EXPECT_EQ(captured.use_count(), 2);
    center->removeObserver(token);
    token = nullptr;
    EXPECT_EQ(captured.use_count(), 1);
    EXPECT_TRUE(watched.expired());
    last = nullptr;
    post("quote"_ns);
    EXPECT_FALSE(last);
}

TEST_F(NotificationBlock, callsABlockWhoseTokenNobodyKeeps) {
    int calls = 0;
    (void)center->addObserverForName_object_usingBlock("quote"_ns, nullptr, [&](NSNotification*) { ++calls; });
    post("quote"_ns);
    EXPECT_EQ(calls, 1);
    center = nullptr;
}

TEST_F(NotificationBlock, aBlockMayEndItself) {
    const auto captured = std::make_shared<int>(0);
    id token;
    long uses = 0;
    token = center->addObserverForName_object_usingBlock("quote"_ns, nullptr, [&, captured](NSNotification*) {
        center->removeObserver(token);
        token = nullptr;
        // Still there, although its registration is over.
        uses = captured.use_count();
    });
    post("quote"_ns);
    EXPECT_EQ(uses, 2);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(NotificationBlock, aPostKeepsItsNotificationUntilAllAreTold) {
    Ref<NSNotification> posted = NSNotification::notificationWithName_object("quote"_ns, nullptr);
    const Weak<NSNotification> watched(posted);
    const id first =
        center->addObserverForName_object_usingBlock("quote"_ns, nullptr, [&](NSNotification*) { posted = nullptr; });
    bool wasThere = false;
    const id second = center->addObserverForName_object_usingBlock(
        "quote"_ns, nullptr, [&](NSNotification* notification) { wasThere = watched.lock() == notification; });
    center->postNotification(posted);
    EXPECT_TRUE(wasThere);
    EXPECT_TRUE(watched.expired());
}

/// Posts when it ends.
struct Farewell {
    explicit Farewell(NSNotificationCenter* itsCenter) : center(itsCenter) {}
    ~Farewell() { center->postNotificationName_object("farewell"_ns, nullptr); }
    Farewell(const Farewell&) = delete;
    Farewell& operator=(const Farewell&) = delete;

    NSNotificationCenter* center;
};

TEST_F(NotificationBlock, whatABlockHoldsMayComeBackWhenItIsLetGo) {
    const auto a = listening("a", "farewell"_ns);
    const auto add = [this](NSObject* object) {
        const auto farewell = std::make_shared<Farewell>(center);
        return center->addObserverForName_object_usingBlock("quote"_ns, object, [farewell](NSNotification*) {}).get();
    };
    center->removeObserver(add(nullptr));
    EXPECT_EQ(heard(), "a");
    // Once more for one that is forgotten because its object is gone.
    (void)add(make<NSObject>());
    std::vector<Ref<NotificationListener>> others;
    for (int i = 0; i < 200; ++i) {
        others.push_back(listening("x", "other"_ns));
    }
    EXPECT_EQ(heard(), "a");
}

TEST(DefaultNotificationCenter, isOneForTheWholeApplication) {
    const Ref<NSNotificationCenter> center = NSNotificationCenter::defaultCenter();
    ASSERT_TRUE(center);
    EXPECT_EQ(center, NSNotificationCenter::defaultCenter());
    EXPECT_EQ(center, send<id>(NSNotificationCenter::classObject(), "defaultCenter"_sel));
    EXPECT_NE(center, make<NSNotificationCenter>());
}

} // namespace
