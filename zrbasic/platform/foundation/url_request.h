#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSData;
class NSDictionary;
class NSString;
class NSURL;

/// What to ask of a server: a URL, a method, header fields and a body. It is a record; nothing here sends it.
///
/// Names of header fields are told apart without regard to the case of ASCII letters. Never changes (but see
/// `NSMutableURLRequest`), so it may be used from any thread.
class ZR_EXPORT NSURLRequest : public NSObject {
    ZR_DECLARE_CLASS(NSURLRequest, NSObject)

  public:
    NSURLRequest();
    ~NSURLRequest() override;

    /// A request to get the URL, which may be null.
    [[nodiscard]] static Ref<NSURLRequest> requestWithURL(NSURL* url);
    id initWithURL(NSURL* url);

    [[nodiscard]] Ref<NSURL> URL() const { return m_url; }
    /// "GET" unless another one was set. Never null.
    [[nodiscard]] Ref<NSString> HTTPMethod() const { return m_method; }
    [[nodiscard]] Ref<NSData> HTTPBody() const { return m_body; }
    /// All fields by name; null when none were ever set.
    [[nodiscard]] Ref<NSDictionary> allHTTPHeaderFields() const { return m_fields; }
    /// Null when there is no such field, and for null.
    [[nodiscard]] Ref<NSString> valueForHTTPHeaderField(NSString* name) const;

    /// True for a request, mutable or not, of the same URL, method, fields and body.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    [[nodiscard]] Ref<NSString> description() const override;
    /// The receiver itself when it cannot change.
    [[nodiscard]] id copy() const override;
    /// An `NSMutableURLRequest` of the same content.
    [[nodiscard]] id mutableCopy() const override;

  protected:
    /// Makes a fresh request ask what the other one asks.
    static void fill(NSURLRequest& fresh, const NSURLRequest& other);

    Ref<NSURL> m_url;
    Ref<NSString> m_method;
    Ref<NSData> m_body;
    /// Immutable.
    Ref<NSDictionary> m_fields;
};

/// A request that can be changed. Must not be changed while another thread uses it.
class ZR_EXPORT NSMutableURLRequest : public NSURLRequest {
    ZR_DECLARE_CLASS(NSMutableURLRequest, NSURLRequest)

  public:
    NSMutableURLRequest();
    ~NSMutableURLRequest() override;

    /// As for `NSURLRequest`, but the result can be changed.
    [[nodiscard]] static Ref<NSMutableURLRequest> requestWithURL(NSURL* url);

    void setURL(NSURL* url);
    /// Null sets "GET".
    void setHTTPMethod(NSString* method);
    /// The bytes are copied; null removes the body.
    void setHTTPBody(NSData* body);
    /// The entries of `fields` and nothing else, under their names as they are spelled; null removes all fields. Of
    /// names that differ in case only the last one stays. Entries that are not two strings are left out.
    void setAllHTTPHeaderFields(NSDictionary* fields);
    /// Sets one field in place of one of that name, spelled with capitals: "x-trace" as "X-Trace". A null value removes
    /// it; a null name does nothing.
    void setValue_forHTTPHeaderField(NSString* value, NSString* name);
    /// Appends to the value that the field has, behind a comma. Null does nothing.
    void addValue_forHTTPHeaderField(NSString* value, NSString* name);

    /// A request of the same content that will not change.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
