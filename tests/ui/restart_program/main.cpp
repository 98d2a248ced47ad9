#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/ui/restart.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace zr;

/// Which start of the program this is, as the user defaults have it.
NSInteger start = 0;

/// Adds a line about this start to the file that ZR_RESTART_PROOF names.
void prove(const std::string& what) {
    if (std::FILE* const file = std::fopen(std::getenv("ZR_RESTART_PROOF"), "a")) {
        std::fprintf(file, "%ld %s\n", static_cast<long>(start), what.c_str());
        std::fclose(file);
    }
}

class Delegate : public NSObject {
    ZR_OBJECT(Delegate, NSObject)
    ZR_METHOD(applicationShouldTerminate, "applicationShouldTerminate:")
    ZR_METHOD(applicationWillTerminate, "applicationWillTerminate:")

    NSInteger applicationShouldTerminate(NSObject*) {
        prove("is asked");
        return NSTerminateNow;
    }
    void applicationWillTerminate(NSObject*) { prove("is told"); }
};

} // namespace

/// Restarts itself once, and leaves proof of everything that happens, also whether it runs outside of the session of
/// processes that ZR_RESTART_SESSION names.
int main(int count, char**) {
    const BundleInformation information("Restart", nullptr, nullptr, "com.example.restart");
    const auto defaults = NSUserDefaults::standardUserDefaults();
    start = defaults->integerForKey("starts"_ns) + 1;
    defaults->setInteger_forKey(start, "starts"_ns);
    // Before the other one reads it.
    if (!defaults->synchronize()) {
        return 2;
    }
    const bool isOutside = std::to_string(getsid(0)) != std::getenv("ZR_RESTART_SESSION");
    prove("starts with " + std::to_string(count - 1) + " arguments, " + (isOutside ? "outside" : "inside"));

    const auto application = NSApplication::sharedApplication();
    const auto delegate = make<Delegate>();
    application->setDelegate(delegate);
    if (std::getenv("ZR_RESTART_REMOVE")) {
        unlink(NSBundle::mainBundle()->executablePath()->utf8().c_str());
    }
    if (start == 1) {
        ZRRestartApplication::restartApplication();
        application->run();
    }
    prove("ends");
    return 0;
}
