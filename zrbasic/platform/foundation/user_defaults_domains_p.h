#pragma once

#include <zrbasic/platform/foundation/user_defaults_store_p.h>

#include <map>
#include <memory>
#include <string>

namespace zr::detail {

/// The domains whose files lie in one folder. May be used from any thread.
class UserDefaultsDomains {
  public:
    explicit UserDefaultsDomains(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    /// Those of the folder in use: the user's own, unless the application redirected it.
    [[nodiscard]] static std::shared_ptr<UserDefaultsDomains> current();
    /// Makes another folder the one in use, and gives back which one that was.
    static std::shared_ptr<UserDefaultsDomains> exchangeCurrent(std::shared_ptr<UserDefaultsDomains> domains);

    /// The domain of that name; always the same one.
    [[nodiscard]] std::shared_ptr<UserDefaultsDomain> domainNamed(NSString* name);
    /// Writes what changed in any of them.
    void saveAll();

  private:
    const std::filesystem::path m_folder;
    std::mutex m_mutex;
    std::map<std::u16string, std::shared_ptr<UserDefaultsDomain>, std::less<>> m_domains;
};

} // namespace zr::detail
