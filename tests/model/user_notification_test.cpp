#include <zrbasic/model/user_notification.h>

#include <zrbasic/model/incision.h>
#include <zrbasic/platform/appkit/notification_category.h>
#include <zrbasic/platform/appkit/notification_center.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/set.h>

#include "../foundation/listing.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using namespace zr;

class FillNotification : public NSUserNotification {
    ZR_OBJECT(FillNotification, NSUserNotification)
};

class FillContent : public UNMutableNotificationContent {
    ZR_OBJECT(FillContent, UNMutableNotificationContent)
};

/// Refuses to be made.
class NoNotification : public NSUserNotification {
    ZR_OBJECT(NoNotification, NSUserNotification)

  public:
    id init() override { return {}; }
};

class NoContent : public UNMutableNotificationContent {
    ZR_OBJECT(NoContent, UNMutableNotificationContent)

  public:
    id init() override { return {}; }
};

std::string shown(NSString* text) {
    return text ? text->utf8() : "(null)";
}

std::string identifierIn(NSDictionary* userInfo) {
    const id identifier = userInfo ? userInfo->objectForKey("com.zarvo.notification.userNotificationID"_ns) : id();
    return shown(cast<NSString>(identifier.get()));
}

/// The one category that is registered, written down: "identifier: button title (button identifier)".
std::string registeredCategory() {
    std::string text;
    UNUserNotificationCenter::currentNotificationCenter()->getNotificationCategoriesWithCompletionHandler(
        [&](NSSet* categories) {
            for (const id& member : categories) {
                const auto* const category = cast<UNNotificationCategory>(member.get());
                text += shown(category->identifier()) + ':';
                for (const id& each : category->actions()) {
                    const auto* const action = cast<UNNotificationAction>(each.get());
                    text += ' ' + shown(action->title()) + " (" + shown(action->identifier()) + ')';
                    EXPECT_EQ(action->options(), UNNotificationActionOptionNone);
                }
                EXPECT_EQ(category->intentIdentifiers()->count(), 0u);
                EXPECT_EQ(category->options(), UNNotificationCategoryOptionNone);
            }
        });
    return text;
}

/// What holds for both kinds.
template <class T>
class Notification : public testing::Test {
  protected:
    void SetUp() override { UNUserNotificationCenter::currentNotificationCenter()->setNotificationCategories(nullptr); }
    void TearDown() override { SetUp(); }
};

using Kinds = testing::Types<NSUserNotification, UNMutableNotificationContent>;
TYPED_TEST_SUITE(Notification, Kinds);

TYPED_TEST(Notification, carriesAnIdentifierOfItsOwn) {
    const auto first = notification<TypeParam>();
    const auto second = notification<TypeParam>();
    EXPECT_EQ(first->userInfo()->count(), 1u);
    EXPECT_EQ(identifierIn(first->userInfo()), shown(notificationID(first)));
    EXPECT_EQ(identifierIn(second->userInfo()), shown(notificationID(second)));
    EXPECT_NE(shown(notificationID(first)), shown(notificationID(second)));
    EXPECT_EQ(notificationID(first)->length(), 36u);
    EXPECT_EQ(shown(notificationID(first)), shown(notificationID(first))) << "the same every time";
}

TYPED_TEST(Notification, keepsItsCompanion) {
    const auto made = make<TypeParam>();
    const auto companion = privateUserNotificationActions(made.get());
    ASSERT_TRUE(companion);
    EXPECT_EQ(privateUserNotificationActions(made.get()), companion);
    EXPECT_FALSE(companion->actionButtonClickAction());
    EXPECT_FALSE(companion->delieverAction());
    companion->setNotificationID("mine"_ns);
    EXPECT_EQ(shown(notificationID(made.get())), "mine");
    EXPECT_NE(privateUserNotificationActions(make<TypeParam>().get()), companion);
}

TYPED_TEST(Notification, keepsACopyOfItsClickCallback) {
    const auto made = notification<TypeParam>();
    int clicks = 0;
    UserNotificationAction click = [&] { ++clicks; };
    EXPECT_FALSE(actionable(made.get()));
    setupActionButtonTitle_clickAction(made.get(), "Go"_ns, click);
    click = nullptr;
    EXPECT_EQ(clicks, 0) << "nothing here calls it";
    ASSERT_TRUE(actionButtonClickAction(made.get()));
    actionButtonClickAction(made.get())();
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(actionable(made.get()));
}

