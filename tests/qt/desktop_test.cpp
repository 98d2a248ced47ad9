#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

namespace zr {
namespace {

class AddressHandler : public QObject {
    Q_OBJECT
  public:
    QStringList opened;

  public Q_SLOTS:
    void open(const QUrl& url) { opened << QString::fromLatin1(url.toEncoded()); }
};

class DesktopOfQt : public testing::Test {
  protected:
    DesktopOfQt() {
        for (const char* const scheme : {"https", "mailto", "zrtest"}) {
            QDesktopServices::setUrlHandler(scheme, &handler, "open");
        }
    }
    ~DesktopOfQt() override {
        for (const char* const scheme : {"https", "mailto", "zrtest"}) {
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    static bool open(const char* text) {
        return currentToolkit().openURL(NSURL::URLWithString(NSString::fromUtf8(text)));
    }
    static bool launch(const QString& path) { return currentToolkit().launch(NSString::fromUtf8(path.toStdString())); }
    static std::string clipboard() {
        const Ref<NSString> text = currentToolkit().clipboardText();
        return text ? text->utf8() : "(null)";
    }
    static QString write(const QString& path, const char* text, bool isExecutable) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        QFileDevice::Permissions permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
        file.setPermissions(isExecutable ? permissions | QFileDevice::ExeOwner : permissions);
        return path;
    }

    AddressHandler handler;
    QTemporaryDir folder;
};

TEST_F(DesktopOfQt, opensAddressesAsTheyAreWritten) {
    const char* const addresses[] = {"https://example.com/", "https://example.com/%C3%A4?q=1%202&r=%26#f",
                                     "mailto:desk@example.com", "zrtest:a/b"};
    for (const char* const address : addresses) {
        SCOPED_TRACE(address);
        EXPECT_TRUE(open(address));
        ASSERT_FALSE(handler.opened.isEmpty());
        EXPECT_EQ(handler.opened.takeLast(), address);
    }
}

TEST_F(DesktopOfQt, opensNothingThatIsNoAddress) {
    for (const char* const text : {"", "example.com", "a/b", "//example.com/a", "https://example.com/\xc3\xa4",
                                   "https://exa mple.com/", "https://h/%zz", "https://[1/", "https://h:99999999/"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(open(text));
    }
    EXPECT_FALSE(currentToolkit().openURL(nullptr));
    EXPECT_TRUE(handler.opened.isEmpty());
}

TEST_F(DesktopOfQt, opensARelativeAddressSeenFromItsBase) {
    const Ref<NSURL> base = NSURL::URLWithString("https://example.com/a/b"_ns);
    EXPECT_TRUE(currentToolkit().openURL(NSURL::URLWithString_relativeToURL("c?d"_ns, base)));
    EXPECT_EQ(handler.opened, QStringList{"https://example.com/a/c?d"});
}

TEST_F(DesktopOfQt, launchesProgramsByTheirFiles) {
    const QString program = write(folder.filePath("two words"), "#!/bin/sh\necho \"$# $0\" > \"$0.out\"\n", true);
    EXPECT_TRUE(launch(program));
    const QString result = program + ".out";
    ASSERT_TRUE(QTest::qWaitFor([&result] { return QFile(result).size() > 0; }, 5000));
    QFile file(result);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), "0 " + program + '\n');
}

TEST_F(DesktopOfQt, launchesNothingElse) {
    EXPECT_FALSE(currentToolkit().launch(nullptr));
    EXPECT_FALSE(launch(QString()));
    EXPECT_FALSE(launch(folder.path()));
    EXPECT_FALSE(launch(folder.filePath("missing")));
    EXPECT_FALSE(launch(write(folder.filePath("text"), "no program", false)));
    // Found along PATH, but no file here.
    EXPECT_FALSE(launch("true"));
}

TEST_F(DesktopOfQt, keepsTextInTheClipboard) {
    currentToolkit().setClipboardText("2241.78 \xf0\x9f\x93\x88"_ns);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("2241.78 \xf0\x9f\x93\x88"));
    QGuiApplication::clipboard()->setText("from elsewhere");
    EXPECT_EQ(clipboard(), "from elsewhere");
    currentToolkit().setClipboardText(""_ns);
    EXPECT_EQ(clipboard(), "");
    currentToolkit().setClipboardText(nullptr);
    EXPECT_EQ(clipboard(), "(null)");
}

TEST_F(DesktopOfQt, findsNoTextInAPicture) {
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QGuiApplication::clipboard()->setImage(picture);
    EXPECT_EQ(clipboard(), "(null)");
    currentToolkit().setClipboardText("text"_ns);
    EXPECT_EQ(clipboard(), "text");
}

TEST_F(DesktopOfQt, hasNoKeyboardLayoutsWithoutAScreen) {
    ASSERT_NE(QGuiApplication::platformName(), "xcb");
    EXPECT_TRUE(currentToolkit().keyboardLayouts().empty());
    EXPECT_EQ(currentToolkit().currentKeyboardLayout(), -1);
    currentToolkit().selectKeyboardLayout(0);
    currentToolkit().selectKeyboardLayout(-1);
    EXPECT_EQ(currentToolkit().currentKeyboardLayout(), -1);
}

} // namespace
} // namespace zr

#include "desktop_test.moc"
