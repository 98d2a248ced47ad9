#include <zrbasic/platform/foundation/mutable_attributed_string.h>

#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/string_p.h>

#include <utility>

namespace zr {

ZR_DEFINE_CLASS(NSMutableAttributedString) {
    is.method<&NSMutableAttributedString::addAttribute_value_range>("addAttribute:value:range:")
        .method<&NSMutableAttributedString::addAttributes_range>("addAttributes:range:")
        .method<&NSMutableAttributedString::setAttributes_range>("setAttributes:range:")
        .method<&NSMutableAttributedString::removeAttribute_range>("removeAttribute:range:")
        .method<&NSMutableAttributedString::replaceCharactersInRange_withString>("replaceCharactersInRange:withString:")
        .method<&NSMutableAttributedString::replaceCharactersInRange_withAttributedString>(
            "replaceCharactersInRange:withAttributedString:")
        .method<&NSMutableAttributedString::appendAttributedString>("appendAttributedString:")
        .method<&NSMutableAttributedString::insertAttributedString_atIndex>("insertAttributedString:atIndex:")
        .method<&NSMutableAttributedString::deleteCharactersInRange>("deleteCharactersInRange:")
        .method<&NSMutableAttributedString::setAttributedString>("setAttributedString:");
}

namespace {

using Table = detail::ObjectTable;

Table copyOf(const NSDictionary& dictionary, std::size_t additions) {
    Table table;
    table.reserve(dictionary.count() + additions);
    for (const Table::Entry& entry : dictionary.table().entries()) {
        if (entry.key) {
            table.append(entry.key, entry.hash, entry.value);
        }
    }
    return table;
}

/// `under` with the entries of `over` put over it.
Ref<NSDictionary> overlaid(NSDictionary& under, NSDictionary& over) {
    if (under.count() == 0) {
        return &over;
    }
    Table table = copyOf(under, over.count());
    for (const Table::Entry& entry : over.table().entries()) {
        if (!entry.key) {
            continue;
        }
        if (const Table::Entry* const known = table.find(entry.key, entry.hash)) {
            static_cast<void>(table.exchangeValue(known, entry.value));
        } else {
            table.append(entry.key, entry.hash, entry.value);
        }
    }
    return NSDictionary::fromTable(std::move(table));
}

Ref<NSDictionary> without(NSDictionary& attributes, NSString* name) {
    if (!attributes.peek(name)) {
        return &attributes;
    }
    Table table = copyOf(attributes, 0);
    static_cast<void>(table.take(table.find(name)));
    return NSDictionary::fromTable(std::move(table));
}

} // namespace

NSMutableAttributedString::NSMutableAttributedString() = default;
NSMutableAttributedString::~NSMutableAttributedString() = default;

void NSMutableAttributedString::didChange() {}

std::u16string& NSMutableAttributedString::units() {
    if (m_string) {
        m_units = m_string->view();
        m_string = nullptr;
    }
    return m_units;
}

template <class Change>
void NSMutableAttributedString::changeRuns(NSRange range, const Change& change) {
    if (range.length == 0) {
        return;
    }
    const detail::AttributeRuns before = m_runs.part(range);
    detail::AttributeRuns after;
    NSUInteger done = 0;
    NSDictionary* last = nullptr;
    Ref<NSDictionary> changed;
    for (const detail::AttributeRun& run : before.runs()) {
        if (run.attributes != last) {
            last = run.attributes;
            changed = change(*last);
        }
        after.append(run.end - done, changed);
        done = run.end;
    }
    static_cast<void>(m_runs.replace(range, std::move(after)));
    didChange();
}

void NSMutableAttributedString::addAttribute_value_range(NSString* name, NSObject* value, NSRange range) {
    constexpr std::string_view selector = "addAttribute:value:range:";
    if (!name || !value) {
        detail::raiseNilArgument(this, selector);
    }
    detail::requireRange(this, selector, range, length());
    const Ref<NSDictionary> added = NSDictionary::dictionaryWithObject_forKey(value, name);
    changeRuns(range, [&added](NSDictionary& attributes) { return overlaid(attributes, *added); });
}

void NSMutableAttributedString::addAttributes_range(NSDictionary* attributes, NSRange range) {
    detail::requireRange(this, "addAttributes:range:", range, length());
    const Ref<NSDictionary> added = detail::frozenAttributes(attributes);
    if (added->count() == 0) {
        return;
    }
    changeRuns(range, [&added](NSDictionary& present) { return overlaid(present, *added); });
}

void NSMutableAttributedString::setAttributes_range(NSDictionary* attributes, NSRange range) {
    detail::requireRange(this, "setAttributes:range:", range, length());
    detail::AttributeRuns run;
    run.append(range.length, detail::frozenAttributes(attributes));
    static_cast<void>(m_runs.replace(range, std::move(run)));
    didChange();
}

void NSMutableAttributedString::removeAttribute_range(NSString* name, NSRange range) {
    constexpr std::string_view selector = "removeAttribute:range:";
    static_cast<void>(detail::requireText(this, selector, name));
    detail::requireRange(this, selector, range, length());
    changeRuns(range, [name](NSDictionary& attributes) { return without(attributes, name); });
}

void NSMutableAttributedString::replaceCharactersInRange_withString(NSRange range, NSString* string) {
    constexpr std::string_view selector = "replaceCharactersInRange:withString:";
    const std::u16string_view text = detail::requireText(this, selector, string);
    detail::requireRange(this, selector, range, length());
    detail::AttributeRuns run;
    if (length() == 0) {
        run.append(text.size(), NSDictionary::dictionary());
    } else {
        const bool takesFromBefore = range.length == 0 && range.location > 0;
        const std::size_t donor = m_runs.runAt(takesFromBefore ? range.location - 1 : range.location);
        run.append(text.size(), m_runs.runs()[donor].attributes);
    }
    replace(range, text, std::move(run));
}

void NSMutableAttributedString::replaceCharactersInRange_withAttributedString(NSRange range,
                                                                              NSAttributedString* other) {
    constexpr std::string_view selector = "replaceCharactersInRange:withAttributedString:";
    if (!other) {
        detail::raiseNilArgument(this, selector);
    }
    detail::requireRange(this, selector, range, length());
    // Held as a string of its own, as `other` may be the receiver.
    const Ref<NSString> string = other->string();
    replace(range, string->view(), other->runs());
}

void NSMutableAttributedString::replace(NSRange range, std::u16string_view text, detail::AttributeRuns runs) {
    // The text has room before the runs change, so that nothing can fail in between. A value that ends with its run
    // may come back to this text, and finds it in order.
    std::u16string& changing = units();
    changing.reserve(changing.size() - range.length + text.size());
    const std::vector<detail::AttributeRun> outgoing = m_runs.replace(range, std::move(runs));
    changing.replace(range.location, range.length, text);
    didChange();
}

void NSMutableAttributedString::appendAttributedString(NSAttributedString* other) {
    if (!other) {
        detail::raiseNilArgument(this, "appendAttributedString:");
    }
    if (other == this) {
        replaceCharactersInRange_withAttributedString({length(), 0}, other);
        return;
    }
    const std::u16string_view text = other->view();
    std::u16string& changing = units();
    changing.reserve(changing.size() + text.size());
    m_runs.append(other->runs());
    changing += text;
    didChange();
}

void NSMutableAttributedString::insertAttributedString_atIndex(NSAttributedString* other, NSUInteger index) {
    constexpr std::string_view selector = "insertAttributedString:atIndex:";
    if (!other) {
        detail::raiseNilArgument(this, selector);
    }
    detail::requireIndex(this, selector, index, length());
    replaceCharactersInRange_withAttributedString({index, 0}, other);
}

void NSMutableAttributedString::deleteCharactersInRange(NSRange range) {
    detail::requireRange(this, "deleteCharactersInRange:", range, length());
    replace(range, {}, {});
}

void NSMutableAttributedString::setAttributedString(NSAttributedString* other) {
    if (!other) {
        detail::raiseNilArgument(this, "setAttributedString:");
    }
    replaceCharactersInRange_withAttributedString({0, length()}, other);
}

void NSMutableAttributedString::append(std::u16string_view text, NSDictionary* attributes) {
    std::u16string& changing = units();
    changing.reserve(changing.size() + text.size());
    m_runs.append(text.size(), detail::frozenAttributes(attributes));
    changing += text;
    didChange();
}

id NSMutableAttributedString::copy() const {
    return make<NSAttributedString>(&NSAttributedString::initWithAttributedString,
                                    const_cast<NSMutableAttributedString*>(this));
}

} // namespace zr
