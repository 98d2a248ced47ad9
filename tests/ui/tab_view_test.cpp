#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/ui/tab_view.h>

#include <tests/appkit/tab_view_testing.h>

#include <limits>

namespace zr {
namespace {

const auto notFound = static_cast<NSInteger>(NSNotFound);

std::string raisedBy(const std::function<void()>& work) {
    try {
        work();
    } catch (const NSException& exception) {
        return std::string(exception.name());
    }
    return "";
}

/// Three items, the first of them selected.
class Tabs : public testing::Test {
  protected:
    void SetUp() override {
        tabs = controller->tabView();
        for (const char* name : {"one", "two", "three"}) {
            tabs->addTabViewItem(test::tab(name));
        }
    }
    [[nodiscard]] std::string selected() const { return test::nameOf(tabs->selectedTabViewItem()); }

    Ref<NSTabViewController> controller = make<NSTabViewController>();
    Ref<NSTabView> tabs;
};

TEST_F(Tabs, knowTheirIndexes) {
    const std::pair<NSInteger, bool> rows[] = {
        {0, true},
        {2, true},
        {3, false},
        {-1, false},
        {notFound, false},
        {notFound - 1, false},
        {std::numeric_limits<NSInteger>::min(), false},
    };
    for (const auto& [index, isValid] : rows) {
        SCOPED_TRACE(index);
        EXPECT_EQ(isValidIndex(tabs, index), isValid);
        EXPECT_EQ(send<bool>(tabs, "isValidIndex:"_sel, index), isValid);
    }
    EXPECT_FALSE(isValidIndex(make<NSTabView>(), 0));
    EXPECT_FALSE(isValidIndex(nullptr, 0));
}

TEST_F(Tabs, areNeverSelectedByAValidIndex) {
    for (const NSInteger index : {0, 1, 2}) {
        zr_selectTabViewItemAtIndex(tabs, index);
        zr_selectTabViewItemAtIndex(controller.get(), index);
        send<void>(tabs, "zr_selectTabViewItemAtIndex:"_sel, index);
        send<void>(controller, "zr_selectTabViewItemAtIndex:"_sel, index);
        EXPECT_EQ(selected(), "one");
    }
    tabs->selectTabViewItemAtIndex(2);
    EXPECT_EQ(selected(), "three") << "the platform's own operation does";
}

TEST_F(Tabs, handAnInvalidIndexOnToBeRefused) {
    for (const NSInteger index : {NSInteger{3}, NSInteger{-1}, notFound}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(raisedBy([&] { zr_selectTabViewItemAtIndex(tabs.get(), index); }), NSRangeException);
        EXPECT_EQ(raisedBy([&] { zr_selectTabViewItemAtIndex(controller.get(), index); }), NSRangeException);
    }
    EXPECT_EQ(selected(), "one");
}

TEST_F(Tabs, areNotSelectedByTheirIdentifierEither) {
    zr_selectTabViewItemWithIdentifier(tabs, "two"_ns);
    zr_selectTabViewItemWithIdentifier(controller.get(), "three"_ns);
    zr_selectTabViewItemWithIdentifier(tabs, nullptr);
    zr_selectTabViewItemWithIdentifier(controller.get(), nullptr);
    EXPECT_EQ(selected(), "one");
    for (const id& odd : {id("four"_ns), id(NSNull::null()), id(box(2))}) {
        EXPECT_EQ(raisedBy([&] { zr_selectTabViewItemWithIdentifier(tabs.get(), odd); }), NSRangeException);
        EXPECT_EQ(raisedBy([&] { zr_selectTabViewItemWithIdentifier(controller.get(), odd); }), NSRangeException);
    }
}

TEST_F(Tabs, areFoundByTheirIdentifier) {
    EXPECT_EQ(zr_tabViewItemWithIdentifier(tabs, "two"_ns), tabs->tabViewItemAtIndex(1));
    EXPECT_EQ(zr_tabViewItemWithIdentifier(controller.get(), "three"_ns), tabs->tabViewItemAtIndex(2));
    EXPECT_EQ(send<id>(tabs, "zr_tabViewItemWithIdentifier:"_sel, "one"_ns), tabs->tabViewItemAtIndex(0));
    EXPECT_EQ(send<id>(controller, "zr_tabViewItemWithIdentifier:"_sel, "one"_ns), tabs->tabViewItemAtIndex(0));
}

TEST_F(Tabs, areNullForAnUnknownIdentifier) {
    for (const id& odd : {id(), id("four"_ns), id(NSNull::null()), id(box(1))}) {
        EXPECT_EQ(zr_tabViewItemWithIdentifier(tabs, odd), nullptr);
        EXPECT_EQ(zr_tabViewItemWithIdentifier(controller.get(), odd), nullptr);
    }
}

TEST_F(Tabs, areNothingForNull) {
    NSTabView* const noTabs = nullptr;
    NSTabViewController* const noController = nullptr;
    zr_selectTabViewItemAtIndex(noTabs, 5);
    zr_selectTabViewItemAtIndex(noController, 5);
    zr_selectTabViewItemWithIdentifier(noTabs, "one"_ns);
    zr_selectTabViewItemWithIdentifier(noController, "one"_ns);
    EXPECT_EQ(zr_tabViewItemWithIdentifier(noTabs, "one"_ns), nullptr);
    EXPECT_EQ(zr_tabViewItemWithIdentifier(noController, "one"_ns), nullptr);
}

/// Counts what it is asked to select, and refuses nothing.
class LenientTabView : public NSTabView {
    ZR_OBJECT(LenientTabView, NSTabView)
  public:
    void selectTabViewItemAtIndex(NSInteger index) override { asked = index; }
    NSInteger asked = 100;
};

TEST(LenientTabs, areHandedTheNotFoundValue) {
    const auto tabs = make<LenientTabView>();
    tabs->addTabViewItem(test::tab("one"));
    zr_selectTabViewItemWithIdentifier(tabs, "one"_ns);
    EXPECT_EQ(tabs->asked, 100) << "a valid index is handed to nobody";
    zr_selectTabViewItemWithIdentifier(tabs, "two"_ns);
    EXPECT_EQ(tabs->asked, notFound);
    zr_selectTabViewItemAtIndex(tabs, -7);
    EXPECT_EQ(tabs->asked, -7);
}

/// A kind of item of one's own.
class Sheet : public NSTabViewItem {
    ZR_OBJECT(Sheet, NSTabViewItem)
};

TEST(TabItems, areMadeWithWhatTheyShow) {
    const auto view = make<NSView>();
    EXPECT_EQ(itemWithView(view)->view(), view);
    EXPECT_EQ(itemWithView(view)->identifier(), nullptr);
    EXPECT_EQ(itemWithView(nullptr)->view(), nullptr);
    const Ref<Sheet> sheet = itemWithView_identifier<Sheet>(view, box(3));
    EXPECT_EQ(sheet->view(), view);
    EXPECT_TRUE(sheet->identifier()->isEqual(box(3)));
    const id made = send<id>(Sheet::classObject(), "itemWithView:identifier:"_sel, view, "a"_ns);
    ASSERT_NE(cast<Sheet>(made), nullptr) << "of the class that was asked";
    EXPECT_TRUE(cast<Sheet>(made)->identifier()->isEqual("a"_ns));
    EXPECT_NE(cast<Sheet>(send<id>(Sheet::classObject(), "itemWithView:"_sel, "no view"_ns)), nullptr);
}

TEST(TabItems, areMadeWithAController) {
    const auto page = make<NSViewController>();
    page->setTitle("Page"_ns);
    const auto item = itemWithViewController_identifier(page, "p"_ns);
    EXPECT_EQ(item->viewController(), page);
    EXPECT_FALSE(page->isViewLoaded());
    EXPECT_EQ(item->label()->utf8(), "Page");
    EXPECT_TRUE(item->identifier()->isEqual("p"_ns));
    const id made = send<id>(NSTabViewItem::classObject(), "itemWithViewController:identifier:"_sel, nullptr, nullptr);
    ASSERT_NE(cast<NSTabViewItem>(made), nullptr);
    EXPECT_EQ(cast<NSTabViewItem>(made)->identifier(), nullptr);
    EXPECT_EQ(cast<NSTabViewItem>(made)->view(), nullptr);
}

} // namespace
} // namespace zr
