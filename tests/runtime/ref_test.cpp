#include "sample_model.h"

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::Witness;
using test::witness;

std::uint32_t countOf(NSObject* object) {
    return detail::headerOf(object)->strong.load();
}

TEST(Ref, theLastReferenceEndsTheObject) {
    std::string log;
    {
        Ref<Witness> first = witness(log, 'a');
        EXPECT_EQ(countOf(first), 1U);
        {
            const Ref<Witness> second = first;
            EXPECT_EQ(countOf(first), 2U);
        }
        EXPECT_EQ(countOf(first), 1U);
        EXPECT_EQ(log, "");
    }
    EXPECT_EQ(log, "a");
}

TEST(Ref, movingKeepsTheCountAndEmptiesTheSource) {
    std::string log;
    Ref<Witness> source = witness(log, 'a');
    Ref<NSObject> target = std::move(source);
    EXPECT_EQ(source, nullptr);
    EXPECT_EQ(countOf(target), 1U);
    target = nullptr;
    EXPECT_EQ(log, "a");
}

TEST(Ref, castingATemporaryKeepsTheObject) {
    std::string log;
    {
        const auto kept = cast<Witness>(id(witness(log, 'a')));
        ASSERT_NE(kept, nullptr);
        EXPECT_EQ(countOf(kept), 1U);
        EXPECT_EQ(log, "");
    }
    EXPECT_EQ(log, "a");
    EXPECT_EQ(cast<NSString>(id(witness(log, 'b'))), nullptr);
    EXPECT_EQ(log, "ab");
    EXPECT_EQ(cast<NSString>(id()), nullptr);
}

class Reader : public NSObject {
    ZR_OBJECT(Reader, NSObject)

  public:
    ~Reader() override { *seen = *watched; }
    id* watched = nullptr;
    id* seen = nullptr;
};

TEST(Ref, theNewValueStandsBeforeTheOldOneEnds) {
    id slot;
    id seen;
    auto reader = make<Reader>();
    reader->watched = &slot;
    reader->seen = &seen;
    slot = std::move(reader);
    const id next = make<NSObject>();
    slot = next;
    EXPECT_EQ(seen, next);
}

TEST(Ref, assigningItselfChangesNothing) {
    std::string log;
    Ref<Witness> reference = witness(log, 'a');
    Ref<Witness>& alias = reference;
    reference = alias;
    EXPECT_EQ(log, "");
    EXPECT_EQ(countOf(reference), 1U);
}

TEST(Ref, nullReferencesCompareAndConvert) {
    const Ref<Witness> none;
    const id alsoNone;
    EXPECT_FALSE(none);
    EXPECT_EQ(none, alsoNone);
    EXPECT_EQ(none.get(), nullptr);
    EXPECT_EQ(id(none), nullptr);
}

TEST(Weak, readsTheObjectWhileItLivesAndNullAfterwards) {
    std::string log;
    Ref<Witness> object = witness(log, 'a');
    const Weak<Witness> weak(object);
    EXPECT_EQ(weak.lock(), object);
    EXPECT_FALSE(weak.expired());
    object = nullptr;
    EXPECT_EQ(log, "a");
    EXPECT_EQ(weak.lock(), nullptr);
    EXPECT_TRUE(weak.expired());
}

TEST(Weak, whatWasReadStaysAlive) {
    std::string log;
    Ref<Witness> object = witness(log, 'a');
    const Weak<Witness> weak(object);
    Ref<Witness> read = weak.lock();
    object = nullptr;
    EXPECT_EQ(log, "");
    read = nullptr;
    EXPECT_EQ(log, "a");
}

class Farewell : public NSObject {
    ZR_OBJECT(Farewell, NSObject)

  public:
    ~Farewell() override { *couldStillBeRead = itself.lock() != nullptr; }
    Weak<Farewell> itself;
    bool* couldStillBeRead = nullptr;
};

TEST(Weak, readsNullFromTheMomentTheEndBegins) {
    bool couldStillBeRead = true;
    {
        auto object = make<Farewell>();
        object->itself = Weak<Farewell>(object);
        object->couldStillBeRead = &couldStillBeRead;
    }
    EXPECT_FALSE(couldStillBeRead);
}

TEST(Weak, knowsItsObjectWithoutTakingAReference) {
    auto object = make<NSObject>();
    const NSObject* const address = object;
    const Weak<NSObject> weak(object);
    EXPECT_TRUE(weak.refersTo(object));
    EXPECT_FALSE(weak.refersTo(make<NSObject>()));
    EXPECT_FALSE(weak.refersTo(nullptr));
    object = nullptr;
    EXPECT_TRUE(weak.refersTo(address));
}

TEST(Weak, nullAndCopiesAreFine) {
    const Weak<NSObject> none;
    EXPECT_EQ(none.lock(), nullptr);
    EXPECT_TRUE(none.expired());
    const id object = make<NSObject>();
    Weak<NSObject> first(object);
    const Weak<NSObject> second = first;
    first = nullptr;
    EXPECT_EQ(first.lock(), nullptr);
    EXPECT_EQ(second.lock(), object);
}

class Single : public NSObject {
    ZR_OBJECT(Single, NSObject)

  public:
    id init() override {
        static const id shared = alloc<Single>();
        return shared;
    }
    id initWithNothing() { return {}; }
};

TEST(Make, initialisersMayReplaceTheObject) {
    EXPECT_EQ(make<Single>(), make<Single>());
    EXPECT_EQ(make<Single>(&Single::initWithNothing), nullptr);
}

} // namespace
} // namespace zr
