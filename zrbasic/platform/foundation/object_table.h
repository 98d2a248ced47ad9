#pragma once

#include <zrbasic/platform/runtime/object.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace zr::detail {

/// Objects found by `isEqual` and `hash`, kept in the order they were added in: what dictionaries and sets are made of.
///
/// A few entries are searched one after the other; more are found through an index of open addressing. Removed
/// entries leave a gap (a null key), which is closed when gaps outweigh entries.
class ObjectTable {
  public:
    struct Entry {
        NSUInteger hash = 0;
        id key;
        /// Null in sets.
        id value;
    };

    [[nodiscard]] std::size_t count() const { return m_count; }
    /// The entries and the gaps between them; gaps have no key.
    [[nodiscard]] const std::vector<Entry>& entries() const { return m_entries; }

    /// The entry of an equal key; null when there is none. Borrowed until the table changes.
    [[nodiscard]] const Entry* find(NSObject* key) const { return m_count == 0 ? nullptr : find(key, key->hash()); }
    [[nodiscard]] ZR_EXPORT const Entry* find(NSObject* key, NSUInteger hash) const;

    void reserve(std::size_t count);
    /// Adds a key that the table does not hold yet.
    void append(id key, NSUInteger hash, id value);
    /// Puts another value into an entry that `find` gave, and gives the old one back, to be let go when the caller's
    /// state is in order.
    [[nodiscard]] id exchangeValue(const Entry* entry, id value);
    /// Takes out an entry that `find` gave.
    [[nodiscard]] Entry take(const Entry* entry);
    void swap(ObjectTable& other) noexcept;

    /// The first entry at or behind `position`, which moves there; null when there is none.
    [[nodiscard]] const Entry* nextEntry(std::size_t& position) const {
        while (position < m_entries.size() && !m_entries[position].key) {
            ++position;
        }
        return position < m_entries.size() ? &m_entries[position] : nullptr;
    }

  private:
    /// One cell of the index: a piece of the hash, so that most misses never touch the entry, and the entry's number
    /// from 1 on.
    struct Cell {
        std::uint32_t hash = 0;
        std::uint32_t number = 0;
    };

    /// Up to here comparing hashes one by one beats the index.
    static constexpr std::size_t mostUnindexed = 8;

    [[nodiscard]] static std::uint64_t mixed(NSUInteger hash) {
        // Hashes may be as poor as a count or an address; both halves of this depend on all their bits.
        std::uint64_t bits = hash ^ (hash >> 32);
        bits *= 0x9E3779B97F4A7C15U;
        return bits ^ (bits >> 29);
    }
    [[nodiscard]] std::size_t home(std::uint64_t mixedHash) const {
        return static_cast<std::size_t>(mixedHash >> 32) & (m_cells.size() - 1);
    }
    [[nodiscard]] std::size_t cellOf(std::size_t number) const;
    void enter(std::size_t number);
    void rebuildIndex(std::size_t capacity);
    void closeGaps();

    std::vector<Entry> m_entries;
    std::vector<Cell> m_cells;
    std::size_t m_count = 0;
};

} // namespace zr::detail
