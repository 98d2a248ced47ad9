#include <zrbasic/collections/equal_objects_p.h>

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/mutable_string.h>

#include <algorithm>
#include <bit>

namespace zr::detail {

namespace {

NSUInteger addressHash(const NSObject* object) {
    return static_cast<NSUInteger>(reinterpret_cast<std::uintptr_t>(object));
}

} // namespace

bool isPlainValue(const NSObject* object) {
    // These very classes: a descendant, or an object that was switched to another class, may see equality differently.
    const Class* const kind = object->isa();
    return kind == NSString::classObject() || kind == NSNumber::classObject() ||
           kind == NSMutableString::classObject() || kind == NSDecimalNumber::classObject();
}

HashChains::HashChains(std::size_t count)
    : m_shift(64 - static_cast<unsigned>(std::bit_width(2 * count | 1))),
      m_heads(std::size_t(1) << (64 - m_shift), nowhere),
      m_links(count) {}

void HashChains::enter(std::uint32_t position, NSUInteger hash) {
    std::uint32_t& head = m_heads[slot(hash)];
    m_links[position] = {hash, head};
    head = position;
}

EqualObjects::EqualObjects(std::span<const id> list) : m_list(list), m_chains(list.size()) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        NSObject* const element = list[i];
        if (isPlainValue(element)) {
            m_chains.enter(static_cast<std::uint32_t>(i), element->hash());
        } else {
            m_chains.enter(static_cast<std::uint32_t>(i), addressHash(element));
            m_others.push_back(element);
        }
    }
}

bool EqualObjects::contains(NSObject* object) const {
    const bool isPlain = isPlainValue(object);
    const auto isTheSame = [&](std::uint32_t position) { return m_list[position] == object; };
    const auto isEqual = [&](std::uint32_t position) {
        return m_list[position] == object || m_list[position]->isEqual(object);
    };
    if (isPlain ? m_chains.visitUntil(object->hash(), isEqual) : m_chains.visitUntil(addressHash(object), isTheSame)) {
        return true;
    }
    const auto equals = [object](NSObject* element) { return element->isEqual(object); };
    return isPlain ? std::any_of(m_others.begin(), m_others.end(), equals)
                   : std::any_of(m_list.begin(), m_list.end(), equals);
}

} // namespace zr::detail
