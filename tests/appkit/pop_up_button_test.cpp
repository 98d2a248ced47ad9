#include <zrbasic/platform/appkit/pop_up_button.h>

#include "../foundation/checks.h"

#include <zrbasic/platform/appkit/pop_up_button_cell.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <tests/appkit/menu_testing.h>

namespace zr {
namespace {

/// Writes down what was sent.
class PopUpTarget : public NSObject {
    ZR_OBJECT(PopUpTarget, NSObject)
  public:
    void chosen(NSObject* sender) {
        const auto* const button = cast<NSPopUpButton>(sender);
        log += button ? button->title()->utf8() + ' ' : "? ";
        if (whenChosen) {
            // Kept, as it may let go of what it is called from.
            const auto work = whenChosen;
            work();
        }
    }
    void itemChosen(NSObject* sender) { log += "item:" + cast<NSMenuItem>(sender)->title()->utf8() + ' '; }
    ZR_METHOD(chosen, "chosen:")
    ZR_METHOD(itemChosen, "itemChosen:")

    std::string log;
    std::function<void()> whenChosen;
};

class FlippedPopUp : public NSPopUpButton {
    ZR_OBJECT(FlippedPopUp, NSPopUpButton)
  public:
    bool isFlipped() const override { return true; }
};

/// In a key window, 100 by 30 points at 20, 10.
class PopUpButton : public testing::Test {
  protected:
    void SetUp() override {
        button->setTarget(target);
        button->setAction("chosen:"_sel);
        window->contentView()->addSubview(button);
        window->makeKeyAndOrderFront(nullptr);
    }
    void TearDown() override { test::hideAllWindows(); }

    void addModes() { button->addItemsWithTitles(NSArray::arrayWithObjects({"Plain"_ns, "Down"_ns, "Up"_ns})); }
    void choose(NSInteger index) {
        toolkit.chooses = [index](NSMenu&) { return index; };
        button->performClick(nullptr);
    }
    void press(NSString* key, NSUInteger modifiers = 0, bool isRepeat = false) {
        send<void>(button, "keyDown:"_sel, test::keyEvent(key, modifiers, isRepeat));
    }
    std::string taken() { return std::exchange(target->log, {}); }
    std::string states() const { return test::MenuToolkit::titlesOf(*button->menu()); }

    test::MenuToolkit toolkit;
    const Ref<PopUpTarget> target = make<PopUpTarget>();
    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {200, 100}},
                                                NSUInteger{NSWindowStyleMaskTitled});
    Ref<NSPopUpButton> button =
        make<NSPopUpButton>(&NSPopUpButton::initWithFrame_pullsDown, NSRect{{20, 10}, {100, 30}}, false);
};

using PullDownButton = PopUpButton;

TEST_F(PopUpButton, selectsTheFirstItemOfAll) {
    EXPECT_EQ(button->indexOfSelectedItem(), -1);
    EXPECT_EQ(button->titleOfSelectedItem(), nullptr);
    EXPECT_EQ(button->selectedItem(), nullptr);
    EXPECT_EQ(button->selectedTag(), -1);
    EXPECT_EQ(button->lastItem(), nullptr);
    EXPECT_EQ(button->title()->utf8(), "");
    addModes();
    EXPECT_EQ(button->indexOfSelectedItem(), 0);
    EXPECT_EQ(button->title()->utf8(), "Plain");
    EXPECT_EQ(states(), "Plain* Down Up ");
    button->insertItemWithTitle_atIndex("Even"_ns, 0);
    EXPECT_EQ(button->titleOfSelectedItem()->utf8(), "Plain") << "it stays selected where it is now";
    EXPECT_EQ(button->indexOfSelectedItem(), 1);
    EXPECT_EQ(taken(), "") << "nobody has chosen anything";
}

