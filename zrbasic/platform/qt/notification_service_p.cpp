#include <zrbasic/platform/qt/notification_service_p.h>

#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace zr::qt {
namespace {

constexpr QLatin1String serverName("org.freedesktop.Notifications");
constexpr QLatin1String serverPath("/org/freedesktop/Notifications");
constexpr QLatin1String busName("org.freedesktop.DBus");
constexpr QLatin1String busPath("/org/freedesktop/DBus");

constexpr QLatin1String clickAction("default");
// Keeps a button that calls itself "default" apart from the notification itself.
constexpr QLatin1String buttonPrefix("button:");

// The bus itself answers within a millisecond or it is broken, and a user should not wait for that.
constexpr int mostMilliseconds = 500;

/// The session bus's address, or none. Asked of the environment each time, so that a bus that comes later is found, and
/// one that does not exist is not started for a notification.
QString busAddress() {
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        return address;
    }
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + QLatin1String("/bus");
    return !folder.isEmpty() && QFile::exists(socket) ? QLatin1String("unix:path=") + socket : QString();
}

/// Text for a message, which cannot hold a zero.
QString messageText(NSString* text) {
    return toQt(text).remove(QChar(u'\0'));
}

/// What the server can do.
struct Capabilities {
    bool hasActions = false;
    bool readsMarkup = false;
};

/// What is on its way to the user, or is shown.
struct Shown {
    NotificationReceiver* receiver = nullptr;
    /// The server's number for it; 0 until it has answered.
    uint serverId = 0;
    bool isBeingSent = false;
    /// Posted while the one before is being sent: replaces that when it has its number.
    std::optional<NotificationPosting> next;
    bool isWithdrawn = false;
};

class DesktopNotifications final : public QObject, public NotificationService {
    Q_OBJECT
  public:
    DesktopNotifications();
    ~DesktopNotifications() override;

    bool post(const NotificationPosting& posting, NotificationReceiver& receiver) override;
    void withdraw(NSString* key) override;

  private Q_SLOTS:
    void actionInvoked(uint serverId, const QString& action);
    void notificationClosed(uint serverId, uint reason);

  private:
    using Answer = std::function<void(const QDBusMessage&)>;

    bool connectToBus();
    [[nodiscard]] bool hasServer() const;
    [[nodiscard]] QDBusMessage askBus(const char* method, const QVariantList& arguments) const;
    void ask(const char* method, const QVariantList& arguments, Answer answer);

    void learnCapabilities();
    void send(const QString& key, const NotificationPosting& posting);
    [[nodiscard]] QVariantList messageOf(const NotificationPosting& posting, uint replacedId) const;
    void wasSent(const QString& key, const QDBusMessage& answer);
    void closeOnServer(uint serverId);
    void serverIsGone();
    [[nodiscard]] QString keyOf(uint serverId) const;

    // Its name tells this connection from others of the process, which go on when it ends.
    const QString m_connectionName;
    QDBusConnection m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    QHash<QString, Shown> m_shown;
    std::optional<Capabilities> m_capabilities;
    bool m_isAskingCapabilities = false;
    /// Posted before the server has said what it can do.
    std::vector<std::pair<QString, NotificationPosting>> m_waiting;
    /// Answers of a server that is gone do not count.
    int m_serverGeneration = 0;
};

DesktopNotifications::DesktopNotifications()
    : m_connectionName(QStringLiteral("zrbasic-notifications-%1").arg(reinterpret_cast<quintptr>(this), 0, 16)),
      m_bus(m_connectionName) {}

DesktopNotifications::~DesktopNotifications() {
    QDBusConnection::disconnectFromBus(m_connectionName);
}

