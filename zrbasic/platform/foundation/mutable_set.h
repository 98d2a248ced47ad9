#pragma once

#include <zrbasic/platform/foundation/set.h>

namespace zr {

/// A set that can be changed; its concrete kind is `__NSSetM`.
///
/// What is removed is let go only when the set stands as it will be. Not for use from several threads at once.
class ZR_EXPORT NSMutableSet : public NSSet {
    ZR_DECLARE_CLASS(NSMutableSet, NSSet)

  public:
    ~NSMutableSet() override;

    [[nodiscard]] static Ref<NSMutableSet> set();
    [[nodiscard]] static Ref<NSMutableSet> setWithCapacity(NSUInteger capacity);
    [[nodiscard]] static Ref<NSMutableSet> setWithObject(NSObject* object);
    [[nodiscard]] static Ref<NSMutableSet> setWithObjects(std::initializer_list<id> objects);
    [[nodiscard]] static Ref<NSMutableSet> setWithArray(NSArray* array);
    [[nodiscard]] static Ref<NSMutableSet> setWithSet(NSSet* other);

    id init() override;
    id initWithArray(NSArray* array) override;
    id initWithSet(NSSet* other) override;
    id initWithCapacity(NSUInteger capacity);

    /// Does nothing when there is an equal member. Raises `NSInvalidArgumentException` for null.
    void addObject(NSObject* object);
    /// Null does nothing in all of these.
    void addObjectsFromArray(NSArray* objects);
    void removeObject(NSObject* object);
    void removeAllObjects();

    void unionSet(NSSet* other);
    void minusSet(NSSet* other);
    /// Keeps only what is also in `other`; null empties the set.
    void intersectSet(NSSet* other);
    void setSet(NSSet* other);

    /// A set of the same members that will not change.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