TEST_F(PopUpButton, hasEachTitleOnce) {
    addModes();
    const auto down = button->itemAtIndex(1);
    button->addItemWithTitle("Down"_ns);
    EXPECT_EQ(states(), "Plain* Up Down ");
    EXPECT_NE(button->lastItem(), down) << "a new item, as what was set for the old one is gone";
    button->insertItemWithTitle_atIndex("Up"_ns, 0);
    EXPECT_EQ(states(), "Up Plain* Down ");
    button->addItemWithTitle("down"_ns);
    EXPECT_EQ(button->numberOfItems(), 4) << "letter case tells them apart";
    button->addItemWithTitle(nullptr);
    button->addItemWithTitle(""_ns);
    EXPECT_EQ(button->numberOfItems(), 5) << "null is the empty title";
    button->addItemsWithTitles(nullptr);
    button->addItemsWithTitles(NSArray::arrayWithObjects({id(NSNull::null()), id(box(NSInteger{3})), id("New"_ns)}));
    EXPECT_EQ(button->lastItem()->title()->utf8(), "New");
    EXPECT_EQ(button->numberOfItems(), 6) << "what is no text is skipped";
}

TEST_F(PopUpButton, refusesPlacesThatAreNotThere) {
    addModes();
    EXPECT_EQ(test::raisedName([&] { button->insertItemWithTitle_atIndex("X"_ns, 4); }), NSRangeException);
    EXPECT_EQ(test::raisedName([&] { button->insertItemWithTitle_atIndex("X"_ns, -1); }), NSRangeException);
    EXPECT_EQ(test::raisedName([&] { button->insertItemWithTitle_atIndex("Up"_ns, 3); }), NSRangeException)
        << "the old one is gone by then";
    EXPECT_EQ(states(), "Plain* Down Up ") << "and nothing has changed";
    button->insertItemWithTitle_atIndex("X"_ns, 3);
    button->removeItemAtIndex(17);
    button->removeItemAtIndex(-1);
    button->removeItemWithTitle("Y"_ns);
    button->removeItemWithTitle(nullptr);
    EXPECT_EQ(states(), "Plain* Down Up X ");
    EXPECT_EQ(button->itemAtIndex(4), nullptr);
    EXPECT_EQ(button->itemTitleAtIndex(-1), nullptr);
}

TEST_F(PopUpButton, findsItsItems) {
    addModes();
    button->itemAtIndex(2)->setTag(9);
    EXPECT_EQ(button->indexOfItemWithTitle("Up"_ns), 2);
    EXPECT_EQ(button->indexOfItemWithTitle(nullptr), -1);
    EXPECT_EQ(button->indexOfItemWithTag(9), 2);
    EXPECT_EQ(button->indexOfItem(button->itemWithTitle("Down"_ns)), 1);
    EXPECT_TRUE(button->itemTitles()->isEqual(NSArray::arrayWithObjects({"Plain"_ns, "Down"_ns, "Up"_ns})));
    EXPECT_EQ(button->itemArray()->count(), 3u);
    EXPECT_EQ(button->itemTitleAtIndex(1)->utf8(), "Down");
}

TEST_F(PopUpButton, selectsByPlaceTitleTagAndItem) {
    addModes();
    button->itemAtIndex(2)->setTag(9);
    button->selectItemAtIndex(1);
    EXPECT_EQ(states(), "Plain Down* Up ");
    button->selectItemWithTitle("Plain"_ns);
    EXPECT_EQ(states(), "Plain* Down Up ");
    EXPECT_TRUE(button->selectItemWithTag(9));
    EXPECT_EQ(states(), "Plain Down Up* ");
    EXPECT_EQ(button->selectedTag(), 9);
    EXPECT_FALSE(button->selectItemWithTag(10));
    EXPECT_EQ(button->title()->utf8(), "Up") << "left as it was";
    button->selectItem(button->itemAtIndex(0));
    EXPECT_EQ(button->title()->utf8(), "Plain");
    button->setTitle("Down"_ns);
    EXPECT_EQ(button->indexOfSelectedItem(), 1);
    send<void>(button, "setTitle:"_sel, "Even"_ns.get());
    EXPECT_EQ(states(), "Plain Down Up Even* ") << "one that is not there is added";
    EXPECT_EQ(taken(), "");
}

