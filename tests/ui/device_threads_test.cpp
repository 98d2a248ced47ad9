#include <zrbasic/ui/app.h>
#include <zrbasic/ui/device.h>

#include "../foundation/temporary_defaults.h"

#include <zrbasic/platform/foundation/machine_identifier.h>

#include <atomic>
#include <thread>
#include <vector>

namespace zr {

namespace {

class DeviceThreads : public test::TemporaryDefaults {};

TEST_F(DeviceThreads, lookUpsOfOneDeviceComeOneAfterTheOther) {
    std::atomic<int> inside{0};
    std::atomic<int> most{0};
    const MachineIdentifierOverride machine([&] {
        most = std::max(most.load(), ++inside);
        std::this_thread::yield();
        --inside;
        return "MACHINE"_ns;
    });
    const auto device = make<ZRXDevice>();
    device->setLock(make<ZRSemaphoreLock>());
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < 100; ++i) {
                if (thread % 2 == 0) {
                    device->getIOPlatformExpertDevice();
                }
                wrong += device->platformUUID()->utf8() != "MACHINE";
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(most, 1);
}

TEST_F(DeviceThreads, theSharedObjectsAreMadeOnce) {
    const MachineIdentifierOverride machine([] { return "MACHINE"_ns; });
    std::atomic<int> different{0};
    std::vector<std::thread> threads;
    const Ref<ZRXApp> app = ZRXApp::shared();
    const Ref<ZRXDevice> device = ZRXDevice::shared();
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            different += ZRXApp::shared() != app || ZRXDevice::shared() != device;
            different += app->startupDateComponents() != ZRXApp::shared()->startupDateComponents();
            different += device->systemVersion() != systemVersion<ZRXDevice>();
            different += ZRXApp::appBundleName() != ZRXApp::appBundleName();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(different, 0);
}

} // namespace

} // namespace zr
