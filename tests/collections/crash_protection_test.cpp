#include <zrbasic/collections/crash_protection.h>

#include "../foundation/checks.h"

#include <zrbasic/platform/foundation/file_manager.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <limits>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger hugeIndex = std::numeric_limits<NSUInteger>::max();

Ref<NSArray> two() {
    return array({"a"_ns, "b"_ns});
}

Ref<NSArray> single() {
    return array({"a"_ns});
}

/// Collects what the hook is told, for as long as it stands.
class HookLog {
  public:
    HookLog() {
        text().clear();
        m_original = class_replaceMethod(
            NSArray::classObject(), "crashAtIndex:"_sel,
            imp(+[](NSObject*, SEL, std::uint64_t index) { text() += std::to_string(index) + ' '; }));
    }
    ~HookLog() { class_replaceMethod(NSArray::classObject(), "crashAtIndex:"_sel, m_original); }
    HookLog(const HookLog&) = delete;
    HookLog& operator=(const HookLog&) = delete;

    static std::string& text() {
        static std::string log;
        return log;
    }

  private:
    IMP m_original;
};

bool isOpen() {
    return raisedName([] { static_cast<void>(two()->objectAtIndex(2)); }).empty();
}

TEST(CrashProtection, isOffUntilSwitchedOn) {
    if (isOpen()) {
        GTEST_SKIP() << "another test of this process has switched it on for good";
    }
    const HookLog hook;
    EXPECT_EQ(raisedName([] { static_cast<void>(two()->objectAtIndex(5)); }), NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>(two()->objectAtIndexedSubscript(5)); }), NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>(single()->objectAtIndex(1)); }), NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>(array({})->objectAtIndex(0)); }), NSRangeException);
    EXPECT_EQ(hook.text(), "");
}

TEST(CrashProtection, beforeItIsOnTheCounterpartsReadForgivingly) {
    if (isOpen()) {
        GTEST_SKIP() << "another test of this process has switched it on for good";
    }
    const HookLog hook;
    EXPECT_FALSE(zr_NSArrayI_objectAtIndex(two(), 5));
    EXPECT_FALSE(zr_NSArrayI_objectAtIndexedSubscript(two(), 6));
    EXPECT_FALSE(zr_NSSingleObjectArrayI_objectAtIndex(single(), 7));
    EXPECT_FALSE(zr_NSArray0_objectAtIndex(array({}), 8));
    EXPECT_EQ(hook.text(), "5 6 7 8 ");
    EXPECT_EQ(zr_NSArrayI_objectAtIndex(two(), 1).get(), ("b"_ns).get());
}

TEST(CrashProtection, aReadPastTheEndGivesNullAndCallsTheHookOnce) {
    zr_openCrashProtector();
    const HookLog hook;
    EXPECT_FALSE(two()->objectAtIndex(5));
    EXPECT_EQ(hook.text(), "5 ");
    EXPECT_FALSE(array({})->objectAtIndex(0));
    EXPECT_EQ(hook.text(), "5 0 ");
    EXPECT_FALSE(single()->objectAtIndex(1));
    EXPECT_FALSE(two()->objectAtIndexedSubscript(2));
    EXPECT_EQ(hook.text(), "5 0 1 2 ");
    EXPECT_FALSE(two()->objectAtIndex(hugeIndex));
    EXPECT_EQ(hook.text(), "5 0 1 2 18446744073709551615 ");
}

TEST(CrashProtection, messagesAreProtectedAsCallsAre) {
    zr_openCrashProtector();
    const HookLog hook;
    EXPECT_FALSE(send<id>(two(), "objectAtIndex:"_sel, 5));
    EXPECT_FALSE(send<id>(two(), "objectAtIndexedSubscript:"_sel, 6));
    EXPECT_FALSE(send<id>(single(), "objectAtIndex:"_sel, 7));
    EXPECT_FALSE(send<id>(array({}), "objectAtIndex:"_sel, 8));
    EXPECT_EQ(hook.text(), "5 6 7 8 ");
}

