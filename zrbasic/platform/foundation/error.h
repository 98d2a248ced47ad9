#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

class NSDictionary;

/// What went wrong, for code (domain and number) and for people (a text). Never changes, so it may be used from any
/// thread.
class ZR_EXPORT NSError : public NSObject {
    ZR_DECLARE_CLASS(NSError, NSObject)
  public:
    NSError();
    ~NSError() override;

    /// An error of that number within that domain. `userInfo` may hold more about it, or be null; it is copied.
    [[nodiscard]] static Ref<NSError> errorWithDomain_code_userInfo(NSString* domain, NSInteger code,
                                                                    NSDictionary* userInfo);
    id initWithDomain_code_userInfo(NSString* domain, NSInteger code, NSDictionary* userInfo);

    /// Who counts these errors; null only when it was made so.
    [[nodiscard]] Ref<NSString> domain() const { return m_domain; }
    [[nodiscard]] NSInteger code() const { return m_code; }
    /// More about the error; null when it was made without.
    [[nodiscard]] Ref<NSDictionary> userInfo() const;
    /// The text that the user info holds under "NSLocalizedDescription", else one made of domain and code. Never null.
    [[nodiscard]] Ref<NSString> localizedDescription() const;

    [[nodiscard]] Ref<NSString> description() const override;
    /// True for an error of the same domain, code and user info.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The error itself.
    [[nodiscard]] id copy() const override;

  private:
    Ref<NSString> m_domain;
    Ref<NSDictionary> m_userInfo;
    NSInteger m_code = 0;
};

/// The domain of the platform's own errors: "NSCocoaErrorDomain".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSCocoaErrorDomain();
/// The key of an error's text in its user info: "NSLocalizedDescription".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSLocalizedDescriptionKey();

} // namespace zr
