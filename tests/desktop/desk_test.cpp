#include "desktop_testing.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>

// The trading desk as a program on a real desktop. Without it there is nothing to run.
#ifdef ZR_DESK_PROGRAM

namespace zr {
namespace {

using test::becomes;
using test::outputOf;

class DeskOnDesktop : public test::Desktop {
  protected:
    DeskOnDesktop() {
        // What is opened goes to a file: nobody wants a browser here.
        write("xdg-open", "#!/bin/sh\necho \"$1\" >> \"" + m_folder.filePath("opened").toStdString() + "\"\n");
        QFile::setPermissions(m_folder.filePath("xdg-open"), QFile::ReadOwner | QFile::ExeOwner);
    }
    ~DeskOnDesktop() override {
        // Before the folder with its settings goes.
        if (m_desk.state() != QProcess::NotRunning) {
            m_desk.kill();
            m_desk.waitForFinished();
        }
        outputOf("dunstctl", {"close-all"});
    }

    void start(const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PATH", m_folder.path() + ':' + environment.value("PATH"));
        environment.insert("XDG_CONFIG_HOME", m_folder.filePath("settings"));
        environment.insert("FONTCONFIG_FILE", ZR_TEST_FONTS_FILE);
        environment.remove("QT_QPA_PLATFORM");
        m_desk.setProcessEnvironment(environment);
        m_desk.start(ZR_DESK_PROGRAM, arguments);
    }
    /// Plays a list of a user's actions.
    void play(const std::string& lines, const QStringList& arguments = {}) {
        start(QStringList{"--script", write("actions", lines)} + arguments);
    }
    /// Waits for its end; what it says when that is not 0.
    std::string complaint(int milliseconds) {
        if (!QTest::qWaitFor([this] { return m_desk.state() == QProcess::NotRunning; }, milliseconds)) {
            return "it goes on and on";
        }
        const std::string said = m_desk.readAllStandardError().toStdString();
        return m_desk.exitStatus() == QProcess::NormalExit && m_desk.exitCode() == 0 ? "" : "it fails: " + said;
    }
    /// The addresses that were opened, one each line.
    std::string opened() const {
        QFile file(m_folder.filePath("opened"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
    }
    static int notifications() { return outputOf("dunstctl", {"count", "displayed"}).trimmed().toInt(); }

  private:
    QString write(const char* name, const std::string& content) {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content.c_str());
        return file.fileName();
    }

    QTemporaryDir m_folder;
    QProcess m_desk;
};

/// Orders, and waits until somebody has clicked on the notification of the fill.
const char* const orderAndWait = R"({"click": "watchList", "at": [60, 57]}
{"expect": "ticketTitle", "text": "ETHUSDT"}
{"expect": "price", "contains": "22"}
{"click": "price"}
{"key": "a", "with": "ctrl"}
{"type": "2241.78"}
{"click": "quantity"}
{"type": "10"}
{"click": "account"}
{"type": "DESK-1"}
{"click": "password"}
{"type": "secret-42"}
{"click": "buy"}
{"expect": "messages", "contains": "Order 4712 is filled", "within": 20}
)";

TEST_F(DeskOnDesktop, aRecordedMorningGoesAsItWent) {
    start({"--script", ZR_EXAMPLE_DATA_DIR "/desk.actions"});
    EXPECT_EQ(complaint(60'000), "");
    EXPECT_EQ(opened(), "https://desk.example/orders/4711\n");
    EXPECT_EQ(notifications(), 2) << "three fills, of which two say the same";
}

TEST_F(DeskOnDesktop, theButtonOfAFillLeadsBackToTheDesk) {
    play(std::string(orderAndWait) +
             "{\"expect\": \"status\", \"text\": \"Order 4712: the button was clicked\", \"within\": 30}\n",
         {"--speed", "10"});
    ASSERT_TRUE(QTest::qWaitFor([] { return notifications() == 1; }, 20'000));
    QTest::qWait(200);
    // The daemon's menu of buttons is answered by the script that runs these tests.
    outputOf("dunstctl", {"context"});
    EXPECT_EQ(complaint(40'000), "");
}

TEST_F(DeskOnDesktop, aClickOnAFillLeadsBackToTheDesk) {
    play(std::string(orderAndWait) +
             "{\"expect\": \"status\", \"text\": \"Order 4712: the notification was clicked\", \"within\": 30}\n",
         {"--speed", "10"});
    ASSERT_TRUE(QTest::qWaitFor([] { return notifications() == 1; }, 20'000));
    QTest::qWait(200);
    outputOf("dunstctl", {"action", "0"});
    EXPECT_EQ(complaint(40'000), "");
}

TEST_F(DeskOnDesktop, closingItsWindowEndsIt) {
    start({});
    ASSERT_TRUE(QTest::qWaitFor([] { return outputOf("wmctrl", {"-l"}).contains(" Desk"); }, 20'000));
    outputOf("wmctrl", {"-c", "Desk"});
    EXPECT_EQ(complaint(20'000), "");
}

TEST_F(DeskOnDesktop, aScriptThatFailsClosesTheDesk) {
    play("{\"expect\": \"ticketTitle\", \"text\": \"ETHUSDT\", \"within\": 0.5}\n");
    const std::string said = complaint(20'000);
    EXPECT_NE(said.find("actions, line 1: \"ticketTitle\": it shows \"No instrument\""), std::string::npos) << said;
}

} // namespace
} // namespace zr

#endif
