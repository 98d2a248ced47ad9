#include <zrbasic/model/observation.h>

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/association.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

// What callbacks may do to the walk that calls them.

namespace {

using namespace zr;

class Walked : public NSObject {
    ZR_OBJECT(Walked, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(Ref<NSNumber>, other, setOther)
};

class SetsItself : public NSObject {
    ZR_OBJECT(SetsItself, NSObject)

  public:
    ~SetsItself() override { setName("end"_ns); }
    ZR_PROPERTY(Ref<NSString>, name, setName)
};

NSUInteger registrationCount(NSObject* object) {
    const id registry = objc_getAssociatedObject(object, detail::observerRegistryKey());
    return cast<NSMutableArray>(cast<NSMutableDictionary>(registry)->objectForKey("price"_ns))->count();
}

/// Any number of observers on one property, each of which logs its letter and then does something.
struct Scene {
    Ref<Walked> object = make<Walked>();
    std::vector<Ref<NSObject>> observers;
    std::string log;
    std::function<void(char letter, int value)> action;

    void add(std::size_t count) {
        while (count-- != 0) {
            observers.push_back(make<NSObject>());
            const char letter = static_cast<char>('a' + observers.size() - 1);
            addObserver_forKeyPath_withBlock(object, observers.back(), "price"_ns,
                                             [this, letter](NSObject*, NSString*, NSObject*, NSObject* value) {
                                                 const int number = cast<NSNumber>(value)->intValue();
                                                 log += letter + std::to_string(number) + ' ';
                                                 if (action) {
                                                     action(letter, number);
                                                 }
                                             });
        }
    }
    void end(char letter) { observers[static_cast<std::size_t>(letter - 'a')] = nullptr; }
};

TEST(ObserverWalk, aDeadObserverIsClearedByTheNextSetAndTheValueIsSet) {
    Scene scene;
    scene.add(3);
    scene.end('b');
    EXPECT_EQ(registrationCount(scene.object), 3U) << "cleared lazily";
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "c1 a1 ");
    EXPECT_EQ(registrationCount(scene.object), 2U);
    scene.end('a');
    scene.end('c');
    scene.object->setPrice(box(2));
    EXPECT_EQ(scene.log, "c1 a1 ");
    EXPECT_EQ(registrationCount(scene.object), 0U);
    EXPECT_EQ(scene.object->price()->intValue(), 2);
    EXPECT_STREQ(object_getClassName(scene.object), "__ZRXIncised_Walked") << "it stays incised";
}

TEST(ObserverWalk, aDeadObserverOfAnotherPropertyIsLeftForItsOwnSet) {
    Scene scene;
    scene.add(1);
    scene.end('a');
    auto observer = make<NSObject>();
    addObserver_forKeyPath_withBlock(scene.object, observer, "other"_ns,
                                     [](NSObject*, NSString*, NSObject*, NSObject*) {});
    scene.object->setOther(box(1));
    EXPECT_EQ(registrationCount(scene.object), 1U);
}

TEST(ObserverWalk, observingKeepsNobodyAlive) {
    auto object = make<Walked>();
    auto observer = make<NSObject>();
    const auto captured = std::make_shared<int>(1);
    addObserver_forKeyPath_withBlock(object, observer, "price"_ns,
                                     [captured](NSObject*, NSString*, NSObject*, NSObject*) {});
    Weak<NSObject> watchedObject(object);
    Weak<NSObject> watchedObserver(observer);
    observer = nullptr;
    EXPECT_TRUE(watchedObserver.expired());
    EXPECT_EQ(captured.use_count(), 2) << "the block waits for the next set";
    object->setPrice(box(1));
    EXPECT_EQ(captured.use_count(), 1);
    object = nullptr;
    EXPECT_TRUE(watchedObject.expired());
}

TEST(ObserverWalk, aRegistrationMadeMeanwhileIsFirstCalledByTheNextSet) {
    Scene scene;
    scene.add(2);
    scene.action = [&](char, int) {
        if (scene.observers.size() < 4) {
            scene.add(1);
        }
    };
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "b1 a1 ");
    scene.log.clear();
    scene.object->setPrice(box(2));
    EXPECT_EQ(scene.log, "d2 c2 b2 a2 ");
}

