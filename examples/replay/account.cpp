#include "account.h"

#include "json_file.h"

#include <zrbasic/model/assignment.h>

namespace replay {

using namespace zr;

Ref<Account> readAccount(const std::string& file, Console& console) {
    const auto content = contentOf(file, console);
    const auto reply = content ? objectIn(*content, file, console) : nullptr;
    if (!reply) {
        return nullptr;
    }
    auto account = make<Account>();
    assignPropertiesFromDictionary_replacedKeys(account, reply, nullptr);
    return account;
}

} // namespace replay
