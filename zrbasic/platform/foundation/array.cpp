#include <zrbasic/platform/foundation/array.h>

#include <zrbasic/platform/foundation/array_kinds_p.h>
#include <zrbasic/platform/foundation/collection_description_p.h>
#include <zrbasic/platform/foundation/enumerator_p.h>
#include <zrbasic/platform/foundation/string.h>

#include <algorithm>

namespace zr {

namespace {

/// "[0 .. 2]", or what stands in its place when there is nothing to index.
std::string boundsOf(const NSArray& array) {
    if (array.count() == 0) {
        return array.nativeClass() == detail::EmptyArray::classObject() ? "for empty NSArray" : "for empty array";
    }
    return "[0 .. " + std::to_string(array.count() - 1) + ']';
}

void requireObjects(std::span<const id> objects) {
    for (std::size_t i = 0; i < objects.size(); ++i) {
        if (!objects[i]) {
            NSException::raise(NSInvalidArgumentException,
                               "*** -[__NSPlaceholderArray initWithObjects:count:]: attempt to insert nil object from "
                               "objects[" +
                                   std::to_string(i) + ']');
        }
    }
}

NSUInteger indexWhere(std::span<const id> elements, FunctionRef<bool(NSObject*)> isWanted) {
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (isWanted(elements[i])) {
            return i;
        }
    }
    return NSNotFound;
}

} // namespace

ZR_DEFINE_CLASS(NSArray) {
    is.classMethod<&NSArray::array>("array");
    is.classMethod<&NSArray::arrayWithObject>("arrayWithObject:");
    is.classMethod<&NSArray::arrayWithArray>("arrayWithArray:");
    is.method<&NSArray::initWithArray>("initWithArray:");
    is.method<&NSArray::count>("count");
    is.method<&detail::readAtIndex>("objectAtIndex:");
    is.method<&detail::readAtIndexedSubscript>("objectAtIndexedSubscript:");
    is.method<&NSArray::firstObject>("firstObject");
    is.method<&NSArray::lastObject>("lastObject");
    is.method<&NSArray::containsObject>("containsObject:");
    is.method<&NSArray::indexOfObject>("indexOfObject:");
    is.method<&NSArray::indexOfObjectIdenticalTo>("indexOfObjectIdenticalTo:");
    is.method<&NSArray::isEqualToArray>("isEqualToArray:");
    is.method<&NSArray::arrayByAddingObject>("arrayByAddingObject:");
    is.method<&NSArray::arrayByAddingObjectsFromArray>("arrayByAddingObjectsFromArray:");
    is.method<&NSArray::subarrayWithRange>("subarrayWithRange:");
    is.method<&NSArray::sortedArrayUsingComparator>("sortedArrayUsingComparator:");
    is.method<&NSArray::sortedArrayUsingSelector>("sortedArrayUsingSelector:");
    is.method<&NSArray::componentsJoinedByString>("componentsJoinedByString:");
    is.method<&NSArray::objectEnumerator>("objectEnumerator");
    is.method<&NSArray::reverseObjectEnumerator>("reverseObjectEnumerator");
    is.method<&NSArray::enumerateObjectsUsingBlock>("enumerateObjectsUsingBlock:");
    is.method<&NSArray::makeObjectsPerformSelector>("makeObjectsPerformSelector:");
    is.method<&NSArray::makeObjectsPerformSelector_withObject>("makeObjectsPerformSelector:withObject:");
}

NSArray::~NSArray() = default;

Ref<NSArray> array(std::initializer_list<id> objects) {
    return NSArray::arrayWithObjects(objects);
}

Ref<NSArray> NSArray::array() {
    // Never let go, so that it outlives whatever static objects hold on to it.
    static auto* const empty = new Ref<NSArray>(alloc<detail::EmptyArray>());
    return *empty;
}

Ref<NSArray> NSArray::arrayWithObject(NSObject* object) {
    return fromElements({id(object)});
}

Ref<NSArray> NSArray::arrayWithObjects(std::initializer_list<id> objects) {
    return fromElements(objects);
}

Ref<NSArray> NSArray::arrayWithArray(NSArray* other) {
    return other ? fromElements(other->m_elements) : array();
}

Ref<NSArray> NSArray::fromElements(std::vector<id> elements) {
    requireObjects(elements);
    Ref<NSArray> made;
    if (elements.empty()) {
        return array();
    }
    if (elements.size() == 1) {
        made = alloc<detail::SingleObjectArray>();
    } else {
        made = alloc<detail::GeneralArray>();
    }
    made->m_elements = std::move(elements);
    return made;
}

