#include <zrbasic/platform/appkit/delegate_telling_p.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <tests/foundation/checks.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace zr {
namespace {

/// Writes down what it is told.
class ToldDelegate : public NSObject {
    ZR_OBJECT(ToldDelegate, NSObject)
  public:
    void happened(NSNotification* notification) {
        log += "told ";
        last = Ref<NSNotification>(notification);
        if (whenTold) {
            whenTold();
        }
    }
    ZR_METHOD(happened, "happened:")

    std::string log;
    Ref<NSNotification> last;
    std::function<void()> whenTold;
};

class DelegateTelling : public testing::Test {
  protected:
    DelegateTelling() {
        m_listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
            "Happened"_ns, nullptr, [this](NSNotification* notification) {
                delegate->log += "posted ";
                posted = Ref<NSNotification>(notification);
            });
    }
    ~DelegateTelling() override { NSNotificationCenter::defaultCenter()->removeObserver(m_listening); }

    Ref<NSObject> sender = make<NSObject>();
    const Ref<ToldDelegate> delegate = make<ToldDelegate>();
    Ref<NSNotification> posted;

  private:
    id m_listening;
};

TEST_F(DelegateTelling, tellsTheDelegateBeforeAllOthers) {
    const auto userInfo = NSDictionary::dictionaryWithObject_forKey("value"_ns, "key"_ns);
    tellDelegateAndPost(sender, delegate, "happened:"_sel, "Happened"_ns, userInfo);
    EXPECT_EQ(delegate->log, "told posted ");
    ASSERT_NE(posted, nullptr);
    EXPECT_EQ(posted->name()->utf8(), "Happened");
    EXPECT_EQ(posted->object(), sender);
    EXPECT_TRUE(posted->userInfo()->isEqual(userInfo));
    EXPECT_EQ(delegate->last, posted);
}

TEST_F(DelegateTelling, passesOverADelegateThatWantsToKnowNothing) {
    for (const id& other : {id(), id(make<NSObject>()), id(NSNull::null())}) {
        tellDelegateAndPost(sender, other, "happened:"_sel, "Happened"_ns);
        EXPECT_EQ(delegate->log, "posted ");
        EXPECT_EQ(posted->userInfo(), nullptr);
        delegate->log.clear();
    }
    tellDelegateAndPost(sender, delegate, "somethingElse:"_sel, "Happened"_ns);
    EXPECT_EQ(delegate->log, "posted ");
}

TEST_F(DelegateTelling, keepsASenderThatTheDelegateLetsGoOf) {
    const Weak<NSObject> watched(sender);
    delegate->whenTold = [&] {
        sender = nullptr;
        delegate->last = nullptr;
        EXPECT_FALSE(watched.expired());
    };
    tellDelegateAndPost(sender, delegate, "happened:"_sel, "Happened"_ns);
    EXPECT_EQ(delegate->log, "told posted ");
    EXPECT_FALSE(watched.expired()) << "the notification has it";
    posted = nullptr;
    EXPECT_TRUE(watched.expired());
}

TEST_F(DelegateTelling, keepsADelegateThatIsReplacedMeanwhile) {
    id owned = make<ToldDelegate>();
    const Weak<NSObject> watched(owned);
    cast<ToldDelegate>(owned)->whenTold = [&] {
        owned = nullptr;
        EXPECT_FALSE(watched.expired());
    };
    tellDelegateAndPost(sender, owned, "happened:"_sel, "Happened"_ns);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(delegate->log, "posted ");
}

TEST_F(DelegateTelling, tellsNobodyElseWhenTheDelegateRaises) {
    delegate->whenTold = [] { NSException::raise(NSGenericException, "too much"); };
    EXPECT_EQ(test::raisedName([&] { tellDelegateAndPost(sender, delegate, "happened:"_sel, "Happened"_ns); }),
              NSGenericException);
    EXPECT_EQ(delegate->log, "told ");
    EXPECT_EQ(posted, nullptr);
}

} // namespace
} // namespace zr
