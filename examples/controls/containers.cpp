#include "shades.h"
#include "specimen.h"

#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/platform/appkit/split_view.h>
#include <zrbasic/platform/appkit/tab_view.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/index_set.h>
#include <zrbasic/ui/box.h>
#include <zrbasic/ui/collection_view.h>
#include <zrbasic/ui/plain_view.h>
#include <zrbasic/ui/scroller.h>
#include <zrbasic/ui/tab_view.h>

namespace controls {
namespace {

using namespace zr;

Ref<NSAttributedString> line(NSString* text) {
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, text,
                                    dictionary({{NSForegroundColorAttributeName(), ink()}}).get());
}

/// One line of text that fills a pane.
class GalleryPane : public NSView {
    ZR_OBJECT(GalleryPane, NSView)
  public:
    void drawRect(NSRect) override {
        setFill(color ? color : paper());
        NSRectFill(bounds());
        const NSRect all = bounds();
        NSGraphicsContext::currentContext()->canvas().drawText(
            line(text), NSMakeRect(8, all.size.height - 22, all.size.width - 16, 16), true);
    }
    ZR_METHOD(drawRect, "drawRect:")

    Ref<NSString> text = ""_ns;
    Ref<NSColor> color;
};

Ref<GalleryPane> pane(const char* text, double width, double height, const Ref<NSColor>& color = nullptr) {
    const Ref<GalleryPane> made = make<GalleryPane>(&GalleryPane::initWithFrame, NSMakeRect(0, 0, width, height));
    made->text = NSString::fromUtf8(text);
    made->color = color;
    return made;
}

Ref<ZRXScroller> scroller(NSRect frame, double position) {
    const Ref<ZRXScroller> made = make<ZRXScroller>(&ZRXScroller::initWithFrame, frame);
    made->setEnabled(true);
    made->setKnobProportion(0.4);
    made->setDoubleValue(position);
    return made;
}

/// Lines from the top to the bottom of what can be scrolled through.
class GalleryLines : public NSView {
    ZR_OBJECT(GalleryLines, NSView)
  public:
    [[nodiscard]] bool isFlipped() const override { return true; }

    void drawRect(NSRect) override {
        for (int number = 0; number < 12; ++number) {
            const Ref<NSString> words =
                NSString::stringWithFormat("Trade %d at 2241.%02d"_ns, number + 1, 40 + 3 * number);
            NSGraphicsContext::currentContext()->canvas().drawText(line(words), NSMakeRect(8, 4 + 20 * number, 180, 16),
                                                                   true);
        }
    }
    ZR_METHOD(drawRect, "drawRect:")
};

/// An item that shows whether it is selected.
class GalleryItem : public NSCollectionViewItem {
    ZR_OBJECT(GalleryItem, NSCollectionViewItem)
  public:
    void setSelected(bool selected) override {
        NSCollectionViewItem::setSelected(selected);
        auto* const shown = cast<GalleryPane>(view().get());
        if (shown) {
            shown->color = selected ? pale() : nullptr;
            shown->setNeedsDisplay(true);
        }
    }
};

class GalleryItems : public NSObject {
    ZR_OBJECT(GalleryItems, NSObject)
  public:
    NSInteger count(NSCollectionView*, NSInteger) { return 3; }
    ZR_METHOD(count, "collectionView:numberOfItemsInSection:")

    Ref<NSCollectionViewItem> item(NSCollectionView*, NSInteger index) {
        static constexpr const char* names[] = {"Limit", "Market", "Stop"};
        const Ref<GalleryItem> made = make<GalleryItem>();
        made->setView(pane(names[index], 60, 30));
        return made;
    }
    ZR_METHOD(item, "collectionView:itemForRepresentedObjectAtIndex:")
};

Ref<NSView> scrolled() {
    const Ref<NSScrollView> view = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 200, 90));
    view->setHasVerticalScroller(true);
    const Ref<ZRXScroller> thin = make<ZRXScroller>(&ZRXScroller::initWithFrame, NSMakeRect(0, 0, 12, 90));
    thin->setKnobColor(NSColor::grayColor());
    view->setVerticalScroller(thin);
    view->setScrollerStyle(NSScrollerStyleOverlay);
    view->setDocumentView(make<GalleryLines>(&GalleryLines::initWithFrame, NSMakeRect(0, 0, 200, 248)));
    view->scrollTo(NSMakePoint(0, 60));
    return view;
}

} // namespace

Section scrollers() {
    Section section{"Scrollers", {}};
    auto& specimens = section.specimens;
    specimens.push_back({"scroller/horizontal", "horizontal", scroller(NSMakeRect(0, 0, 200, 12), 0), {}});

    const Ref<ZRXScroller> colored = scroller(NSMakeRect(0, 0, 200, 12), 0.5);
    colored->setKnobColor(accent());
    colored->setScrollBackgroundColor(pale());
    specimens.push_back({"scroller/coloured", "coloured knob and slot", colored, {}});

    const Ref<ZRXScroller> hidden = scroller(NSMakeRect(0, 0, 200, 12), 0.5);
    hidden->setScrollBackgroundColor(pale());
    hidden->setHideKnob(true);
    specimens.push_back({"scroller/hidden-knob", "hidden knob", hidden, {}});

    specimens.push_back({"scroller/scrolled", "in a scrolled view", scrolled(), {}});
    return section;
}

Section containers() {
    Section section{"Containers", {}};
    auto& specimens = section.specimens;

    const Ref<ZRXBox> box = make<ZRXBox>(&ZRXBox::initWithFrame, NSMakeRect(0, 0, 200, 34));
    box->setFillColor(pale());
    box->setCornerRadius(4);
    box->setContentView(pane("In a box", 180, 24, pale()));
    specimens.push_back({"container/box", "box, filled", box, {}});

    const Ref<NSSplitView> split = make<NSSplitView>(&NSSplitView::initWithFrame, NSMakeRect(0, 0, 320, 48));
    split->setVertical(true);
    split->addSubview(pane("Orders", 110, 48, pale()));
    split->addSubview(pane("Positions", 209, 48));
    split->adjustSubviews();
    specimens.push_back({"container/split", "split view", split, {}});

    const Ref<NSTabView> tabs = make<NSTabView>(&NSTabView::initWithFrame, NSMakeRect(0, 0, 320, 62));
    for (const char* const name : {"Orders", "Fills", "Account"}) {
        const Ref<NSTabViewItem> item = itemWithView_identifier(pane(name, 320, 32), NSString::fromUtf8(name));
        item->setLabel(NSString::fromUtf8(name));
        tabs->addTabViewItem(item);
    }
    tabs->selectTabViewItemWithIdentifier("Fills"_ns);
    specimens.push_back({"container/tabs", "tab view", tabs, {}});

    const Ref<ZRXCollectionView> collection =
        make<ZRXCollectionView>(&ZRXCollectionView::initWithFrame, NSMakeRect(0, 0, 320, 30));
    collection->setItemSize(NSMakeSize(96, 30));
    const Ref<GalleryItems> source = make<GalleryItems>();
    collection->setDataSource(source);
    collection->setSelectionIndexes(NSIndexSet::indexSetWithIndex(1));
    // The pose keeps the source, which the collection does not.
    specimens.push_back({"container/collection", "collection, one selected", collection, [source] {}});
    return section;
}

} // namespace controls
