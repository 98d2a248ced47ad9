#include <zrbasic/collections/array_difference.h>

#include <zrbasic/collections/equal_objects_p.h>
#include <zrbasic/platform/foundation/mutable_array.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace zr {

namespace {

bool hasOnlyPlainValues(std::span<const id> elements) {
    return std::all_of(elements.begin(), elements.end(),
                       [](const id& element) { return detail::isPlainValue(element); });
}

/// The elements of a list that have not been removed yet, asked one after the other.
class ScannedList {
  public:
    explicit ScannedList(std::vector<id> elements) : m_left(std::move(elements)) {}

    /// Removes every element that equals the object, and says whether there was one.
    bool removeEqual(NSObject* object) {
        const auto isEqual = [object](const id& element) { return element == object || element->isEqual(object); };
        return std::erase_if(m_left, isEqual) != 0;
    }
    std::vector<id> takeLeft() { return std::move(m_left); }

  private:
    std::vector<id> m_left;
};

/// The same for plain values, of which only those with the object's hash are asked.
class HashedList {
  public:
    explicit HashedList(std::vector<id> elements) : m_elements(std::move(elements)), m_chains(m_elements.size()) {
        for (std::size_t i = 0; i < m_elements.size(); ++i) {
            m_chains.enter(static_cast<std::uint32_t>(i), m_elements[i]->hash());
        }
    }

    bool removeEqual(NSObject* object) {
        return m_chains.removeWhere(object->hash(), [&](std::uint32_t position) {
            id& element = m_elements[position];
            if (element != object && !element->isEqual(object)) {
                return false;
            }
            element = {};
            return true;
        });
    }
    std::vector<id> takeLeft() {
        std::erase(m_elements, nullptr);
        return std::move(m_elements);
    }

  private:
    std::vector<id> m_elements;
    detail::HashChains m_chains;
};

template <class List>
Ref<ZRArrayDifference> difference(const std::vector<id>& older, const std::vector<id>& newer) {
    List oldest(older);
    List newest(newer);
    std::vector<id> intersection;
    for (const id& element : newer) {
        if (oldest.removeEqual(element)) {
            intersection.push_back(element);
            newest.removeEqual(element);
        }
    }
    Ref<ZRArrayDifference> result = make<ZRArrayDifference>();
    result->setIntersection(NSMutableArray::fromElements(std::move(intersection)));
    result->setNewest(NSMutableArray::fromElements(newest.takeLeft()));
    result->setOldest(NSMutableArray::fromElements(oldest.takeLeft()));
    return result;
}

std::vector<id> elementsOf(NSArray* array) {
    return array ? std::vector<id>(array->elements().begin(), array->elements().end()) : std::vector<id>();
}

} // namespace

ZR_GROUP(NSArray, ZRXHelper) {
    is.method<&differenceFrom>("differenceFrom:");
}

ZRArrayDifference::~ZRArrayDifference() = default;

Ref<ZRArrayDifference> differenceFrom(NSArray* self, NSArray* newer) {
    if (!self) {
        return {};
    }
    // Copies, because asking foreign elements may run anybody's code.
    const std::vector<id> older = elementsOf(self);
    const std::vector<id> newerElements = elementsOf(newer);
    const bool isPlain = hasOnlyPlainValues(older) && hasOnlyPlainValues(newerElements);
    Ref<ZRArrayDifference> result =
        isPlain ? difference<HashedList>(older, newerElements) : difference<ScannedList>(older, newerElements);
    if (!newer) {
        result->setNewest(nullptr);
    }
    return result;
}

} // namespace zr
