#pragma once

#include <zrbasic/platform/foundation/mutable_dictionary.h>

#include <filesystem>
#include <mutex>
#include <string_view>
#include <vector>

namespace zr {

class NSString;

} // namespace zr

/// Where user defaults are kept: a file of JSON for each domain.
namespace zr::detail {

/// A value to store under a key, or null to remove what is there.
struct UserDefaultsChange {
    Ref<NSString> key;
    id value;
};

/// The file of a domain.
///
/// It is replaced as a whole, under a lock that holds other processes off, so that whoever reads it finds the old
/// values or the new ones. One that does not hold user defaults is renamed and kept. Nothing here raises.
class UserDefaultsFile {
  public:
    /// An empty path stands for a file that can never be written.
    explicit UserDefaultsFile(std::filesystem::path path) : m_path(std::move(path)) {}

    /// Makes the changes in the file and gives what it then holds in `values`: what others stored meanwhile included.
    /// The changes are made to `known`, the last values known, when the file turns out to be damaged.
    ///
    /// False, and `values` left alone, when the file could not be read or written. Waits while another process writes.
    [[nodiscard]] bool update(const std::vector<UserDefaultsChange>& changes, NSDictionary* known,
                              Ref<NSDictionary>& values) const;

  private:
    struct Contents;

    [[nodiscard]] Contents read() const;
    [[nodiscard]] bool setAside() const;
    [[nodiscard]] bool replace(std::string_view text) const;
    /// The path of a hidden file beside it.
    [[nodiscard]] std::filesystem::path companion(std::string_view suffix) const;

    std::filesystem::path m_path;
};

/// The values of a domain: those of its file, read when they are first asked for, with the changes not yet written.
/// May be used from any thread.
class UserDefaultsDomain {
  public:
    explicit UserDefaultsDomain(std::filesystem::path path) : m_file(std::move(path)) {}

    /// Null when there is none, and for null.
    [[nodiscard]] id objectForKey(NSString* key);
    [[nodiscard]] Ref<NSDictionary> values();
    /// A copy made by `propertyListCopy`, or null to remove. `key` is a plain string.
    void setObject(NSObject* value, NSString* key);
    /// These values and no others, likewise.
    void setValues(NSDictionary* values);

    /// Writes the changes and reads what others wrote. False when that failed; the changes are kept.
    bool synchronize();
    /// Writes the changes if there are any.
    void saveIfChanged();

  private:
    void load();
    void change(NSObject* value, NSString* key);
    [[nodiscard]] std::vector<UserDefaultsChange> pendingChanges() const;

    const UserDefaultsFile m_file;
    /// Held while the file is being written; taken before the other one.
    std::mutex m_writing;
    /// Guards what follows.
    std::mutex m_mutex;
    bool m_isLoaded = false;
    Ref<NSDictionary> m_stored;
    /// The null object stands for a removal.
    Ref<NSMutableDictionary> m_changes;
};

} // namespace zr::detail
