#include <zrbasic/platform/foundation/character_set.h>

#include <zrbasic/platform/foundation/code_point_set_p.h>
#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <algorithm>

namespace zr {

namespace {

using detail::CodePointSet;

// What RFC 3986 lets stand for itself everywhere.
#define ZR_UNRESERVED u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~"

std::shared_ptr<const CodePointSet> emptySet() {
    static const auto* const empty = new std::shared_ptr<const CodePointSet>(std::make_shared<CodePointSet>());
    return *empty;
}

CodePointSet setOfRange(NSRange range) {
    if (range.length == 0 || range.location > CodePointSet::lastCodePoint) {
        return CodePointSet();
    }
    const NSUInteger room = CodePointSet::lastCodePoint - range.location;
    const auto first = static_cast<char32_t>(range.location);
    return CodePointSet({{first, first + static_cast<char32_t>(std::min(range.length - 1, room))}});
}

template <typename Predicate>
CodePointSet setOfBmp(Predicate member) {
    std::vector<CodePointSet::Stretch> members;
    for (char32_t c = 0; c <= 0xFFFF; ++c) {
        if (member(c)) {
            members.push_back({c, c});
        }
    }
    return CodePointSet(std::move(members));
}

} // namespace

ZR_DEFINE_CLASS(NSCharacterSet) {
    is.classMethod<&NSCharacterSet::whitespaceCharacterSet>("whitespaceCharacterSet")
        .classMethod<&NSCharacterSet::newlineCharacterSet>("newlineCharacterSet")
        .classMethod<&NSCharacterSet::whitespaceAndNewlineCharacterSet>("whitespaceAndNewlineCharacterSet")
        .classMethod<&NSCharacterSet::decimalDigitCharacterSet>("decimalDigitCharacterSet")
        .classMethod<&NSCharacterSet::letterCharacterSet>("letterCharacterSet")
        .classMethod<&NSCharacterSet::alphanumericCharacterSet>("alphanumericCharacterSet")
        .classMethod<&NSCharacterSet::uppercaseLetterCharacterSet>("uppercaseLetterCharacterSet")
        .classMethod<&NSCharacterSet::lowercaseLetterCharacterSet>("lowercaseLetterCharacterSet")
        .classMethod<&NSCharacterSet::punctuationCharacterSet>("punctuationCharacterSet")
        .classMethod<&NSCharacterSet::controlCharacterSet>("controlCharacterSet")
        .classMethod<&NSCharacterSet::URLUserAllowedCharacterSet>("URLUserAllowedCharacterSet")
        .classMethod<&NSCharacterSet::URLPasswordAllowedCharacterSet>("URLPasswordAllowedCharacterSet")
        .classMethod<&NSCharacterSet::URLHostAllowedCharacterSet>("URLHostAllowedCharacterSet")
        .classMethod<&NSCharacterSet::URLPathAllowedCharacterSet>("URLPathAllowedCharacterSet")
        .classMethod<&NSCharacterSet::URLQueryAllowedCharacterSet>("URLQueryAllowedCharacterSet")
        .classMethod<&NSCharacterSet::URLFragmentAllowedCharacterSet>("URLFragmentAllowedCharacterSet")
        .classMethod<&NSCharacterSet::characterSetWithCharactersInString>("characterSetWithCharactersInString:")
        .classMethod<&NSCharacterSet::characterSetWithRange>("characterSetWithRange:")
        .method<&NSCharacterSet::invertedSet>("invertedSet")
        .method<&NSCharacterSet::characterIsMember>("characterIsMember:")
        .method<&NSCharacterSet::longCharacterIsMember>("longCharacterIsMember:")
        .method<&NSCharacterSet::isSupersetOfSet>("isSupersetOfSet:");
}

NSCharacterSet::NSCharacterSet() : m_set(emptySet()) {}
NSCharacterSet::~NSCharacterSet() = default;

// A ready-made set: built when first asked for, kept for ever.
#define ZR_READY_MADE_SET(name, ...)                                    \
    Ref<NSCharacterSet> NSCharacterSet::name() {                        \
        static NSCharacterSet* const set = holding(__VA_ARGS__).leak(); \
        return set;                                                     \
    }

ZR_READY_MADE_SET(whitespaceCharacterSet, setOfBmp(detail::isWhitespace))
ZR_READY_MADE_SET(newlineCharacterSet, setOfBmp(detail::isNewline))
ZR_READY_MADE_SET(whitespaceAndNewlineCharacterSet, setOfBmp(detail::isWhitespaceOrNewline))
ZR_READY_MADE_SET(decimalDigitCharacterSet, CodePointSet::fromPattern(u"[:Nd:]"))
ZR_READY_MADE_SET(letterCharacterSet, CodePointSet::fromPattern(u"[[:L:][:M:]]"))
ZR_READY_MADE_SET(alphanumericCharacterSet, CodePointSet::fromPattern(u"[[:L:][:M:][:N:]]"))
ZR_READY_MADE_SET(uppercaseLetterCharacterSet, CodePointSet::fromPattern(u"[[:Lu:][:Lt:]]"))
ZR_READY_MADE_SET(lowercaseLetterCharacterSet, CodePointSet::fromPattern(u"[:Ll:]"))
ZR_READY_MADE_SET(punctuationCharacterSet, CodePointSet::fromPattern(u"[:P:]"))
ZR_READY_MADE_SET(controlCharacterSet, CodePointSet::fromPattern(u"[[:Cc:][:Cf:]]"))
ZR_READY_MADE_SET(URLUserAllowedCharacterSet, CodePointSet(ZR_UNRESERVED u"!$&'()*+,;="))
ZR_READY_MADE_SET(URLPasswordAllowedCharacterSet, CodePointSet(ZR_UNRESERVED u"!$&'()*+,;="))
ZR_READY_MADE_SET(URLHostAllowedCharacterSet, CodePointSet(ZR_UNRESERVED u"!$&'()*+,;=:[]"))
ZR_READY_MADE_SET(URLPathAllowedCharacterSet, CodePointSet(ZR_UNRESERVED u"!$&'()*+,=:@/"))
ZR_READY_MADE_SET(URLQueryAllowedCharacterSet, CodePointSet(ZR_UNRESERVED u"!$&'()*+,;=:@/?"))
ZR_READY_MADE_SET(URLFragmentAllowedCharacterSet, CodePointSet(ZR_UNRESERVED u"!$&'()*+,;=:@/?"))

#undef ZR_READY_MADE_SET
#undef ZR_UNRESERVED

Ref<NSCharacterSet> NSCharacterSet::characterSetWithCharactersInString(NSString* text) {
    return holding(CodePointSet(detail::requireText(nullptr, "characterSetWithCharactersInString:", text)));
}

Ref<NSCharacterSet> NSCharacterSet::characterSetWithRange(NSRange range) {
    return holding(setOfRange(range));
}

Ref<NSCharacterSet> NSCharacterSet::holding(CodePointSet set) {
    Ref<NSCharacterSet> result = alloc<NSCharacterSet>();
    result->m_set = std::make_shared<const CodePointSet>(std::move(set));
    return result;
}

Ref<NSCharacterSet> NSCharacterSet::invertedSet() const {
    return holding(m_set->inverted());
}

bool NSCharacterSet::characterIsMember(char16_t character) const {
    return m_set->contains(character);
}

bool NSCharacterSet::longCharacterIsMember(char32_t codePoint) const {
    return m_set->contains(codePoint);
}

bool NSCharacterSet::isSupersetOfSet(NSCharacterSet* other) const {
    return other != nullptr && other->m_set->without(*m_set).isEmpty();
}

bool NSCharacterSet::isEqual(NSObject* other) const {
    const NSCharacterSet* const set = cast<NSCharacterSet>(other);
    return set != nullptr && (set->m_set == m_set || *set->m_set == *m_set);
}

NSUInteger NSCharacterSet::hash() const {
    return m_set->hash();
}

id NSCharacterSet::copy() const {
    return id(const_cast<NSCharacterSet*>(this));
}

id NSCharacterSet::mutableCopy() const {
    const Ref<NSMutableCharacterSet> result = make<NSMutableCharacterSet>();
    result->formUnionWithCharacterSet(const_cast<NSCharacterSet*>(this));
    return result;
}

ZR_DEFINE_CLASS(NSMutableCharacterSet) {
    is.method<&NSMutableCharacterSet::addCharactersInRange>("addCharactersInRange:")
        .method<&NSMutableCharacterSet::removeCharactersInRange>("removeCharactersInRange:")
        .method<&NSMutableCharacterSet::addCharactersInString>("addCharactersInString:")
        .method<&NSMutableCharacterSet::removeCharactersInString>("removeCharactersInString:")
        .method<&NSMutableCharacterSet::formUnionWithCharacterSet>("formUnionWithCharacterSet:")
        .method<&NSMutableCharacterSet::formIntersectionWithCharacterSet>("formIntersectionWithCharacterSet:")
        .method<&NSMutableCharacterSet::invert>("invert");
}

NSMutableCharacterSet::NSMutableCharacterSet() = default;
NSMutableCharacterSet::~NSMutableCharacterSet() = default;

void NSMutableCharacterSet::hold(CodePointSet set) {
    m_set = std::make_shared<const CodePointSet>(std::move(set));
}

void NSMutableCharacterSet::addCharactersInRange(NSRange range) {
    hold(m_set->united(setOfRange(range)));
}

void NSMutableCharacterSet::removeCharactersInRange(NSRange range) {
    hold(m_set->without(setOfRange(range)));
}

void NSMutableCharacterSet::addCharactersInString(NSString* text) {
    hold(m_set->united(CodePointSet(detail::requireText(this, "addCharactersInString:", text))));
}

void NSMutableCharacterSet::removeCharactersInString(NSString* text) {
    hold(m_set->without(CodePointSet(detail::requireText(this, "removeCharactersInString:", text))));
}

void NSMutableCharacterSet::formUnionWithCharacterSet(NSCharacterSet* other) {
    if (other == nullptr) {
        detail::raiseNilArgument(this, "formUnionWithCharacterSet:");
    }
    hold(m_set->united(other->codePoints()));
}

void NSMutableCharacterSet::formIntersectionWithCharacterSet(NSCharacterSet* other) {
    if (other == nullptr) {
        detail::raiseNilArgument(this, "formIntersectionWithCharacterSet:");
    }
    hold(m_set->intersected(other->codePoints()));
}

void NSMutableCharacterSet::invert() {
    hold(m_set->inverted());
}

id NSMutableCharacterSet::copy() const {
    return holding(*m_set);
}

} // namespace zr