TEST(ObserverWalk, manyRegistrationsMadeMeanwhileDoNotDisturbIt) {
    Scene scene;
    scene.add(3);
    scene.action = [&](char letter, int) {
        if (letter <= 'c') {
            for (int i = 0; i < 1000; ++i) {
                addObserver_forKeyPath_withBlock(scene.object, scene.observers[0], "price"_ns,
                                                 [](NSObject*, NSString*, NSObject*, NSObject*) {});
            }
        }
    };
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "c1 b1 a1 ");
    EXPECT_EQ(registrationCount(scene.object), 3003U);
}

TEST(ObserverWalk, anObserverEndedBeforeItsTurnIsNotCalled) {
    Scene scene;
    scene.add(4);
    scene.action = [&](char letter, int) {
        if (letter == 'd') {
            scene.end('b');
            scene.end('d');
        }
    };
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "d1 c1 a1 ");
    scene.action = nullptr;
    scene.object->setPrice(box(2));
    EXPECT_EQ(scene.log, "d1 c1 a1 c2 a2 ");
    EXPECT_EQ(registrationCount(scene.object), 2U);
}

TEST(ObserverWalk, anObserverMayEndItselfWhileItIsCalled) {
    auto object = make<Walked>();
    auto observer = make<NSObject>();
    Weak<NSObject> watch(observer);
    const auto captured = std::make_shared<std::string>("still here");
    std::string seen;
    addObserver_forKeyPath_withBlock(object, observer, "price"_ns,
                                     [&, captured](NSObject* self, NSString*, NSObject*, NSObject*) {
                                         observer = nullptr;
                                         // A set inside looks at the registration of the running block.
                                         if (cast<Walked>(self)->price()->intValue() == 1) {
                                             cast<Walked>(self)->setPrice(box(2));
                                         }
                                         seen += *captured + ' ';
                                     });
    object->setPrice(box(1));
    EXPECT_EQ(seen, "still here still here ");
    EXPECT_TRUE(watch.expired());
    object->setPrice(box(3));
    EXPECT_EQ(seen, "still here still here ");
}

TEST(ObserverWalk, aSetInsideRunsAllCallbacksBeforeTheOlderOnesGetTheirTurn) {
    Scene scene;
    scene.add(3);
    scene.action = [&](char letter, int value) {
        if (letter == 'b' && value == 1) {
            scene.object->setPrice(box(2));
        }
    };
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "c1 b1 c2 b2 a2 a1 ");
    EXPECT_EQ(scene.object->price()->intValue(), 2);
}

TEST(ObserverWalk, everyLivingOlderRegistrationIsCalledOnceWhenASetInsideClearsDeadOnes) {
    // Every subset of seven observers dies in the middle of the walk, then a set inside clears them.
    for (unsigned dying = 0; dying < 128; ++dying) {
        SCOPED_TRACE(dying);
        Scene scene;
        scene.add(7);
        scene.action = [&](char letter, int value) {
            if (letter == 'd' && value == 1) {
                for (unsigned i = 0; i < 7; ++i) {
                    if (dying >> i & 1U) {
                        scene.observers[i] = nullptr;
                    }
                }
                scene.object->setPrice(box(2));
            }
        };
        scene.object->setPrice(box(1));
        std::string expected = "g1 f1 e1 d1 ";
        std::string older;
        NSUInteger living = 0;
        for (int i = 6; i >= 0; --i) {
            // The observer being called is kept until its callback returns.
            const bool isDead = (dying >> i & 1U) != 0;
            living += !isDead;
            if (!isDead || i == 3) {
                expected += static_cast<char>('a' + i) + std::string("2 ");
            }
            if (!isDead && i < 3) {
                older += static_cast<char>('a' + i) + std::string("1 ");
            }
        }
        EXPECT_EQ(scene.log, expected + older);
        scene.action = nullptr;
        scene.object->setPrice(box(3));
        EXPECT_EQ(registrationCount(scene.object), living);
    }
}