TYPED_TEST(Notification, keepsTheCallbackBeforeWhenGivenNone) {
    const auto made = notification<TypeParam>();
    int clicks = 0;
    setupActionButtonTitle_clickAction(made.get(), "Go"_ns, [&] { ++clicks; });
    setupActionButtonTitle(made.get(), "Again"_ns);
    setupActionButtonTitle_clickAction(made.get(), "And again"_ns, nullptr);
    setupActionButtonTitle_clickAction(made.get(), nullptr, [&] { clicks += 100; });
    actionButtonClickAction(made.get())();
    EXPECT_EQ(clicks, 1) << "without a title the callback is ignored";
}

TYPED_TEST(Notification, isNotActionableByATitleAlone) {
    const auto made = notification<TypeParam>();
    setupActionButtonTitle(made.get(), "Go"_ns);
    EXPECT_FALSE(actionable(made.get()));
    EXPECT_FALSE(actionButtonClickAction(made.get()));
}

TYPED_TEST(Notification, mergesIntoItsUserInfo) {
    const auto made = notification<TypeParam>();
    const std::string identifier = shown(notificationID(made.get()));
    addUserInfo(made.get(), dictionary({{"key1"_ns, box(1)}}));
    EXPECT_EQ(made->userInfo()->count(), 2u);
    EXPECT_EQ(identifierIn(made->userInfo()), identifier);
    addUserInfo(made.get(), dictionary({{"key1"_ns, box(2)}, {"key2"_ns, NSNull::null()}}));
    EXPECT_EQ(test::listing(made->userInfo()),
              "com.zarvo.notification.userNotificationID=" + identifier + " key1=2 key2=<null>");
    addUserInfo(made.get(), nullptr);
    addUserInfo(made.get(), dictionary({}));
    EXPECT_EQ(made->userInfo()->count(), 3u);
    addUserInfo(made.get(), dictionary({{ZRCustomUserNotificationID(), "other"_ns}}));
    EXPECT_EQ(identifierIn(made->userInfo()), "other") << "even the identifier gives way";
    EXPECT_EQ(shown(notificationID(made.get())), identifier);
}

TYPED_TEST(Notification, losesWhatIsAddedWhenItHasNoUserInfo) {
    const auto made = make<TypeParam>();
    made->setUserInfo(nullptr);
    addUserInfo(made.get(), dictionary({{"key1"_ns, box(1)}}));
    EXPECT_FALSE(made->userInfo());
    addUserInfo(made.get(), nullptr);
    EXPECT_FALSE(made->userInfo());
}

TYPED_TEST(Notification, leavesTheAddedDictionaryAlone) {
    const auto made = notification<TypeParam>();
    const auto added = dictionary({{"key1"_ns, box(1)}});
    const auto before = made->userInfo();
    addUserInfo(made.get(), added);
    EXPECT_EQ(added->count(), 1u);
    EXPECT_EQ(before->count(), 1u);
}

TYPED_TEST(Notification, givesZeroForANullReceiver) {
    TypeParam* const none = nullptr;
    setupActionButtonTitle(none, "Go"_ns);
    setupActionButtonTitle_clickAction(none, "Go"_ns, [] {});
    addUserInfo(none, dictionary({{"key1"_ns, box(1)}}));
    EXPECT_EQ(registeredCategory(), "");
    EXPECT_FALSE(privateUserNotificationActions(none));
    EXPECT_FALSE(actionButtonClickAction(none));
    EXPECT_FALSE(notificationID(none));
    EXPECT_FALSE(actionable(none));
}

TYPED_TEST(Notification, letsGoOfItsCallbackWhenItEnds) {
    const auto token = std::make_shared<int>(0);
    auto made = notification<TypeParam>();
    setupActionButtonTitle_clickAction(made.get(), "Go"_ns, [token] {});
    EXPECT_EQ(token.use_count(), 2);
    made = nullptr;
    EXPECT_EQ(token.use_count(), 1);
}

TYPED_TEST(Notification, answersMessages) {
    const id made = send<id>(TypeParam::classObject(), "notificationWithTitle:informativeText:"_sel, "t"_ns, "i"_ns);
    const Ref<TypeParam> typed(cast<TypeParam>(made.get()));
    ASSERT_TRUE(typed);
    EXPECT_EQ(shown(typed->title()), "t");
    EXPECT_EQ(identifierIn(typed->userInfo()), shown(send<Ref<NSString>>(made, "notificationID"_sel)));
    EXPECT_TRUE(send<id>(TypeParam::classObject(), "notification"_sel)->isKindOfClass(TypeParam::classObject()));
    EXPECT_TRUE(send<id>(TypeParam::classObject(), "notificationWithInformativeText:"_sel, "i"_ns));
    int clicks = 0;
    const UserNotificationAction click = [&] { ++clicks; };
    send<>(made, "setupActionButtonTitle:clickAction:"_sel, "Go"_ns, click);
    send<UserNotificationAction>(made, "actionButtonClickAction"_sel)();
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(send<bool>(made, "actionable"_sel));
    send<>(made, "setupActionButtonTitle:"_sel, "Again"_ns);
    send<>(made, "addUserInfo:"_sel, dictionary({{"key1"_ns, box(1)}}));
    send<>(made, "addUserInfo:"_sel, "no dictionary"_ns);
    EXPECT_EQ(typed->userInfo()->count(), 2u);
    EXPECT_EQ(send<id>(made, "privateUserNotificationActions"_sel), privateUserNotificationActions(typed.get()));
}

