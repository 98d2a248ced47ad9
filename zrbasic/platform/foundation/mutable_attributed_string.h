#pragma once

#include <zrbasic/platform/foundation/attributed_string.h>

namespace zr {

/// Text with attributes that can be changed in place. As `NSAttributedString` otherwise; not for use from several
/// threads at once.
///
/// Attributes of a text that was put in stay as they were made; neighbours with equal ones join into one run. Each
/// operation is done or, when it raises, leaves the receiver as it was.
class ZR_EXPORT NSMutableAttributedString : public NSAttributedString {
    ZR_DECLARE_CLASS(NSMutableAttributedString, NSAttributedString)

  public:
    NSMutableAttributedString();
    ~NSMutableAttributedString() override;

    /// Gives the characters in `range` one more attribute, in place of an older one of that name. Raises
    /// `NSInvalidArgumentException` for a null name or value. An empty range changes nothing.
    void addAttribute_value_range(NSString* name, NSObject* value, NSRange range);
    /// The same for all entries of a dictionary; null adds nothing.
    void addAttributes_range(NSDictionary* attributes, NSRange range);
    /// These attributes and no others; null takes all away.
    void setAttributes_range(NSDictionary* attributes, NSRange range);
    /// Characters without the attribute stay as they are.
    void removeAttribute_range(NSString* name, NSRange range);

    /// The new characters take the attributes of the first one replaced; where none is replaced, those of the character
    /// before, or, at the beginning, those of the first one.
    void replaceCharactersInRange_withString(NSRange range, NSString* string);
    /// The new characters bring exactly their own attributes. Raises `NSInvalidArgumentException` for null, here and
    /// below; a text may be put into itself.
    void replaceCharactersInRange_withAttributedString(NSRange range, NSAttributedString* other);
    void appendAttributedString(NSAttributedString* other);
    /// `index` may be the length, which appends.
    void insertAttributedString_atIndex(NSAttributedString* other, NSUInteger index);
    void deleteCharactersInRange(NSRange range);
    /// The text and attributes of `other` and nothing else.
    void setAttributedString(NSAttributedString* other);

    /// Appends text with exactly these attributes, null counting as none, without making an object of the piece. The
    /// text must not be the receiver's own.
    void append(std::u16string_view text, NSDictionary* attributes);

    /// A text of the present characters and attributes that will not change.
    [[nodiscard]] id copy() const override;

  protected:
    /// Called after every change of the text or its attributes, when everything is in order again; does nothing unless
    /// overridden.
    virtual void didChange();

  private:
    std::u16string& units();
    template <class Change>
    void changeRuns(NSRange range, const Change& change);
    void replace(NSRange range, std::u16string_view text, detail::AttributeRuns runs);
};

} // namespace zr