bool DesktopNotifications::connectToBus() {
    if (m_bus.isConnected()) {
        return true;
    }
    const QString address = busAddress();
    if (address.isEmpty()) {
        return false;
    }
    // Whatever an earlier bus showed is gone with it.
    serverIsGone();
    QDBusConnection::disconnectFromBus(m_connectionName);
    m_bus = QDBusConnection::connectToBus(address, m_connectionName);
    if (!m_bus.isConnected()) {
        return false;
    }
    m_watcher = std::make_unique<QDBusServiceWatcher>(serverName, m_bus, QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner) {
                // A server that the bus has started has been sent something already.
                if (!oldOwner.isEmpty()) {
                    serverIsGone();
                }
            });
    m_bus.connect(serverName, serverPath, serverName, QStringLiteral("ActionInvoked"), this,
                  SLOT(actionInvoked(uint, QString)));
    m_bus.connect(serverName, serverPath, serverName, QStringLiteral("NotificationClosed"), this,
                  SLOT(notificationClosed(uint, uint)));
    return true;
}

QDBusMessage DesktopNotifications::askBus(const char* method, const QVariantList& arguments) const {
    QDBusMessage question = QDBusMessage::createMethodCall(busName, busPath, busName, QLatin1String(method));
    question.setArguments(arguments);
    return m_bus.call(question, QDBus::Block, mostMilliseconds);
}

bool DesktopNotifications::hasServer() const {
    const QDBusReply<bool> isRunning = askBus("NameHasOwner", {QString(serverName)});
    if (!isRunning.isValid() || isRunning.value()) {
        return isRunning.isValid();
    }
    // One that is not running may be started by the bus.
    const QDBusReply<QStringList> startable = askBus("ListActivatableNames", {});
    return startable.isValid() && startable.value().contains(serverName);
}

void DesktopNotifications::ask(const char* method, const QVariantList& arguments, Answer answer) {
    QDBusMessage question = QDBusMessage::createMethodCall(serverName, serverPath, serverName, QLatin1String(method));
    question.setArguments(arguments);
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, answer = std::move(answer), generation = m_serverGeneration](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (generation == m_serverGeneration) {
                    answer(finished->reply());
                }
            });
}

bool DesktopNotifications::post(const NotificationPosting& posting, NotificationReceiver& receiver) {
    if (!connectToBus() || !hasServer()) {
        return false;
    }
    const QString key = toQt(posting.key);
    Shown& shown = m_shown[key];
    shown.receiver = &receiver;
    shown.isWithdrawn = false;
    if (shown.isBeingSent) {
        shown.next = posting;
        return true;
    }
    shown.isBeingSent = true;
    if (m_capabilities) {
        send(key, posting);
    } else {
        m_waiting.emplace_back(key, posting);
        learnCapabilities();
    }
    return true;
}

void DesktopNotifications::learnCapabilities() {
    if (std::exchange(m_isAskingCapabilities, true)) {
        return;
    }
    ask("GetCapabilities", {}, [this](const QDBusMessage& answer) {
        const QDBusReply<QStringList> names = answer;
        m_isAskingCapabilities = false;
        m_capabilities = Capabilities{names.value().contains(QLatin1String("actions")),
                                      names.value().contains(QLatin1String("body-markup"))};
        for (const auto& [key, posting] : std::exchange(m_waiting, {})) {
            send(key, posting);
        }
    });
}

QVariantList DesktopNotifications::messageOf(const NotificationPosting& posting, uint replacedId) const {
    const QString subtitle = messageText(posting.subtitle);
    QString body = messageText(posting.body);
    if (!subtitle.isEmpty()) {
        body = body.isEmpty() ? subtitle : subtitle + u'\n' + body;
    }
    if (m_capabilities->readsMarkup) {
        body = body.toHtmlEscaped();
    }
    QStringList actions;
    if (m_capabilities->hasActions) {
        actions << clickAction << QCoreApplication::translate("zr::qt::Notifications", "Open");
        for (const NotificationButton& button : posting.buttons) {
            actions << buttonPrefix + messageText(button.identifier) << messageText(button.title);
        }
    }
    QVariantMap hints;
    if (posting.hasSound) {
        hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    } else {
        hints.insert(QStringLiteral("suppress-sound"), true);
    }
    if (const QString entry = QGuiApplication::desktopFileName(); !entry.isEmpty()) {
        hints.insert(QStringLiteral("desktop-entry"), entry);
    }
    constexpr int asLongAsTheServerLikes = -1;
    return {QGuiApplication::applicationDisplayName(),
            replacedId,
            QString(),
            messageText(posting.title),
            body,
            actions,
            hints,
            asLongAsTheServerLikes};
}