TEST_F(PopUpButton, selectsNothingForWhatIsNotThere) {
    const Ref<NSMenuItem> stranger = make<NSMenuItem>();
    const std::function<void()> ways[] = {
        [&] { button->selectItemAtIndex(-1); },        [&] { button->selectItemAtIndex(3); },
        [&] { button->selectItemWithTitle("up"_ns); }, [&] { button->selectItemWithTitle(nullptr); },
        [&] { button->selectItem(nullptr); },          [&] { button->selectItem(stranger); },
    };
    addModes();
    for (const auto& way : ways) {
        button->selectItemAtIndex(1);
        way();
        EXPECT_EQ(button->indexOfSelectedItem(), -1);
        EXPECT_EQ(button->title()->utf8(), "");
        EXPECT_EQ(states(), "Plain Down Up ");
    }
    button->addItemWithTitle("Even"_ns);
    EXPECT_EQ(button->indexOfSelectedItem(), -1) << "only the first item of all is selected unasked";
    button->removeAllItems();
    button->addItemWithTitle("Even"_ns);
    EXPECT_EQ(button->indexOfSelectedItem(), 0);
}

TEST_F(PopUpButton, selectsTheFirstItemWhenTheSelectedOneIsRemoved) {
    addModes();
    button->selectItemAtIndex(2);
    const auto up = button->selectedItem();
    button->removeItemAtIndex(2);
    EXPECT_EQ(states(), "Plain* Down ");
    EXPECT_EQ(up->state(), 0);
    EXPECT_EQ(button->title()->utf8(), "Plain");
    button->menu()->addItem(up);
    EXPECT_EQ(states(), "Plain* Down Up ") << "and one that comes back is one like the others";
    button->removeItemWithTitle("Plain"_ns);
    EXPECT_EQ(states(), "Down* Up ");
    button->removeAllItems();
    EXPECT_EQ(button->title()->utf8(), "");
}

TEST_F(PopUpButton, followsItsMenu) {
    const Ref<NSPopUpButtonCell> cell = cast<NSPopUpButtonCell>(button->cell());
    ASSERT_TRUE(cell);
    button->menu()->addItemWithTitle_action_keyEquivalent("Plain"_ns, {}, nullptr);
    EXPECT_EQ(states(), "Plain* ");
    EXPECT_EQ(cell->title()->utf8(), "Plain");
    button->itemAtIndex(0)->setTitle("Half even"_ns);
    EXPECT_EQ(button->title()->utf8(), "Half even");
    const Ref<NSMenu> other = make<NSMenu>();
    other->addItemWithTitle_action_keyEquivalent("Day"_ns, {}, nullptr);
    const auto before = button->menu();
    button->setMenu(other);
    EXPECT_EQ(button->title()->utf8(), "Day");
    EXPECT_EQ(before->itemAtIndex(0)->state(), 0) << "the tick goes with the button";
    const auto second = make<NSPopUpButton>();
    EXPECT_EQ(test::raisedName([&] { second->setMenu(other); }), NSInvalidArgumentException);
    second->setMenu(before);
    EXPECT_EQ(second->title()->utf8(), "Half even");
    button->setMenu(nullptr);
    EXPECT_EQ(button->numberOfItems(), 0);
    EXPECT_EQ(send<Ref<NSMenu>>(button, "menu"_sel), button->menu());
}

TEST_F(PopUpButton, showsItsMenuOverItself) {
    addModes();
    button->selectItemAtIndex(1);
    bool wasPressed = false;
    toolkit.whileOpen = [&] {
        wasPressed = button->isHighlighted();
        button->performClick(nullptr);
    };
    button->performClick(nullptr);
    EXPECT_EQ(toolkit.opened, 1) << "and only once at a time";
    EXPECT_TRUE(wasPressed);
    EXPECT_FALSE(button->isHighlighted());
    EXPECT_EQ(toolkit.titles, "Plain Down* Up ");
    EXPECT_EQ(toolkit.titleAtLocation, "Down");
    EXPECT_EQ(toolkit.location, (NSPoint{0, 30})) << "the selected item at the upper left corner";
    EXPECT_EQ(toolkit.inView, button);
    EXPECT_EQ(toolkit.width, 100) << "no narrower than the button";
    EXPECT_EQ(button->menu()->minimumWidth(), 0);
    EXPECT_EQ(button->indexOfSelectedItem(), 1) << "dismissed";
    EXPECT_EQ(taken(), "");
}

