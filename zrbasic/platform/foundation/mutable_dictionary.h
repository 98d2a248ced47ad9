#pragma once

#include <zrbasic/platform/foundation/dictionary.h>

namespace zr {

/// A dictionary that can be changed; its concrete kind is `__NSDictionaryM`.
///
/// What is replaced or removed is let go only when the dictionary stands as it will be. Overwriting a value counts as
/// a change for walks, too. Not for use from several threads at once.
class ZR_EXPORT NSMutableDictionary : public NSDictionary {
    ZR_DECLARE_CLASS(NSMutableDictionary, NSDictionary)

  public:
    ~NSMutableDictionary() override;

    [[nodiscard]] static Ref<NSMutableDictionary> dictionary();
    /// Empty, with room for `capacity` entries set aside as far as that is sensible.
    [[nodiscard]] static Ref<NSMutableDictionary> dictionaryWithCapacity(NSUInteger capacity);
    [[nodiscard]] static Ref<NSMutableDictionary> dictionaryWithObject_forKey(NSObject* object, NSObject* key);
    [[nodiscard]] static Ref<NSMutableDictionary> dictionaryWithObjects_forKeys(NSArray* objects, NSArray* keys);
    [[nodiscard]] static Ref<NSMutableDictionary> dictionaryWithDictionary(NSDictionary* other);
    [[nodiscard]] static Ref<NSMutableDictionary> fromEntries(std::initializer_list<DictionaryEntry> entries);

    id init() override;
    id initWithDictionary(NSDictionary* other) override;
    id initWithCapacity(NSUInteger capacity);

    /// Stores `object`, in place of an older one. A new key is copied and listed last; an equal old key keeps its
    /// place. Raises `NSInvalidArgumentException` for a null object or key, and for a key that cannot be copied.
    void setObject_forKey(NSObject* object, NSObject* key);
    /// What `dictionary[key] = object` stands for: a null object removes the entry.
    void setObject_forKeyedSubscript(NSObject* object, NSObject* key);
    /// Raises `NSInvalidArgumentException` for the null key; an unknown one does nothing.
    void removeObjectForKey(NSObject* key);
    void removeAllObjects();
    /// Null removes nothing.
    void removeObjectsForKeys(NSArray* keys);
    /// Overwrites equal keys; null adds nothing.
    void addEntriesFromDictionary(NSDictionary* other);
    /// The entries of `other` and nothing else; null counts as empty.
    void setDictionary(NSDictionary* other);

    /// A dictionary of the same entries that will not change.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
