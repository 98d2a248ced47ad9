#include <zrbasic/platform/foundation/object_table.h>

#include <bit>

namespace zr::detail {

const ObjectTable::Entry* ObjectTable::find(NSObject* key, NSUInteger hash) const {
    if (m_cells.empty()) {
        for (const Entry& entry : m_entries) {
            if (entry.hash == hash && entry.key && (entry.key == key || entry.key->isEqual(key))) {
                return &entry;
            }
        }
        return nullptr;
    }
    const std::uint64_t mixedHash = mixed(hash);
    const std::size_t mask = m_cells.size() - 1;
    for (std::size_t i = home(mixedHash); m_cells[i].number != 0; i = (i + 1) & mask) {
        if (m_cells[i].hash == static_cast<std::uint32_t>(mixedHash)) {
            const Entry& entry = m_entries[m_cells[i].number - 1];
            if (entry.hash == hash && (entry.key == key || entry.key->isEqual(key))) {
                return &entry;
            }
        }
    }
    return nullptr;
}

void ObjectTable::reserve(std::size_t count) {
    m_entries.reserve(count);
    if (count > mostUnindexed && 2 * count > m_cells.size()) {
        rebuildIndex(count);
    }
}

void ObjectTable::append(id key, NSUInteger hash, id value) {
    if (m_entries.size() - m_count > m_count + mostUnindexed) {
        closeGaps();
    }
    m_entries.push_back({hash, std::move(key), std::move(value)});
    ++m_count;
    if (m_entries.size() <= mostUnindexed && m_cells.empty()) {
        return;
    }
    if (2 * m_entries.size() > m_cells.size()) {
        rebuildIndex(m_entries.size());
    } else {
        enter(m_entries.size());
    }
}

id ObjectTable::exchangeValue(const Entry* entry, id value) {
    Entry& own = m_entries[static_cast<std::size_t>(entry - m_entries.data())];
    own.value.swap(value);
    return value;
}

ObjectTable::Entry ObjectTable::take(const Entry* entry) {
    const std::size_t position = static_cast<std::size_t>(entry - m_entries.data());
    if (!m_cells.empty()) {
        // The cells behind close up, so that no search stops early.
        const std::size_t mask = m_cells.size() - 1;
        std::size_t hole = cellOf(position + 1);
        for (std::size_t i = (hole + 1) & mask; m_cells[i].number != 0; i = (i + 1) & mask) {
            const std::size_t wanted = home(mixed(m_entries[m_cells[i].number - 1].hash));
            if (((i - wanted) & mask) >= ((i - hole) & mask)) {
                m_cells[hole] = m_cells[i];
                hole = i;
            }
        }
        m_cells[hole] = {};
    }
    --m_count;
    return std::exchange(m_entries[position], {});
}

void ObjectTable::swap(ObjectTable& other) noexcept {
    m_entries.swap(other.m_entries);
    m_cells.swap(other.m_cells);
    std::swap(m_count, other.m_count);
}

std::size_t ObjectTable::cellOf(std::size_t number) const {
    const std::size_t mask = m_cells.size() - 1;
    std::size_t i = home(mixed(m_entries[number - 1].hash));
    while (m_cells[i].number != number) {
        i = (i + 1) & mask;
    }
    return i;
}

void ObjectTable::enter(std::size_t number) {
    const std::uint64_t mixedHash = mixed(m_entries[number - 1].hash);
    const std::size_t mask = m_cells.size() - 1;
    std::size_t i = home(mixedHash);
    while (m_cells[i].number != 0) {
        i = (i + 1) & mask;
    }
    m_cells[i] = {static_cast<std::uint32_t>(mixedHash), static_cast<std::uint32_t>(number)};
}

void ObjectTable::rebuildIndex(std::size_t capacity) {
    // Twice the room that it needs now, so that it is rebuilt only after doubling, and never more than half full.
    m_cells.assign(std::bit_ceil(4 * capacity), Cell());
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_entries[i].key) {
            enter(i + 1);
        }
    }
}

void ObjectTable::closeGaps() {
    std::erase_if(m_entries, [](const Entry& entry) { return !entry.key; });
    if (!m_cells.empty()) {
        rebuildIndex(m_entries.size());
    }
}

} // namespace zr::detail