TEST_F(PopUpButton, selectsWhatIsChosenAndSendsItsAction) {
    addModes();
    bool isPressed = true;
    target->whenChosen = [&] { isPressed = button->isHighlighted(); };
    choose(2);
    EXPECT_EQ(states(), "Plain Down Up* ");
    EXPECT_EQ(taken(), "Up ");
    EXPECT_FALSE(isPressed) << "the action may take its time";
    choose(2);
    EXPECT_EQ(taken(), "Up ") << "once again, though nothing has changed";
    button->itemAtIndex(1)->setAction("itemChosen:"_sel);
    button->itemAtIndex(1)->setTarget(target);
    choose(1);
    EXPECT_EQ(taken(), "item:Down ") << "an item's own action instead";
    EXPECT_EQ(button->indexOfSelectedItem(), 1);
    button->menu()->performActionForItemAtIndex(0);
    EXPECT_EQ(taken(), "Plain ") << "by a program as by a user";
}

TEST_F(PopUpButton, sendsNothingForAnItemThatIsDisabled) {
    addModes();
    button->itemAtIndex(1)->setEnabled(false);
    choose(1);
    EXPECT_EQ(taken(), "");
    EXPECT_EQ(button->indexOfSelectedItem(), 0);
}

TEST_F(PopUpButton, opensByMouseAndKeys) {
    addModes();
    const auto pressAt = [&](NSPoint at) {
        send<void>(button, "mouseDown:"_sel, test::mouseEvent(NSEventTypeLeftMouseDown, at));
    };
    pressAt({50, 20});
    EXPECT_EQ(toolkit.opened, 1) << "at the press already";
    send<void>(button, "mouseUp:"_sel, test::mouseEvent(NSEventTypeLeftMouseUp, {50, 20}));
    pressAt({150, 20});
    EXPECT_EQ(toolkit.opened, 1);
    for (NSString* const key : {" "_ns.get(), "\r"_ns.get(), "\uF700"_ns.get(), "\uF701"_ns.get()}) {
        const int before = toolkit.opened;
        press(key);
        EXPECT_EQ(toolkit.opened, before + 1);
        press(key, 0, true);
        press(key, NSEventModifierFlagOption);
        EXPECT_EQ(toolkit.opened, before + 1) << "not while it is held down, nor with other keys";
    }
    press("\uF702"_ns);
    press(nullptr);
    send<void>(button, "keyDown:"_sel, nullptr);
    send<void>(button, "mouseDown:"_sel, nullptr);
    EXPECT_EQ(toolkit.opened, 5);
}

TEST_F(PopUpButton, doesNothingWhileItIsDisabled) {
    addModes();
    button->itemAtIndex(1)->setKeyEquivalent("d"_ns);
    button->setEnabled(false);
    choose(1);
    press(" "_ns);
    press("\uF701"_ns);
    send<void>(button, "mouseDown:"_sel, test::mouseEvent(NSEventTypeLeftMouseDown, {50, 20}));
    EXPECT_EQ(toolkit.opened, 0);
    const auto key = test::keyEvent("d"_ns, NSEventModifierFlagCommand);
    EXPECT_FALSE(window->performKeyEquivalent(key));
    button->setEnabled(true);
    EXPECT_TRUE(window->performKeyEquivalent(key));
    EXPECT_EQ(taken(), "Down ") << "the items' keys work in the window";
    button->setHidden(true);
    EXPECT_FALSE(window->performKeyEquivalent(key));
    button->selectItemAtIndex(2);
    EXPECT_EQ(button->title()->utf8(), "Up") << "a program may select what it likes";
}

TEST_F(PopUpButton, mayBeLetGoByItsAction) {
    addModes();
    const Weak<NSPopUpButton> watched(button);
    target->whenChosen = [&] {
        button->removeFromSuperview();
        button = nullptr;
    };
    toolkit.chooses = [](NSMenu&) { return 1; };
    // As an event does that is handed over.
    send<void>(Ref<NSPopUpButton>(button), "performClick:"_sel, nullptr);
    EXPECT_EQ(taken(), "Down ");
    EXPECT_FALSE(watched.lock());
}

TEST_F(PopUpButton, isAsBeforeWhenItsActionRaises) {
    addModes();
    target->whenChosen = [] { NSException::raise(NSGenericException, "no"); };
    EXPECT_EQ(test::raisedName([&] { choose(1); }), NSGenericException);
    EXPECT_FALSE(button->isHighlighted());
    EXPECT_EQ(button->menu()->minimumWidth(), 0);
    target->whenChosen = nullptr;
    choose(2);
    EXPECT_EQ(taken(), "Down Up ") << "and it opens again";
}

