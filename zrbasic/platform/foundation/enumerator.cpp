#include <zrbasic/platform/foundation/enumerator.h>

#include <zrbasic/platform/foundation/array.h>

#include <cstdio>

namespace zr {

namespace {

class FunctionEnumerator final : public NSEnumerator {
    ZR_DECLARE_CLASS(FunctionEnumerator, NSEnumerator)

  public:
    ~FunctionEnumerator() override;
    [[nodiscard]] id nextObject() override { return m_next ? m_next() : id(); }

    std::function<id()> m_next;
};

ZR_DEFINE_CLASS(FunctionEnumerator) {}

FunctionEnumerator::~FunctionEnumerator() = default;

} // namespace

ZR_DEFINE_CLASS(NSEnumerator) {
    is.method<&NSEnumerator::nextObject>("nextObject");
    is.method<&NSEnumerator::allObjects>("allObjects");
}

NSEnumerator::~NSEnumerator() = default;

id NSEnumerator::nextObject() {
    return {};
}

Ref<NSArray> NSEnumerator::allObjects() {
    std::vector<id> objects;
    while (id object = nextObject()) {
        objects.push_back(std::move(object));
    }
    return NSArray::fromElements(std::move(objects));
}

namespace detail {

Ref<NSEnumerator> makeEnumerator(std::function<id()> next) {
    Ref<FunctionEnumerator> made = alloc<FunctionEnumerator>();
    made->m_next = std::move(next);
    return made;
}

void raiseMutatedWhileEnumerated(const NSObject* collection) {
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(collection));
    NSException::raise(NSGenericException, "*** Collection <" + collection->nativeClass()->name() + ": " + address +
                                               "> was mutated while being enumerated.");
}

} // namespace detail

} // namespace zr
