#include <zrbasic/ui/device.h>

#include "../foundation/fresh_process.h"
#include "../foundation/temporary_defaults.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/machine_identifier.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/process_info.h>
#include <zrbasic/platform/foundation/uuid.h>

namespace zr {

namespace {

using System = SystemVersionOverride::System;

class Device : public test::TemporaryDefaults {
  protected:
    static Ref<NSString> none() { return nullptr; }
    static bool isIdentifier(NSString* text) {
        return make<NSUUID>(&NSUUID::initWithUUIDString, text) && text->uppercaseString()->isEqual(text);
    }
};

TEST_F(Device, theKeysAreThoseThatApplicationsUse) {
    EXPECT_EQ(ZRPlatformUUIDUserDefaultsKey()->utf8(), "com.zarvo.defaultUUIDKey");
    EXPECT_EQ(ZRRandomPlatformUUIDUserDefaulsKey()->utf8(), "com.zarvo.test.deviceID");
}

TEST_F(Device, hasTheMachinesIdentifierAndStoresNothing) {
    const MachineIdentifierOverride machine([] { return "11111111-2222-4333-8444-555555555555"_ns; });
    const auto device = make<ZRXDevice>();
    EXPECT_EQ(device->platformUUID()->utf8(), "11111111-2222-4333-8444-555555555555");
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(files(), "");
}

TEST_F(Device, ignoresWhatIsStoredWhenTheMachineHasAnIdentifier) {
    defaults->setObject_forKey("OLD"_ns, ZRPlatformUUIDUserDefaultsKey());
    const MachineIdentifierOverride machine([] { return "MACHINE"_ns; });
    EXPECT_EQ(make<ZRXDevice>()->platformUUID()->utf8(), "MACHINE");
    EXPECT_EQ(defaults->stringForKey(ZRPlatformUUIDUserDefaultsKey())->utf8(), "OLD") << "and leaves it in place";
}

TEST_F(Device, makesAnIdentifierOnceForAMachineWithoutOne) {
    const MachineIdentifierOverride machine(none);
    const Ref<NSString> first = make<ZRXDevice>()->platformUUID();
    ASSERT_TRUE(first);
    EXPECT_TRUE(isIdentifier(first)) << first->utf8();
    EXPECT_EQ(first->utf8()[14], '4') << "a random one";
    EXPECT_NE(text().find(first->utf8()), std::string::npos) << "written at once";
    for (int start = 0; start < 3; ++start) {
        restart();
        EXPECT_TRUE(first->isEqual(make<ZRXDevice>()->platformUUID()));
    }
    EXPECT_TRUE(dictionary({{ZRPlatformUUIDUserDefaultsKey(), first}})
                    ->isEqual(defaults->persistentDomainForName("com.example.desk"_ns)))
        << "the other key is never touched";
}

TEST_F(Device, makesDifferentIdentifiersForDifferentUsers) {
    const MachineIdentifierOverride machine(none);
    const Ref<NSString> first = make<ZRXDevice>()->platformUUID();
    moveTo(m_place / "another user");
    EXPECT_FALSE(first->isEqual(make<ZRXDevice>()->platformUUID()));
}

TEST_F(Device, takesWhatIsStoredAsItIs) {
    const MachineIdentifierOverride machine(none);
    defaults->setObject_forKey("any text"_ns, ZRPlatformUUIDUserDefaultsKey());
    EXPECT_EQ(make<ZRXDevice>()->platformUUID()->utf8(), "any text");
    defaults->setObject_forKey(""_ns, ZRPlatformUUIDUserDefaultsKey());
    EXPECT_EQ(make<ZRXDevice>()->platformUUID()->utf8(), "");
    defaults->setObject_forKey(array({box(1)}), ZRPlatformUUIDUserDefaultsKey());
    EXPECT_FALSE(make<ZRXDevice>()->platformUUID()) << "something is stored, if not a text";
    EXPECT_TRUE(defaults->arrayForKey(ZRPlatformUUIDUserDefaultsKey()));
}

TEST_F(Device, neverReadsTheOtherKey) {
    const MachineIdentifierOverride machine(none);
    defaults->setObject_forKey("TEST"_ns, ZRRandomPlatformUUIDUserDefaulsKey());
    EXPECT_NE(make<ZRXDevice>()->platformUUID()->utf8(), "TEST");
    EXPECT_EQ(defaults->stringForKey(ZRRandomPlatformUUIDUserDefaulsKey())->utf8(), "TEST");
}

TEST_F(Device, hasAnIdentifierEvenWhenNothingCanBeStored) {
    const MachineIdentifierOverride machine(none);
    moveTo("/proc/zrbasic");
    const Ref<NSString> identifier = make<ZRXDevice>()->platformUUID();
    EXPECT_TRUE(isIdentifier(identifier));
    EXPECT_TRUE(identifier->isEqual(make<ZRXDevice>()->platformUUID())) << "at least until the process ends";
    moveTo(m_place / "defaults");
}

TEST_F(Device, looksTheIdentifierUpAgainWhenAsked) {
    const auto device = [] {
        const MachineIdentifierOverride machine([] { return "FIRST"_ns; });
        return make<ZRXDevice>();
    }();
    const MachineIdentifierOverride machine([] { return "SECOND"_ns; });
    EXPECT_EQ(device->platformUUID()->utf8(), "FIRST");
    device->getIOPlatformExpertDevice();
    EXPECT_EQ(device->platformUUID()->utf8(), "SECOND");
    const MachineIdentifierOverride third([] { return "THIRD"_ns; });
    send<>(device, "getIOPlatformExpertDevice"_sel);
    EXPECT_EQ(device->platformUUID()->utf8(), "THIRD");
}

TEST_F(Device, theFirstLookUpRunsWithoutALock) {
    if (test::runsInFreshProcess()) {
        return;
    }
    int lookUps = 0;
    Ref<ZRXDevice> device;
    const MachineIdentifierOverride machine([&] {
        ++lookUps;
        if (device) {
            EXPECT_NE(dispatch_semaphore_wait(device->lock()->semaphore_lock_t(), DISPATCH_TIME_NOW), 0)
                << "later ones hold it";
        }
        return "MACHINE"_ns;
    });
    EXPECT_FALSE(make<ZRXDevice>()->lock());
    device = ZRXDevice::shared();
    EXPECT_EQ(lookUps, 2);
    ASSERT_TRUE(device->lock());
    device->getIOPlatformExpertDevice();
    EXPECT_EQ(lookUps, 3);
    EXPECT_EQ(dispatch_semaphore_wait(device->lock()->semaphore_lock_t(), DISPATCH_TIME_NOW), 0) << "given back";
    dispatch_semaphore_signal(device->lock()->semaphore_lock_t());
    EXPECT_EQ(ZRXDevice::shared(), device);
    EXPECT_EQ(platformUUID<ZRXDevice>()->utf8(), "MACHINE");
    EXPECT_EQ(send<Ref<NSString>>(ZRXDevice::classObject(), "platformUUID"_sel)->utf8(), "MACHINE");
    EXPECT_EQ(lookUps, 3) << "reading looks nothing up";
}

TEST_F(Device, readingDoesNotWaitForTheLock) {
    const MachineIdentifierOverride machine([] { return "MACHINE"_ns; });
    const auto device = make<ZRXDevice>();
    device->setLock(make<ZRSemaphoreLock>());
    device->lock()->lock();
    EXPECT_EQ(device->platformUUID()->utf8(), "MACHINE");
    EXPECT_EQ(device->systemVersion()->utf8().empty(), false);
    device->lock()->unlock();
    EXPECT_EQ(send<id>(device, "lock"_sel), device->lock());
    send<>(device, "setLock:"_sel, nullptr);
    EXPECT_FALSE(device->lock());
    device->getIOPlatformExpertDevice();
}

TEST_F(Device, aLookUpThatRaisesGivesTheLockBack) {
    const MachineIdentifierOverride machine([] { return "MACHINE"_ns; });
    const auto device = make<ZRXDevice>();
    device->setLock(make<ZRSemaphoreLock>());
    {
        const MachineIdentifierOverride broken([]() -> Ref<NSString> { throw std::bad_alloc(); });
        EXPECT_THROW(device->getIOPlatformExpertDevice(), std::bad_alloc);
    }
    device->getIOPlatformExpertDevice();
    EXPECT_EQ(device->platformUUID()->utf8(), "MACHINE");
}

TEST_F(Device, tellsTheSystemsVersionInThreeNumbers) {
    const MachineIdentifierOverride machine([] { return "MACHINE"_ns; });
    const struct {
        NSOperatingSystemVersion version;
        const char* text;
    } rows[] = {
        {{10, 15, 7}, "10.15.7"}, {{11, 2, 3}, "11.2.3"}, {{11, 0, 0}, "11.0.0"},
        {{0, 0, 0}, "0.0.0"},     {{-1, 2, 3}, "-1.2.3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const SystemVersionOverride system(row.version);
        EXPECT_EQ(make<ZRXDevice>()->systemVersion()->utf8(), row.text);
    }
}

TEST_F(Device, asksForTheVersionOnce) {
    const MachineIdentifierOverride machine([] { return "MACHINE"_ns; });
    const auto device = make<ZRXDevice>();
    const SystemVersionOverride system({11, 2, 3});
    const Ref<NSString> version = device->systemVersion();
    EXPECT_EQ(version->utf8(), "11.2.3") << "when it is first asked for";
    const SystemVersionOverride later({12, 0, 1});
    EXPECT_EQ(device->systemVersion(), version);
    EXPECT_EQ(send<id>(device, "systemVersion"_sel), version);
}

TEST_F(Device, theClassAnswersForTheSharedOne) {
    if (test::runsInFreshProcess()) {
        return;
    }
    const SystemVersionOverride system({11, 2, 3});
    EXPECT_EQ(systemVersion<ZRXDevice>()->utf8(), "11.2.3");
    EXPECT_EQ(send<Ref<NSString>>(ZRXDevice::classObject(), "systemVersion"_sel)->utf8(), "11.2.3");
    EXPECT_EQ(platformUUID<ZRXDevice>(), ZRXDevice::shared()->platformUUID());
    EXPECT_EQ(send<id>(ZRXDevice::classObject(), "shared"_sel), ZRXDevice::shared());
    ASSERT_TRUE(platformUUID<ZRXDevice>());
    EXPECT_TRUE(isIdentifier(platformUUID<ZRXDevice>())) << "this machine's, or a random one";
}

TEST_F(Device, testsTheSystemsVersion) {
    using Version = NSOperatingSystemVersion;
    const struct {
        Version version;
        System system;
        const char* answers;
    } rows[] = {
        {{10, 11, 6}, System::MacOS, "10000"}, {{10, 12, 0}, System::MacOS, "10000"},
        {{10, 12, 6}, System::MacOS, "10000"}, {{10, 13, 0}, System::MacOS, "11000"},
        {{10, 14, 6}, System::MacOS, "11100"}, {{10, 15, 7}, System::MacOS, "11110"},
        {{10, 16, 0}, System::MacOS, "11110"}, {{11, 0, 0}, System::MacOS, "11111"},
        {{14, 1, 0}, System::MacOS, "11111"},  {{6, 1, 0}, System::Other, "11111"},
    };
    Class* const device = ZRXDevice::classObject();
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.version.majorVersion << '.' << row.version.minorVersion);
        const SystemVersionOverride system(row.version, row.system);
        const bool answers[] = {ZRXDevice::isSystemAvailableOSX10_12(), ZRXDevice::isSystemAvailableOSX10_13(),
                                ZRXDevice::isSystemAvailableOSX10_14(), ZRXDevice::isSystemAvailableOSX10_15(),
                                ZRXDevice::isSystemAvailableOSX11()};
        const bool sent[] = {
            send<bool>(device, "isSystemAvailableOSX10_12"_sel), send<bool>(device, "isSystemAvailableOSX10_13"_sel),
            send<bool>(device, "isSystemAvailableOSX10_14"_sel), send<bool>(device, "isSystemAvailableOSX10_15"_sel),
            send<bool>(device, "isSystemAvailableOSX11"_sel)};
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(answers[i], row.answers[i] == '1') << i;
            EXPECT_EQ(sent[i], answers[i]) << i;
        }
    }
}

} // namespace

} // namespace zr
