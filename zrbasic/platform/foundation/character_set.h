#pragma once

#include <zrbasic/platform/foundation/string.h>

#include <memory>

namespace zr {

namespace detail {
class CodePointSet;
}

/// A set of Unicode code points, for trimming, searching and escaping.
///
/// Never changes (but see `NSMutableCharacterSet`), so it may be used from any thread. The ready-made sets are made
/// once; asking again gives the same object.
class ZR_EXPORT NSCharacterSet : public NSObject {
    ZR_DECLARE_CLASS(NSCharacterSet, NSObject)

  public:
    /// The empty set.
    NSCharacterSet();
    ~NSCharacterSet() override;

    /// The tab, the space separators and U+200B; no line breaks.
    [[nodiscard]] static Ref<NSCharacterSet> whitespaceCharacterSet();
    /// U+000A to U+000D, U+0085, U+2028 and U+2029.
    [[nodiscard]] static Ref<NSCharacterSet> newlineCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> whitespaceAndNewlineCharacterSet();
    /// Decimal digits of every script.
    [[nodiscard]] static Ref<NSCharacterSet> decimalDigitCharacterSet();
    /// Letters and marks of every script.
    [[nodiscard]] static Ref<NSCharacterSet> letterCharacterSet();
    /// Letters, marks and numbers of every script.
    [[nodiscard]] static Ref<NSCharacterSet> alphanumericCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> uppercaseLetterCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> lowercaseLetterCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> punctuationCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> controlCharacterSet();

    /// What may stand unescaped in that part of a URL; ASCII only.
    [[nodiscard]] static Ref<NSCharacterSet> URLUserAllowedCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> URLPasswordAllowedCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> URLHostAllowedCharacterSet();
    /// Without ";", which older URL parsers cut paths at.
    [[nodiscard]] static Ref<NSCharacterSet> URLPathAllowedCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> URLQueryAllowedCharacterSet();
    [[nodiscard]] static Ref<NSCharacterSet> URLFragmentAllowedCharacterSet();

    /// The code points of `text`; empty for an empty text. Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] static Ref<NSCharacterSet> characterSetWithCharactersInString(NSString* text);
    /// The code points from `range.location` on, `range.length` of them; what lies beyond U+10FFFF is left out.
    [[nodiscard]] static Ref<NSCharacterSet> characterSetWithRange(NSRange range);

    /// Every code point that is not in this set.
    [[nodiscard]] Ref<NSCharacterSet> invertedSet() const;
    /// Whether the code unit is a member; a surrogate is one only if it was put in on its own.
    [[nodiscard]] bool characterIsMember(char16_t character) const;
    [[nodiscard]] bool longCharacterIsMember(char32_t codePoint) const;
    /// Whether all members of `other` are members of this set; false for null.
    [[nodiscard]] bool isSupersetOfSet(NSCharacterSet* other) const;

    /// True for a set of the same code points, however it was made.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    [[nodiscard]] id copy() const override;
    [[nodiscard]] id mutableCopy() const override;

    /// The members, for the library's own use; borrowed while the set lives and, for a mutable one, is not changed.
    [[nodiscard]] const detail::CodePointSet& codePoints() const { return *m_set; }

  protected:
    [[nodiscard]] static Ref<NSCharacterSet> holding(detail::CodePointSet set);

    /// Shared by copies, so it is replaced and never changed.
    std::shared_ptr<const detail::CodePointSet> m_set;
};

/// A set of code points that can be changed in place. Must not be changed while another thread uses it.
class ZR_EXPORT NSMutableCharacterSet : public NSCharacterSet {
    ZR_DECLARE_CLASS(NSMutableCharacterSet, NSCharacterSet)

  public:
    NSMutableCharacterSet();
    ~NSMutableCharacterSet() override;

    void addCharactersInRange(NSRange range);
    void removeCharactersInRange(NSRange range);
    /// Both raise `NSInvalidArgumentException` for null, as the two below do.
    void addCharactersInString(NSString* text);
    void removeCharactersInString(NSString* text);
    void formUnionWithCharacterSet(NSCharacterSet* other);
    void formIntersectionWithCharacterSet(NSCharacterSet* other);
    void invert();

    /// An immutable set of the present members.
    [[nodiscard]] id copy() const override;

  private:
    void hold(detail::CodePointSet set);
};

} // namespace zr
