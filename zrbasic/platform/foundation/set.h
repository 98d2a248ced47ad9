#pragma once

#include <zrbasic/platform/foundation/enumerator.h>
#include <zrbasic/platform/foundation/object_table.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <initializer_list>
#include <span>

namespace zr {

class NSArray;

/// Called with a member; setting the flag ends the walk.
using SetVisitor = FunctionRef<void(NSObject* object, bool& stop)>;

/// Objects without order and without equal ones. Members are kept, never null, and compared by `isEqual`.
///
/// Members are walked over in the order they were added in. A set that does not change may be read from any thread.
/// A null set has nothing to walk over; changing a mutable set during a range-based loop raises `NSGenericException`
/// before the next member is delivered.
class ZR_EXPORT NSSet : public NSObject {
    ZR_DECLARE_CLASS(NSSet, NSObject)

  public:
    ~NSSet() override;

    /// The empty set: the same object every time.
    [[nodiscard]] static Ref<NSSet> set();
    /// Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] static Ref<NSSet> setWithObject(NSObject* object);
    [[nodiscard]] static Ref<NSSet> setWithObjects(std::initializer_list<id> objects);
    /// Of equal elements the first becomes a member; null counts as empty.
    [[nodiscard]] static Ref<NSSet> setWithArray(NSArray* array);
    [[nodiscard]] static Ref<NSSet> setWithSet(NSSet* other);

    id init() override;
    /// Null counts as empty.
    virtual id initWithArray(NSArray* array);
    virtual id initWithSet(NSSet* other);

    [[nodiscard]] NSUInteger count() const { return m_table.count(); }
    /// False for null.
    [[nodiscard]] bool containsObject(NSObject* object) const { return object && m_table.find(object); }
    /// The member that equals `object`; null when there is none.
    [[nodiscard]] id member(NSObject* object) const;
    /// Some member; null when the set is empty.
    [[nodiscard]] id anyObject() const;
    [[nodiscard]] Ref<NSArray> allObjects() const;

    /// Whether all members are also members of `other`; null counts as empty in these two.
    [[nodiscard]] bool isSubsetOfSet(NSSet* other) const;
    [[nodiscard]] bool intersectsSet(NSSet* other) const;
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] bool isEqualToSet(NSSet* other) const;
    /// The count.
    [[nodiscard]] NSUInteger hash() const override;

    /// Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] Ref<NSSet> setByAddingObject(NSObject* object) const;
    /// Null adds nothing in these two.
    [[nodiscard]] Ref<NSSet> setByAddingObjectsFromSet(NSSet* other) const;
    [[nodiscard]] Ref<NSSet> setByAddingObjectsFromArray(NSArray* other) const;

    /// The enumerator raises like the range-based loop.
    [[nodiscard]] Ref<NSEnumerator> objectEnumerator() const;
    void enumerateObjectsUsingBlock(SetVisitor visitor) const;
    void makeObjectsPerformSelector(SEL selector) const;

    /// Over several lines, nested collections indented.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The receiver itself when it cannot change.
    [[nodiscard]] id copy() const override;
    [[nodiscard]] id mutableCopy() const override;

    [[nodiscard]] detail::CollectionIterator<NSSet> begin() const { return detail::CollectionIterator<NSSet>(this); }
    [[nodiscard]] std::default_sentinel_t end() const { return {}; }

    /// The members, borrowed until the set changes, as keys without values; gaps have no key and are to be skipped.
    [[nodiscard]] const detail::ObjectTable& table() const { return m_table; }

  protected:
    friend class detail::CollectionIterator<NSSet>;

    [[nodiscard]] std::uint64_t mutationMark() const { return m_mutations; }
    [[nodiscard]] NSObject* objectAtPosition(std::size_t& position) const {
        const detail::ObjectTable::Entry* const entry = m_table.nextEntry(position);
        return entry ? entry->key.get() : nullptr;
    }
    /// Adds a member unless there is an equal one, and says whether it did; `operation` names the caller in exceptions.
    bool enter(NSObject* object, const char* operation);
    /// Sets up a fresh set, whatever its kind.
    static void fill(NSSet& fresh, std::span<const id> objects);
    static void fill(NSSet& fresh, const NSSet* other);

    detail::ObjectTable m_table;
    std::uint64_t m_mutations = 0;
};

/// For range-based loops over a reference or a pointer, null included.
[[nodiscard]] inline detail::CollectionIterator<NSSet> begin(const NSSet* set) {
    return detail::CollectionIterator<NSSet>(set);
}
[[nodiscard]] inline std::default_sentinel_t end(const NSSet*) {
    return {};
}

} // namespace zr
