#include <zrbasic/ui/app.h>

#include "../foundation/fresh_process.h"
#include "../foundation/temporary_defaults.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/number.h>

#include <unistd.h>

#include <cmath>

namespace zr {

namespace {

/// The moment when the test program had been loaded and began to run.
const double programStart = NSDate::currentTimeIntervalSinceReferenceDate() + NSTimeIntervalSince1970;

class App : public test::TemporaryDefaults {
  protected:
    [[nodiscard]] static std::string previous() {
        const id value = ZRXApp::previousStartupVersion();
        return value ? value->description()->utf8() : "nothing";
    }
};

std::string textOf(const Ref<NSString>& text) {
    return text ? text->utf8() : "nothing";
}

TEST_F(App, startsWhenTheLibraryIsLoaded) {
    const Ref<ZRXApp> app = ZRXApp::shared();
    ASSERT_TRUE(app);
    const double start = app->startupDate()->timeIntervalSince1970();
    EXPECT_LT(std::abs(start - programStart), 5) << "not when it is first asked for";
    EXPECT_LE(start, NSDate::date()->timeIntervalSince1970());
    EXPECT_EQ(ZRXApp::shared(), app);
    ZRXApp::load();
    EXPECT_EQ(ZRXApp::shared(), app);
    EXPECT_EQ(app->startupDate()->timeIntervalSince1970(), start);
}

TEST_F(App, startsBeforeItIsAskedForTheFirstTime) {
    if (test::runsInFreshProcess()) {
        return;
    }
    usleep(300000);
    const double now = NSDate::currentTimeIntervalSinceReferenceDate() + NSTimeIntervalSince1970;
    EXPECT_GT(now - ZRXApp::shared()->startupDate()->timeIntervalSince1970(), 0.25);
}

TEST_F(App, countsTheStartInMilliseconds) {
    const double interval = ZRXApp::shared()->startupTimeInterval();
    EXPECT_EQ(interval, ZRXApp::shared()->startupDate()->timeIntervalSince1970() * 1000.0) << "with its fraction";
    EXPECT_GT(interval, 1.6e12);
    EXPECT_LT(interval, 1e13);
    EXPECT_EQ(startupTimeInterval<ZRXApp>(), interval);
    EXPECT_EQ(send<double>(ZRXApp::classObject(), "startupTimeInterval"_sel), interval);
    EXPECT_EQ(send<double>(ZRXApp::shared(), "startupTimeInterval"_sel), interval);
}

TEST_F(App, knowsTheFieldsOfTheStart) {
    const Ref<NSDateComponents> fields = ZRXApp::shared()->startupDateComponents();
    ASSERT_TRUE(fields);
    EXPECT_TRUE(
        fields->isEqual(NSCalendar::currentCalendar()->components_fromDate(764, ZRXApp::shared()->startupDate())));
    EXPECT_NE(fields->weekday(), NSDateComponentUndefined);
    EXPECT_NE(fields->second(), NSDateComponentUndefined);
    EXPECT_EQ(ZRXApp::shared()->startupDateComponents(), fields) << "computed once and kept";
    EXPECT_EQ(startupDateComponents<ZRXApp>(), fields);
    EXPECT_EQ(send<id>(ZRXApp::classObject(), "startupDateComponents"_sel), fields);
    EXPECT_FALSE(make<ZRXApp>()->startupDateComponents()) << "another object has not started";
}

TEST_F(App, knowsItsVersionOnceThereIsOne) {
    if (test::runsInFreshProcess()) {
        return;
    }
    EXPECT_EQ(textOf(ZRXApp::appVersion()), "nothing");
    EXPECT_EQ(textOf(ZRXApp::appBuildVersion()), "nothing");
    EXPECT_EQ(textOf(ZRXApp::appBundleName()), "Desk");
    {
        const BundleInformation first("Terminal", "1.4.0", nullptr, nullptr);
        EXPECT_EQ(textOf(ZRXApp::appVersion()), "1.4.0") << "nothing found is looked up again";
        EXPECT_EQ(textOf(ZRXApp::appBuildVersion()), "nothing");
        EXPECT_EQ(textOf(ZRXApp::appBundleName()), "Desk") << "what was found never changes";
    }
    const BundleInformation second("Terminal", "2.0", "77", nullptr);
    EXPECT_EQ(textOf(ZRXApp::appVersion()), "1.4.0");
    EXPECT_EQ(textOf(ZRXApp::appBuildVersion()), "77");
    EXPECT_EQ(ZRXApp::appVersion(), ZRXApp::appVersion());
    EXPECT_EQ(textOf(send<Ref<NSString>>(ZRXApp::classObject(), "appVersion"_sel)), "1.4.0");
    EXPECT_EQ(textOf(send<Ref<NSString>>(ZRXApp::classObject(), "appBuildVersion"_sel)), "77");
    EXPECT_EQ(textOf(send<Ref<NSString>>(ZRXApp::classObject(), "appBundleName"_sel)), "Desk");
}

TEST_F(App, remembersTheVersionOfTheStartBefore) {
    if (test::runsInFreshProcess()) {
        return;
    }
    const BundleInformation application("Desk", "1.4.0", nullptr, "com.example.desk");
    EXPECT_EQ(previous(), "nothing");
    defaults->setObject_forKey("1.3.9"_ns, "com.zarvo.previousStartupAppVersion"_ns);
    EXPECT_EQ(previous(), "1.3.9");
    ZRXApp::cacheCurrentAppVersion();
    EXPECT_EQ(previous(), "1.4.0") << "asked too late, the two are equal";
    EXPECT_NE(text().find(R"("com.zarvo.previousStartupAppVersion" : "1.4.0")"), std::string::npos)
        << "written at once";
    ZRXApp::cacheCurrentAppVersion();
    restart();
    EXPECT_EQ(previous(), "1.4.0");
    send<>(ZRXApp::classObject(), "cacheCurrentAppVersion"_sel);
    EXPECT_EQ(send<Ref<NSString>>(ZRXApp::classObject(), "previousStartupVersion"_sel)->utf8(), "1.4.0");
}

TEST_F(App, withoutAVersionLeavesThePreviousOne) {
    if (test::runsInFreshProcess()) {
        return;
    }
    ZRXApp::cacheCurrentAppVersion();
    EXPECT_EQ(previous(), "nothing");
    EXPECT_EQ(files(), "");
    defaults->setObject_forKey("1.3.9"_ns, "com.zarvo.previousStartupAppVersion"_ns);
    ZRXApp::cacheCurrentAppVersion();
    EXPECT_EQ(previous(), "1.3.9");
    EXPECT_EQ(files(), "") << "nor is anything written";
}

TEST_F(App, givesWhateverIsStoredAsThePreviousVersion) {
    const auto key = "com.zarvo.previousStartupAppVersion"_ns;
    defaults->setObject_forKey(array({box(1), box(4)}), key);
    EXPECT_TRUE(cast<NSArray>(ZRXApp::previousStartupVersion()));
    defaults->setObject_forKey(box(14), key);
    EXPECT_TRUE(cast<NSNumber>(ZRXApp::previousStartupVersion()));
    defaults->removeObjectForKey(key);
    EXPECT_FALSE(ZRXApp::previousStartupVersion());
}

TEST_F(App, aFolderThatCannotBeWrittenIsSurvived) {
    if (test::runsInFreshProcess()) {
        return;
    }
    const BundleInformation application("Desk", "1.4.0", nullptr, "com.example.desk");
    moveTo("/proc/zrbasic");
    ZRXApp::cacheCurrentAppVersion();
    EXPECT_EQ(previous(), "1.4.0");
    moveTo(m_place / "defaults");
}

} // namespace

} // namespace zr