TEST_F(PopUpButton, isAsWideAsItsWidestItem) {
    addModes();
    button->sizeToFit();
    const NSSize size = button->frame().size;
    button->addItemWithTitle("Half even"_ns);
    EXPECT_EQ(button->intrinsicContentSize().width, size.width + 4 * 7) << "nine letters in place of five";
    EXPECT_EQ(button->intrinsicContentSize().height, size.height);
    const auto plain = NSButton::buttonWithTitle_target_action("Plain"_ns, nullptr, {});
    EXPECT_GT(size.width, plain->frame().size.width) << "with room for the arrow";
    EXPECT_EQ(size.height, plain->frame().size.height);
}

TEST_F(PullDownButton, showsItsFirstItemAndNeverSelects) {
    button->setPullsDown(true);
    EXPECT_TRUE(button->pullsDown());
    button->addItemsWithTitles(NSArray::arrayWithObjects({"Desk"_ns, "Flatten"_ns, "Cancel all"_ns}));
    EXPECT_EQ(button->title()->utf8(), "Desk");
    EXPECT_EQ(states(), "Flatten Cancel all ") << "the first is hidden";
    EXPECT_EQ(button->selectedItem(), nullptr);
    button->selectItemAtIndex(1);
    EXPECT_FALSE(button->selectItemWithTag(0));
    EXPECT_EQ(button->indexOfSelectedItem(), -1);
    choose(2);
    EXPECT_EQ(taken(), "Desk ");
    EXPECT_EQ(button->title()->utf8(), "Desk");
    EXPECT_EQ(states(), "Flatten Cancel all ");
    EXPECT_EQ(toolkit.location, (NSPoint{0, 0})) << "below";
    EXPECT_EQ(toolkit.titleAtLocation, "none");
}

TEST_F(PullDownButton, takesItsTitleFromWhicheverItemIsTheFirst) {
    button->setPullsDown(true);
    button->setTitle("Desk"_ns);
    EXPECT_EQ(button->numberOfItems(), 1);
    button->addItemWithTitle("Flatten"_ns);
    button->setTitle("Risk"_ns);
    EXPECT_TRUE(button->itemTitles()->isEqual(NSArray::arrayWithObjects({"Risk"_ns, "Flatten"_ns})));
    button->insertItemWithTitle_atIndex("More"_ns, 0);
    EXPECT_EQ(button->title()->utf8(), "More");
    EXPECT_EQ(states(), "Risk Flatten ") << "one that is no longer the first shows";
    button->setPullsDown(false);
    EXPECT_EQ(states(), "More* Risk Flatten ");
    button->setPullsDown(true);
    EXPECT_EQ(states(), "Risk Flatten ");
    EXPECT_EQ(button->itemAtIndex(0)->state(), 0);
}

TEST_F(PullDownButton, opensBelowAlsoInAFlippedSystem) {
    const auto flipped = make<FlippedPopUp>();
    flipped->setFrame({{20, 50}, {100, 30}});
    window->contentView()->addSubview(flipped);
    flipped->addItemWithTitle("A"_ns);
    flipped->performClick(nullptr);
    EXPECT_EQ(toolkit.location, (NSPoint{0, 0})) << "a pop-up over itself";
    flipped->setPullsDown(true);
    flipped->performClick(nullptr);
    EXPECT_EQ(toolkit.location, (NSPoint{0, 30}));
}

TEST(PopUpButtonWithoutACell, hasItsMenuAllTheSame) {
    const auto button = make<NSPopUpButton>();
    button->addItemWithTitle("A"_ns);
    button->setCell(nullptr);
    button->addItemWithTitle("B"_ns);
    button->selectItemAtIndex(1);
    EXPECT_EQ(button->titleOfSelectedItem()->utf8(), "B");
    EXPECT_EQ(button->title()->utf8(), "");
    button->setCell(make<NSPopUpButtonCell>());
    EXPECT_EQ(button->title()->utf8(), "B");
}

} // namespace
} // namespace zr