TEST(OlderNotification, isPrepared) {
    const auto before = NSDate::date();
    const auto made = notification<NSUserNotification>();
    const auto after = NSDate::date();
    EXPECT_EQ(shown(made->soundName()), shown(NSUserNotificationDefaultSoundName()));
    EXPECT_GE(made->deliveryDate()->timeIntervalSinceDate(before), 0.2 - 1e-6);
    EXPECT_LE(made->deliveryDate()->timeIntervalSinceDate(after), 0.2 + 1e-6);
    EXPECT_FALSE(made->title());
    EXPECT_FALSE(made->informativeText());
    EXPECT_TRUE(made->hasActionButton());
}

TEST(OlderNotification, takesItsTextsAsTheyAre) {
    const auto made = notificationWithTitle_informativeText<NSUserNotification>("Filled %@"_ns, ""_ns);
    EXPECT_EQ(shown(made->title()), "Filled %@");
    EXPECT_EQ(shown(made->informativeText()), "");
    const auto untitled = notificationWithInformativeText<NSUserNotification>("text"_ns);
    EXPECT_FALSE(untitled->title());
    EXPECT_EQ(shown(untitled->informativeText()), "text");
    const auto empty = notificationWithTitle_informativeText<NSUserNotification>(nullptr, nullptr);
    EXPECT_FALSE(empty->title());
    EXPECT_FALSE(empty->informativeText());
    EXPECT_EQ(empty->userInfo()->count(), 1u);
}

TEST(OlderNotification, setsEvenANullTitle) {
    const auto made = notification<NSUserNotification>();
    made->setTitle("there"_ns);
    made->setInformativeText("there"_ns);
    detail::setTexts(made.get(), nullptr, nullptr);
    EXPECT_FALSE(made->title());
    EXPECT_FALSE(made->informativeText());
}

TEST(OlderNotification, hasAButtonWithAValidTitleOnly) {
    for (const Ref<NSString>& none : {Ref<NSString>(), ""_ns, "  \t"_ns}) {
        SCOPED_TRACE(shown(none));
        const auto made = notification<NSUserNotification>();
        made->setActionButtonTitle("before"_ns);
        setupActionButtonTitle_clickAction(made.get(), none, [] {});
        EXPECT_FALSE(made->hasActionButton());
        EXPECT_EQ(shown(made->actionButtonTitle()), "before");
        EXPECT_FALSE(actionable(made.get()));
    }
    const auto made = notification<NSUserNotification>();
    setupActionButtonTitle(made.get(), "Go"_ns);
    EXPECT_TRUE(made->hasActionButton());
    EXPECT_EQ(shown(made->actionButtonTitle()), "Go");
    setupActionButtonTitle(made.get(), "\n"_ns);
    EXPECT_TRUE(made->hasActionButton()) << "a line feed is valid text";
    send<>(made, "setupActionButtonTitle:"_sel, NSNull::null());
    EXPECT_FALSE(made->hasActionButton()) << "the null object is no title";
}

TEST(OlderNotification, isNotTurnedOnAgainByATitle) {
    const auto made = notification<NSUserNotification>();
    setupActionButtonTitle(made.get(), nullptr);
    setupActionButtonTitle(made.get(), "Go"_ns);
    EXPECT_FALSE(made->hasActionButton());
    EXPECT_EQ(shown(made->actionButtonTitle()), "Go");
}

TEST(OlderNotification, isActionableByADeliverCallbackAlone) {
    const auto made = notification<NSUserNotification>();
    int calls = 0;
    setupDidDelieverAction(made, nullptr);
    EXPECT_FALSE(actionable(made.get()));
    setupDidDelieverAction(made, [&] { ++calls; });
    EXPECT_TRUE(actionable(made.get()));
    setupDidDelieverAction(made, nullptr);
    delieverAction(made)();
    EXPECT_EQ(calls, 1) << "none leaves the one before";
    EXPECT_FALSE(actionButtonClickAction(made.get()));
    send<>(made, "setupDidDelieverAction:"_sel, UserNotificationAction([&] { calls += 10; }));
    send<UserNotificationAction>(made, "delieverAction"_sel)();
    EXPECT_EQ(calls, 11);
    setupDidDelieverAction(nullptr, [] {});
    EXPECT_FALSE(delieverAction(nullptr));
}

