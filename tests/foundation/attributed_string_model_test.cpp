#include <zrbasic/platform/foundation/mutable_attributed_string.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

// Attributed strings beside the plainest model of them: a list of characters, each with a dictionary of its own.

namespace zr {
namespace {

using Attributes = std::map<std::string, int>;
using Model = std::vector<std::pair<char16_t, Attributes>>;

enum class Edit { add, addSeveral, set, remove, replacePlain, replaceStyled, append, insert, erase, substring, count };

NSRange anyRange(std::size_t length) {
    const auto start = *rc::gen::inRange<std::size_t>(0, length + 1);
    return {start, *rc::gen::inRange<std::size_t>(0, length - start + 1)};
}

Attributes anyAttributes() {
    Attributes attributes;
    for (const char* const name : {"A", "B"}) {
        if (*rc::gen::arbitrary<bool>()) {
            attributes[name] = *rc::gen::inRange(0, 2);
        }
    }
    return attributes;
}

Model anyPiece() {
    Model piece;
    for (int run = *rc::gen::inRange(0, 4); run > 0; --run) {
        const Attributes attributes = anyAttributes();
        for (int length = *rc::gen::inRange(0, 3); length > 0; --length) {
            piece.emplace_back(static_cast<char16_t>(u'a' + *rc::gen::inRange(0, 26)), attributes);
        }
    }
    return piece;
}

Ref<NSDictionary> dictionaryOf(const Attributes& attributes) {
    Ref<NSDictionary> result = NSDictionary::dictionary();
    if (attributes.count("A") != 0 && attributes.count("B") != 0) {
        return dictionary({{"A"_ns, box(attributes.at("A"))}, {"B"_ns, box(attributes.at("B"))}});
    }
    for (const auto& [name, value] : attributes) {
        return dictionary({{NSString::fromUtf8(name), box(value)}});
    }
    return result;
}

Ref<NSAttributedString> objectOf(const Model& model) {
    const Ref<NSMutableAttributedString> result = make<NSMutableAttributedString>();
    for (const auto& [unit, attributes] : model) {
        result->append(std::u16string_view(&unit, 1), dictionaryOf(attributes));
    }
    return cast<NSAttributedString>(result->copy());
}

void check(NSAttributedString* text, const Model& model) {
    RC_ASSERT(text->length() == model.size());
    RC_ASSERT(text->view().size() == model.size());
    for (std::size_t index = 0; index < model.size(); ++index) {
        RC_ASSERT(text->view()[index] == model[index].first);
        NSRange run;
        RC_ASSERT(text->attributesAtIndex_effectiveRange(index, &run)->isEqual(dictionaryOf(model[index].second)));
        const auto isAlike = [&](std::size_t other) { return model[other].second == model[index].second; };
        std::size_t start = index;
        while (start > 0 && isAlike(start - 1)) {
            --start;
        }
        std::size_t end = index + 1;
        while (end < model.size() && isAlike(end)) {
            ++end;
        }
        RC_ASSERT(run == (NSRange{start, end - start}));
    }
}

void splice(Model& model, NSRange range, const Model& piece) {
    const auto start = model.begin() + static_cast<std::ptrdiff_t>(range.location);
    model.insert(model.erase(start, start + static_cast<std::ptrdiff_t>(range.length)), piece.begin(), piece.end());
}

template <class Change>
void change(Model& model, NSRange range, const Change& apply) {
    for (std::size_t index = range.location; index < NSMaxRange(range); ++index) {
        apply(model[index].second);
    }
}

void replacePlain(NSMutableAttributedString* text, Model& model, NSRange range) {
    Model piece = anyPiece();
    std::u16string units;
    Attributes inherited;
    if (!model.empty()) {
        inherited = model[range.length == 0 && range.location > 0 ? range.location - 1 : range.location].second;
    }
    for (auto& [unit, attributes] : piece) {
        units += unit;
        attributes = inherited;
    }
    text->replaceCharactersInRange_withString(range, NSString::fromUtf16(units));
    splice(model, range, piece);
}

void edit(NSMutableAttributedString* text, Model& model) {
    const NSRange range = anyRange(model.size());
    const Attributes attributes = anyAttributes();
    const int value = *rc::gen::inRange(0, 2);
    const Model piece = anyPiece();
    switch (static_cast<Edit>(*rc::gen::inRange(0, static_cast<int>(Edit::count)))) {
        case Edit::add:
            text->addAttribute_value_range("A"_ns, box(value), range);
            return change(model, range, [value](Attributes& present) { present["A"] = value; });
        case Edit::addSeveral:
            text->addAttributes_range(dictionaryOf(attributes), range);
            return change(model, range, [&](Attributes& present) {
                for (const auto& [name, added] : attributes) {
                    present[name] = added;
                }
            });
        case Edit::set:
            text->setAttributes_range(dictionaryOf(attributes), range);
            return change(model, range, [&](Attributes& present) { present = attributes; });
        case Edit::remove:
            text->removeAttribute_range("B"_ns, range);
            return change(model, range, [](Attributes& present) { present.erase("B"); });
        case Edit::replacePlain:
            return replacePlain(text, model, range);
        case Edit::replaceStyled:
            text->replaceCharactersInRange_withAttributedString(range, objectOf(piece));
            return splice(model, range, piece);
        case Edit::append:
            text->appendAttributedString(objectOf(piece));
            return splice(model, {model.size(), 0}, piece);
        case Edit::insert:
            text->insertAttributedString_atIndex(objectOf(piece), range.location);
            return splice(model, {range.location, 0}, piece);
        case Edit::erase:
            text->deleteCharactersInRange(range);
            return splice(model, range, {});
        default: {
            Model part(model.begin() + static_cast<std::ptrdiff_t>(range.location),
                       model.begin() + static_cast<std::ptrdiff_t>(NSMaxRange(range)));
            check(text->attributedSubstringFromRange(range), part);
        }
    }
}

RC_GTEST_PROP(AttributedStringModel, agreesWithAListOfCharactersAfterEveryEdit, ()) {
    const Ref<NSMutableAttributedString> text = make<NSMutableAttributedString>();
    Model model;
    for (int edits = *rc::gen::inRange(1, 25); edits > 0; --edits) {
        edit(text, model);
        check(text, model);
        // Asking for the string moves the text to where the next edit has to fetch it from.
        if (*rc::gen::arbitrary<bool>()) {
            RC_ASSERT(text->string()->length() == model.size());
        }
    }
    RC_ASSERT(text->isEqual(objectOf(model)));
    RC_ASSERT(objectOf(model)->isEqual(text));
}

RC_GTEST_PROP(AttributedStringModel, isEqualOnlyToTheSameCharactersWithTheSameAttributes, ()) {
    const Model one = anyPiece();
    const Model other = *rc::gen::arbitrary<bool>() ? anyPiece() : one;
    RC_ASSERT(objectOf(one)->isEqual(objectOf(other)) == (one == other));
    RC_ASSERT(one != other || objectOf(one)->hash() == objectOf(other)->hash());
}

} // namespace
} // namespace zr