TEST(CrashProtection, goodIndicesReadAsBefore) {
    zr_openCrashProtector();
    const HookLog hook;
    EXPECT_EQ(two()->objectAtIndex(0).get(), ("a"_ns).get());
    EXPECT_EQ(two()->objectAtIndex(1).get(), ("b"_ns).get());
    EXPECT_EQ(two()->objectAtIndexedSubscript(1).get(), ("b"_ns).get());
    EXPECT_EQ(single()->objectAtIndex(0).get(), ("a"_ns).get());
    EXPECT_EQ(single()->objectAtIndexedSubscript(0).get(), ("a"_ns).get());
    EXPECT_EQ(two()->firstObject().get(), ("a"_ns).get());
    EXPECT_EQ(hook.text(), "");
}

TEST(CrashProtection, mutableArraysAndTheirCopiesStillRaise) {
    zr_openCrashProtector();
    const HookLog hook;
    const Ref<NSMutableArray> changing = NSMutableArray::arrayWithArray(two());
    const Ref<NSArray> copied(cast<NSArray>(changing->copy()));
    EXPECT_EQ(raised([&] { static_cast<void>(changing->objectAtIndex(5)); }),
              "NSRangeException: *** -[__NSArrayM objectAtIndex:]: index 5 beyond bounds [0 .. 1]");
    EXPECT_EQ(raisedName([&] { static_cast<void>(changing->objectAtIndexedSubscript(5)); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { static_cast<void>(copied->objectAtIndex(5)); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { static_cast<void>(copied->objectAtIndexedSubscript(5)); }), NSRangeException);
    EXPECT_EQ(raisedName([] { send<id>(NSMutableArray::array(), "objectAtIndex:"_sel, 0); }), NSRangeException);
    EXPECT_EQ(hook.text(), "");
}

TEST(CrashProtection, subscriptsOfShortArraysStillRaise) {
    zr_openCrashProtector();
    const HookLog hook;
    EXPECT_EQ(raised([] { static_cast<void>(single()->objectAtIndexedSubscript(1)); }),
              "NSRangeException: *** -[__NSSingleObjectArrayI objectAtIndexedSubscript:]: index 1 beyond bounds "
              "[0 .. 0]");
    EXPECT_EQ(raisedName([] { static_cast<void>(array({})->objectAtIndexedSubscript(0)); }), NSRangeException);
    EXPECT_EQ(raisedName([] { send<id>(array({}), "objectAtIndexedSubscript:"_sel, 0); }), NSRangeException);
    EXPECT_EQ(hook.text(), "");
}

TEST(CrashProtection, otherReadsPastTheEndStillRaise) {
    zr_openCrashProtector();
    EXPECT_EQ(raisedName([] { static_cast<void>(two()->subarrayWithRange({1, 5})); }), NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>("ab"_ns->characterAtIndex(2)); }), NSRangeException);
}

TEST(CrashProtection, switchingOnAgainChangesNothing) {
    zr_openCrashProtector();
    zr_openCrashProtector();
    EXPECT_FALSE(two()->objectAtIndex(5));
    EXPECT_EQ(two()->objectAtIndex(1).get(), ("b"_ns).get());
    send<void>(NSArray::classObject(), "zr_openCrashProtector"_sel);
    EXPECT_FALSE(two()->objectAtIndexedSubscript(5));
    EXPECT_FALSE(single()->objectAtIndex(5));
    EXPECT_FALSE(array({})->objectAtIndex(5));
}

TEST(CrashProtection, theExchangedNamesRunTheUnprotectedReads) {
    zr_openCrashProtector();
    EXPECT_EQ(raised([] { static_cast<void>(zr_NSArrayI_objectAtIndex(two(), 5)); }),
              "NSRangeException: *** -[__NSArrayI objectAtIndex:]: index 5 beyond bounds [0 .. 1]");
    EXPECT_EQ(raisedName([] { static_cast<void>(zr_NSArrayI_objectAtIndexedSubscript(two(), 5)); }), NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>(zr_NSSingleObjectArrayI_objectAtIndex(single(), 5)); }),
              NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>(zr_NSArray0_objectAtIndex(array({}), 0)); }), NSRangeException);
    EXPECT_EQ(zr_NSArrayI_objectAtIndex(two(), 1).get(), ("b"_ns).get());
    EXPECT_FALSE(zr_NSArrayI_objectAtIndex(nullptr, 1));
}

