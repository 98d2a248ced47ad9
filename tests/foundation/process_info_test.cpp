#include <zrbasic/platform/foundation/process_info.h>

#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <string>

namespace {

using namespace zr;
using Version = NSOperatingSystemVersion;
using System = SystemVersionOverride::System;

constexpr NSInteger most = std::numeric_limits<NSInteger>::max();

std::string text(const Version& version) {
    return std::to_string(version.majorVersion) + '.' + std::to_string(version.minorVersion) + '.' +
           std::to_string(version.patchVersion);
}

TEST(ProcessInfo, isOneObject) {
    EXPECT_TRUE(NSProcessInfo::processInfo());
    EXPECT_EQ(NSProcessInfo::processInfo(), NSProcessInfo::processInfo());
    EXPECT_EQ(send<id>(NSProcessInfo::classObject(), "processInfo"_sel), NSProcessInfo::processInfo());
}

#if defined(__linux__)
TEST(ProcessInfo, tellsTheKernelsVersion) {
    std::ifstream file("/proc/sys/kernel/osrelease");
    std::string release;
    ASSERT_TRUE(std::getline(file, release));
    const Version version = NSProcessInfo::processInfo()->operatingSystemVersion();
    const std::string twoParts = std::to_string(version.majorVersion) + '.' + std::to_string(version.minorVersion);
    EXPECT_GT(version.majorVersion, 0);
    EXPECT_EQ(release.rfind(twoParts, 0), 0u) << release;
    const std::string shown = NSProcessInfo::processInfo()->operatingSystemVersionString()->utf8();
    EXPECT_EQ(shown.rfind("Version " + twoParts, 0), 0u) << shown;
    EXPECT_NE(shown.find("(Build " + release + ")"), std::string::npos) << shown;
}

TEST(MacOSVersion, isHighEnoughOnEveryOtherSystem) {
    EXPECT_TRUE(isMacOSAtLeast(10, 15));
    EXPECT_TRUE(isMacOSAtLeast(most, most));
    const SystemVersionOverride old({1, 0, 0}, System::Other);
    EXPECT_TRUE(isMacOSAtLeast(11));
}
#endif

TEST(SystemVersionOverride, countsWhileItStands) {
    const auto info = NSProcessInfo::processInfo();
    const Version own = info->operatingSystemVersion();
    {
        const SystemVersionOverride catalina({10, 15, 7});
        EXPECT_EQ(text(info->operatingSystemVersion()), "10.15.7");
        EXPECT_EQ(info->operatingSystemVersionString()->utf8(), "Version 10.15.7 (Build 10.15.7)");
        {
            const SystemVersionOverride bigSur({11, 2, 0});
            EXPECT_EQ(text(info->operatingSystemVersion()), "11.2.0");
            EXPECT_EQ(info->operatingSystemVersionString()->utf8(), "Version 11.2 (Build 11.2)");
        }
        EXPECT_EQ(text(info->operatingSystemVersion()), "10.15.7");
    }
    EXPECT_EQ(info->operatingSystemVersion(), own);
}

TEST(MacOSVersion, isComparedPartByPart) {
    struct Row {
        Version running;
        bool is10_14, is10_15, is11;
    };
    const Row rows[] = {
        {{10, 12, 0}, false, false, false}, {{10, 14, 99}, true, false, false}, {{10, 15, 0}, true, true, false},
        {{10, 16, 0}, true, true, false},   {{11, 0, 0}, true, true, true},     {{11, 2, 3}, true, true, true},
        {{9, 99, 0}, false, false, false},  {{0, 0, 0}, false, false, false},   {{-1, 0, 0}, false, false, false},
        {{most, 0, 0}, true, true, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(text(row.running));
        const SystemVersionOverride running(row.running);
        EXPECT_EQ(isMacOSAtLeast(10, 14), row.is10_14);
        EXPECT_EQ(isMacOSAtLeast(10, 15), row.is10_15);
        EXPECT_EQ(isMacOSAtLeast(11), row.is11);
    }
}

TEST(ProcessInfo, comparesVersionsPartByPart) {
    const SystemVersionOverride running({10, 15, 7});
    const auto info = NSProcessInfo::processInfo();
    EXPECT_TRUE(info->isOperatingSystemAtLeastVersion({10, 15, 7}));
    EXPECT_TRUE(info->isOperatingSystemAtLeastVersion({10, 15, 6}));
    EXPECT_TRUE(info->isOperatingSystemAtLeastVersion({10, 14, 99}));
    EXPECT_TRUE(info->isOperatingSystemAtLeastVersion({9, most, most}));
    EXPECT_FALSE(info->isOperatingSystemAtLeastVersion({10, 15, 8}));
    EXPECT_FALSE(info->isOperatingSystemAtLeastVersion({10, 16, 0}));
    EXPECT_FALSE(info->isOperatingSystemAtLeastVersion({11, 0, 0}));
    EXPECT_TRUE(send<bool>(info, "isOperatingSystemAtLeastVersion:"_sel, Version{10, 15, 0}));
}

TEST(ProcessInfo, comparesItsOwnNumbersOnAnySystem) {
    const SystemVersionOverride running({6, 1, 0}, System::Other);
    EXPECT_FALSE(NSProcessInfo::processInfo()->isOperatingSystemAtLeastVersion({10, 15, 0}))
        << "the numbers are the kernel's";
    EXPECT_TRUE(NSProcessInfo::processInfo()->isOperatingSystemAtLeastVersion({6, 0, 9}));
    EXPECT_TRUE(isMacOSAtLeast(10, 15)) << "and yet nothing of macOS is missing";
}

} // namespace
