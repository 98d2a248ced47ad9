#include <zrbasic/platform/foundation/bundle.h>

#include "fresh_process.h"

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using namespace zr;

namespace fs = std::filesystem;

std::string information(NSString* key) {
    const id value = NSBundle::mainBundle()->objectForInfoDictionaryKey(key);
    return value ? value->description()->utf8() : "nothing";
}

TEST(Bundle, knowsNothingWithoutInformation) {
    const Ref<NSBundle> bundle = NSBundle::mainBundle();
    ASSERT_TRUE(bundle->infoDictionary());
    EXPECT_EQ(bundle->infoDictionary()->count(), 0U);
    EXPECT_FALSE(bundle->bundleIdentifier());
    EXPECT_EQ(information("CFBundleName"_ns), "nothing");
    EXPECT_FALSE(bundle->objectForInfoDictionaryKey(nullptr));
    EXPECT_EQ(bundle, NSBundle::mainBundle());
}

TEST(Bundle, tellsWhatTheApplicationGave) {
    const BundleInformation given("Desk \xC3\xA9", "1.4.0", "1873", "com.example.desk");
    EXPECT_EQ(information("CFBundleName"_ns), "Desk \xC3\xA9");
    EXPECT_EQ(information("CFBundleShortVersionString"_ns), "1.4.0");
    EXPECT_EQ(information("CFBundleVersion"_ns), "1873");
    EXPECT_EQ(NSBundle::mainBundle()->bundleIdentifier()->utf8(), "com.example.desk");
    EXPECT_EQ(NSBundle::mainBundle()->infoDictionary()->count(), 4U);
    EXPECT_EQ(NSBundle::mainBundle()->infoDictionary(), NSBundle::mainBundle()->infoDictionary());
    EXPECT_EQ(information("cfbundlename"_ns), "nothing");
}

TEST(Bundle, leavesOutWhatWasNotGiven) {
    const BundleInformation given(nullptr, "1.4.0", "", nullptr);
    EXPECT_EQ(NSBundle::mainBundle()->infoDictionary()->count(), 1U);
    EXPECT_EQ(information("CFBundleVersion"_ns), "nothing");
    EXPECT_FALSE(NSBundle::mainBundle()->bundleIdentifier());
}

TEST(Bundle, theNewestInformationCountsAsAWhole) {
    const BundleInformation outer("Outer", "1", "2", "com.example.outer");
    EXPECT_EQ(information("CFBundleVersion"_ns), "2");
    {
        const BundleInformation inner("Inner", nullptr, nullptr, nullptr);
        EXPECT_EQ(information("CFBundleName"_ns), "Inner");
        EXPECT_EQ(information("CFBundleVersion"_ns), "nothing");
    }
    EXPECT_EQ(information("CFBundleName"_ns), "Outer");
}

TEST(Bundle, knowsItsProgramFile) {
    const std::string path = NSBundle::mainBundle()->executablePath()->utf8();
    EXPECT_EQ(path.front(), '/');
    EXPECT_TRUE(fs::exists(path));
#if defined(__linux__)
    EXPECT_EQ(path, fs::read_symlink("/proc/self/exe").string());
#endif
    const Ref<NSURL> url = NSBundle::mainBundle()->executableURL();
    ASSERT_TRUE(url);
    EXPECT_EQ(url->scheme()->utf8(), "file");
    EXPECT_EQ(url->path()->utf8(), path);
}

TEST(Bundle, knowsItsProgramFileAfterItWasRemoved) {
#if !defined(__linux__)
    GTEST_SKIP() << "asks for the links of the process file system";
#endif
    const auto bundle = NSBundle::mainBundle();
    if (!test::isFreshProcess()) {
        char pattern[] = "/tmp/zrbasic-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        const fs::path program = fs::path(pattern) / "De?k #1 100% \xC3\xA9";
        fs::copy_file("/proc/self/exe", program);
        test::runsInFreshProcess({}, program.string());
        EXPECT_FALSE(fs::exists(program)) << "the copy has removed itself";
        fs::remove_all(pattern);
        return;
    }
    fs::remove(fs::read_symlink("/proc/self/exe"));
    const std::string path = bundle->executablePath()->utf8();
    EXPECT_TRUE(path.ends_with("/De?k #1 100% \xC3\xA9")) << path;
    EXPECT_EQ(bundle->executableURL()->absoluteString()->utf8(),
              "file://" + path.substr(0, path.rfind('/')) + "/De%3Fk%20%231%20100%25%20%C3%A9");
    EXPECT_EQ(bundle->executableURL()->path()->utf8(), path);
    EXPECT_EQ(detail::applicationDomain()->utf8(), "De?k #1 100% \xC3\xA9");
}

TEST(Bundle, namesTheUserDefaultsForTheIdentifierOrTheProgram) {
    const std::string program = fs::path(NSBundle::mainBundle()->executablePath()->utf8()).filename().string();
    EXPECT_EQ(detail::applicationDomain()->utf8(), program);
    const BundleInformation withoutIdentifier("Desk", "1", "2", "");
    EXPECT_EQ(detail::applicationDomain()->utf8(), program);
    const BundleInformation given("Desk", "1", "2", "com.example.desk");
    EXPECT_EQ(detail::applicationDomain()->utf8(), "com.example.desk");
}

TEST(Bundle, answersMessages) {
    const BundleInformation given("Desk", "1.4.0", "1873", "com.example.desk");
    const id bundle = send<id>(NSBundle::classObject(), "mainBundle"_sel);
    EXPECT_EQ(bundle, NSBundle::mainBundle());
    EXPECT_EQ(send<Ref<NSString>>(bundle, "bundleIdentifier"_sel)->utf8(), "com.example.desk");
    EXPECT_EQ(send<Ref<NSString>>(bundle, "objectForInfoDictionaryKey:"_sel, "CFBundleVersion"_ns)->utf8(), "1873");
    EXPECT_FALSE(send<id>(bundle, "objectForInfoDictionaryKey:"_sel, box(1)));
    EXPECT_EQ(send<Ref<NSDictionary>>(bundle, "infoDictionary"_sel)->count(), 4U);
    EXPECT_TRUE(send<Ref<NSURL>>(bundle, "executableURL"_sel));
    EXPECT_TRUE(send<Ref<NSString>>(bundle, "executablePath"_sel));
}

} // namespace
