#include <zrbasic/ui/workspace.h>

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <gtest/gtest.h>

#include <string>

namespace zr {
namespace {

std::string* opened = nullptr;

/// Writes down what the workspace is asked to open.
class WorkspaceHelper : public testing::Test {
  protected:
    WorkspaceHelper() {
        opened = &log;
        m_original = method_setImplementation(operation(), imp(+[](NSObject*, SEL, NSObject* url) -> bool {
                                                  const auto* const address = cast<NSURL>(url);
                                                  *opened += address ? address->absoluteString()->utf8() : "null";
                                                  *opened += '\n';
                                                  return false;
                                              }));
    }
    ~WorkspaceHelper() override { method_setImplementation(operation(), m_original); }

    std::string log;

  private:
    static Method operation() { return class_getInstanceMethod(NSWorkspace::classObject(), "openURL:"_sel); }

    IMP m_original;
};

TEST_F(WorkspaceHelper, opensTextThatIsAURL) {
    zr_openURLString("https://example.com/a?b=%20#c"_ns);
    zr_openURLString<NSWorkspace>("mailto:desk@example.com"_ns);
    send<void>(NSWorkspace::classObject(), "zr_openURLString:"_sel, "HTTP://EXAMPLE.com"_ns);
    zr_openURLString(""_ns);
    EXPECT_EQ(log, "https://example.com/a?b=%20#c\nmailto:desk@example.com\nHTTP://EXAMPLE.com\n\n");
}

TEST_F(WorkspaceHelper, handsOnNullForTextThatIsNone) {
    for (const Ref<NSString>& text :
         {"https://example.com/a b"_ns, "https://example.com/\u4EF7"_ns, "%zz"_ns, "a#b#c"_ns, " "_ns,
          NSString::fromUtf16(std::u16string(u"a\0b", 3)), NSString::fromUtf16(u"\xD83D"),
          NSString::fromUtf16(std::u16string(100000, u'|'))}) {
        SCOPED_TRACE(text->utf8().substr(0, 40));
        log.clear();
        zr_openURLString(text);
        EXPECT_EQ(log, "null\n");
    }
    log.clear();
    zr_openURLString(nullptr);
    send<void>(NSWorkspace::classObject(), "zr_openURLString:"_sel, NSNull::null());
    EXPECT_EQ(log, "null\nnull\n");
}

TEST_F(WorkspaceHelper, handsOnAURLAsItIs) {
    const auto base = NSURL::URLWithString("https://example.com/x/"_ns);
    zr_openURL(NSURL::URLWithString_relativeToURL("../y"_ns, base));
    zr_openURL<NSWorkspace>(nullptr);
    send<void>(NSWorkspace::classObject(), "zr_openURL:"_sel, "https://example.com"_ns);
    EXPECT_EQ(log, "https://example.com/y\nnull\nnull\n") << "a string is no URL";
}

TEST(WorkspaceOpening, asksTheHandlerOfTheApplication) {
    std::string log;
    const OpenURLHandler before = setOpenURLHandler([&](NSURL* url) {
        log += url->absoluteString()->utf8() + '\n';
        return true;
    });
    zr_openURLString("https://example.com/"_ns);
    zr_openURLString("not a URL"_ns);
    zr_openURL(nullptr);
    setOpenURLHandler(before);
    EXPECT_EQ(log, "https://example.com/\n");
}

} // namespace
} // namespace zr
