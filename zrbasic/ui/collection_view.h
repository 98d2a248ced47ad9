#pragma once

#include <zrbasic/platform/appkit/collection_view.h>

namespace zr {

/// A collection without a background, of which one item can be selected, and stays so until another one is. Main thread
/// only.
class ZR_EXPORT ZRXCollectionView : public NSCollectionView {
    ZR_DECLARE_CLASS(ZRXCollectionView, NSCollectionView)
  public:
    ZRXCollectionView();
    ~ZRXCollectionView() override;

    /// A scroll view that it lies in by then gets floating scrollers; one that it is put into later is left as it is.
    id initWithFrame(NSRect frame) override;
    /// True: the click that activates the window counts.
    [[nodiscard]] bool acceptsFirstMouse(NSEvent* event) override;
};

} // namespace zr