void DesktopNotifications::send(const QString& key, const NotificationPosting& posting) {
    ask("Notify", messageOf(posting, m_shown.value(key).serverId),
        [this, key](const QDBusMessage& answer) { wasSent(key, answer); });
}

void DesktopNotifications::wasSent(const QString& key, const QDBusMessage& answer) {
    const auto place = m_shown.find(key);
    if (place == m_shown.end()) {
        return;
    }
    const QDBusReply<uint> serverId = answer;
    place->isBeingSent = false;
    if (serverId.isValid()) {
        place->serverId = serverId.value();
    }
    if (place->isWithdrawn || (!serverId.isValid() && !place->next)) {
        closeOnServer(place->serverId);
        m_shown.erase(place);
        return;
    }
    if (place->next) {
        const NotificationPosting posting = *std::exchange(place->next, {});
        place->isBeingSent = true;
        send(key, posting);
    }
}

void DesktopNotifications::withdraw(NSString* key) {
    const auto place = m_shown.find(toQt(key));
    if (place == m_shown.end()) {
        return;
    }
    if (place->isBeingSent) {
        // It cannot be closed before it has its number.
        place->isWithdrawn = true;
        place->next.reset();
        return;
    }
    closeOnServer(place->serverId);
    m_shown.erase(place);
}

void DesktopNotifications::closeOnServer(uint serverId) {
    if (serverId != 0 && m_bus.isConnected()) {
        ask("CloseNotification", {serverId}, [](const QDBusMessage&) {});
    }
}

QString DesktopNotifications::keyOf(uint serverId) const {
    for (auto place = m_shown.begin(); place != m_shown.end(); ++place) {
        if (place->serverId == serverId && serverId != 0 && !place->isWithdrawn) {
            return place.key();
        }
    }
    return {};
}

void DesktopNotifications::actionInvoked(uint serverId, const QString& action) {
    const QString key = keyOf(serverId);
    // Signals go to everybody: most are about the notifications of other programs.
    if (key.isEmpty()) {
        return;
    }
    NotificationReceiver& receiver = *m_shown[key].receiver;
    duringEvent([&] {
        if (action == clickAction) {
            receiver.notificationWasClicked(fromQt(key));
        } else if (action.startsWith(buttonPrefix)) {
            receiver.notificationButtonWasClicked(fromQt(key), fromQt(action.mid(buttonPrefix.size())));
        }
    });
}

void DesktopNotifications::notificationClosed(uint serverId, uint) {
    const QString key = keyOf(serverId);
    if (key.isEmpty()) {
        return;
    }
    Shown& shown = m_shown[key];
    NotificationReceiver& receiver = *shown.receiver;
    if (shown.isBeingSent) {
        // Another one is on its way in its place.
        shown.serverId = 0;
        return;
    }
    m_shown.remove(key);
    duringEvent([&] { receiver.notificationWasClosed(fromQt(key)); });
}

void DesktopNotifications::serverIsGone() {
    ++m_serverGeneration;
    m_capabilities.reset();
    m_isAskingCapabilities = false;
    m_waiting.clear();
    for (const auto& [key, shown] : std::exchange(m_shown, {}).asKeyValueRange()) {
        if (!shown.isWithdrawn) {
            duringEvent([&, &named = key, &lost = shown] { lost.receiver->notificationWasClosed(fromQt(named)); });
        }
    }
}

} // namespace

std::unique_ptr<NotificationService> makeNotificationService() {
    return std::make_unique<DesktopNotifications>();
}

} // namespace zr::qt

#include "notification_service_p.moc"
