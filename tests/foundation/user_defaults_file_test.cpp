#include "checks.h"
#include "fresh_process.h"
#include "temporary_defaults.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cmath>
#include <csignal>
#include <limits>

namespace zr {

namespace {

namespace fs = std::filesystem;

class UserDefaultsFile : public test::TemporaryDefaults {
  protected:
    [[nodiscard]] std::string stored(NSString* key) const {
        const Ref<NSString> value = defaults->stringForKey(key);
        return value ? value->utf8() : "nothing";
    }
    [[nodiscard]] ino_t inode() const {
        struct stat status {};
        EXPECT_EQ(stat(file().c_str(), &status), 0);
        return status.st_ino;
    }
};

TEST_F(UserDefaultsFile, keepsTypesAndValues) {
    using Limits = std::numeric_limits<double>;
    const struct {
        const char* name;
        id value;
    } rows[] = {
        {"empty string", ""_ns},
        {"string with a zero", NSString::fromUtf16(std::u16string(u"a\0b", 3))},
        {"half a surrogate pair", NSString::fromUtf16(u"a\xDE00z")},
        {"true", box(true)},
        {"false", box(false)},
        {"one", box(1)},
        {"smallest integer", box(std::numeric_limits<std::int64_t>::min())},
        {"largest integer", box(std::numeric_limits<std::uint64_t>::max())},
        {"whole double", box(1.0)},
        {"double", box(0.1 + 0.2)},
        {"negative zero", box(-0.0)},
        {"largest double", box(Limits::max())},
        {"smallest double", box(Limits::denorm_min())},
        {"infinity", box(Limits::infinity())},
        {"negative infinity", box(-Limits::infinity())},
        {"not a number", box(Limits::quiet_NaN())},
        {"float", box(0.1F)},
        {"largest float", box(std::numeric_limits<float>::max())},
        {"smallest float", box(std::numeric_limits<float>::denorm_min())},
        {"infinite float", box(std::numeric_limits<float>::infinity())},
        {"decimal", NSDecimalNumber::decimalNumberWithString("12345678901234567890.123456789012345678"_ns)},
        {"whole decimal", NSDecimalNumber::one()},
        {"largest decimal", NSDecimalNumber::maximumDecimalNumber()},
        {"decimal that is no number", NSDecimalNumber::notANumber()},
        {"date", NSDate::dateWithTimeIntervalSinceReferenceDate(686000000.123456)},
        {"distant past", NSDate::distantPast()},
        {"data", NSData::fromBytes(std::string_view("\0\xFF\x10", 3))},
        {"no data", NSData::data()},
        {"empty array", NSArray::array()},
        {"array", array({"a"_ns, box(1), array({box(2.0)})})},
        {"empty dictionary", NSDictionary::dictionary()},
        {"dictionary that looks like a date", dictionary({{"date"_ns, "1"_ns}})},
        {"dictionary", dictionary({{"a"_ns, NSData::data()}, {"b"_ns, dictionary({{"c"_ns, NSDate::date()}})}})},
    };
    for (const auto& row : rows) {
        defaults->setObject_forKey(row.value, NSString::fromUtf8(row.name));
    }
    restart();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const id read = defaults->objectForKey(NSString::fromUtf8(row.name));
        ASSERT_TRUE(read);
        EXPECT_TRUE(row.value->isEqual(read)) << read->description()->utf8();
        EXPECT_EQ(read->description()->utf8(), row.value->description()->utf8());
        if (auto* const number = cast<NSNumber>(row.value)) {
            auto* const readNumber = cast<NSNumber>(read);
            EXPECT_EQ(readNumber->isBoolean(), number->isBoolean());
            EXPECT_EQ(readNumber->isFractional(), number->isFractional());
            EXPECT_EQ(std::signbit(readNumber->doubleValue()), std::signbit(number->doubleValue()));
            EXPECT_EQ(cast<NSDecimalNumber>(read) != nullptr, cast<NSDecimalNumber>(row.value) != nullptr);
            if (number->isFractional()) {
                EXPECT_STREQ(readNumber->objCType(), number->objCType());
            }
        }
    }
}

TEST_F(UserDefaultsFile, canBeReadAndCorrectedByAPerson) {
    write(
        R"({"values": {"dictionary": {"symbol": "ETHUSDT", "count": 3, "tick": 0.05, "list": [true]}}, "version": 1})");
    EXPECT_EQ(stored("symbol"_ns), "ETHUSDT");
    EXPECT_EQ(defaults->integerForKey("count"_ns), 3);
    EXPECT_EQ(defaults->doubleForKey("tick"_ns), 0.05);
    EXPECT_EQ(defaults->arrayForKey("list"_ns)->count(), 1U);
    defaults->setObject_forKey(NSDate::dateWithTimeIntervalSinceReferenceDate(1.5), "date"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_NE(text().find(R"("symbol" : "ETHUSDT")"), std::string::npos) << text();
    EXPECT_NE(text().find(R"("date" : "1.5")"), std::string::npos) << text();
}

TEST_F(UserDefaultsFile, isForTheUserAlone) {
    defaults->setObject_forKey("secret"_ns, "account"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(files(), "com.example.desk.json");
}

TEST_F(UserDefaultsFile, isWrittenBySynchronizeAndNotBefore) {
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_FALSE(fs::exists(m_folder)) << "nothing to say, nothing made";
    defaults->setObject_forKey("value"_ns, "key"_ns);
    EXPECT_FALSE(fs::exists(m_folder));
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_TRUE(fs::exists(file()));
    defaults->removeObjectForKey("key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    restart();
    EXPECT_FALSE(defaults->objectForKey("key"_ns));
}

TEST_F(UserDefaultsFile, isLeftAloneWhenNothingChanges) {
    defaults->setObject_forKey(box(1), "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    const ino_t first = inode();
    // Another file holds the number, so that a new one cannot get it.
    fs::create_hard_link(file(), m_place / "first");
    defaults->setObject_forKey(box(1), "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(inode(), first);
    defaults->setObject_forKey(box(true), "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_NE(inode(), first) << "true equals 1, and is another type";
    restart();
    EXPECT_TRUE(cast<NSNumber>(defaults->objectForKey("key"_ns))->isBoolean());
}

TEST_F(UserDefaultsFile, isNamedForItsDomainWhateverThatIs) {
    const Ref<NSString> names[] = {
        "../../escape"_ns,
        "/etc/absolute"_ns,
        ".."_ns,
        ".hidden"_ns,
        "a b%2F\n"_ns,
        u"\u4EF7"_ns,
        NSString::fromUtf16(u"\xD83D"),
        NSString::fromUtf16(std::u16string(u"a\0b", 3)),
    };
    for (const Ref<NSString>& name : names) {
        const auto suite = make<NSUserDefaults>(&NSUserDefaults::initWithSuiteName, name);
        suite->setObject_forKey(name, "name"_ns);
        EXPECT_TRUE(suite->synchronize()) << name->utf8();
    }
    EXPECT_EQ(files(),
              "%2E.%2F..%2Fescape.json %2E..json %2Ehidden.json %2Fetc%2Fabsolute.json %E4%BB%B7.json "
              "%EF%BF%BD.json a%00b.json a%20b%252F%0A.json");
    for (const auto& entry : fs::directory_iterator(m_place)) {
        EXPECT_EQ(entry.path(), m_folder) << "all stays in the folder";
    }
    restart();
    for (const Ref<NSString>& name : names) {
        const auto suite = make<NSUserDefaults>(&NSUserDefaults::initWithSuiteName, name);
        EXPECT_TRUE(name->isEqual(suite->objectForKey("name"_ns)));
    }
}

TEST_F(UserDefaultsFile, aNameThatTheFileSystemCannotHoldIsNotWritten) {
    const auto name = NSString::fromUtf16(std::u16string(5000, u'n'));
    const auto suite = make<NSUserDefaults>(&NSUserDefaults::initWithSuiteName, name);
    suite->setObject_forKey(box(1), "key"_ns);
    EXPECT_FALSE(suite->synchronize());
    EXPECT_EQ(suite->integerForKey("key"_ns), 1);
    EXPECT_EQ(files(), "");
}

TEST_F(UserDefaultsFile, damagedIsSetAsideAndKept) {
    const struct {
        const char* name;
        std::string content;
    } rows[] = {
        {"empty", ""},
        {"cut off", R"({"values": {"dictionary": {"a": 1}}, "vers)"},
        {"zeros", std::string(4096, '\0')},
        {"another kind of JSON", R"({"a": 1})"},
        {"an array", R"([1])"},
        {"a later version", R"({"values": {"dictionary": {}}, "version": 2})"},
        {"no version", R"({"values": {"dictionary": {}}})"},
        {"values that are no dictionary", R"({"values": ["a"], "version": 1})"},
        {"null", R"({"values": {"dictionary": {"a": null}}, "version": 1})"},
        {"untagged object", R"({"values": {"dictionary": {"a": {"b": 1, "c": 2}}}, "version": 1})"},
        {"empty object", R"({"values": {"dictionary": {"a": {}}}, "version": 1})"},
        {"unknown type", R"({"values": {"dictionary": {"a": {"colour": "red"}}}, "version": 1})"},
        {"no text", R"({"values": {"dictionary": {"a": {"date": 1}}}, "version": 1})"},
        {"broken double", R"({"values": {"dictionary": {"a": {"double": "1.5x"}}}, "version": 1})"},
        {"broken float", R"({"values": {"dictionary": {"a": {"float": "0.10000000149"}}}, "version": 1})"},
        {"broken date", R"({"values": {"dictionary": {"a": {"date": "today"}}}, "version": 1})"},
        {"broken decimal", R"({"values": {"dictionary": {"a": {"decimal": "1,5"}}}, "version": 1})"},
        {"odd data", R"({"values": {"dictionary": {"a": {"data": "abc"}}}, "version": 1})"},
        {"broken data", R"({"values": {"dictionary": {"a": {"data": "xy"}}}, "version": 1})"},
        {"broken low digit", R"({"values": {"dictionary": {"a": {"data": "0Y"}}}, "version": 1})"},
        {"half a unit", R"({"values": {"dictionary": {"a": {"utf16": "d8"}}}, "version": 1})"},
        {"no entries", R"({"values": {"entries": 1}, "version": 1})"},
        {"no dictionary", R"({"values": {"dictionary": 1}, "version": 1})"},
        {"entry of one", R"({"values": {"entries": [["a"]]}, "version": 1})"},
        {"entry that is none", R"({"values": {"entries": [1]}, "version": 1})"},
        {"key that is no string", R"({"values": {"entries": [[1, 1]]}, "version": 1})"},
        {"entry without a value", R"({"values": {"entries": [["a", null]]}, "version": 1})"},
        {"broken element", R"({"values": {"dictionary": {"a": [null]}}, "version": 1})"},
        {"no JSON", "\xFF\xFE not UTF-8"},
    };
    int number = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write(row.content);
        restart();
        EXPECT_FALSE(defaults->objectForKey("a"_ns));
        ++number;
        const std::string kept = "com.example.desk.json.damaged" + (number == 1 ? "" : "-" + std::to_string(number));
        ASSERT_TRUE(fs::exists(file(kept)));
        EXPECT_EQ(text(kept), row.content);
        EXPECT_FALSE(fs::exists(file())) << "nothing is written in its place without need";
        defaults->setObject_forKey(box(number), "after"_ns);
        EXPECT_TRUE(defaults->synchronize());
        restart();
        EXPECT_EQ(defaults->integerForKey("after"_ns), number);
    }
}

TEST_F(UserDefaultsFile, damagedWhileTheProcessRunsLosesNothing) {
    defaults->setObject_forKey("old"_ns, "before"_ns);
    EXPECT_TRUE(defaults->synchronize());
    write("{");
    defaults->setObject_forKey("new"_ns, "after"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(files(), "com.example.desk.json com.example.desk.json.damaged");
    EXPECT_EQ(text("com.example.desk.json.damaged"), "{");
    write("[");
    EXPECT_TRUE(defaults->synchronize()) << "also when there is nothing of one's own to write";
    EXPECT_EQ(text("com.example.desk.json.damaged-2"), "[");
    restart();
    EXPECT_EQ(stored("before"_ns), "old");
    EXPECT_EQ(stored("after"_ns), "new");
}

TEST_F(UserDefaultsFile, whatIsNoFileIsNotTouched) {
    fs::create_directories(file());
    defaults->setObject_forKey("value"_ns, "key"_ns);
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_TRUE(fs::is_directory(file()));
    EXPECT_EQ(stored("key"_ns), "value") << "it stays readable";
    fs::remove(file());
    EXPECT_EQ(mkfifo(file().c_str(), 0600), 0);
    EXPECT_FALSE(defaults->synchronize()) << "and a pipe holds nobody up";
    EXPECT_TRUE(fs::is_fifo(file()));
    fs::remove(file());
    EXPECT_TRUE(defaults->synchronize()) << "the next time tries again";
    restart();
    EXPECT_EQ(stored("key"_ns), "value");
}

TEST_F(UserDefaultsFile, aFolderThatCannotBeMadeOrWrittenIsSurvived) {
    std::ofstream(m_place / "a file") << "x";
    for (const fs::path& folder : {m_place / "a file", m_place / "a file" / "below", fs::path("/proc/zrbasic"),
                                   fs::path(), fs::path("/dev/null")}) {
        SCOPED_TRACE(folder.string());
        moveTo(folder);
        EXPECT_FALSE(defaults->objectForKey("key"_ns));
        defaults->setObject_forKey("value"_ns, "key"_ns);
        EXPECT_FALSE(defaults->synchronize());
        EXPECT_FALSE(defaults->synchronize());
        EXPECT_EQ(stored("key"_ns), "value");
        defaults->removeObjectForKey("key"_ns);
        EXPECT_FALSE(defaults->objectForKey("key"_ns));
    }
    EXPECT_EQ(fs::file_size(m_place / "a file"), 1U);
    moveTo(m_place / "defaults");
}

TEST_F(UserDefaultsFile, withoutRoomTheOldValuesStay) {
    defaults->setObject_forKey("old"_ns, "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    const std::string before = text();
    const int result = test::resultInChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{64, 64};
        setrlimit(RLIMIT_FSIZE, &limit);
        defaults->setObject_forKey(NSString::fromUtf16(std::u16string(1000, u'x')), "key"_ns);
        return (defaults->synchronize() ? 1 : 0) + (defaults->stringForKey("key"_ns)->length() == 1000 ? 2 : 0);
    });
    EXPECT_EQ(result, 2) << "it says so, and the value stays readable";
    EXPECT_EQ(text(), before);
    EXPECT_FALSE(fs::exists(file(".com.example.desk.new")));
    restart();
    EXPECT_EQ(stored("key"_ns), "old");
}

TEST_F(UserDefaultsFile, whatAnInterruptedWriteLeftIsSweptAway) {
    write("half of it", ".com.example.desk.new");
    defaults->setObject_forKey("value"_ns, "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_FALSE(fs::exists(file(".com.example.desk.new")));

    std::ofstream(m_place / "elsewhere") << "untouched";
    fs::create_symlink(m_place / "elsewhere", file(".com.example.desk.new"));
    defaults->setObject_forKey("again"_ns, "key"_ns);
    EXPECT_TRUE(defaults->synchronize()) << "a link is not followed";
    EXPECT_EQ(fs::file_size(m_place / "elsewhere"), 9U);

    fs::create_directories(file(".com.example.desk.new") / "inner");
    defaults->setObject_forKey("third"_ns, "key"_ns);
    EXPECT_FALSE(defaults->synchronize());
    fs::remove_all(file(".com.example.desk.new"));
    EXPECT_TRUE(defaults->synchronize());
    restart();
    EXPECT_EQ(stored("key"_ns), "third");
}

TEST_F(UserDefaultsFile, whatAnotherProcessWroteIsSeenAfterSynchronize) {
    defaults->setObject_forKey("mine"_ns, "both"_ns);
    defaults->setObject_forKey("mine"_ns, "removed there"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(test::resultInChild([&] {
                  defaults->setObject_forKey("theirs"_ns, "new"_ns);
                  defaults->setObject_forKey("theirs"_ns, "both"_ns);
                  defaults->removeObjectForKey("removed there"_ns);
                  return defaults->synchronize() ? 0 : 1;
              }),
              0);
    EXPECT_FALSE(defaults->objectForKey("new"_ns)) << "not yet";
    defaults->setObject_forKey("mine"_ns, "also new"_ns);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored("new"_ns), "theirs");
    EXPECT_EQ(stored("both"_ns), "theirs");
    EXPECT_FALSE(defaults->objectForKey("removed there"_ns));
    restart();
    EXPECT_EQ(defaults->dictionaryRepresentation()->count(), 3U);
}

TEST_F(UserDefaultsFile, theLaterOfTwoValuesStays) {
    EXPECT_EQ(test::resultInChild([&] {
                  defaults->setObject_forKey("theirs"_ns, "key"_ns);
                  return defaults->synchronize() ? 0 : 1;
              }),
              0);
    defaults->setObject_forKey("mine"_ns, "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    restart();
    EXPECT_EQ(stored("key"_ns), "mine");
}

TEST_F(UserDefaultsFile, processesThatWriteAtOnceLoseNothing) {
    constexpr int processes = 4;
    constexpr int values = 25;
    pid_t children[processes];
    for (int process = 0; process < processes; ++process) {
        children[process] = fork();
        if (children[process] == 0) {
            bool written = true;
            for (int value = 0; value < values; ++value) {
                defaults->setInteger_forKey(value, NSString::stringWithFormat("%d.%d"_ns, process, value));
                written = defaults->synchronize() && written;
            }
            _exit(written ? 0 : 1);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_TRUE(defaults->synchronize());
    for (int process = 0; process < processes; ++process) {
        for (int value = 0; value < values; ++value) {
            const auto key = NSString::stringWithFormat("%d.%d"_ns, process, value);
            EXPECT_TRUE(box(value)->isEqual(defaults->objectForKey(key))) << key->utf8();
        }
    }
    EXPECT_EQ(files(), "com.example.desk.json");
}

TEST_F(UserDefaultsFile, anOrdinaryExitWritesWhatChanged) {
    const pid_t orderly = fork();
    if (orderly == 0) {
        defaults->setObject_forKey("kept"_ns, "orderly"_ns);
        std::exit(0);
    }
    int status = -1;
    EXPECT_EQ(waitpid(orderly, &status, 0), orderly);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(test::resultInChild([&] {
                  defaults->setObject_forKey("lost"_ns, "abrupt"_ns);
                  return 0;
              }),
              0);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored("orderly"_ns), "kept");
    EXPECT_FALSE(defaults->objectForKey("abrupt"_ns));
}

TEST_F(UserDefaultsFile, overridesStandInFrontOfEachOther) {
    defaults->setObject_forKey("outer"_ns, "key"_ns);
    {
        const UserDefaultsFolderOverride inner((m_place / "inner").string());
        EXPECT_FALSE(defaults->objectForKey("key"_ns));
        defaults->setObject_forKey("inner"_ns, "key"_ns);
    }
    EXPECT_EQ(stored("key"_ns), "outer") << "not written, and not lost";
    EXPECT_TRUE(fs::exists(m_place / "inner" / "com.example.desk.json")) << "the end writes what changed";
    EXPECT_FALSE(fs::exists(file()));
}

TEST_F(UserDefaultsFile, aRelativeFolderStaysWhereItWas) {
    const fs::path home = fs::current_path();
    fs::current_path(m_place);
    moveTo("relative");
    fs::current_path("/");
    defaults->setObject_forKey("value"_ns, "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    fs::current_path(home);
    EXPECT_TRUE(fs::exists(m_place / "relative" / "com.example.desk.json"));
}

TEST_F(UserDefaultsFile, readingWaitsForNobody) {
    defaults->setObject_forKey("value"_ns, "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    // What another process holds while it writes.
    const int held = open(file(".com.example.desk.lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX | LOCK_NB), 0);
    restart();
    EXPECT_EQ(stored("key"_ns), "value");
    EXPECT_TRUE(defaults->synchronize()) << "there is nothing to write";
    const pid_t writer = fork();
    if (writer == 0) {
        // The lock belongs to both until one of them lets its copy go.
        close(held);
        defaults->setObject_forKey("late"_ns, "key"_ns);
        _exit(defaults->synchronize() ? 0 : 1);
    }
    usleep(100000);
    int status = -1;
    EXPECT_EQ(waitpid(writer, &status, WNOHANG), 0) << "writing waits";
    close(held);
    EXPECT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored("key"_ns), "late");
}

TEST(UserDefaultsFolder, isTheUsersConfigurationFolder) {
#if defined(__APPLE__)
    GTEST_SKIP() << "the folder of macOS knows no variable";
#else
    char place[] = "/tmp/zrbasic-XXXXXX";
    if (!test::isFreshProcess()) {
        ASSERT_NE(mkdtemp(place), nullptr);
    }
    const std::string folder = place;
    if (test::runsInFreshProcess({"HOME=" + folder, "XDG_CONFIG_HOME=" + folder + "/xdg"})) {
        EXPECT_TRUE(fs::exists(folder + "/xdg/zrbasic/com.example.place.json"));
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
        fs::remove_all(folder);
        return;
    }
    const BundleInformation application(nullptr, nullptr, nullptr, "com.example.place");
    NSUserDefaults::standardUserDefaults()->setObject_forKey("here"_ns, "key"_ns);
    EXPECT_TRUE(NSUserDefaults::standardUserDefaults()->synchronize());
#endif
}

TEST(UserDefaultsFolder, isInTheHomeFolderWithoutAnAbsoluteConfigurationFolder) {
#if defined(__APPLE__)
    GTEST_SKIP() << "the folder of macOS knows no variable";
#else
    for (const char* const configuration : {"", "relative/folder"}) {
        char place[] = "/tmp/zrbasic-XXXXXX";
        if (!test::isFreshProcess()) {
            ASSERT_NE(mkdtemp(place), nullptr);
        }
        const std::string folder = place;
        if (test::runsInFreshProcess({"HOME=" + folder, std::string("XDG_CONFIG_HOME=") + configuration})) {
            EXPECT_TRUE(fs::exists(folder + "/.config/zrbasic/com.example.place.json"));
            fs::remove_all(folder);
            continue;
        }
        const BundleInformation application(nullptr, nullptr, nullptr, "com.example.place");
        // Written by the exit.
        NSUserDefaults::standardUserDefaults()->setObject_forKey("here"_ns, "key"_ns);
        return;
    }
#endif
}

} // namespace

} // namespace zr
