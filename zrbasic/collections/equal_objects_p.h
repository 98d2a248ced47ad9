#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/types.h>

#include <cstdint>
#include <span>
#include <vector>

namespace zr::detail {

/// Whether the object is one of the library's own strings or numbers, which are equal only when their hashes are, and
/// never equal to anything else. Of other classes nobody knows: theirs may override one without the other.
[[nodiscard]] bool isPlainValue(const NSObject* object);

/// Positions in a list, found by hash; those of one hash in no particular order.
class HashChains {
  public:
    /// For as many positions, none of them entered yet.
    explicit HashChains(std::size_t count);

    void enter(std::uint32_t position, NSUInteger hash);

    /// Calls `visit` with the positions entered with that hash until it says true; whether it did.
    template <class Visit>
    bool visitUntil(NSUInteger hash, Visit&& visit) const {
        for (std::uint32_t at = m_heads[slot(hash)]; at != nowhere; at = m_links[at].next) {
            if (m_links[at].hash == hash && visit(at)) {
                return true;
            }
        }
        return false;
    }
    /// Takes out the positions entered with that hash for which `isUnwanted` says true; whether there were any.
    template <class Predicate>
    bool removeWhere(NSUInteger hash, Predicate&& isUnwanted) {
        bool removed = false;
        for (std::uint32_t* from = &m_heads[slot(hash)]; *from != nowhere;) {
            Link& link = m_links[*from];
            if (link.hash == hash && isUnwanted(*from)) {
                *from = link.next;
                removed = true;
            } else {
                from = &link.next;
            }
        }
        return removed;
    }

  private:
    static constexpr std::uint32_t nowhere = UINT32_MAX;
    struct Link {
        NSUInteger hash = 0;
        std::uint32_t next = nowhere;
    };

    [[nodiscard]] std::size_t slot(NSUInteger hash) const {
        // Hashes may be addresses or the bits of a double, whose low bits say little.
        return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15U) >> m_shift);
    }

    unsigned m_shift;
    std::vector<std::uint32_t> m_heads;
    std::vector<Link> m_links;
};

/// Whether a list has an element equal to an object, with the answer that asking every element would give.
///
/// Plain values are found by hash, and so is the very object; other elements are asked one after the other.
class EqualObjects {
  public:
    /// Borrows the list.
    explicit EqualObjects(std::span<const id> list);

    [[nodiscard]] bool contains(NSObject* object) const;

  private:
    std::span<const id> m_list;
    /// The elements that are no plain values.
    std::vector<NSObject*> m_others;
    HashChains m_chains;
};

} // namespace zr::detail
