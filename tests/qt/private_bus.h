#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantMap>

#include <gtest/gtest.h>

#include <vector>

namespace zr::test {

/// A message bus of the test's own. It is missing only where dbus-daemon is not installed, and then the test fails.
class PrivateBus {
  public:
    PrivateBus() = default;
    ~PrivateBus() { stop(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// With `activated`, the bus believes that it can start a notification server by that command.
    void start(const QString& activated = {}) {
        ASSERT_TRUE(m_folder.isValid());
        const QString services = m_folder.filePath("services");
        QDir().mkpath(services);
        if (!activated.isEmpty()) {
            write(services + "/notifications.service",
                  "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=" + activated + "\n");
        }
        write(m_folder.filePath("bus.conf"),
              "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN' "
              "'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>\n<busconfig><type>session</type>"
              "<listen>unix:tmpdir=" +
                  m_folder.path() + "</listen><auth>EXTERNAL</auth><servicedir>" + services +
                  "</servicedir><policy context='default'><allow send_destination='*'/><allow "
                  "receive_sender='*'/><allow own='*'/></policy>"
                  "</busconfig>\n");
        m_daemon.start("dbus-daemon", {"--nofork", "--nopidfile", "--print-address=1",
                                       "--config-file=" + m_folder.filePath("bus.conf")});
        ASSERT_TRUE(m_daemon.waitForStarted()) << "dbus-daemon cannot be started; is it installed?";
        QByteArray line;
        while (!line.endsWith('\n') && m_daemon.waitForReadyRead(5000)) {
            line += m_daemon.readAllStandardOutput();
        }
        m_address = QString::fromUtf8(line).trimmed();
        ASSERT_FALSE(m_address.isEmpty()) << m_daemon.readAllStandardError().toStdString();
    }
    void stop() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    [[nodiscard]] QString address() const { return m_address; }

  private:
    static void write(const QString& path, const QString& text) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text.toUtf8());
    }

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

/// What a notification server was asked to show.
struct ShownNotification {
    uint id = 0;
    QString application;
    uint replaces = 0;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int timeout = 0;
};

} // namespace zr::test
