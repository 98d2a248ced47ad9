#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/view_controller.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/index_set.h>

namespace zr {

class NSCollectionView;

/// One of the things that a collection view shows: its view, and what that stands for. Main thread only.
class ZR_EXPORT NSCollectionViewItem : public NSViewController {
    ZR_DECLARE_CLASS(NSCollectionViewItem, NSViewController)
  public:
    NSCollectionViewItem();
    ~NSCollectionViewItem() override;

    /// Set, by message, by the collection view, which draws nothing for it itself: subclasses show it in their view.
    [[nodiscard]] bool isSelected() const { return m_isSelected; }
    virtual void setSelected(bool selected);
    /// Null while it is shown in none; not kept.
    [[nodiscard]] Ref<NSCollectionView> collectionView() const;

  private:
    friend class NSCollectionView;

    Weak<NSCollectionView> m_collectionView;
    bool m_isSelected = false;
};

/// Shows items side by side, in rows from the top down, and lets users select them.
///
/// The items come from the data source, asked by message: `collectionView:numberOfItemsInSection:`, with 0 for the
/// section, and `collectionView:itemForRepresentedObjectAtIndex:`, whose result is a `NSCollectionViewItem`; what is none
/// leaves a gap. Without a data source they are made from `content`. All of their views are there at once, ten
/// thousand at most.
///
/// The delegate is told, as far as it responds, what users have done: `collectionView:didDeselectItemsAtIndexes:` and
/// `collectionView:didSelectItemsAtIndexes:`, each with an index set. In a scroll view the collection is as wide as the
/// part that is seen, and as high as its items need. Main thread only.
class ZR_EXPORT NSCollectionView : public NSView {
    ZR_DECLARE_CLASS(NSCollectionView, NSView)
  public:
    NSCollectionView();
    ~NSCollectionView() override;

    /// Neither is kept; both null at first. Another data source has everything read anew.
    [[nodiscard]] id dataSource() const { return m_dataSource.lock(); }
    virtual void setDataSource(NSObject* source);
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }
    /// Never null; copied when set.
    [[nodiscard]] Ref<NSArray> content() const { return m_content; }
    virtual void setContent(NSArray* content);
    /// The item for an element of the content; a plain item with that as its represented object unless overridden.
    [[nodiscard]] virtual Ref<NSCollectionViewItem> newItemForRepresentedObject(NSObject* object);

    /// Makes all items anew. Selected ones that are gone leave the selection.
    virtual void reloadData();
    [[nodiscard]] NSUInteger numberOfItems() const { return m_items.size(); }
    /// Null where there is none.
    [[nodiscard]] Ref<NSCollectionViewItem> itemAtIndex(NSUInteger index) const;
    /// The zero rectangle where there is none.
    [[nodiscard]] NSRect frameForItemAtIndex(NSUInteger index) const;
    /// Of the item at a point of the collection; `NSNotFound` between and behind them.
    [[nodiscard]] NSUInteger indexOfItemAtPoint(NSPoint point) const;

    // Layout

    /// 100 by 100 points at first; each side at least 1, which is what no number stands for.
    [[nodiscard]] NSSize itemSize() const { return m_itemSize; }
    void setItemSize(NSSize size);
    /// Between the items, 10 and 10 points at first; not below 0.
    [[nodiscard]] NSSize itemSpacing() const { return m_itemSpacing; }
    void setItemSpacing(NSSize spacing);
    /// 0, at first, for as many as there is room for. With 1 the items are a list, each as wide as the collection.
    [[nodiscard]] NSUInteger maxNumberOfColumns() const { return m_maxNumberOfColumns; }
    void setMaxNumberOfColumns(NSUInteger columns);

    /// What the rows are filled with, taking turns; one white at first. Null is the empty list, which fills nothing;
    /// what is no colour leaves its rows alone. Copied when set.
    [[nodiscard]] Ref<NSArray> backgroundColors() const;
    virtual void setBackgroundColors(NSArray* colors);

    // Selection

    /// Whether users can select items; false at first, and then they cannot give the view the keyboard either.
    [[nodiscard]] bool isSelectable() const { return m_isSelectable; }
    virtual void setSelectable(bool selectable);
    /// Whether they can select several; false at first. Taken away, only the first selected one stays so.
    [[nodiscard]] bool allowsMultipleSelection() const { return m_allowsMultipleSelection; }
    virtual void setAllowsMultipleSelection(bool allows);
    /// Whether they can take back the selection of the last one; true at first. Where they cannot, there may still be
    /// none selected from the beginning.
    [[nodiscard]] bool allowsEmptySelection() const { return m_allowsEmptySelection; }
    virtual void setAllowsEmptySelection(bool allows);
    /// Never null.
    [[nodiscard]] Ref<NSIndexSet> selectionIndexes() const { return m_selection; }
    /// Indexes of no item are passed over, and null is none; of several, only the first where one may be selected. The
    /// delegate is not told.
    virtual void setSelectionIndexes(NSIndexSet* indexes);

    [[nodiscard]] bool isFlipped() const override;
    [[nodiscard]] bool acceptsFirstResponder() const override;
    void setFrameSize(NSSize size) override;
    void viewDidMoveToSuperview() override;
    /// The content view that it scrolls in has another extent.
    virtual void resizeWithOldSuperviewSize(NSSize before);
    void drawRect(NSRect dirtyRect) override;
    /// Selects what was clicked: with the command key besides the others, and with shift all from the last one on.
    void mouseDown(NSEvent* event) override;
    /// The arrow keys, home and end go to another item, with shift besides the others.
    void keyDown(NSEvent* event) override;

  private:
    [[nodiscard]] NSUInteger columns() const;
    [[nodiscard]] double neededHeight() const;
    void layOut();
    void placeAll();
    [[nodiscard]] NSSize placeInClip() const;
    void replaceItems(std::vector<Ref<NSCollectionViewItem>> items);
    void select(Ref<NSIndexSet> indexes, bool isByUser);
    void extendTo(NSUInteger index);

    Weak<NSObject> m_dataSource;
    Weak<NSObject> m_delegate;
    Ref<NSArray> m_content;
    /// Null unless some were set.
    Ref<NSArray> m_backgroundColors;
    Ref<NSIndexSet> m_selection;
    std::vector<Ref<NSCollectionViewItem>> m_items;
    NSSize m_itemSize{100, 100};
    NSSize m_itemSpacing{10, 10};
    NSUInteger m_maxNumberOfColumns = 0;
    /// Where a range begins that shift selects, and where it ends.
    NSUInteger m_anchor = NSNotFound;
    NSUInteger m_current = NSNotFound;
    bool m_isSelectable = false;
    bool m_allowsMultipleSelection = false;
    bool m_allowsEmptySelection = true;
    bool m_isLayingOut = false;
};

} // namespace zr
