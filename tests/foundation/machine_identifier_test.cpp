#include <zrbasic/platform/foundation/machine_identifier.h>

#include <zrbasic/platform/foundation/machine_identifier_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/uuid.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace zr;

namespace fs = std::filesystem;

constexpr std::string_view machine = "00000000000000000000000000000001";

std::string derived(std::string_view text) {
    const Ref<NSString> identifier = detail::identifierFromMachineId(text);
    return identifier ? identifier->utf8() : "none";
}

TEST(MachineIdentifier, isDerivedAsAnIndependentImplementationDoes) {
    std::ifstream rows(ZR_TEST_VECTORS_DIR "/machine_identifier_vectors.txt");
    int count = 0;
    for (std::string row; std::getline(rows, row); ++count) {
        const std::size_t bar = row.find('|');
        ASSERT_NE(bar, std::string::npos);
        EXPECT_EQ(derived(row.substr(0, bar)), row.substr(bar + 1)) << row;
        EXPECT_TRUE(make<NSUUID>(&NSUUID::initWithUUIDString, NSString::fromUtf8(row.substr(bar + 1)))) << row;
    }
    EXPECT_EQ(count, 32);
}

TEST(MachineIdentifier, readsThirtyTwoDigitsAndALineFeed) {
    const std::string expected = derived(machine);
    EXPECT_EQ(expected.size(), 36U);
    EXPECT_EQ(derived(std::string(machine) + '\n'), expected);
    EXPECT_EQ(derived("ABCDEF0123456789abcdef0123456789"), derived("abcdef0123456789abcdef0123456789"));
    EXPECT_NE(derived("00000000000000000000000000000002"), expected);
}

TEST(MachineIdentifier, anythingElseIsNone) {
    const struct {
        const char* name;
        std::string text;
    } rows[] = {
        {"empty", ""},
        {"line feed", "\n"},
        {"not yet set up", "uninitialized\n"},
        {"zeros", std::string(32, '0')},
        {"a digit less", std::string(31, '1')},
        {"a digit more", std::string(33, '1')},
        {"two line feeds", std::string(machine) + "\n\n"},
        {"carriage return", std::string(machine) + "\r\n"},
        {"blank before", " " + std::string(machine)},
        {"a letter too far", "0000000000000000000000000000000g"},
        {"zero bytes", std::string(32, '\0')},
        {"with dashes", "00000000-0000-0000-0000-000000000001"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(derived(row.text), "none");
    }
}

TEST(MachineIdentifier, comesFromAFile) {
    std::string pattern = (fs::temp_directory_path() / "zrbasic-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    const fs::path folder = pattern;
    const auto fromFile = [&](const std::string& content) {
        std::ofstream(folder / "id", std::ios::binary) << content;
        const Ref<NSString> identifier = detail::identifierFromMachineIdFile(folder / "id");
        return identifier ? identifier->utf8() : "none";
    };
    EXPECT_EQ(fromFile(std::string(machine) + '\n'), derived(machine));
    EXPECT_EQ(fromFile(std::string(machine)), derived(machine));
    EXPECT_EQ(fromFile(""), "none");
    EXPECT_EQ(fromFile(std::string(machine) + "\nmore\n"), "none");
    EXPECT_EQ(fromFile(std::string(machine) + "0123456789"), "none");
    EXPECT_FALSE(detail::identifierFromMachineIdFile(folder / "nothing"));
    EXPECT_FALSE(detail::identifierFromMachineIdFile(folder));
    fs::remove_all(folder);
}

TEST(MachineIdentifier, isThatOfThisMachine) {
    const Ref<NSString> identifier = machineIdentifier();
#if defined(__linux__)
    const Ref<NSString> expected = detail::identifierFromMachineIdFile("/etc/machine-id");
    ASSERT_EQ(static_cast<bool>(identifier), static_cast<bool>(expected));
    EXPECT_TRUE(!expected || identifier->isEqual(expected));
    std::string own;
    std::getline(std::ifstream("/etc/machine-id") >> std::ws, own);
    EXPECT_TRUE(!identifier || own.find(identifier->lowercaseString()->utf8().substr(0, 8)) == std::string::npos)
        << "the system's own identifier is not handed out";
#else
    ASSERT_TRUE(identifier);
    EXPECT_TRUE(make<NSUUID>(&NSUUID::initWithUUIDString, identifier));
#endif
}

TEST(MachineIdentifier, canBeTakenAwayAndReplaced) {
    const Ref<NSString> real = machineIdentifier();
    {
        const MachineIdentifierOverride none([] { return nullptr; });
        EXPECT_FALSE(machineIdentifier());
        {
            const MachineIdentifierOverride another([] { return "ANOTHER"_ns; });
            EXPECT_EQ(machineIdentifier()->utf8(), "ANOTHER");
        }
        EXPECT_FALSE(machineIdentifier());
    }
    const Ref<NSString> again = machineIdentifier();
    EXPECT_TRUE(real ? real->isEqual(again) : !again);
}

} // namespace
