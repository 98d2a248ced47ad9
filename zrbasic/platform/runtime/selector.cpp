#include <zrbasic/platform/runtime/selector.h>

#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace zr {

namespace {

struct SelectorTable {
    std::shared_mutex mutex;
    // Keys are views of the records' own names; records are never freed.
    std::unordered_map<std::string_view, const detail::SelectorRecord*> records;
};

SelectorTable& selectorTable() {
    // Never torn down: selectors stay valid in destructors of static objects.
    static auto* const table = new SelectorTable;
    return *table;
}

} // namespace

SEL sel_registerName(std::string_view name) {
    if (name.empty()) {
        return {};
    }
    SelectorTable& table = selectorTable();
    {
        const std::shared_lock lock(table.mutex);
        if (const auto found = table.records.find(name); found != table.records.end()) {
            return SEL(found->second);
        }
    }
    const std::unique_lock lock(table.mutex);
    if (const auto found = table.records.find(name); found != table.records.end()) {
        return SEL(found->second);
    }
    const auto* record = new detail::SelectorRecord{std::string(name)};
    table.records.emplace(record->name, record);
    return SEL(record);
}

SEL sel_findName(std::string_view name) {
    SelectorTable& table = selectorTable();
    const std::shared_lock lock(table.mutex);
    const auto found = table.records.find(name);
    return found == table.records.end() ? SEL() : SEL(found->second);
}

const char* sel_getName(SEL selector) {
    return selector ? selector.record()->name.c_str() : "<null selector>";
}

} // namespace zr
