#include <zrbasic/platform/foundation/user_defaults_store_p.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/property_list_p.h>
#include <zrbasic/platform/foundation/string.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <utility>

namespace zr::detail {
namespace {

namespace fs = std::filesystem;

/// An open file, closed in the end.
class Descriptor {
  public:
    Descriptor(const fs::path& path, int flags) {
        do {
            // For the user's own eyes: applications keep account names here.
            m_number = open(path.c_str(), flags | O_CLOEXEC, 0600);
        } while (m_number < 0 && errno == EINTR);
    }
    ~Descriptor() {
        if (m_number >= 0) {
            close(m_number);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }

    [[nodiscard]] bool isRegularFile() const {
        struct stat status {};
        return fstat(m_number, &status) == 0 && S_ISREG(status.st_mode);
    }

    [[nodiscard]] bool readAll(std::string& text) const {
        char buffer[16384];
        while (true) {
            const ssize_t count = ::read(m_number, buffer, sizeof buffer);
            if (count > 0) {
                text.append(buffer, static_cast<std::size_t>(count));
            } else if (count == 0) {
                return true;
            } else if (errno != EINTR) {
                return false;
            }
        }
    }

    /// Also makes sure that it has reached the disk.
    [[nodiscard]] bool writeAll(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t count = ::write(m_number, text.data(), text.size());
            if (count >= 0) {
                text.remove_prefix(static_cast<std::size_t>(count));
            } else if (errno != EINTR) {
                return false;
            }
        }
        return fsync(m_number) == 0;
    }

    /// Waits for whoever has locked the file; it is unlocked when it is closed.
    [[nodiscard]] bool lock() const {
        int result = 0;
        do {
            result = flock(m_number, LOCK_EX);
        } while (result != 0 && errno == EINTR);
        return result == 0;
    }