id NSArray::init() {
    // An array allocated as such is only a stand-in for one of the concrete kinds.
    return isa() == NSArray::classObject() ? id(array()) : id(this);
}

id NSArray::initWithArray(NSArray* other) {
    if (isa() == NSArray::classObject()) {
        return arrayWithArray(other);
    }
    if (other) {
        m_elements = other->m_elements;
    }
    return id(this);
}

bool NSArray::containsObject(NSObject* object) const {
    return indexOfObject(object) != NSNotFound;
}

NSUInteger NSArray::indexOfObject(NSObject* object) const {
    return indexWhere(
        m_elements, [object](NSObject* element) { return object && (element == object || element->isEqual(object)); });
}

NSUInteger NSArray::indexOfObjectIdenticalTo(NSObject* object) const {
    return indexWhere(m_elements, [object](NSObject* element) { return element == object; });
}

bool NSArray::isEqual(NSObject* other) const {
    return isEqualToArray(cast<NSArray>(other));
}

bool NSArray::isEqualToArray(NSArray* other) const {
    if (this == other) {
        return true;
    }
    return other && std::equal(m_elements.begin(), m_elements.end(), other->m_elements.begin(), other->m_elements.end(),
                               [](const id& a, const id& b) { return a == b || a->isEqual(b); });
}

NSUInteger NSArray::hash() const {
    return count();
}

Ref<NSArray> NSArray::arrayByAddingObject(NSObject* object) const {
    if (!object) {
        NSException::raise(NSInvalidArgumentException,
                           "*** -[" + nativeClass()->name() + " arrayByAddingObject:]: object cannot be nil");
    }
    std::vector<id> elements;
    elements.reserve(m_elements.size() + 1);
    elements = m_elements;
    elements.emplace_back(object);
    return fromElements(std::move(elements));
}

Ref<NSArray> NSArray::arrayByAddingObjectsFromArray(NSArray* other) const {
    std::vector<id> elements = m_elements;
    if (other) {
        elements.insert(elements.end(), other->m_elements.begin(), other->m_elements.end());
    }
    return fromElements(std::move(elements));
}

Ref<NSArray> NSArray::subarrayWithRange(NSRange range) const {
    requireRange("subarrayWithRange:", range);
    const auto first = m_elements.begin() + static_cast<std::ptrdiff_t>(range.location);
    return fromElements({first, first + static_cast<std::ptrdiff_t>(range.length)});
}

Ref<NSArray> NSArray::sortedArrayUsingComparator(NSComparator comparator) const {
    std::vector<id> elements = m_elements;
    detail::sortStably(elements, comparator);
    return fromElements(std::move(elements));
}

Ref<NSArray> NSArray::sortedArrayUsingSelector(SEL comparator) const {
    return sortedArrayUsingComparator([comparator](NSObject* first, NSObject* second) {
        return static_cast<NSComparisonResult>(send<NSInteger>(first, comparator, second));
    });
}

Ref<NSString> NSArray::componentsJoinedByString(NSString* separator) const {
    std::u16string text;
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        if (i != 0 && separator) {
            text += separator->view();
        }
        if (const Ref<NSString> piece = m_elements[i]->description()) {
            text += piece->view();
        }
    }
    return NSString::fromUtf16(text);
}

Ref<NSEnumerator> NSArray::objectEnumerator() const {
    return detail::enumeratorOver(this);
}

Ref<NSEnumerator> NSArray::reverseObjectEnumerator() const {
    return detail::makeEnumerator(
        [self = Ref<NSArray>(const_cast<NSArray*>(this)), left = m_elements.size()]() mutable {
            left = std::min(left, self->m_elements.size());
            return left == 0 ? id() : self->m_elements[--left];
        });
}

void NSArray::enumerateObjectsUsingBlock(ArrayVisitor visitor) const {
    if (!visitor) {
        return;
    }
    NSUInteger index = 0;
    bool stop = false;
    for (const id& object : *this) {
        visitor(object, index++, stop);
        if (stop) {
            return;
        }
    }
}

void NSArray::makeObjectsPerformSelector(SEL selector) const {
    detail::requireSelector(this, "makeObjectsPerformSelector:", selector);
    for (const id& object : *this) {
        object->performSelector(selector);
    }
}

