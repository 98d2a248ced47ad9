#include "private_bus.h"

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/notification_service_p.h>
#include <zrbasic/platform/runtime/exception.h>

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QElapsedTimer>
#include <QTest>

#include <functional>
#include <memory>
#include <string>

namespace zr {
namespace {

/// A notification server that writes down what it is asked for; a test is its user.
class FakeNotificationServer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
  public:
    FakeNotificationServer(const QString& address, QString connectionName)
        : m_connectionName(std::move(connectionName)), m_bus(QDBusConnection::connectToBus(address, m_connectionName)) {
        EXPECT_TRUE(m_bus.registerObject("/org/freedesktop/Notifications", this,
                                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
    }
    ~FakeNotificationServer() override { QDBusConnection::disconnectFromBus(m_connectionName); }

    void appear() { EXPECT_TRUE(m_bus.registerService("org.freedesktop.Notifications")); }
    void click(uint id, const QString& action) { Q_EMIT ActionInvoked(id, action); }
    void close(uint id) { Q_EMIT NotificationClosed(id, 2); }
    [[nodiscard]] const test::ShownNotification& last() const { return shown.back(); }

    QStringList capabilities{"actions", "body"};
    int askedForCapabilities = 0;
    std::vector<test::ShownNotification> shown;
    std::vector<uint> closed;
    bool refuses = false;
    bool keepsSilent = false;

  public Q_SLOTS:
    QStringList GetCapabilities() {
        ++askedForCapabilities;
        return capabilities;
    }
    uint Notify(const QString& application, uint replaces, const QString&, const QString& summary, const QString& body,
                const QStringList& actions, const QVariantMap& hints, int timeout) {
        if (refuses) {
            sendErrorReply(QDBusError::Failed, "refused");
            return 0;
        }
        if (keepsSilent) {
            setDelayedReply(true);
        }
        const uint id = replaces != 0 ? replaces : ++m_lastId;
        shown.push_back({id, application, replaces, summary, body, actions, hints, timeout});
        return id;
    }
    void CloseNotification(uint id) {
        closed.push_back(id);
        Q_EMIT NotificationClosed(id, 3);
    }

  Q_SIGNALS:
    void ActionInvoked(uint id, const QString& action);
    void NotificationClosed(uint id, uint reason);

  private:
    QString m_connectionName;
    QDBusConnection m_bus;
    uint m_lastId = 6;
};

class LoggingReceiver : public NotificationReceiver {
  public:
    void notificationWasClicked(NSString* key) override { note("clicked " + key->utf8()); }
    void notificationButtonWasClicked(NSString* key, NSString* button) override {
        note("button " + key->utf8() + ' ' + button->utf8());
    }
    void notificationWasClosed(NSString* key) override { note("closed " + key->utf8()); }

    std::string log;
    std::function<void()> andThen;

  private:
    void note(const std::string& what) {
        log += what + '|';
        if (andThen) {
            std::exchange(andThen, nullptr)();
        }
    }
};

class DesktopNotificationService : public testing::Test {
  protected:
    void SetUp() override {
        bus.start();
        ASSERT_FALSE(HasFatalFailure());
        useBus(bus.address());
        server = std::make_unique<FakeNotificationServer>(bus.address(), "fake-server");
        server->appear();
    }
    void TearDown() override {
        service = nullptr;
        server = nullptr;
        restore("DBUS_SESSION_BUS_ADDRESS", m_addressBefore);
        restore("XDG_RUNTIME_DIR", m_runtimeBefore);
    }

    static void restore(const char* name, const QByteArray& value) {
        if (value.isNull()) {
            qunsetenv(name);
        } else {
            qputenv(name, value);
        }
    }
    static void useBus(const QString& address) { qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8()); }

    bool post(const std::string& key, std::function<void(NotificationPosting&)> change = {}) {
        NotificationPosting posting;
        posting.key = NSString::fromUtf8(key);
        posting.title = "Title"_ns;
        posting.body = "Body"_ns;
        if (change) {
            change(posting);
        }
        return service->post(posting, receiver);
    }
    /// Posts, and waits until the server has shown that and said so.
    void show(const std::string& key, std::function<void(NotificationPosting&)> change = {}) {
        const std::size_t before = server->shown.size();
        ASSERT_TRUE(post(key, std::move(change)));
        ASSERT_TRUE(becomes([&] { return server->shown.size() == before + 1; }));
        settle();
    }
    static bool becomes(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 5000); }
    /// Time for what must not happen; what must is waited for.
    static void settle() { QTest::qWait(30); }