TEST(CrashProtection, anObjectOfASubclassObservesItsOwnFailures) {
    zr_openCrashProtector();
    const HookLog hook;
    static NSUInteger observed = 0;
    Class* const spy = objc_allocateClassPair(objc_getClass("__NSArrayI"), "SpyArray");
    class_addMethod(spy, "crashAtIndex:"_sel, imp(+[](NSObject*, SEL, std::uint64_t index) { observed = index; }));
    objc_registerClassPair(spy);
    const Ref<NSArray> watched = two();
    object_setClass(watched, spy);
    EXPECT_FALSE(watched->objectAtIndex(9));
    EXPECT_EQ(observed, 9U);
    EXPECT_EQ(watched->objectAtIndex(1).get(), ("b"_ns).get());
    EXPECT_EQ(hook.text(), "");
    EXPECT_FALSE(two()->objectAtIndex(3));
    EXPECT_EQ(hook.text(), "3 ");
}

TEST(CrashProtection, theHookItselfDoesNothing) {
    crashAtIndex(two(), 5);
    crashAtIndex(nullptr, 5);
    send<void>(two(), "crashAtIndex:"_sel, 5);
    EXPECT_TRUE(array({})->respondsToSelector("crashAtIndex:"_sel));
    EXPECT_TRUE(NSMutableArray::array()->respondsToSelector("crashAtIndex:"_sel));
}

// --- exchanging methods

/// A class with an operation of its own, and a child that inherits it.
class Parent : public NSObject {
    ZR_OBJECT(Parent, NSObject)

  public:
    Ref<NSString> first() { return "first"_ns; }
    ZR_METHOD(first, "first")
    Ref<NSString> second() { return "second"_ns; }
    ZR_METHOD(second, "second")
};

class Child : public Parent {
    ZR_OBJECT(Child, Parent)

  public:
    Ref<NSString> third() { return "third"_ns; }
    ZR_METHOD(third, "third")
};

class OtherParent : public Parent {
    ZR_OBJECT(OtherParent, Parent)

  public:
    Ref<NSString> own() { return "own"_ns; }
    ZR_METHOD(own, "own")
    Ref<NSString> replacement() { return "replacement"_ns; }
    ZR_METHOD(replacement, "replacement")
};

std::string answer(NSObject* object, SEL selector) {
    const auto text = send<Ref<NSString>>(object, selector);
    return text ? text->utf8() : "nothing";
}

TEST(MethodExchange, ofOwnOperationsSwapsThemAndTwiceRestores) {
    const Ref<OtherParent> object = make<OtherParent>();
    swizzleInstanceMethod(OtherParent::classObject(), "own"_sel, "replacement"_sel);
    EXPECT_EQ(answer(object, "own"_sel), "replacement");
    EXPECT_EQ(answer(object, "replacement"_sel), "own");
    swizzleInstanceMethod(OtherParent::classObject(), "own"_sel, "replacement"_sel);
    EXPECT_EQ(answer(object, "own"_sel), "own");
    EXPECT_EQ(answer(object, "replacement"_sel), "replacement");
}

TEST(MethodExchange, ofAnInheritedOperationLeavesTheParentAlone) {
    const Ref<Child> child = make<Child>();
    const Ref<Parent> parent = make<Parent>();
    swizzleInstanceMethod(Child::classObject(), "first"_sel, "third"_sel);
    EXPECT_EQ(answer(child, "first"_sel), "third");
    EXPECT_EQ(answer(child, "third"_sel), "first");
    EXPECT_EQ(answer(parent, "first"_sel), "first");
    EXPECT_FALSE(parent->respondsToSelector("third"_sel));
}

