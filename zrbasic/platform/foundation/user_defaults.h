#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <memory>
#include <string>

namespace zr {

class NSArray;
class NSData;
class NSDictionary;
class NSString;

namespace detail {
class UserDefaultsDomains;
}

/// The domain of values given for this start of the application only; searched first.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSArgumentDomain();
/// The domain of values for all applications of the user.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSGlobalDomain();
/// The domain that `registerDefaults` adds to; searched last.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSRegistrationDomain();

/// Settings and other small values that outlast the application, by key.
///
/// A value is looked for in the argument domain, in the application's own domain, in the global domain and among the
/// registered defaults, in this order. Setting and removing concern the own domain alone, which is named for the
/// bundle identifier, or else for the executable.
///
/// Values are strings, numbers, dates, data, and arrays and string-keyed dictionaries of these, 128 deep at most; types
/// survive. They are copied when they come in, and do not change. Changes can be read at once, and are written by
/// `synchronize` and when the process exits in the ordinary way. What other processes wrote is seen from the next
/// `synchronize` on; they lose nothing, except that of two values for one key the later one stays.
///
/// A domain is a file in the folder "zrbasic" of the user's configuration folder (XDG_CONFIG_HOME, or ".config" in the
/// home folder), on macOS in "Library/Preferences". A file that is damaged is renamed, never overwritten. Nothing is
/// encrypted: other programs of the user can read it, other users cannot.
///
/// A null key finds nothing; setting something for it raises `NSInvalidArgumentException`. May be used from any thread.
class ZR_EXPORT NSUserDefaults : public NSObject {
    ZR_DECLARE_CLASS(NSUserDefaults, NSObject)

  public:
    ~NSUserDefaults() override;

    /// The application's; the same object every time. Never null.
    [[nodiscard]] static Ref<NSUserDefaults> standardUserDefaults();

    /// Another object for the application's values.
    id init() override;
    /// For the values of another domain, which applications may share; null stands for the application's. Gives null
    /// for an empty name and for that of the global domain.
    id initWithSuiteName(NSString* name);

    /// Null when there is none.
    [[nodiscard]] id objectForKey(NSString* key) const;
    /// A string, or the text of a number; null for values of another kind.
    [[nodiscard]] Ref<NSString> stringForKey(NSString* key) const;
    /// Null for values of another kind; so do the others that give objects.
    [[nodiscard]] Ref<NSArray> arrayForKey(NSString* key) const;
    /// An array of nothing but strings.
    [[nodiscard]] Ref<NSArray> stringArrayForKey(NSString* key) const;
    [[nodiscard]] Ref<NSDictionary> dictionaryForKey(NSString* key) const;
    [[nodiscard]] Ref<NSData> dataForKey(NSString* key) const;
    /// A number, or the number that a string begins with; 0 for anything else.
    [[nodiscard]] NSInteger integerForKey(NSString* key) const;
    [[nodiscard]] float floatForKey(NSString* key) const;
    [[nodiscard]] double doubleForKey(NSString* key) const;
    /// Whether it is a number other than 0, or a string such as "YES", "true" or "1".
    [[nodiscard]] bool boolForKey(NSString* key) const;

    /// Null removes the value. Raises `NSInvalidArgumentException`, and changes nothing, for what cannot be stored, the
    /// null object included.
    void setObject_forKey(NSObject* value, NSString* key);
    void setInteger_forKey(NSInteger value, NSString* key);
    void setFloat_forKey(float value, NSString* key);
    void setDouble_forKey(double value, NSString* key);
    void setBool_forKey(bool value, NSString* key);
    /// Removes the value of the own domain; one of the other domains shows again.
    void removeObjectForKey(NSString* key);

    /// Adds to the registered defaults, which all objects share and which are not written; equal keys take the new
    /// values. Raises like `setObject_forKey`; null adds nothing.
    void registerDefaults(NSDictionary* defaults);
    /// What `objectForKey` answers for every key that there is. Never null.
    [[nodiscard]] Ref<NSDictionary> dictionaryRepresentation() const;

    /// Writes the changes to the own domain and to the global one, and reads what other processes wrote there. Waits
    /// while another process writes.
    ///
    /// False when one of them could not be done: no room, no permission, a folder that is not one. Then the changes
    /// stay readable, and the next time tries again.
    bool synchronize();

    /// The values of one written domain alone; empty when there are none, null for a null name.
    [[nodiscard]] Ref<NSDictionary> persistentDomainForName(NSString* name) const;
    /// Replaces them all; null removes them. Raises like `setObject_forKey`.
    void setPersistentDomain_forName(NSDictionary* values, NSString* name);
    void removePersistentDomainForName(NSString* name);

    /// The values of a domain that is not written; null when there is none of that name. Of these the argument domain
    /// and the registered defaults are searched.
    [[nodiscard]] Ref<NSDictionary> volatileDomainForName(NSString* name) const;
    /// Makes one. Raises like `setObject_forKey`, and when there is one of that name already. Null values make an
    /// empty one.
    void setVolatileDomain_forName(NSDictionary* values, NSString* name);
    void removeVolatileDomainForName(NSString* name);

  private:
    [[nodiscard]] Ref<NSString> domain() const;

    /// Null for the application's own.
    Ref<NSString> m_suite;
};

/// Keeps all user defaults in another folder while it stands, for tests and for applications that are carried about:
/// `const UserDefaultsFolderOverride here("/media/stick/settings");`.
///
/// It begins with what the folder holds, and in the end writes what has changed. The newest one standing counts; they
/// end in the opposite order, as local variables do. For all threads. Arguments and registered defaults are not
/// concerned.
class [[nodiscard]] ZR_EXPORT UserDefaultsFolderOverride {
  public:
    /// The folder is made when something is written. A relative path starts at the directory that is current now; an
    /// empty one stands for a folder that cannot be written.
    explicit UserDefaultsFolderOverride(const std::string& folder);
    ~UserDefaultsFolderOverride();
    UserDefaultsFolderOverride(const UserDefaultsFolderOverride&) = delete;
    UserDefaultsFolderOverride& operator=(const UserDefaultsFolderOverride&) = delete;

  private:
    std::shared_ptr<detail::UserDefaultsDomains> m_previous;
};

} // namespace zr
