#include <zrbasic/platform/foundation/user_defaults_domains_p.h>

#include <zrbasic/platform/foundation/percent_encoding_p.h>
#include <zrbasic/platform/foundation/string.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace zr::detail {
namespace {

namespace fs = std::filesystem;

fs::path homeFolder() {
    if (const char* const home = std::getenv("HOME"); home && *home != '\0') {
        return home;
    }
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    return getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found ? fs::path(found->pw_dir)
                                                                                            : fs::path();
}

/// Empty when the user has no home.
fs::path userFolder() {
#if defined(__APPLE__)
    const fs::path home = homeFolder();
    return home.empty() ? home : home / "Library" / "Preferences";
#else
    // A relative path there is to be ignored, as the base directory rules say.
    const char* const configuration = std::getenv("XDG_CONFIG_HOME");
    if (configuration && *configuration == '/') {
        return fs::path(configuration) / "zrbasic";
    }
    const fs::path home = homeFolder();
    return home.empty() ? home : home / ".config" / "zrbasic";
#endif
}

/// A file name for any text: what could leave the folder or hide in it is escaped.
std::string fileName(NSString* domain) {
    constexpr AsciiSet plain("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-");
    // Text without lone surrogates, so it can be encoded.
    const Ref<NSString> text = NSString::fromUtf8(domain->utf8());
    const std::string name = NSString::fromUtf16(percentEncoded(text->view(), plain).value_or(u""))->utf8();
    return (name.starts_with('.') ? "%2E" + name.substr(1) : name) + ".json";
}

struct Current {
    std::mutex mutex;
    std::shared_ptr<UserDefaultsDomains> domains;
};

Current& inUse() {
    static auto* const current = new Current{{}, std::make_shared<UserDefaultsDomains>(userFolder())};
    // Values that were set and not synchronised are written in the end, too.
    static const int registered = std::atexit([] { UserDefaultsDomains::current()->saveAll(); });
    (void)registered;
    return *current;
}

} // namespace

std::shared_ptr<UserDefaultsDomains> UserDefaultsDomains::current() {
    Current& current = inUse();
    const std::lock_guard lock(current.mutex);
    return current.domains;
}

std::shared_ptr<UserDefaultsDomains> UserDefaultsDomains::exchangeCurrent(
    std::shared_ptr<UserDefaultsDomains> domains) {
    Current& current = inUse();
    const std::lock_guard lock(current.mutex);
    current.domains.swap(domains);
    return domains;
}

std::shared_ptr<UserDefaultsDomain> UserDefaultsDomains::domainNamed(NSString* name) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_domains.find(name->view());
    if (found != m_domains.end()) {
        return found->second;
    }
    const fs::path path = m_folder.empty() ? fs::path() : m_folder / fileName(name);
    return m_domains.emplace(name->view(), std::make_shared<UserDefaultsDomain>(path)).first->second;
}

void UserDefaultsDomains::saveAll() {
    std::vector<std::shared_ptr<UserDefaultsDomain>> domains;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& [name, domain] : m_domains) {
            domains.push_back(domain);
        }
    }
    for (const auto& domain : domains) {
        domain->saveIfChanged();
    }
}

} // namespace zr::detail
