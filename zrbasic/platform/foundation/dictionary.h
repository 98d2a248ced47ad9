#pragma once

#include <zrbasic/platform/foundation/enumerator.h>
#include <zrbasic/platform/foundation/object_table.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <initializer_list>

namespace zr {

class NSArray;

/// One line of a written-out dictionary.
struct DictionaryEntry {
    id key;
    id value;
};

/// Called with a key and its value; setting the flag ends the walk.
using DictionaryVisitor = FunctionRef<void(NSObject* key, NSObject* value, bool& stop)>;

/// Values by key. Keys are compared by `isEqual` and copied when they come in, values are kept; neither is ever null,
/// and either may be the null object.
///
/// Keys are listed and walked over in the order they were first added in. A dictionary that does not change may be
/// read from any thread.
///
///     for (const id& key : reply) { ... }
///
/// A null dictionary has nothing to walk over. Changing a mutable dictionary during the walk raises
/// `NSGenericException` before the next key is delivered.
class ZR_EXPORT NSDictionary : public NSObject {
    ZR_DECLARE_CLASS(NSDictionary, NSObject)

  public:
    ~NSDictionary() override;

    /// The empty dictionary: the same object every time.
    [[nodiscard]] static Ref<NSDictionary> dictionary();
    /// These raise `NSInvalidArgumentException` for a null key or value and for a key that cannot be copied.
    [[nodiscard]] static Ref<NSDictionary> dictionaryWithObject_forKey(NSObject* object, NSObject* key);
    /// Also raises when the lists differ in length. Of equal keys the last one's object stays.
    [[nodiscard]] static Ref<NSDictionary> dictionaryWithObjects_forKeys(NSArray* objects, NSArray* keys);
    /// The entries of `other`, which may be null, in a dictionary that will not change.
    [[nodiscard]] static Ref<NSDictionary> dictionaryWithDictionary(NSDictionary* other);
    /// A dictionary of the listed entries; raises like the others.
    [[nodiscard]] static Ref<NSDictionary> fromEntries(std::initializer_list<DictionaryEntry> entries);
    /// A dictionary that takes the table's entries over. Their keys must be immutable, as nothing is copied, and no key
    /// or value may be null.
    [[nodiscard]] static Ref<NSDictionary> fromTable(detail::ObjectTable table);

    id init() override;
    /// Set up with the entries of `other`; null counts as empty.
    virtual id initWithDictionary(NSDictionary* other);

    [[nodiscard]] NSUInteger count() const { return m_table.count(); }
    /// Null when there is no such key, and for the null key.
    [[nodiscard]] id objectForKey(NSObject* key) const { return id(peek(key)); }
    /// What `dictionary[key]` stands for.
    [[nodiscard]] id objectForKeyedSubscript(NSObject* key) const { return id(peek(key)); }
    /// The same, borrowed: valid until the entry is changed or the dictionary ends.
    [[nodiscard]] NSObject* peek(NSObject* key) const {
        const detail::ObjectTable::Entry* const entry = key ? m_table.find(key) : nullptr;
        return entry ? entry->value.get() : nullptr;
    }

    [[nodiscard]] Ref<NSArray> allKeys() const;
    /// The keys whose values equal `object`; none for null.
    [[nodiscard]] Ref<NSArray> allKeysForObject(NSObject* object) const;
    /// In the order of `allKeys`.
    [[nodiscard]] Ref<NSArray> allValues() const;
    /// The enumerators raise like the range-based loop.
    [[nodiscard]] Ref<NSEnumerator> keyEnumerator() const;
    [[nodiscard]] Ref<NSEnumerator> objectEnumerator() const;
    /// Walks until the visitor sets its flag; guarded like the range-based loop. No visitor, no walk.
    void enumerateKeysAndObjectsUsingBlock(DictionaryVisitor visitor) const;

    /// Whether the other one is a dictionary, mutable or not, with equal keys and values, in whatever order.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] bool isEqualToDictionary(NSDictionary* other) const;
    /// The count.
    [[nodiscard]] NSUInteger hash() const override;

    /// Over several lines, string keys in ascending order, nested collections indented.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The receiver itself when it cannot change.
    [[nodiscard]] id copy() const override;
    /// A new mutable dictionary with the same entries.
    [[nodiscard]] id mutableCopy() const override;

    [[nodiscard]] detail::CollectionIterator<NSDictionary> begin() const {
        return detail::CollectionIterator<NSDictionary>(this);
    }
    [[nodiscard]] std::default_sentinel_t end() const { return {}; }

    /// The entries, borrowed until the dictionary changes: the cheapest walk, without a guard. Entries without a key
    /// are gaps and are to be skipped.
    [[nodiscard]] const detail::ObjectTable& table() const { return m_table; }

  protected:
    friend class detail::CollectionIterator<NSDictionary>;

    [[nodiscard]] std::uint64_t mutationMark() const { return m_mutations; }
    [[nodiscard]] NSObject* objectAtPosition(std::size_t& position) const {
        const detail::ObjectTable::Entry* const entry = m_table.nextEntry(position);
        return entry ? entry->key.get() : nullptr;
    }
    /// Stores one entry and gives back the value that was there; `operation` names the caller in exceptions.
    id store(NSObject* object, NSObject* key, const char* operation);
    /// Sets up a fresh dictionary, whatever its kind.
    static void fill(NSDictionary& fresh, const NSDictionary* other);
    static void fill(NSDictionary& fresh, NSArray* objects, NSArray* keys);
    static void fill(NSDictionary& fresh, std::initializer_list<DictionaryEntry> entries);

    detail::ObjectTable m_table;
    std::uint64_t m_mutations = 0;
};

/// A dictionary of the given entries: `dictionary({{"name"_ns, "BTC"_ns}, {"price"_ns, box(12.5)}})`. Raises
/// `NSInvalidArgumentException` for a null key or value. Of equal keys the last one's value stays.
[[nodiscard]] ZR_EXPORT Ref<NSDictionary> dictionary(std::initializer_list<DictionaryEntry> entries);

/// For range-based loops over a reference or a pointer, null included.
[[nodiscard]] inline detail::CollectionIterator<NSDictionary> begin(const NSDictionary* dictionary) {
    return detail::CollectionIterator<NSDictionary>(dictionary);
}
[[nodiscard]] inline std::default_sentinel_t end(const NSDictionary*) {
    return {};
}

} // namespace zr
