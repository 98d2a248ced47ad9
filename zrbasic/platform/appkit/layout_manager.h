#pragma once

#include <zrbasic/platform/appkit/text_storage.h>
#include <zrbasic/platform/foundation/geometry.h>

namespace zr {

class NSTextContainer;
class NSTextView;
class Toolkit;

/// The room that text is laid out in. Main thread only.
class ZR_EXPORT NSTextContainer : public NSObject {
    ZR_DECLARE_CLASS(NSTextContainer, NSObject)
  public:
    NSTextContainer();
    ~NSTextContainer() override;

    /// In points; 1e7 by 1e7 at first, which never breaks a line. An extent that follows the view is the view's.
    [[nodiscard]] NSSize containerSize() const;
    void setContainerSize(NSSize size);
    /// Whether the room follows the view's width and height; both true at first. They do nothing without a view.
    [[nodiscard]] bool widthTracksTextView() const { return m_widthTracks; }
    void setWidthTracksTextView(bool tracks);
    [[nodiscard]] bool heightTracksTextView() const { return m_heightTracks; }
    void setHeightTracksTextView(bool tracks);
    /// Points left free at both ends of every line; 5 at first.
    [[nodiscard]] double lineFragmentPadding() const { return m_padding; }
    void setLineFragmentPadding(double padding);

    /// The view whose text lies in it; not kept, null at first.
    [[nodiscard]] Ref<NSTextView> textView() const;
    void setTextView(NSTextView* view);

  private:
    void changed();

    NSSize m_size{1e7, 1e7};
    Weak<NSTextView> m_view;
    bool m_widthTracks = true;
    bool m_heightTracks = true;
    double m_padding = 5;
};

/// Lays a text out for a container, by means of the toolkit. Main thread only.
class ZR_EXPORT NSLayoutManager : public NSObject {
    ZR_DECLARE_CLASS(NSLayoutManager, NSObject)
  public:
    NSLayoutManager();
    ~NSLayoutManager() override;

    /// Never null; kept.
    [[nodiscard]] Ref<NSTextStorage> textStorage() const;
    /// The text from now on; null sets an empty one. The view shows it.
    void replaceTextStorage(NSTextStorage* storage);
    /// Measures the text for the container now, rather than when it is asked for. Null does nothing.
    void ensureLayoutForTextContainer(NSTextContainer* container);
    /// What the text takes of the container, from the zero point on, as if that were as high as need be; zero for an
    /// empty text, for null, and without a toolkit.
    [[nodiscard]] NSRect usedRectForTextContainer(NSTextContainer* container);

    /// The view that is told of another text; not kept.
    void setTextView(NSTextView* view);
    /// Called by the text when it changes.
    void textDidChange();

  private:
    /// A layout stays right as long as the text does and these are the same.
    struct Measured {
        Toolkit* toolkit = nullptr;
        NSSize containerSize;
        double padding = 0;
        NSSize used;
    };

    [[nodiscard]] NSSize usedSize(const NSTextContainer& container);
    void leaveStorage();

    Ref<NSTextStorage> m_storage;
    Weak<NSTextView> m_view;
    Measured m_measured;
};

} // namespace zr