TEST(MethodExchange, oddArgumentsDoNothing) {
    const Ref<Parent> parent = make<Parent>();
    swizzleInstanceMethod(nullptr, "first"_sel, "second"_sel);
    swizzleInstanceMethod(Parent::classObject(), "first"_sel, "noSuchOperation"_sel);
    swizzleInstanceMethod(Parent::classObject(), "first"_sel, SEL());
    swizzleInstanceMethod(Parent::classObject(), SEL(), "first"_sel);
    swizzleInstanceMethod(Parent::classObject(), "first"_sel, "first"_sel);
    EXPECT_EQ(answer(parent, "first"_sel), "first");
    EXPECT_EQ(answer(parent, "second"_sel), "second");
    EXPECT_FALSE(parent->respondsToSelector("noSuchOperation"_sel));
}

TEST(MethodExchange, anUnknownProtectedNameGetsTheReplacement) {
    const Ref<Parent> parent = make<Parent>();
    swizzleInstanceMethod(Parent::classObject(), "brandNew"_sel, "second"_sel);
    EXPECT_EQ(answer(parent, "brandNew"_sel), "second");
    EXPECT_EQ(answer(parent, "second"_sel), "second");
}

// --- removing the items of a path

/// Every test has a directory of its own, with two files and a folder in it, and another one beside it.
class RemovingItems : public testing::Test {
  protected:
    RemovingItems() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zrbasic-XXXXXX").string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        m_base = pattern;
        m_home = std::filesystem::current_path();
        for (const char* const name : {"full/a", "full/b", "full/folder/c", "elsewhere/a", "elsewhere/kept"}) {
            std::filesystem::create_directories((m_base / name).parent_path());
            files->createFileAtPath_contents_attributes(path(name), nullptr, nullptr);
        }
    }
    ~RemovingItems() override {
        std::filesystem::current_path(m_home);
        std::filesystem::remove_all(m_base);
    }

    [[nodiscard]] Ref<NSString> path(const char* name) const { return NSString::fromUtf8((m_base / name).string()); }
    [[nodiscard]] NSUInteger countIn(const char* name) const {
        return files->contentsOfDirectoryAtPath_error(path(name), nullptr)->count();
    }

    NSFileManager* const files = NSFileManager::defaultManager();
    std::filesystem::path m_base;
    std::filesystem::path m_home;
};

TEST_F(RemovingItems, theDirectorysOwnEntriesGoWhenItIsTheCurrentOne) {
    ASSERT_TRUE(files->changeCurrentDirectoryPath(path("full")));
    removeItemsOfPath(files, path("full"));
    EXPECT_EQ(countIn("full"), 0U);
    EXPECT_TRUE(files->fileExistsAtPath(path("full")));
    EXPECT_EQ(countIn("elsewhere"), 2U);
}

TEST_F(RemovingItems, theNamesMeanItemsOfTheCurrentDirectory) {
    ASSERT_TRUE(files->changeCurrentDirectoryPath(path("elsewhere")));
    removeItemsOfPath(files, path("full"));
    EXPECT_EQ(countIn("full"), 3U);
    EXPECT_EQ(countIn("elsewhere"), 1U);
    EXPECT_TRUE(files->fileExistsAtPath(path("elsewhere/kept")));
    EXPECT_FALSE(files->fileExistsAtPath(path("elsewhere/a")));
}

TEST_F(RemovingItems, pathsThatNameNoDirectoryDoNothing) {
    ASSERT_TRUE(files->changeCurrentDirectoryPath(path("full")));
    removeItemsOfPath(files, nullptr);
    removeItemsOfPath(files, ""_ns);
    removeItemsOfPath(files, " \t"_ns);
    removeItemsOfPath(files, "\n"_ns);
    removeItemsOfPath(files, path("nothing"));
    removeItemsOfPath(files, "a"_ns);
    removeItemsOfPath(nullptr, path("full"));
    send<void>(files, "removeItemsOfPath:"_sel, NSNull::null());
    send<void>(files, "removeItemsOfPath:"_sel, box(1));
    EXPECT_EQ(countIn("full"), 3U);
}

TEST_F(RemovingItems, isAMessageOfTheFileManager) {
    ASSERT_TRUE(files->changeCurrentDirectoryPath(path("full")));
    send<void>(files, "removeItemsOfPath:"_sel, "."_ns);
    EXPECT_EQ(countIn("full"), 0U);
}

} // namespace

} // namespace zr