  private:
    int m_number = -1;
};

/// What became of an attempt to read a file.
enum class State { Read, Missing, Damaged, Unreadable };

Ref<NSDictionary> changed(NSDictionary* values, const std::vector<UserDefaultsChange>& changes) {
    const auto result = NSMutableDictionary::dictionaryWithDictionary(values);
    for (const UserDefaultsChange& change : changes) {
        result->setObject_forKeyedSubscript(change.value, change.key);
    }
    return NSDictionary::dictionaryWithDictionary(result);
}

} // namespace

struct UserDefaultsFile::Contents {
    State state = State::Unreadable;
    Ref<NSDictionary> values = NSDictionary::dictionary();
    std::string text{};
};

bool UserDefaultsFile::update(const std::vector<UserDefaultsChange>& changes, NSDictionary* known,
                              Ref<NSDictionary>& values) const {
    if (changes.empty()) {
        // The file changes in one go, so reading needs no lock.
        const Contents contents = read();
        if (contents.state != State::Damaged) {
            if (contents.state != State::Unreadable) {
                values = contents.values;
            }
            return contents.state != State::Unreadable;
        }
    }
    if (m_path.empty()) {
        return false;
    }
    // What is wrong with the folder shows when a file is to be opened in it.
    std::error_code reason;
    fs::create_directories(m_path.parent_path(), reason);
    const Descriptor lockFile(companion(".lock"), O_RDWR | O_CREAT);
    if (!lockFile.isOpen() || !lockFile.lock()) {
        return false;
    }
    const Contents contents = read();
    if (contents.state == State::Unreadable || (contents.state == State::Damaged && !setAside())) {
        return false;
    }
    const Ref<NSDictionary> merged = changed(contents.state == State::Damaged ? known : contents.values.get(), changes);
    const bool hasNothingToSay = contents.state != State::Read && merged->count() == 0;
    // Equal texts and not equal values, for which 1 and true are the same.
    const std::string text = propertyListText(merged);
    if (!hasNothingToSay && text != contents.text && !replace(text)) {
        return false;
    }
    values = merged;
    return true;
}

UserDefaultsFile::Contents UserDefaultsFile::read() const {
    Contents contents;
    // A pipe of that name must not hold the process up.
    const Descriptor file(m_path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) {
        contents.state = errno == ENOENT ? State::Missing : State::Unreadable;
        return contents;
    }
    if (!file.isRegularFile() || !file.readAll(contents.text)) {
        return contents;
    }
    const Ref<NSDictionary> values = propertyListFromText(contents.text);
    contents.state = values ? State::Read : State::Damaged;
    if (values) {
        contents.values = values;
    }
    return contents;
}

bool UserDefaultsFile::setAside() const {
    fs::path place = m_path;
    place += ".damaged";
    std::error_code reason;
    for (int number = 2; fs::exists(fs::symlink_status(place, reason)); ++number) {
        place = m_path;
        place += ".damaged-" + std::to_string(number);
    }
    fs::rename(m_path, place, reason);
    return !reason;
}

bool UserDefaultsFile::replace(std::string_view text) const {
    const fs::path fresh = companion(".new");
    // What a process left there that ended in the middle, or a link that leads elsewhere.
    unlink(fresh.c_str());
    {
        const Descriptor file(fresh, O_WRONLY | O_CREAT | O_EXCL);
        if (!file.isOpen()) {
            return false;
        }
        if (!file.writeAll(text)) {
            unlink(fresh.c_str());
            return false;
        }
    }
    if (std::rename(fresh.c_str(), m_path.c_str()) != 0) {
        unlink(fresh.c_str());
        return false;
    }
    // Some file systems cannot do this for a folder; the values are written all the same.
    const Descriptor folder(m_path.parent_path(), O_RDONLY | O_DIRECTORY);
    if (folder.isOpen()) {
        fsync(folder.number());
    }
    return true;
}

fs::path UserDefaultsFile::companion(std::string_view suffix) const {
    return m_path.parent_path() / fs::path("." + m_path.stem().string()).concat(suffix);
}

id UserDefaultsDomain::objectForKey(NSString* key) {
    const std::lock_guard lock(m_mutex);
    load();
    if (NSObject* const change = m_changes->peek(key)) {
        return isNull(change) ? id() : id(change);
    }
    return m_stored->objectForKey(key);
}

Ref<NSDictionary> UserDefaultsDomain::values() {
    const std::lock_guard lock(m_mutex);
    load();
    return changed(m_stored, pendingChanges());
}

void UserDefaultsDomain::setObject(NSObject* value, NSString* key) {
    const std::lock_guard lock(m_mutex);
    load();
    change(value, key);
}

void UserDefaultsDomain::setValues(NSDictionary* values) {
    const std::lock_guard lock(m_mutex);
    load();
    for (const id& key : changed(m_stored, pendingChanges())) {
        change(values->peek(key), cast<NSString>(key));
    }
    for (const id& key : values) {
        change(values->peek(key), cast<NSString>(key));
    }
}

bool UserDefaultsDomain::synchronize() {
    const std::lock_guard writing(m_writing);
    std::vector<UserDefaultsChange> changes;
    Ref<NSDictionary> values;
    {
        const std::lock_guard lock(m_mutex);
        load();
        values = m_stored;
        changes = pendingChanges();
    }
    // Others may read and change values meanwhile.
    if (!m_file.update(changes, values, values)) {
        return false;
    }
    const std::lock_guard lock(m_mutex);
    m_stored = values;
    for (const UserDefaultsChange& done : changes) {
        NSObject* const present = m_changes->peek(done.key);
        if (present == (done.value ? done.value.get() : NSNull::null())) {
            m_changes->removeObjectForKey(done.key);
        }
    }
    return true;
}

void UserDefaultsDomain::saveIfChanged() {
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isLoaded || m_changes->count() == 0) {
            return;
        }
    }
    synchronize();
}

void UserDefaultsDomain::load() {
    if (m_isLoaded) {
        return;
    }
    m_isLoaded = true;
    m_changes = NSMutableDictionary::dictionary();
    m_stored = NSDictionary::dictionary();
    // Nothing to tell anybody here: what cannot be read is not there, and writing will fail.
    (void)m_file.update({}, m_stored, m_stored);
}

void UserDefaultsDomain::change(NSObject* value, NSString* key) {
    m_changes->setObject_forKey(value ? value : NSNull::null(), key);
}

std::vector<UserDefaultsChange> UserDefaultsDomain::pendingChanges() const {
    std::vector<UserDefaultsChange> changes;
    for (const id& key : m_changes) {
        NSObject* const value = m_changes->peek(key);
        changes.push_back({Ref<NSString>(cast<NSString>(key)), isNull(value) ? id() : id(value)});
    }
    return changes;
}

} // namespace zr::detail
