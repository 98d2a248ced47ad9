#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <string>
#include <string_view>

namespace zr {

class NSArray;
class NSNumber;
class NSString;
class NSURL;

namespace detail {
class AsciiSet;
}

/// The parts of a URL, to be read, changed, and put together again.
///
/// Strict about structure: only a URL or relative reference to the letter of RFC 3986 is taken apart. `NSURL` takes
/// more, so there are URLs that have no components: "http://a/?a[]=1" is one.
///
/// Every part is kept with its escapes, exactly as it was read, until it is set. Its decoded form is null when the
/// escapes are not UTF-8. A decoded form that is set is escaped as far as its part requires, "%" always; what has no
/// UTF-8 form, a lone surrogate, becomes U+FFFD. Null stands for a part that is not there, which differs from "".
///
/// Setting the escaped form of a part raises `NSInvalidArgumentException` when it has characters that the part cannot
/// hold, or incomplete escapes. Must not be changed while another thread uses it.
class ZR_EXPORT NSURLComponents : public NSObject {
    ZR_DECLARE_CLASS(NSURLComponents, NSObject)

  public:
    NSURLComponents();
    ~NSURLComponents() override;

    /// No part at all. `make<NSURLComponents>()` does the same.
    [[nodiscard]] static Ref<NSURLComponents> components();
    /// Null when the text is no strict URL; raises `NSInvalidArgumentException` for null. "" has an empty path.
    [[nodiscard]] static Ref<NSURLComponents> componentsWithString(NSString* text);
    /// The parts of the URL as it was given or, when resolving, of its absolute text. Null when they are no strict URL;
    /// raises for null.
    [[nodiscard]] static Ref<NSURLComponents> componentsWithURL_resolvingAgainstBaseURL(NSURL* url, bool resolve);
    /// Null and raising like the others.
    id initWithString(NSString* text);
    id initWithURL_resolvingAgainstBaseURL(NSURL* url, bool resolve);

    /// The parts put together. Null when there is a user, password, host or port and the path neither is empty nor
    /// begins with "/", or when there is none and the path begins with "//": they would be read differently. A path
    /// "a:b" without a scheme is not guarded against and reads as one.
    [[nodiscard]] Ref<NSString> string() const;
    /// The URL of that text; null when it is.
    [[nodiscard]] Ref<NSURL> URL() const;
    /// The same, relative to `base`, which may be null.
    [[nodiscard]] Ref<NSURL> URLRelativeToURL(NSURL* base) const;

    [[nodiscard]] Ref<NSString> scheme() const;
    /// Raises `NSInvalidArgumentException` unless it is a letter followed by letters, digits, "+", "-" and ".".
    void setScheme(NSString* scheme);
    /// Null as well when it is beyond the signed 64-bit range.
    [[nodiscard]] Ref<NSNumber> port() const;
    /// Raises `NSInvalidArgumentException` for a negative number; a fraction is cut off.
    void setPort(NSNumber* port);

    [[nodiscard]] Ref<NSString> user() const;
    void setUser(NSString* user);
    [[nodiscard]] Ref<NSString> password() const;
    void setPassword(NSString* password);
    /// With the brackets of an address in brackets, such as "[::1]".
    [[nodiscard]] Ref<NSString> host() const;
    void setHost(NSString* host);
    [[nodiscard]] Ref<NSString> path() const;
    /// Null sets "".
    void setPath(NSString* path);
    [[nodiscard]] Ref<NSString> query() const;
    /// "&" and "=" stay as they are: this is a whole query. `setQueryItems` escapes them within names and values.
    void setQuery(NSString* query);
    [[nodiscard]] Ref<NSString> fragment() const;
    void setFragment(NSString* fragment);

    [[nodiscard]] Ref<NSString> percentEncodedUser() const;
    void setPercentEncodedUser(NSString* user);
    [[nodiscard]] Ref<NSString> percentEncodedPassword() const;
    void setPercentEncodedPassword(NSString* password);
    [[nodiscard]] Ref<NSString> percentEncodedHost() const;
    void setPercentEncodedHost(NSString* host);
    /// Never null.
    [[nodiscard]] Ref<NSString> percentEncodedPath() const;
    void setPercentEncodedPath(NSString* path);
    [[nodiscard]] Ref<NSString> percentEncodedQuery() const;
    void setPercentEncodedQuery(NSString* query);
    [[nodiscard]] Ref<NSString> percentEncodedFragment() const;
    void setPercentEncodedFragment(NSString* fragment);

    /// The pieces of the query between "&", each an `NSURLQueryItem` split at its first "=". Null without a query,
    /// empty for an empty one. A name that does not decode is "", such a value null. "+" and ";" are ordinary.
    [[nodiscard]] Ref<NSArray> queryItems() const;
    /// Null removes the query, no items leave an empty one. Elements that are no query items are left out.
    void setQueryItems(NSArray* items);

    /// True for components of the same parts, escapes included.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    [[nodiscard]] Ref<NSString> description() const override;
    /// New components of the same parts, to be changed apart from these.
    [[nodiscard]] id copy() const override;

  private:
    /// A part's escaped text, and the string that holds it: the URL that it was read from, or its own.
    struct Part {
        Ref<NSString> holder;
        std::u16string_view text;

        explicit operator bool() const { return holder != nullptr; }
        [[nodiscard]] Ref<NSString> string() const;
        [[nodiscard]] Ref<NSString> decoded() const;
        [[nodiscard]] bool operator==(const Part& other) const;
    };

    struct Parts {
        Part scheme;
        Part user;
        Part password;
        Part host;
        Part port;
        Part path;
        Part query;
        Part fragment;

        [[nodiscard]] bool hasAuthority() const { return user || password || host || port; }
        [[nodiscard]] bool operator==(const Parts& other) const = default;
    };

    bool read(NSString* text);
    [[nodiscard]] static Part partOf(std::u16string&& text);
    static void setDecoded(Part& part, NSString* text, const detail::AsciiSet& allowed);
    static void setEncoded(Part& part, NSString* text, const detail::AsciiSet& allowed, const char* operation);

    Parts m_parts;
};

} // namespace zr
