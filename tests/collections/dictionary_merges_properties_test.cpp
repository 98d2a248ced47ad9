#include <zrbasic/collections/dictionary_writing.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <map>
#include <vector>

// Merges beside what they are on ordered maps. Keys are few, so that entries meet; every fourth value is the null
// object, which the model writes as `nothing`.

namespace zr {

namespace {

constexpr int nothing = -1;
using Model = std::map<int, int>;
using Entries = std::map<std::uint8_t, std::uint8_t>;

Model modelOf(const Entries& entries) {
    Model model;
    for (const auto& [key, value] : entries) {
        model[key % 12] = value % 4 == 0 ? nothing : value;
    }
    return model;
}

id keyOf(int key) {
    return NSString::fromUtf8("key" + std::to_string(key));
}

Ref<NSMutableDictionary> dictionaryOf(const Model& model) {
    const Ref<NSMutableDictionary> made = NSMutableDictionary::dictionary();
    for (const auto& [key, value] : model) {
        made->setObject_forKey(value == nothing ? id(NSNull::null()) : id(box(value)), keyOf(key));
    }
    return made;
}

Ref<NSArray> keyList(const std::vector<std::uint8_t>& keys) {
    std::vector<id> list;
    for (const std::uint8_t key : keys) {
        list.push_back(keyOf(key % 16));
    }
    return NSArray::fromElements(std::move(list));
}

/// Stores as the operations do, which refuse nothing else.
void store(Model& model, int key, int value) {
    if (value != nothing) {
        model[key] = value;
    }
}

RC_GTEST_PROP(DictionaryMergeProperty, writesStorableValuesOver, (const Entries& ownEntries, const Entries& entries)) {
    Model own = modelOf(ownEntries);
    const Model other = modelOf(entries);
    const Ref<NSMutableDictionary> merged = dictionaryOf(own);
    mergeValuesFrom(merged, dictionaryOf(other));
    for (const auto& [key, value] : other) {
        store(own, key, value);
    }
    RC_ASSERT(merged->isEqual(dictionaryOf(own)));
}

RC_GTEST_PROP(DictionaryMergeProperty, complementsOnlyWhereNoKeyIs,
              (const Entries& ownEntries, const Entries& entries)) {
    Model own = modelOf(ownEntries);
    const Model other = modelOf(entries);
    const Ref<NSMutableDictionary> complemented = dictionaryOf(own);
    complementFrom(complemented, dictionaryOf(other));
    for (const auto& [key, value] : other) {
        if (!own.contains(key)) {
            store(own, key, value);
        }
    }
    RC_ASSERT(complemented->isEqual(dictionaryOf(own)));
}

RC_GTEST_PROP(DictionaryMergeProperty, takesTheListedKeysOnly,
              (const Entries& ownEntries, const Entries& entries, const std::vector<std::uint8_t>& keys)) {
    Model own = modelOf(ownEntries);
    const Model other = modelOf(entries);
    const Ref<NSMutableDictionary> merged = dictionaryOf(own);
    mergeValuesFrom_withKeys(merged, dictionaryOf(other), keyList(keys));
    Model chosen;
    for (const std::uint8_t key : keys) {
        if (const auto found = other.find(key % 16); found != other.end()) {
            store(own, found->first, found->second);
            store(chosen, found->first, found->second);
        }
    }
    RC_ASSERT(merged->isEqual(dictionaryOf(own)));
    RC_ASSERT(dictionaryFrom_withKeys(dictionaryOf(other), keyList(keys))->isEqual(dictionaryOf(chosen)));
}

RC_GTEST_PROP(DictionaryMergeProperty, writesUnderTheMappedNames,
              (const Entries& ownEntries, const Entries& entries, const Entries& names)) {
    Model own = modelOf(ownEntries);
    const Model other = modelOf(entries);
    // The map is filled in the order of its keys and walked over in the same.
    const Ref<NSMutableDictionary> map = NSMutableDictionary::dictionary();
    const Ref<NSMutableDictionary> merged = dictionaryOf(own);
    for (const auto& [from, to] : names) {
        map->setObject_forKey(keyOf(to % 12), keyOf(from));
        if (const auto found = other.find(from); found != other.end()) {
            store(own, to % 12, found->second);
        }
    }
    mergeValuesFrom_withKeyMaps(merged, dictionaryOf(other), map);
    RC_ASSERT(merged->isEqual(dictionaryOf(own)));
}

RC_GTEST_PROP(DictionaryMergeProperty, renamingMovesAStorableValueAndDropsAnyOther,
              (const Entries& entries, std::uint8_t from, std::uint8_t to)) {
    Model model = modelOf(entries);
    const Ref<NSMutableDictionary> renamed = dictionaryOf(model);
    renameKey_to(renamed, keyOf(from % 14), keyOf(to % 14));
    if (const auto found = model.find(from % 14); found != model.end()) {
        store(model, to % 14, found->second);
    }
    model.erase(from % 14);
    RC_ASSERT(renamed->isEqual(dictionaryOf(model)));
}

} // namespace

} // namespace zr
