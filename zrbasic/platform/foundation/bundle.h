#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSDictionary;
class NSString;
class NSURL;

/// The running application: its program file, and what it says about itself.
///
/// An application says it in its build: `zrbasic_bundle_information(target NAME ... VERSION ... BUILD ...
/// IDENTIFIER ...)`, a function of the CMake package. Never changes; may be used from any thread.
class ZR_EXPORT NSBundle : public NSObject {
    ZR_DECLARE_CLASS(NSBundle, NSObject)

  public:
    ~NSBundle() override;

    /// The application; the same object every time. Never null.
    [[nodiscard]] static Ref<NSBundle> mainBundle();

    /// "CFBundleName", "CFBundleShortVersionString", "CFBundleVersion" and "CFBundleIdentifier", as far as the
    /// application gave them. Empty for one that gave nothing; never null.
    [[nodiscard]] Ref<NSDictionary> infoDictionary() const;
    /// Null when there is none, and for null.
    [[nodiscard]] id objectForInfoDictionaryKey(NSString* key) const;
    /// Null when the application gave none.
    [[nodiscard]] Ref<NSString> bundleIdentifier() const;

    /// The program file, as an absolute path without links; still that path when the file has been replaced or removed
    /// meanwhile. Null when the system does not tell.
    [[nodiscard]] Ref<NSString> executablePath() const;
    /// The same as a file URL.
    [[nodiscard]] Ref<NSURL> executableURL() const;
};

/// What an application says about itself, while it stands. The CMake function writes a source file with one that stands
/// as long as the process; a test may put another one in front of it.
///
/// The newest one standing counts, as a whole; they end in the opposite order. Texts are UTF-8 and must outlast it;
/// null and empty ones are not given. For all threads.
class [[nodiscard]] ZR_EXPORT BundleInformation {
  public:
    BundleInformation(const char* name, const char* version, const char* build, const char* identifier);
    ~BundleInformation();
    BundleInformation(const BundleInformation&) = delete;
    BundleInformation& operator=(const BundleInformation&) = delete;

  private:
    struct InUse;

    const char* m_name;
    const char* m_version;
    const char* m_build;
    const char* m_identifier;
    /// Made when it is first asked for.
    Ref<NSDictionary> m_dictionary;
    BundleInformation* m_previous;

    friend class NSBundle;
};

namespace detail {

/// The name of the application's own user defaults: the bundle identifier, or else the executable's name.
[[nodiscard]] ZR_EXPORT Ref<NSString> applicationDomain();

} // namespace detail

} // namespace zr
