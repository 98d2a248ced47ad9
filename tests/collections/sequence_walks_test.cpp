#include <zrbasic/collections/sequence.h>

#include "../foundation/checks.h"
#include "elements.h"

#include <zrbasic/collections/sequence_editing.h>
#include <zrbasic/collections/set_sequence.h>
#include <zrbasic/platform/foundation/mutable_set.h>

#include <gtest/gtest.h>

#include <functional>

// What becomes of a walk whose callback changes the array or the set that is walked over.

namespace zr {

namespace {

using test::countedTo;
using test::elements;
using test::intOf;
using test::raisedName;

/// An element that only the list holds on to; the walk must keep it for the callback that takes it out.
class OnlyInList : public NSObject {
    ZR_OBJECT(OnlyInList, NSObject)

  public:
    ~OnlyInList() override { m_mark = 0; }
    [[nodiscard]] int mark() const { return m_mark; }

  private:
    int m_mark = 1234;
};

template <class List>
Ref<List> twoFragile() {
    return List::fromElements({make<OnlyInList>(), make<OnlyInList>()});
}

int markOf(NSObject* element) {
    return static_cast<OnlyInList*>(element)->mark();
}

TEST(IndexWalk, goesOnOverWhatTheCallbackAppends) {
    const Ref<NSMutableArray> list = countedTo<NSMutableArray>(2);
    const auto grow = [&](NSObject* element) {
        if (list->count() < 5) {
            list->addObject(box(list->count()));
        }
        return id(element);
    };
    EXPECT_EQ(elements(zr_map(list, grow)), "0 1 2 3 4");
    list->removeObjectsInRange({2, 3});
    EXPECT_EQ(elements(zr_mapI(list, [&](NSObject* element, NSUInteger) { return grow(element); })), "0 1 2 3 4");
    list->removeObjectsInRange({2, 3});
    EXPECT_EQ(elements(zr_filter(list, [&](NSObject* element, NSUInteger) { return grow(element) != nullptr; })),
              "0 1 2 3 4");
    list->removeObjectsInRange({2, 3});
    const id sum = zr_reduce(list, [&](NSObject* accumulated, NSObject* element) {
        static_cast<void>(grow(element));
        return id(box(intOf(accumulated) + intOf(element)));
    });
    EXPECT_EQ(intOf(sum), 10);
}

TEST(IndexWalk, endsEarlyWhereElementsWent) {
    Ref<NSMutableArray> list = countedTo<NSMutableArray>(6);
    const auto shrink = [&](NSObject* element) {
        list->removeLastObject();
        return id(element);
    };
    EXPECT_EQ(elements(zr_map(list, shrink)), "0 1 2");
    list = countedTo<NSMutableArray>(6);
    EXPECT_EQ(elements(zr_mapI(list, [&](NSObject* element, NSUInteger) { return shrink(element); })), "0 1 2");
    list = countedTo<NSMutableArray>(6);
    EXPECT_EQ(elements(zr_filter(list, [&](NSObject* element, NSUInteger) { return shrink(element) != nullptr; })),
              "0 1 2");
    list = countedTo<NSMutableArray>(6);
    int calls = 0;
    EXPECT_EQ(intOf(zr_reduce(list,
                              [&](NSObject*, NSObject* element) {
                                  ++calls;
                                  return shrink(element);
                              })),
              3);
    EXPECT_EQ(calls, 3);
}

TEST(IndexWalk, skipsAnElementThatMovedToTheFront) {
    const Ref<NSMutableArray> list = countedTo<NSMutableArray>(4);
    const Ref<NSMutableArray> mapped = zr_map(list, [&](NSObject* element) {
        list->removeObjectAtIndex(0);
        return id(element);
    });
    EXPECT_EQ(elements(mapped), "0 2");
    EXPECT_EQ(elements(list), "2 3");
}

TEST(IndexWalk, keepsTheElementAndTheArrayThatTheCallbackLetsGo) {
    Ref<NSMutableArray> list = twoFragile<NSMutableArray>();
    int marks = 0;
    const auto clear = [&](NSObject* element) {
        list->removeAllObjects();
        marks += markOf(element);
        return id(element);
    };
    EXPECT_EQ(zr_map(list, clear)->count(), 1U);
    list = twoFragile<NSMutableArray>();
    EXPECT_EQ(zr_filter(list, [&](NSObject* element, NSUInteger) { return clear(element) == nullptr; })->count(), 0U);
    list = twoFragile<NSMutableArray>();
    EXPECT_TRUE(zr_reduce(list, [&](NSObject* accumulated, NSObject* element) {
        list = nullptr;
        marks += markOf(accumulated) + markOf(element);
        return id(element);
    }));
    list = twoFragile<NSMutableArray>();
    EXPECT_EQ(zr_mapI(list,
                      [&](NSObject* element, NSUInteger) {
                          list = nullptr;
                          marks += markOf(element);
                          return id(element);
                      })
                  ->count(),
              2U);
    EXPECT_EQ(marks, 6 * 1234);
}

TEST(IndexWalk, aFilterFetchesTheElementAgain) {
    Ref<NSMutableArray> list = countedTo<NSMutableArray>(3);
    const Ref<NSMutableArray> kept = zr_filter(list, [&](NSObject* element, NSUInteger index) {
        list->replaceObjectAtIndex_withObject(index, box(10 * intOf(element)));
        return intOf(element) > 0;
    });
    EXPECT_EQ(elements(kept), "10 20");
    list = countedTo<NSMutableArray>(3);
    EXPECT_EQ(raisedName([&] {
                  static_cast<void>(zr_filter(list, [&](NSObject*, NSUInteger) {
                      list->removeAllObjects();
                      return true;
                  }));
              }),
              NSRangeException);
    list = countedTo<NSMutableArray>(3);
    EXPECT_EQ(elements(zr_filter(list,
                                 [&](NSObject*, NSUInteger index) {
                                     if (index == 0) {
                                         list->removeObjectAtIndex(0);
                                     }
                                     return true;
                                 })),
              "1 2");
}

/// Every way to walk with a guard, over an array or a set of which the callback may do as it likes.
struct GuardedWalk {
    const char* name;
    std::function<void(NSMutableArray*, FunctionRef<void()>)> overArray;
};

const GuardedWalk guardedWalks[] = {
    {"flatMap",
     [](NSMutableArray* list, FunctionRef<void()> act) {
         static_cast<void>(zr_flatMap(list, [&](NSObject*) { return act(), id(); }));
     }},
    {"exists",
     [](NSMutableArray* list, FunctionRef<void()> act) {
         static_cast<void>(zr_exists(list, [&](NSObject*) { return act(), false; }));
     }},
    {"arrayByRemoveObjectsWhere",
     [](NSMutableArray* list, FunctionRef<void()> act) {
         static_cast<void>(arrayByRemoveObjectsWhere(list, [&](NSObject*, NSUInteger) { return act(), false; }));
     }},
    {"removeObjectsWhere",
     [](NSMutableArray* list, FunctionRef<void()> act) {
         removeObjectsWhere(list, [&](NSObject*) { return act(), false; });
     }},
};

TEST(GuardedWalk, raisesBeforeTheNextElementWhenTheCallbackChangesTheArray) {
    const struct {
        const char* name;
        void (*change)(NSMutableArray*);
    } changes[] = {
        {"append", [](NSMutableArray* list) { list->addObject("x"_ns); }},
        {"shorten", [](NSMutableArray* list) { list->removeLastObject(); }},
        {"clear", [](NSMutableArray* list) { list->removeAllObjects(); }},
        {"replace", [](NSMutableArray* list) { list->replaceObjectAtIndex_withObject(0, "x"_ns); }},
    };
    for (const GuardedWalk& walk : guardedWalks) {
        for (const auto& change : changes) {
            SCOPED_TRACE(std::string(walk.name) + ", " + change.name);
            const Ref<NSMutableArray> list = twoFragile<NSMutableArray>();
            int calls = 0;
            EXPECT_EQ(raisedName([&] {
                          walk.overArray(list, [&] {
                              ++calls;
                              change.change(list);
                          });
                      }),
                      NSGenericException);
            EXPECT_EQ(calls, 1);
        }
    }
}

TEST(GuardedWalk, keepsTheArrayThatTheCallbackLetsGo) {
    for (const GuardedWalk& walk : guardedWalks) {
        SCOPED_TRACE(walk.name);
        Ref<NSMutableArray> list = twoFragile<NSMutableArray>();
        int calls = 0;
        walk.overArray(list, [&] {
            ++calls;
            list = nullptr;
        });
        EXPECT_EQ(calls, 2);
    }
    Ref<NSMutableArray> list = twoFragile<NSMutableArray>();
    removeObjectsWhere(list, [&](NSObject* element) {
        list = nullptr;
        return markOf(element) == 1234;
    });
    EXPECT_FALSE(list);
}

TEST(GuardedWalk, doesNotMindAChangeThatEndsIt) {
    const Ref<NSMutableArray> list = twoFragile<NSMutableArray>();
    const id found = zr_exists(list, [&](NSObject*) {
        list->removeAllObjects();
        return true;
    });
    EXPECT_EQ(markOf(found), 1234);
    EXPECT_EQ(list->count(), 0U);
}

TEST(GuardedWalk, aPredicateThatRaisesLeavesTheReceiverAsItWas) {
    const Ref<NSMutableArray> list = countedTo<NSMutableArray>(3);
    EXPECT_EQ(raisedName([&] {
                  removeObjectsWhere(list, [&](NSObject* element) {
                      if (intOf(element) == 2) {
                          NSException::raise(NSInvalidArgumentException, "no more");
                      }
                      return true;
                  });
              }),
              NSInvalidArgumentException);
    EXPECT_EQ(elements(list), "0 1 2");
}

TEST(GuardedWalk, overASetRaisesAsOverAnArray) {
    const auto fresh = [] { return NSMutableSet::setWithArray(twoFragile<NSArray>()); };
    Ref<NSMutableSet> members = fresh();
    const auto clear = [&](NSObject* element) {
        members->removeAllObjects();
        return markOf(element) == 0;
    };
    EXPECT_EQ(raisedName([&] { static_cast<void>(zr_exists(members, clear)); }), NSGenericException);
    members = fresh();
    EXPECT_EQ(raisedName([&] { static_cast<void>(zr_filter(members, clear)); }), NSGenericException);
    members = fresh();
    EXPECT_EQ(raisedName([&] {
                  static_cast<void>(zr_map(members, [&](NSObject* element) {
                      members->addObject("x"_ns);
                      return id(element);
                  }));
              }),
              NSGenericException);
    members = fresh();
    EXPECT_EQ(zr_map(members,
                     [&](NSObject* element) {
                         members = nullptr;
                         return id(element);
                     })
                  ->count(),
              2U);
}

} // namespace

} // namespace zr
