#pragma once

#include <zrbasic/platform/foundation/attribute_runs.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/types.h>

#include <string>
#include <string_view>

namespace zr {

class NSDictionary;
class NSString;

/// How attributes are walked over; a sum of these.
enum NSAttributedStringEnumerationOptions : NSUInteger {
    /// From the last run to the first.
    NSAttributedStringEnumerationReverse = 2,
    /// Runs may be delivered in pieces; they are delivered whole all the same.
    NSAttributedStringEnumerationLongestEffectiveRangeNotRequired = 1 << 20,
};

/// Called with a run's attributes, never null, and its range; setting the flag ends the walk.
using AttributesVisitor = FunctionRef<void(NSDictionary* attributes, NSRange range, bool& stop)>;
/// Called with the attribute's value, null where there is none, and the range that has it.
using AttributeVisitor = FunctionRef<void(NSObject* value, NSRange range, bool& stop)>;

/// Text with attributes: every character has one dictionary of attributes, and neighbours with equal dictionaries form
/// a run.
///
/// Dictionaries are copied when they come in, so later changes to them do not matter; their values are kept. Places
/// and ranges count UTF-16 code units; one that is not inside the text raises `NSRangeException`. A null text or name
/// raises `NSInvalidArgumentException`.
///
/// Never changes (but see `NSMutableAttributedString`), so it may be read from any thread.
class ZR_EXPORT NSAttributedString : public NSObject {
    ZR_DECLARE_CLASS(NSAttributedString, NSObject)

  public:
    NSAttributedString();
    ~NSAttributedString() override;

    /// Set up with a text without attributes.
    id initWithString(NSString* string);
    /// The whole text with these attributes; null counts as none.
    id initWithString_attributes(NSString* string, NSDictionary* attributes);
    /// Set up with the text and the runs of `other`.
    id initWithAttributedString(NSAttributedString* other);

    /// The text as a string that does not change, whatever happens to the receiver. Never null.
    [[nodiscard]] Ref<NSString> string() const;
    [[nodiscard]] NSUInteger length() const { return m_runs.length(); }
    /// The code units, borrowed until the next call of whatever kind when the receiver can change.
    [[nodiscard]] std::u16string_view view() const;
    /// The runs, borrowed until the receiver changes: the cheapest walk over the attributes.
    [[nodiscard]] const detail::AttributeRuns& runs() const { return m_runs; }

    /// The attributes of the character at `index`, never null. Its run goes to `effectiveRange`, unless that is null.
    [[nodiscard]] Ref<NSDictionary> attributesAtIndex_effectiveRange(NSUInteger index, NSRange* effectiveRange) const;
    /// One attribute of the character at `index`, null when it has none of that name. The range is that of the run, in
    /// which other attributes are the same, too.
    [[nodiscard]] id attribute_atIndex_effectiveRange(NSString* name, NSUInteger index, NSRange* effectiveRange) const;
    /// The same, with the largest range inside `limit` over which this one attribute is the same. `index` must lie in
    /// `limit`.
    [[nodiscard]] id attribute_atIndex_longestEffectiveRange_inRange(NSString* name, NSUInteger index,
                                                                     NSRange* effectiveRange, NSRange limit) const;

    [[nodiscard]] Ref<NSAttributedString> attributedSubstringFromRange(NSRange range) const;

    /// Calls `visitor` for every run, cut to `range`, in order. `options` is a sum of
    /// `NSAttributedStringEnumerationOptions`. The visitor may change the receiver inside the range it was given, as
    /// long as the length stays the same. No visitor, no walk.
    void enumerateAttributesInRange_options_usingBlock(NSRange range, NSUInteger options,
                                                       AttributesVisitor visitor) const;
    /// The same for one attribute, over stretches of the same value and those without one.
    void enumerateAttribute_inRange_options_usingBlock(NSString* name, NSRange range, NSUInteger options,
                                                       AttributeVisitor visitor) const;

    /// Whether both have the same code units and, at each of them, equal attributes. A plain string is never equal.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    /// False for null.
    [[nodiscard]] bool isEqualToAttributedString(NSAttributedString* other) const;
    /// Of the text alone.
    [[nodiscard]] NSUInteger hash() const override;

    /// Each run's text with its attributes behind it.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The receiver itself when it cannot change.
    [[nodiscard]] id copy() const override;
    /// An `NSMutableAttributedString` of the same text and attributes.
    [[nodiscard]] id mutableCopy() const override;

  protected:
    /// The stretch around `index`, inside `limit`, over which the attribute is the same.
    [[nodiscard]] NSRange stretchAround(NSUInteger index, NSString* name, NSRange limit) const;

    /// The text: in `m_string`, or in `m_units` while that is null. Text under change moves from one to the other, so
    /// that asking for the string costs no copy.
    mutable Ref<NSString> m_string;
    mutable std::u16string m_units;
    detail::AttributeRuns m_runs;
};

} // namespace zr
