#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSString;

/// One name and value of a URL's query, both decoded. Never changes, so it may be used from any thread.
class ZR_EXPORT NSURLQueryItem : public NSObject {
    ZR_DECLARE_CLASS(NSURLQueryItem, NSObject)

  public:
    NSURLQueryItem();
    ~NSURLQueryItem() override;

    /// Both are copied. A null name counts as ""; a null value stands for a name without "=".
    [[nodiscard]] static Ref<NSURLQueryItem> queryItemWithName_value(NSString* name, NSString* value);
    id initWithName_value(NSString* name, NSString* value);

    /// Never null.
    [[nodiscard]] Ref<NSString> name() const { return m_name; }
    /// Null is not the same as "".
    [[nodiscard]] Ref<NSString> value() const { return m_value; }

    /// True for an item of the same name and value.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    [[nodiscard]] Ref<NSString> description() const override;
    /// The item itself.
    [[nodiscard]] id copy() const override;

  private:
    Ref<NSString> m_name;
    Ref<NSString> m_value;
};

} // namespace zr
