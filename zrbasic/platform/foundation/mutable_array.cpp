#include <zrbasic/platform/foundation/mutable_array.h>

#include <zrbasic/platform/foundation/array_kinds_p.h>
#include <zrbasic/platform/foundation/capacity_p.h>

#include <algorithm>

namespace zr {

namespace {

void requireObject(const NSArray* self, const char* operation, const NSObject* object) {
    if (!object) {
        NSException::raise(NSInvalidArgumentException,
                           "*** -[" + self->nativeClass()->name() + ' ' + operation + "]: object cannot be nil");
    }
}

} // namespace

ZR_DEFINE_CLASS(NSMutableArray) {
    is.classMethod<&NSMutableArray::array>("array");
    is.classMethod<&NSMutableArray::arrayWithCapacity>("arrayWithCapacity:");
    is.classMethod<&NSMutableArray::arrayWithObject>("arrayWithObject:");
    is.classMethod<&NSMutableArray::arrayWithArray>("arrayWithArray:");
    is.method<&NSMutableArray::initWithCapacity>("initWithCapacity:");
    is.method<&NSMutableArray::addObject>("addObject:");
    is.method<&NSMutableArray::addObjectsFromArray>("addObjectsFromArray:");
    is.method<&NSMutableArray::insertObject_atIndex>("insertObject:atIndex:");
    is.method<&NSMutableArray::removeObjectAtIndex>("removeObjectAtIndex:");
    is.method<&NSMutableArray::removeLastObject>("removeLastObject");
    is.method<&NSMutableArray::removeObject>("removeObject:");
    is.method<&NSMutableArray::removeObjectIdenticalTo>("removeObjectIdenticalTo:");
    is.method<&NSMutableArray::removeObjectsInArray>("removeObjectsInArray:");
    is.method<&NSMutableArray::removeObjectsInRange>("removeObjectsInRange:");
    is.method<&NSMutableArray::removeAllObjects>("removeAllObjects");
    is.method<&NSMutableArray::replaceObjectAtIndex_withObject>("replaceObjectAtIndex:withObject:");
    is.method<&NSMutableArray::setObject_atIndexedSubscript>("setObject:atIndexedSubscript:");
    is.method<&NSMutableArray::exchangeObjectAtIndex_withObjectAtIndex>("exchangeObjectAtIndex:withObjectAtIndex:");
    is.method<&NSMutableArray::setArray>("setArray:");
    is.method<&NSMutableArray::sortUsingComparator>("sortUsingComparator:");
}

NSMutableArray::~NSMutableArray() = default;

Ref<NSMutableArray> NSMutableArray::array() {
    return alloc<detail::PlainMutableArray>();
}

Ref<NSMutableArray> NSMutableArray::arrayWithCapacity(NSUInteger capacity) {
    Ref<NSMutableArray> made = array();
    made->initWithCapacity(capacity);
    return made;
}

Ref<NSMutableArray> NSMutableArray::arrayWithObject(NSObject* object) {
    return fromElements({id(object)});
}

Ref<NSMutableArray> NSMutableArray::arrayWithObjects(std::initializer_list<id> objects) {
    return fromElements(objects);
}

Ref<NSMutableArray> NSMutableArray::arrayWithArray(NSArray* other) {
    return other ? fromElements({other->elements().begin(), other->elements().end()}) : array();
}

Ref<NSMutableArray> NSMutableArray::fromElements(std::vector<id> elements) {
    Ref<NSMutableArray> made = array();
    for (const id& element : elements) {
        requireObject(made, "initWithObjects:count:", element);
    }
    made->m_elements = std::move(elements);
    return made;
}

id NSMutableArray::init() {
    return isa() == NSMutableArray::classObject() ? id(array()) : id(this);
}

id NSMutableArray::initWithArray(NSArray* other) {
    return isa() == NSMutableArray::classObject() ? id(arrayWithArray(other)) : NSArray::initWithArray(other);
}

id NSMutableArray::initWithCapacity(NSUInteger capacity) {
    if (isa() == NSMutableArray::classObject()) {
        return arrayWithCapacity(capacity);
    }
    m_elements.reserve(detail::roomFor(capacity));
    return id(this);
}

void NSMutableArray::addObject(NSObject* object) {
    requireObject(this, "insertObject:atIndex:", object);
    m_elements.emplace_back(object);
    ++m_mutations;
}

void NSMutableArray::addObjectsFromArray(NSArray* other) {
    if (!other || other->count() == 0) {
        return;
    }
    // Copied first: the other array may be this one.
    const std::vector<id> added(other->elements().begin(), other->elements().end());
    m_elements.insert(m_elements.end(), added.begin(), added.end());
    ++m_mutations;
}

void NSMutableArray::insertObject_atIndex(NSObject* object, NSUInteger index) {
    requireObject(this, "insertObject:atIndex:", object);
    if (index > count()) {
        detail::raiseBeyondBounds(*this, "insertObject:atIndex:", index);
    }
    m_elements.insert(m_elements.begin() + static_cast<std::ptrdiff_t>(index), id(object));
    ++m_mutations;
}

void NSMutableArray::removeObjectAtIndex(NSUInteger index) {
    if (index >= count()) {
        detail::raiseBeyondBounds(*this, "removeObjectAtIndex:", index);
    }
    const id removed = std::move(m_elements[index]);
    m_elements.erase(m_elements.begin() + static_cast<std::ptrdiff_t>(index));
    ++m_mutations;
}

void NSMutableArray::removeLastObject() {
    if (count() != 0) {
        removeObjectAtIndex(count() - 1);
    }
}

void NSMutableArray::removeObject(NSObject* object) {
    if (object) {
        removeWhere([object](NSObject* element) { return element == object || element->isEqual(object); });
    }
}

void NSMutableArray::removeObjectIdenticalTo(NSObject* object) {
    removeWhere([object](NSObject* element) { return element == object; });
}

void NSMutableArray::removeObjectsInArray(NSArray* other) {
    if (other) {
        removeWhere([other](NSObject* element) { return other->containsObject(element); });
    }
}

void NSMutableArray::removeObjectsInRange(NSRange range) {
    requireRange("removeObjectsInRange:", range);
    if (range.length == 0) {
        return;
    }
    const auto first = m_elements.begin() + static_cast<std::ptrdiff_t>(range.location);
    const auto last = first + static_cast<std::ptrdiff_t>(range.length);
    const std::vector<id> removed(std::make_move_iterator(first), std::make_move_iterator(last));
    m_elements.erase(first, last);
    ++m_mutations;
}

void NSMutableArray::removeAllObjects() {
    if (count() != 0) {
        replaceElements({});
    }
}

void NSMutableArray::replaceObjectAtIndex_withObject(NSUInteger index, NSObject* object) {
    requireObject(this, "replaceObjectAtIndex:withObject:", object);
    if (index >= count()) {
        detail::raiseBeyondBounds(*this, "replaceObjectAtIndex:withObject:", index);
    }
    const id replaced = std::exchange(m_elements[index], id(object));
    ++m_mutations;
}

void NSMutableArray::setObject_atIndexedSubscript(NSObject* object, NSUInteger index) {
    requireObject(this, "setObject:atIndexedSubscript:", object);
    if (index > count()) {
        detail::raiseBeyondBounds(*this, "setObject:atIndexedSubscript:", index);
    }
    if (index == count()) {
        addObject(object);
    } else {
        replaceObjectAtIndex_withObject(index, object);
    }
}

void NSMutableArray::exchangeObjectAtIndex_withObjectAtIndex(NSUInteger first, NSUInteger second) {
    if (first >= count() || second >= count()) {
        detail::raiseBeyondBounds(*this, "exchangeObjectAtIndex:withObjectAtIndex:", std::max(first, second));
    }
    m_elements[first].swap(m_elements[second]);
    ++m_mutations;
}

void NSMutableArray::setArray(NSArray* other) {
    replaceElements(other ? std::vector<id>(other->elements().begin(), other->elements().end()) : std::vector<id>());
}

void NSMutableArray::sortUsingComparator(NSComparator comparator) {
    // Sorted aside, so that a comparator that raises leaves the array as it was.
    std::vector<id> elements = m_elements;
    detail::sortStably(elements, comparator);
    replaceElements(std::move(elements));
}

id NSMutableArray::copy() const {
    Ref<detail::FrozenArray> made = alloc<detail::FrozenArray>();
    fill(*made, m_elements);
    return made;
}

void NSMutableArray::replaceElements(std::vector<id> elements) {
    m_elements.swap(elements);
    ++m_mutations;
}

void NSMutableArray::removeWhere(FunctionRef<bool(NSObject*)> isUnwanted) {
    std::vector<id> kept;
    kept.reserve(m_elements.size());
    for (const id& element : m_elements) {
        if (!isUnwanted(element)) {
            kept.push_back(element);
        }
    }
    if (kept.size() != m_elements.size()) {
        replaceElements(std::move(kept));
    }
}

namespace detail {

ZR_DEFINE_KIND(PlainMutableArray, "__NSArrayM") {
    is.method<&readAtIndex>("objectAtIndex:");
    is.method<&readAtIndexedSubscript>("objectAtIndexedSubscript:");
}

} // namespace detail

} // namespace zr