    test::PrivateBus bus;
    std::unique_ptr<FakeNotificationServer> server;
    std::unique_ptr<NotificationService> service = qt::makeNotificationService();
    LoggingReceiver receiver;

  private:
    QByteArray m_addressBefore = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    QByteArray m_runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
};

TEST_F(DesktopNotificationService, showsTitleTextAndButtons) {
    show("a", [](NotificationPosting& posting) {
        posting.buttons = {{"again"_ns, "Again"_ns}, {"later"_ns, "Later"_ns}};
    });
    const test::ShownNotification& shown = server->last();
    EXPECT_EQ(shown.summary, "Title");
    EXPECT_EQ(shown.body, "Body");
    EXPECT_EQ(shown.replaces, 0U);
    EXPECT_EQ(shown.timeout, -1);
    ASSERT_EQ(shown.actions.size(), 6);
    EXPECT_EQ(shown.actions[0], "default");
    EXPECT_EQ(shown.actions[3], "Again");
    EXPECT_EQ(shown.actions[5], "Later");
    EXPECT_EQ(receiver.log, "");
}

TEST_F(DesktopNotificationService, joinsSubtitleAndBody) {
    struct Row {
        const char* name;
        Ref<NSString> subtitle;
        Ref<NSString> body;
        const char* shown;
    };
    const Row rows[] = {{"both", "sub"_ns, "text"_ns, "sub\ntext"},   {"no body", "sub"_ns, nullptr, "sub"},
                        {"empty body", "sub"_ns, ""_ns, "sub"},       {"no subtitle", nullptr, "text"_ns, "text"},
                        {"empty subtitle", ""_ns, "text"_ns, "text"}, {"neither", nullptr, nullptr, ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        show(row.name, [&row](NotificationPosting& posting) {
            posting.subtitle = row.subtitle;
            posting.body = row.body;
        });
        EXPECT_EQ(server->last().body, row.shown);
    }
    show("no title", [](NotificationPosting& posting) { posting.title = nullptr; });
    EXPECT_EQ(server->last().summary, "");
}

TEST_F(DesktopNotificationService, escapesTheBodyForServersThatReadMarkup) {
    const auto angled = [](NotificationPosting& posting) { posting.title = posting.body = "<b>1 & 2</b>"_ns; };
    show("plain", angled);
    EXPECT_EQ(server->last().body, "<b>1 & 2</b>");
    server = nullptr;
    server = std::make_unique<FakeNotificationServer>(bus.address(), "fake-server");
    server->capabilities = QStringList{"body-markup"};
    server->appear();
    settle();
    show("marked", angled);
    EXPECT_EQ(server->last().body, "&lt;b&gt;1 &amp; 2&lt;/b&gt;");
    EXPECT_EQ(server->last().summary, "<b>1 & 2</b>");
}

TEST_F(DesktopNotificationService, sendsNoActionsToServersWithoutThem) {
    server->capabilities = QStringList{"body"};
    show("a", [](NotificationPosting& posting) { posting.buttons = {{"again"_ns, "Again"_ns}}; });
    EXPECT_TRUE(server->last().actions.isEmpty());
    server->close(server->last().id);
    EXPECT_TRUE(becomes([this] { return receiver.log == "closed a|"; }));
}

TEST_F(DesktopNotificationService, asksForCapabilitiesOnce) {
    ASSERT_TRUE(post("a"));
    ASSERT_TRUE(post("b"));
    ASSERT_TRUE(becomes([this] { return server->shown.size() == 2; }));
    show("c");
    EXPECT_EQ(server->askedForCapabilities, 1);
}

TEST_F(DesktopNotificationService, saysWhetherThereIsASound) {
    show("silent");
    EXPECT_TRUE(server->last().hints.value("suppress-sound").toBool());
    EXPECT_FALSE(server->last().hints.contains("sound-name"));
    show("loud", [](NotificationPosting& posting) { posting.hasSound = true; });
    EXPECT_FALSE(server->last().hints.contains("suppress-sound"));
    EXPECT_FALSE(server->last().hints.value("sound-name").toString().isEmpty());
}

TEST_F(DesktopNotificationService, takesAnyText) {
    show("hostile", [](NotificationPosting& posting) {
        posting.title = NSString::fromUtf16(std::u16string(u"a\0b", 3));
        posting.body = NSString::fromUtf16(std::u16string{u'x', char16_t{0xd800}, u'y'});
        posting.buttons = {{""_ns, "Empty"_ns}};
    });
    EXPECT_EQ(server->last().summary, "ab");
    EXPECT_TRUE(server->last().body.startsWith('x'));
    EXPECT_TRUE(server->last().body.endsWith('y'));
    server->click(server->last().id, server->last().actions[2]);
    EXPECT_TRUE(becomes([this] { return receiver.log == "button hostile |"; }));
    show("huge",
         [](NotificationPosting& posting) { posting.body = NSString::fromUtf16(std::u16string(100'000, u'x')); });
    EXPECT_EQ(server->last().body.size(), 100'000);
}

TEST_F(DesktopNotificationService, tellsOfClicksAndButtons) {
    show("a", [](NotificationPosting& posting) {
        posting.buttons = {{"again"_ns, "Again"_ns}, {"default"_ns, "Default"_ns}};
    });
    const test::ShownNotification shown = server->last();
    server->click(shown.id, shown.actions[0]);
    server->click(shown.id, shown.actions[2]);
    server->click(shown.id, shown.actions[4]);
    server->click(shown.id, "inline-reply");
    server->close(shown.id);
    server->click(shown.id, shown.actions[0]);
    EXPECT_TRUE(becomes([this] { return receiver.log.find("closed") != std::string::npos; }));
    settle();
    EXPECT_EQ(receiver.log, "clicked a|button a again|button a default|closed a|");
}

TEST_F(DesktopNotificationService, ignoresTheNotificationsOfOthers) {
    show("a");
    const uint id = server->last().id;
    server->click(id + 100, "default");
    server->close(id + 100);
    server->click(0, "default");
    server->close(0);
    // Somebody who is not the server speaks of ours.
    FakeNotificationServer other(bus.address(), "fake-other");
    other.click(id, "default");
    other.close(id);
    settle();
    EXPECT_EQ(receiver.log, "");
    server->click(id, "default");
    EXPECT_TRUE(becomes([this] { return receiver.log == "clicked a|"; }));
}

TEST_F(DesktopNotificationService, replacesWhatIsShownUnderTheSameKey) {
    show("a");
    const uint id = server->last().id;
    show("b");
    EXPECT_EQ(server->last().replaces, 0U);
    show("a");
    EXPECT_EQ(server->last().replaces, id);
    server->close(id);
    ASSERT_TRUE(becomes([this] { return receiver.log == "closed a|"; }));
    show("a");
    EXPECT_EQ(server->last().replaces, 0U);
}

TEST_F(DesktopNotificationService, replacesWhatIsStillOnItsWay) {
    for (const char* const title : {"first", "second", "third"}) {
        ASSERT_TRUE(post("a", [title](NotificationPosting& posting) { posting.title = NSString::fromUtf8(title); }));
    }
    ASSERT_TRUE(becomes([this] { return server->shown.size() == 2; }));
    settle();
    ASSERT_EQ(server->shown.size(), 2U);
    EXPECT_EQ(server->shown[0].summary, "first");
    EXPECT_EQ(server->shown[1].summary, "third");
    EXPECT_EQ(server->shown[1].replaces, server->shown[0].id);
    EXPECT_EQ(receiver.log, "");
}

TEST_F(DesktopNotificationService, takesNotificationsAway) {
    show("a");
    const uint id = server->last().id;
    service->withdraw("unknown"_ns);
    service->withdraw(nullptr);
    service->withdraw("a"_ns);
    service->withdraw("a"_ns);
    ASSERT_TRUE(becomes([this] { return !server->closed.empty(); }));
    settle();
    EXPECT_EQ(server->closed, std::vector<uint>{id});
    // Whoever took it away knows.
    EXPECT_EQ(receiver.log, "");
    show("a");
    EXPECT_EQ(server->last().replaces, 0U);
}

TEST_F(DesktopNotificationService, takesAwayWhatIsStillOnItsWay) {
    ASSERT_TRUE(post("a"));
    service->withdraw("a"_ns);
    ASSERT_TRUE(becomes([this] { return !server->closed.empty(); }));
    EXPECT_EQ(server->closed, std::vector<uint>{server->last().id});
    server->closed.clear();
    ASSERT_TRUE(post("b"));
    service->withdraw("b"_ns);
    ASSERT_TRUE(post("b", [](NotificationPosting& posting) { posting.title = "again"_ns; }));
    ASSERT_TRUE(becomes([this] { return server->last().summary == "again"; }));
    settle();
    EXPECT_TRUE(server->closed.empty());
    EXPECT_EQ(receiver.log, "");
}

TEST_F(DesktopNotificationService, cannotShowAnythingWithoutAServer) {
    server = nullptr;
    EXPECT_FALSE(post("a"));
    service->withdraw("a"_ns);
    server = std::make_unique<FakeNotificationServer>(bus.address(), "fake-server");
    EXPECT_FALSE(post("a"));
    server->appear();
    show("a");
    EXPECT_EQ(server->last().summary, "Title");
}

TEST_F(DesktopNotificationService, tellsOfTheEndOfTheServerAndGoesOnWithTheNext) {
    show("a");
    show("b");
    service->withdraw("b"_ns);
    server = nullptr;
    EXPECT_TRUE(becomes([this] { return receiver.log == "closed a|"; }));
    server = std::make_unique<FakeNotificationServer>(bus.address(), "fake-server");
    server->appear();
    show("a");
    EXPECT_EQ(server->last().replaces, 0U);
    EXPECT_EQ(server->askedForCapabilities, 1);
    EXPECT_EQ(receiver.log, "closed a|");
}

TEST_F(DesktopNotificationService, waitsForAServerThatTheBusStarts) {
    server = nullptr;
    test::PrivateBus starting;
    // The command does nothing; the test takes the server's name itself while the bus waits for it.
    starting.start("/bin/sleep 10");
    useBus(starting.address());
    server = std::make_unique<FakeNotificationServer>(starting.address(), "fake-server");
    service = qt::makeNotificationService();
    EXPECT_TRUE(post("a"));
    settle();
    EXPECT_TRUE(server->shown.empty());
    server->appear();
    EXPECT_TRUE(becomes([this] { return server->shown.size() == 1; }));
    settle();
    EXPECT_EQ(receiver.log, "");
    server->click(server->last().id, "default");
    EXPECT_TRUE(becomes([this] { return receiver.log == "clicked a|"; }));
}

TEST_F(DesktopNotificationService, cannotShowAnythingWithoutABus) {
    QElapsedTimer timer;
    timer.start();
    const QTemporaryDir empty;
    for (const QString& address : {QString("unix:path=/nowhere/bus"), QString("nonsense"), QString()}) {
        SCOPED_TRACE(address.toStdString());
        useBus(address);
        qputenv("XDG_RUNTIME_DIR", empty.path().toUtf8());
        service = qt::makeNotificationService();
        EXPECT_FALSE(post("a"));
        service->withdraw("a"_ns);
    }
    EXPECT_LT(timer.elapsed(), 10'000);
    useBus(bus.address());
    show("a");
    EXPECT_EQ(server->last().summary, "Title");
}

TEST_F(DesktopNotificationService, goesOnWithAnotherBus) {
    show("a");
    bus.stop();
    EXPECT_TRUE(becomes([this] { return !post("b"); }));
    test::PrivateBus next;
    next.start();
    useBus(next.address());
    server = std::make_unique<FakeNotificationServer>(next.address(), "fake-next");
    server->appear();
    show("c");
    EXPECT_EQ(server->last().replaces, 0U);
    EXPECT_EQ(receiver.log.substr(0, 9), "closed a|");
}

TEST_F(DesktopNotificationService, doesNotWaitForTheServer) {
    server->keepsSilent = true;
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(post("a"));
    EXPECT_TRUE(post("a"));
    service->withdraw("a"_ns);
    EXPECT_LT(timer.elapsed(), 10'000);
    EXPECT_TRUE(becomes([this] { return !server->shown.empty(); }));
    server->keepsSilent = false;
    show("b");
    EXPECT_EQ(receiver.log, "");
}

TEST_F(DesktopNotificationService, triesAgainAfterARefusal) {
    server->refuses = true;
    EXPECT_TRUE(post("a"));
    EXPECT_TRUE(becomes([this] { return server->askedForCapabilities == 1; }));
    settle();
    server->refuses = false;
    show("a");
    EXPECT_EQ(server->last().replaces, 0U);
    EXPECT_EQ(receiver.log, "");
}

TEST_F(DesktopNotificationService, mayBeUsedByThoseItTells) {
    show("a");
    receiver.andThen = [this] { EXPECT_TRUE(post("a")); };
    server->close(server->last().id);
    EXPECT_TRUE(becomes([this] { return server->shown.size() == 2; }));
    EXPECT_EQ(server->last().replaces, 0U);
    receiver.andThen = [] { NSException::raise(NSGenericException, "heard enough"); };
    settle();
    server->click(server->last().id, "default");
    bool hasRaised = false;
    try {
        QElapsedTimer timer;
        timer.start();
        qt::handleEventsUntil([&timer] { return timer.elapsed() > 5000; });
    } catch (const NSException&) {
        hasRaised = true;
    }
    EXPECT_TRUE(hasRaised);
    EXPECT_EQ(receiver.log, "closed a|clicked a|");
}

} // namespace
} // namespace zr

#include "notification_service_test.moc"
