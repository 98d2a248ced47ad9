#include <zrbasic/platform/foundation/bundle.h>

#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/percent_encoding_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>

#if defined(__APPLE__)
#include <mach-o/dyld.h>

#include <cstdint>
#endif

namespace zr {

namespace {

namespace fs = std::filesystem;

/// Empty when the system does not tell.
fs::path programFile() {
    std::error_code reason;
#if defined(__APPLE__)
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size);
    std::string path(size, '\0');
    return _NSGetExecutablePath(path.data(), &size) == 0 ? fs::canonical(path.c_str(), reason) : fs::path();
#else
    constexpr std::string_view removed = " (deleted)";
    std::string path = fs::read_symlink("/proc/self/exe", reason).string();
    // An update has replaced the program; the new one lies under the old name.
    if (path.ends_with(removed) && !fs::exists(path, reason)) {
        path.resize(path.size() - removed.size());
    }
    return path;
#endif
}

const fs::path& program() {
    static const auto* const path = new fs::path(programFile());
    return *path;
}

void add(NSMutableDictionary* dictionary, NSString* key, const char* text) {
    if (text && *text != '\0') {
        dictionary->setObject_forKey(NSString::fromUtf8(text), key);
    }
}

} // namespace

/// Stands before any other object of the process is made.
struct BundleInformation::InUse {
    static std::mutex mutex;
    static BundleInformation* newest;
};

constinit std::mutex BundleInformation::InUse::mutex;
constinit BundleInformation* BundleInformation::InUse::newest = nullptr;

BundleInformation::BundleInformation(const char* name, const char* version, const char* build, const char* identifier)
    : m_name(name), m_version(version), m_build(build), m_identifier(identifier) {
    const std::lock_guard lock(InUse::mutex);
    m_previous = InUse::newest;
    InUse::newest = this;
}

BundleInformation::~BundleInformation() {
    const std::lock_guard lock(InUse::mutex);
    InUse::newest = m_previous;
}

ZR_DEFINE_CLASS(NSBundle) {
    is.classMethod<&NSBundle::mainBundle>("mainBundle");
    is.method<&NSBundle::infoDictionary>("infoDictionary");
    is.method<&NSBundle::objectForInfoDictionaryKey>("objectForInfoDictionaryKey:");
    is.method<&NSBundle::bundleIdentifier>("bundleIdentifier");
    is.method<&NSBundle::executablePath>("executablePath");
    is.method<&NSBundle::executableURL>("executableURL");
}

NSBundle::~NSBundle() = default;

Ref<NSBundle> NSBundle::mainBundle() {
    static NSBundle* const shared = make<NSBundle>().leak();
    return shared;
}

Ref<NSDictionary> NSBundle::infoDictionary() const {
    const std::lock_guard lock(BundleInformation::InUse::mutex);
    BundleInformation* const information = BundleInformation::InUse::newest;
    if (!information) {
        return NSDictionary::dictionary();
    }
    if (!information->m_dictionary) {
        const auto entries = NSMutableDictionary::dictionary();
        add(entries, "CFBundleName"_ns, information->m_name);
        add(entries, "CFBundleShortVersionString"_ns, information->m_version);
        add(entries, "CFBundleVersion"_ns, information->m_build);
        add(entries, "CFBundleIdentifier"_ns, information->m_identifier);
        information->m_dictionary = NSDictionary::dictionaryWithDictionary(entries);
    }
    return information->m_dictionary;
}

id NSBundle::objectForInfoDictionaryKey(NSString* key) const {
    return infoDictionary()->objectForKey(key);
}

Ref<NSString> NSBundle::bundleIdentifier() const {
    return cast<NSString>(objectForInfoDictionaryKey("CFBundleIdentifier"_ns));
}

Ref<NSString> NSBundle::executablePath() const {
    return program().empty() ? nullptr : NSString::fromUtf8(program().string());
}

Ref<NSURL> NSBundle::executableURL() const {
    constexpr detail::AsciiSet plain("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/-._~!$&'()*+,:=@");
    const Ref<NSString> path = executablePath();
    const auto encoded = path ? detail::percentEncoded(path->view(), plain) : std::nullopt;
    return encoded ? NSURL::URLWithString(NSString::fromUtf16(u"file://" + *encoded)) : nullptr;
}

namespace detail {

Ref<NSString> applicationDomain() {
    if (Ref<NSString> identifier = NSBundle::mainBundle()->bundleIdentifier()) {
        return identifier;
    }
    // Without /proc there is no better name.
    return program().empty() ? "application"_ns : NSString::fromUtf8(program().filename().string());
}

} // namespace detail

} // namespace zr
