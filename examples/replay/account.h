#pragma once

#include "console.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/string.h>

#include <string>

namespace replay {

/// What the account server sent beside the quotes.
class Account : public zr::NSObject {
    ZR_OBJECT(Account, zr::NSObject)
  public:
    /// For the user to read, with anchor tags where it leads somewhere.
    ZR_PROPERTY(zr::Copied<zr::NSString>, message, setMessage)
    /// The table's columns as the user left them, in dictionary form.
    ZR_PROPERTY(zr::Ref<zr::NSArray>, columns, setColumns)
};

/// Reads the server's reply. Null, after a message, when the file cannot be read or is no such reply; what it lacks, or
/// has in another kind, is null in the account.
[[nodiscard]] zr::Ref<Account> readAccount(const std::string& file, Console& console);

} // namespace replay