TEST(OlderNotification, registersNoCategory) {
    UNUserNotificationCenter::currentNotificationCenter()->setNotificationCategories(nullptr);
    setupActionButtonTitle(notification<NSUserNotification>().get(), "Go"_ns);
    EXPECT_EQ(registeredCategory(), "");
}

TEST(OlderNotification, isMadeOfTheReceivingClass) {
    const Ref<FillNotification> made = notification<FillNotification>();
    EXPECT_TRUE(made->isMemberOfClass(FillNotification::classObject()));
    EXPECT_TRUE(notificationWithInformativeText<FillNotification>("x"_ns)->soundName());
    const id sent = send<id>(FillNotification::classObject(), "notificationWithInformativeText:"_sel, "x"_ns);
    EXPECT_TRUE(sent->isMemberOfClass(FillNotification::classObject()));
    EXPECT_FALSE(notification<NoNotification>());
    EXPECT_FALSE(notificationWithInformativeText<NoNotification>("x"_ns));
    EXPECT_FALSE(send<id>(NoNotification::classObject(), "notificationWithInformativeText:"_sel, "x"_ns));
}

class Content : public testing::Test {
  protected:
    void SetUp() override { UNUserNotificationCenter::currentNotificationCenter()->setNotificationCategories(nullptr); }
    void TearDown() override { SetUp(); }
};

TEST_F(Content, isPrepared) {
    const auto made = notification<UNMutableNotificationContent>();
    EXPECT_EQ(shown(made->categoryIdentifier()), "REPLAY_BUTTON_IDENTIFIER");
    EXPECT_EQ(made->sound(), UNNotificationSound::defaultSound());
    EXPECT_FALSE(made->title());
    EXPECT_FALSE(made->body());
    EXPECT_EQ(registeredCategory(), "") << "a category comes with a button";
}

TEST_F(Content, takesTheTextsThatAreThere) {
    const auto made = notificationWithTitle_informativeText<UNMutableNotificationContent>("Up 5%"_ns, ""_ns);
    EXPECT_EQ(shown(made->title()), "Up 5%");
    EXPECT_EQ(shown(made->body()), "");
    const auto untitled = notificationWithInformativeText<UNMutableNotificationContent>("text"_ns);
    EXPECT_FALSE(untitled->title());
    EXPECT_EQ(shown(untitled->body()), "text");
    made->setTitle("there"_ns);
    detail::setTexts(made.get(), nullptr, nullptr);
    EXPECT_EQ(shown(made->title()), "there") << "null leaves what there is, unlike in the older interface";
    EXPECT_EQ(shown(made->body()), "");
}

TEST_F(Content, registersOneCategoryForAll) {
    const auto first = notification<UNMutableNotificationContent>();
    const auto second = notification<UNMutableNotificationContent>();
    setupActionButtonTitle(first.get(), "First"_ns);
    EXPECT_EQ(registeredCategory(), "REPLAY_BUTTON_IDENTIFIER: First (com.zarvo.notification.replayButton)");
    setupActionButtonTitle(second.get(), "Second"_ns);
    EXPECT_EQ(registeredCategory(), "REPLAY_BUTTON_IDENTIFIER: Second (com.zarvo.notification.replayButton)")
        << "the last title is the one of all";
    setupActionButtonTitle(first.get(), nullptr);
    EXPECT_EQ(registeredCategory(), "REPLAY_BUTTON_IDENTIFIER: Second (com.zarvo.notification.replayButton)");
}

TEST_F(Content, replacesTheApplicationsOwnCategories) {
    const auto own = UNNotificationCategory::categoryWithIdentifier_actions_intentIdentifiers_options(
        "own"_ns, nullptr, nullptr, UNNotificationCategoryOptionNone);
    UNUserNotificationCenter::currentNotificationCenter()->setNotificationCategories(NSSet::setWithObject(own));
    setupActionButtonTitle(notification<UNMutableNotificationContent>().get(), "Go"_ns);
    EXPECT_EQ(registeredCategory(), "REPLAY_BUTTON_IDENTIFIER: Go (com.zarvo.notification.replayButton)");
}

