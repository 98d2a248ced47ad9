#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSNumber;
class NSString;
class NSURL;

namespace detail {
Ref<NSURL> urlOfCheckedText(Ref<NSString> text);
}

/// The text of a URL, with the URL that it is relative to, if any.
///
/// Strict about characters: ASCII letters and digits, "!$&'()*+,-./:;=?@_~[]", complete escapes such as "%20", and one
/// "#". Nothing is encoded for the caller. Lenient about structure: whatever is made of these is a URL, "" included;
/// `NSURLComponents` is the stricter parser. The text stays as it was given, letter case and escapes included.
///
/// The parts are those of the URL resolved against its base. A URL whose scheme is followed by anything but "/", such
/// as "mailto:a@b", has a scheme and a fragment only. Parts that are not there are null; so are decoded ones whose
/// escapes are not UTF-8.
///
/// Never changes, so it may be used from any thread.
class ZR_EXPORT NSURL : public NSObject {
    ZR_DECLARE_CLASS(NSURL, NSObject)

  public:
    NSURL();
    ~NSURL() override;

    /// Null when `text` has a character that a URL cannot hold; raises `NSInvalidArgumentException` for null.
    [[nodiscard]] static Ref<NSURL> URLWithString(NSString* text);
    /// The same, relative to `base`, which may be null and does not count when `text` has a scheme.
    [[nodiscard]] static Ref<NSURL> URLWithString_relativeToURL(NSString* text, NSURL* base);
    /// Null and raising like the others.
    id initWithString(NSString* text);
    id initWithString_relativeToURL(NSString* text, NSURL* base);

    /// The text, resolved against the base. An empty text gives the base's, "?n" replaces its query, "x" and "../x"
    /// its last path segments; steps up beyond the root stay: "../../x" seen from "http://h/a" is "http://h/../../x".
    [[nodiscard]] Ref<NSString> absoluteString() const { return m_absolute; }
    /// The text as it was given.
    [[nodiscard]] Ref<NSString> relativeString() const { return m_text; }
    /// A URL of the resolved text and no base; the receiver itself when it has none.
    [[nodiscard]] Ref<NSURL> absoluteURL() const;
    /// Absolute; null when there is none.
    [[nodiscard]] Ref<NSURL> baseURL() const { return m_base; }

    /// In the letter case of the text.
    [[nodiscard]] Ref<NSString> scheme() const;
    /// Decoded, without the brackets of an address; null when empty.
    [[nodiscard]] Ref<NSString> host() const;
    /// Null for a port that is no number.
    [[nodiscard]] Ref<NSNumber> port() const;
    /// Decoded.
    [[nodiscard]] Ref<NSString> user() const;
    /// With its escapes.
    [[nodiscard]] Ref<NSString> password() const;
    /// Decoded, without a "/" at its end unless that is all; "" when a URL ends with its host.
    [[nodiscard]] Ref<NSString> path() const;
    /// With its escapes; "" for a URL that ends with "?".
    [[nodiscard]] Ref<NSString> query() const;
    /// With its escapes; "" for a URL that ends with "#".
    [[nodiscard]] Ref<NSString> fragment() const;
    /// What follows the last "/" of the path.
    [[nodiscard]] Ref<NSString> lastPathComponent() const;
    /// What follows the last "." of the last path component; "" when there is none.
    [[nodiscard]] Ref<NSString> pathExtension() const;

    /// True for a URL of the same text and an equal base; two that merely resolve to the same are not equal.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The text, and behind " -- " the base.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The URL itself.
    [[nodiscard]] id copy() const override;

  private:
    friend Ref<NSURL> detail::urlOfCheckedText(Ref<NSString> text);

    Ref<NSString> m_text;
    Ref<NSString> m_absolute;
    Ref<NSURL> m_base;
};

} // namespace zr
