#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// A condition that objects can be tested against. The one kind there is asks whether a whole string matches a
/// pattern: "SELF MATCHES %@".
///
/// Never changes, so it may be used from any thread.
class ZR_EXPORT NSPredicate : public NSObject {
    ZR_DECLARE_CLASS(NSPredicate, NSObject)
  public:
    ~NSPredicate() override;

    /// The condition that `format` spells, with `argument` in the place of "%@". Words may be in any letter case.
    ///
    /// Raises `NSInvalidArgumentException` for any other format, null included. The pattern is taken as it is; an
    /// invalid one, or an argument that is no string, is a condition that nothing fulfils.
    [[nodiscard]] static Ref<NSPredicate> predicateWithFormat(NSString* format, NSObject* argument);

    /// Whether `object` fulfils the condition: all of it must match, letter case included, a line feed at its end too.
    ///
    /// False for null. Raises `NSInvalidArgumentException` when the object is not a string.
    [[nodiscard]] bool evaluateWithObject(NSObject* object) const;

    /// The condition as text, with the pattern in quotation marks.
    [[nodiscard]] Ref<NSString> predicateFormat() const;

    [[nodiscard]] Ref<NSString> description() const override;
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The predicate itself.
    [[nodiscard]] id copy() const override;

  private:
    Ref<NSString> m_pattern;
};

} // namespace zr