TEST_F(Content, hasTheEmptyCategoryWithoutAValidTitle) {
    for (const Ref<NSString>& none : {Ref<NSString>(), ""_ns, "  \t"_ns}) {
        SCOPED_TRACE(shown(none));
        const auto made = notification<UNMutableNotificationContent>();
        setupActionButtonTitle_clickAction(made.get(), none, [] {});
        EXPECT_EQ(shown(made->categoryIdentifier()), "com.zarvo.notification.emptyIdentifier");
        EXPECT_FALSE(actionable(made.get()));
        EXPECT_EQ(registeredCategory(), "");
    }
}

TEST_F(Content, doesNotGetItsCategoryBackFromATitle) {
    const auto made = notification<UNMutableNotificationContent>();
    setupActionButtonTitle(made.get(), nullptr);
    setupActionButtonTitle(made.get(), "Go"_ns);
    EXPECT_EQ(shown(made->categoryIdentifier()), "com.zarvo.notification.emptyIdentifier");
    const auto bare = make<UNMutableNotificationContent>();
    setupActionButtonTitle(bare.get(), "Go"_ns);
    EXPECT_EQ(shown(bare->categoryIdentifier()), "") << "only the category is registered";
}

TEST_F(Content, keepsWhatIsAddedToItsEmptyUserInfo) {
    const auto bare = make<UNMutableNotificationContent>();
    addUserInfo(bare.get(), dictionary({{"key1"_ns, box(1)}}));
    EXPECT_EQ(test::listing(bare->userInfo()), "key1=1");
}

TEST_F(Content, offersNoDeliverCallback) {
    const auto made = notification<UNMutableNotificationContent>();
    EXPECT_FALSE(made->respondsToSelector("setupDidDelieverAction:"_sel));
    EXPECT_FALSE(made->respondsToSelector("delieverAction"_sel));
    privateUserNotificationActions(made.get())->setDelieverAction([] {});
    EXPECT_FALSE(actionable(made.get())) << "only a click counts";
}

TEST_F(Content, isMadeOfTheReceivingClass) {
    const Ref<FillContent> made = notification<FillContent>();
    EXPECT_TRUE(made->isMemberOfClass(FillContent::classObject()));
    const id sent = send<id>(FillContent::classObject(), "notificationWithTitle:informativeText:"_sel, "t"_ns, "x"_ns);
    EXPECT_TRUE(sent->isMemberOfClass(FillContent::classObject()));
    EXPECT_FALSE(notification<NoContent>());
    EXPECT_FALSE((notificationWithTitle_informativeText<NoContent>("t"_ns, "x"_ns)));
    EXPECT_FALSE(send<id>(NoContent::classObject(), "notificationWithTitle:informativeText:"_sel, "t"_ns, "x"_ns));
}

TEST(NotificationNames, areSpelledAsTheyAre) {
    EXPECT_EQ(shown(ZRCustomUserNotificationID()), "com.zarvo.notification.userNotificationID");
    EXPECT_EQ(shown(ZRCustomUserNotificationReplayButtonID()), "com.zarvo.notification.replayButton");
    const auto made = notification<NSUserNotification>();
    EXPECT_TRUE(made->respondsToSelector("setupDidDelieverAction:"_sel));
    EXPECT_TRUE(made->respondsToSelector("delieverAction"_sel));
    EXPECT_FALSE(made->respondsToSelector("setupDidDeliverAction:"_sel));
    EXPECT_TRUE(privateUserNotificationActions(made.get())->respondsToSelector("setDelieverAction:"_sel));
}

TEST(NotificationCompanion, makesItsIdentifierWhenItIsAskedForOne) {
    const auto companion = _ZRPrivateUserNotificationActions::notification();
    const auto identifier = companion->notificationID();
    EXPECT_EQ(identifier->length(), 36u);
    EXPECT_EQ(identifier->utf8(), identifier->uppercaseString()->utf8());
    EXPECT_EQ(companion->notificationID(), identifier);
    companion->setNotificationID("x"_ns);
    EXPECT_EQ(shown(companion->notificationID()), "x");
    companion->setNotificationID(nullptr);
    EXPECT_EQ(companion->notificationID()->length(), 36u);
    EXPECT_NE(shown(companion->notificationID()), shown(identifier)) << "a new one";
    send<>(companion, "setNotificationID:"_sel, box(5));
    EXPECT_EQ(companion->notificationID()->length(), 36u) << "a number is no identifier";
    const id sent = send<id>(_ZRPrivateUserNotificationActions::classObject(), "notification"_sel);
    EXPECT_TRUE(cast<_ZRPrivateUserNotificationActions>(sent.get()));
}

} // namespace