void NSArray::makeObjectsPerformSelector_withObject(SEL selector, NSObject* argument) const {
    detail::requireSelector(this, "makeObjectsPerformSelector:withObject:", selector);
    for (const id& object : *this) {
        object->performSelector_withObject(selector, argument);
    }
}

Ref<NSString> NSArray::description() const {
    return detail::describeCollection(this);
}

id NSArray::copy() const {
    return id(const_cast<NSArray*>(this));
}

id NSArray::mutableCopy() const {
    return NSMutableArray::fromElements(m_elements);
}

id NSArray::sendObjectAtIndex(SEL selector, NSUInteger index) const {
    return send<id>(const_cast<NSArray*>(this), selector, index);
}

void NSArray::requireRange(std::string_view operation, NSRange range) const {
    if (range.location <= count() && range.length <= count() - range.location) {
        return;
    }
    NSException::raise(NSRangeException, "*** -[" + nativeClass()->name() + ' ' + std::string(operation) +
                                             "]: range {" + std::to_string(range.location) + ", " +
                                             std::to_string(range.length) + "} extends beyond bounds " +
                                             boundsOf(*this));
}

namespace detail {

void raiseBeyondBounds(const NSArray& array, std::string_view operation, NSUInteger index) {
    NSException::raise(NSRangeException, "*** -[" + array.nativeClass()->name() + ' ' + std::string(operation) +
                                             "]: index " + std::to_string(index) + " beyond bounds " + boundsOf(array));
}

id readAtIndex(NSArray* self, NSUInteger index) {
    if (!self) {
        return {};
    }
    if (index >= self->count()) {
        raiseBeyondBounds(*self, "objectAtIndex:", index);
    }
    return self->elements()[index];
}

id readAtIndexedSubscript(NSArray* self, NSUInteger index) {
    if (!self) {
        return {};
    }
    if (index >= self->count()) {
        raiseBeyondBounds(*self, "objectAtIndexedSubscript:", index);
    }
    return self->elements()[index];
}

void sortStably(std::vector<id>& elements, NSComparator comparator) {
    if (!comparator) {
        NSException::raise(NSInvalidArgumentException, "a comparator is needed to sort by");
    }
    // The library's sorts may leave their range when a comparator contradicts itself; this merge cannot.
    std::vector<id> merged(elements.size());
    for (std::size_t width = 1; width < elements.size(); width *= 2) {
        for (std::size_t start = 0; start < elements.size(); start += 2 * width) {
            const std::size_t middle = std::min(start + width, elements.size());
            const std::size_t end = std::min(start + 2 * width, elements.size());
            std::size_t left = start;
            std::size_t right = middle;
            for (std::size_t i = start; i < end; ++i) {
                const bool takeRight = left == middle || (right < end && comparator(elements[left], elements[right]) ==
                                                                             NSOrderedDescending);
                merged[i] = std::move(elements[takeRight ? right++ : left++]);
            }
        }
        elements.swap(merged);
    }
}

ZR_DEFINE_KIND(EmptyArray, "__NSArray0") {
    is.method<&readAtIndex>("objectAtIndex:");
    is.method<&readAtIndexedSubscript>("objectAtIndexedSubscript:");
}

ZR_DEFINE_KIND(SingleObjectArray, "__NSSingleObjectArrayI") {
    is.method<&readAtIndex>("objectAtIndex:");
    is.method<&readAtIndexedSubscript>("objectAtIndexedSubscript:");
}

ZR_DEFINE_KIND(GeneralArray, "__NSArrayI") {
    is.method<&readAtIndex>("objectAtIndex:");
    is.method<&readAtIndexedSubscript>("objectAtIndexedSubscript:");
}

ZR_DEFINE_KIND(FrozenArray, "__NSFrozenArrayM") {
    is.method<&readAtIndex>("objectAtIndex:");
    is.method<&readAtIndexedSubscript>("objectAtIndexedSubscript:");
}

} // namespace detail

// Makes the concrete kinds known by their names before the first array is made.
ZR_GROUP(NSArray, ConcreteKinds) {
    static_cast<void>(detail::EmptyArray::classObject());
    static_cast<void>(detail::SingleObjectArray::classObject());
    static_cast<void>(detail::GeneralArray::classObject());
    static_cast<void>(detail::FrozenArray::classObject());
    static_cast<void>(detail::PlainMutableArray::classObject());
}

} // namespace zr