TEST(ObserverWalk, deadOnesClearedInsideWhileOthersAreAddedLoseNobody) {
    Scene scene;
    scene.add(5);
    scene.action = [&](char letter, int value) {
        if (letter == 'c' && value == 1) {
            scene.end('a');
            scene.end('e');
            scene.add(2);
            scene.object->setPrice(box(2));
        }
    };
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "e1 d1 c1 g2 f2 d2 c2 b2 b1 ");
    EXPECT_EQ(registrationCount(scene.object), 5U);
}

TEST(ObserverWalk, theObservedObjectMayEndMeanwhile) {
    auto scene = std::make_unique<Scene>();
    scene->add(3);
    Weak<NSObject> watch(scene->object);
    scene->action = [&](char letter, int) {
        if (letter == 'c') {
            scene->object = nullptr;
        }
    };
    scene->object->setPrice(box(1));
    EXPECT_EQ(scene->log, "c1 b1 a1 ") << "it lives until the walk ends";
    EXPECT_TRUE(watch.expired());
}

TEST(ObserverWalk, theAttachmentsMayBeRemovedMeanwhile) {
    Scene scene;
    scene.add(3);
    scene.action = [&](char letter, int) {
        if (letter == 'c') {
            objc_removeAssociatedObjects(scene.object);
        }
    };
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "c1 b1 a1 ");
    scene.object->setPrice(box(2));
    EXPECT_EQ(scene.log, "c1 b1 a1 ");
}

TEST(ObserverWalk, theNewValueOutlivesASetInside) {
    const auto object = make<Walked>();
    const auto observer = make<NSObject>();
    Ref<NSNumber> value = box(1.25);
    std::string log;
    const auto note = [&](NSObject*, NSString*, NSObject*, NSObject* newValue) {
        log += newValue ? newValue->description()->utf8() + ' ' : "- ";
    };
    addObserver_forKeyPath_withBlock(object, observer, "price"_ns, note);
    addObserver_forKeyPath_withBlock(object, observer, "price"_ns,
                                     [&](NSObject*, NSString*, NSObject*, NSObject* newValue) {
                                         if (newValue) {
                                             value = nullptr;
                                             object->setPrice(nullptr);
                                         }
                                     });
    object->setPrice(value);
    EXPECT_EQ(log, "- 1.25 ");
}

TEST(ObserverWalk, anExceptionOfACallbackEndsItAndLeavesTheRestInOrder) {
    Scene scene;
    scene.add(3);
    scene.action = [&](char letter, int value) {
        if (letter == 'b' && value == 1) {
            NSException::raise(NSGenericException, "stop");
        }
    };
    EXPECT_THROW(scene.object->setPrice(box(1)), NSException);
    EXPECT_EQ(scene.log, "c1 b1 ");
    EXPECT_EQ(scene.object->price()->intValue(), 1);
    scene.object->setPrice(box(2));
    EXPECT_EQ(scene.log, "c1 b1 c2 b2 a2 ");
}

TEST(ObserverWalk, clearingARegistrationMaySetThePropertyAgain) {
    // The block's end sets the property that is being walked over.
    Scene scene;
    scene.add(2);
    auto dying = make<NSObject>();
    std::shared_ptr<void> last(nullptr, [object = scene.object.get()](void*) {
        if (object->price()->intValue() < 5) {
            object->setPrice(box(object->price()->intValue() + 4));
        }
    });
    addObserver_forKeyPath_withBlock(scene.object, dying, "price"_ns,
                                     [held = std::move(last)](NSObject*, NSString*, NSObject*, NSObject*) {});
    scene.add(2);
    dying = nullptr;
    scene.object->setPrice(box(1));
    EXPECT_EQ(scene.log, "d1 c1 d5 c5 b5 a5 b1 a1 ");
    EXPECT_EQ(registrationCount(scene.object), 4U);
}

TEST(ObserverWalk, anObjectMaySetItselfWhileItIsDestroyed) {
    std::string log;
    const auto observer = make<NSObject>();
    {
        const auto object = make<SetsItself>();
        addObserver_forKeyPath_withBlock(
            object, observer, "name"_ns,
            [&](NSObject*, NSString*, NSObject*, NSObject* name) { log += name->description()->utf8() + ' '; });
        object->setName("a"_ns);
    }
    EXPECT_EQ(log, "a ") << "nobody is told of an object that is gone already";
}

} // namespace
