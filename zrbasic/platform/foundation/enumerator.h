#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <cstddef>
#include <functional>
#include <iterator>

namespace zr {

class NSArray;

/// Hands out the objects of a collection one by one; a collection's `objectEnumerator` makes it.
///
/// Keeps its collection alive. Not for use from several threads at once.
class ZR_EXPORT NSEnumerator : public NSObject {
    ZR_DECLARE_CLASS(NSEnumerator, NSObject)

  public:
    ~NSEnumerator() override;

    /// The next object; null when there is none left, and ever after. Raises `NSGenericException` when the collection
    /// was changed since the first object was handed out and there is another one to deliver.
    [[nodiscard]] virtual id nextObject();
    /// What is left, in order; the enumerator is used up afterwards. Never null.
    [[nodiscard]] Ref<NSArray> allObjects();
};

namespace detail {

/// An enumerator that asks `next` until it gives null.
[[nodiscard]] ZR_EXPORT Ref<NSEnumerator> makeEnumerator(std::function<id()> next);

[[noreturn]] ZR_EXPORT void raiseMutatedWhileEnumerated(const NSObject* collection);

/// A guarded walk over a collection, for range-based loops.
///
/// Keeps the collection and the current object alive. A change of the collection is noticed before a later object is
/// delivered, and only then: what is taken out or replaced during the last pass goes unnoticed.
template <class Collection>
class CollectionIterator {
  public:
    using value_type = id;
    using difference_type = std::ptrdiff_t;

    CollectionIterator() = default;
    explicit CollectionIterator(const Collection* collection) : m_collection(const_cast<Collection*>(collection)) {
        if (collection) {
            m_mark = collection->mutationMark();
            m_countAtStart = collection->count();
            m_current = id(collection->objectAtPosition(m_position));
        }
    }

    [[nodiscard]] const id& operator*() const { return m_current; }

    CollectionIterator& operator++() {
        ++m_position;
        ++m_delivered;
        NSObject* const next = m_collection->objectAtPosition(m_position);
        if (m_collection->mutationMark() != m_mark) [[unlikely]] {
            if (next || m_delivered < m_countAtStart || m_collection->count() > m_countAtStart) {
                raiseMutatedWhileEnumerated(m_collection);
            }
        }
        m_current = id(next);
        return *this;
    }
    void operator++(int) { ++*this; }

    friend bool operator==(const CollectionIterator& iterator, std::default_sentinel_t) {
        return iterator.m_current == nullptr;
    }

  private:
    Ref<Collection> m_collection;
    std::uint64_t m_mark = 0;
    std::size_t m_position = 0;
    std::size_t m_delivered = 0;
    std::size_t m_countAtStart = 0;
    id m_current;
};

} // namespace detail

} // namespace zr
