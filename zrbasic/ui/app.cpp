#include <zrbasic/ui/app.h>

#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <mutex>

namespace zr {

namespace {

/// A text of the bundle, kept from the moment on when there is one.
class BundleText {
  public:
    explicit BundleText(Ref<NSString> key) : m_key(std::move(key)) {}

    Ref<NSString> get() {
        const std::lock_guard lock(m_mutex);
        if (!m_text) {
            m_text = cast<NSString>(NSBundle::mainBundle()->objectForInfoDictionaryKey(m_key));
        }
        return m_text;
    }

  private:
    const Ref<NSString> m_key;
    std::mutex m_mutex;
    Ref<NSString> m_text;
};

Ref<NSString> previousVersionKey() {
    return "com.zarvo.previousStartupAppVersion"_ns;
}

/// Its birth is the moment when the library is loaded.
const struct LoadMoment {
    LoadMoment() { ZRXApp::load(); }
} loadMoment;

} // namespace

ZR_DEFINE_CLASS(ZRXApp) {
    is.property<ZRXApp, &ZRXApp::m_startupDate>("startupDate", "");
    is.property<ZRXApp, &ZRXApp::m_startupTimeInterval>("startupTimeInterval", "");
    is.method<&ZRXApp::startupDateComponents>("startupDateComponents");
    is.classMethod<&ZRXApp::load>("load");
    is.classMethod<&ZRXApp::shared>("shared");
    is.classMethod<&zr::startupTimeInterval<ZRXApp>>("startupTimeInterval");
    is.classMethod<&zr::startupDateComponents<ZRXApp>>("startupDateComponents");
    is.classMethod<&ZRXApp::appVersion>("appVersion");
    is.classMethod<&ZRXApp::appBuildVersion>("appBuildVersion");
    is.classMethod<&ZRXApp::appBundleName>("appBundleName");
    is.classMethod<&ZRXApp::previousStartupVersion>("previousStartupVersion");
    is.classMethod<&ZRXApp::cacheCurrentAppVersion>("cacheCurrentAppVersion");
}

ZRXApp::~ZRXApp() = default;

void ZRXApp::load() {
    (void)shared();
}

Ref<ZRXApp> ZRXApp::shared() {
    static ZRXApp* const instance = [] {
        Ref<ZRXApp> app = make<ZRXApp>();
        app->m_startupDate = NSDate::date();
        app->m_startupTimeInterval = app->m_startupDate.get()->timeIntervalSince1970() * 1000.0;
        return app.leak();
    }();
    return instance;
}

Ref<NSDateComponents> ZRXApp::startupDateComponents() {
    const Synchronized lock(this);
    if (!m_startupDateComponents) {
        constexpr NSUInteger units = NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay | NSCalendarUnitHour |
                                     NSCalendarUnitMinute | NSCalendarUnitSecond | NSCalendarUnitWeekday;
        m_startupDateComponents = NSCalendar::currentCalendar()->components_fromDate(units, startupDate());
    }
    return m_startupDateComponents;
}

Ref<NSString> ZRXApp::appVersion() {
    static auto* const version = new BundleText("CFBundleShortVersionString"_ns);
    return version->get();
}

Ref<NSString> ZRXApp::appBuildVersion() {
    static auto* const build = new BundleText("CFBundleVersion"_ns);
    return build->get();
}

Ref<NSString> ZRXApp::appBundleName() {
    static auto* const name = new BundleText("CFBundleName"_ns);
    return name->get();
}

id ZRXApp::previousStartupVersion() {
    return NSUserDefaults::standardUserDefaults()->objectForKey(previousVersionKey());
}

void ZRXApp::cacheCurrentAppVersion() {
    if (const Ref<NSString> version = appVersion()) {
        const Ref<NSUserDefaults> defaults = NSUserDefaults::standardUserDefaults();
        defaults->setObject_forKey(version, previousVersionKey());
        defaults->synchronize();
    }
}

} // namespace zr
