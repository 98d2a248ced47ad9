#pragma once

#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

class NSTableView;

/// One column of a table: who it is, how wide, and whether it is shown. Main thread only.
class ZR_EXPORT NSTableColumn : public NSObject {
    ZR_DECLARE_CLASS(NSTableColumn, NSObject)
  public:
    NSTableColumn();
    ~NSTableColumn() override;

    id initWithIdentifier(NSString* identifier);

    /// What the column is known by; columns may share one, or have none: null, as after `init`. Copied when set.
    [[nodiscard]] Ref<NSString> identifier() const { return m_identifier; }
    void setIdentifier(NSString* identifier);

    /// What the header says; empty at first. Null sets the empty text.
    [[nodiscard]] Ref<NSString> title() const { return m_title; }
    void setTitle(NSString* title);

    /// Of the title and of everything in the column; natural at first.
    [[nodiscard]] NSTextAlignment alignment() const { return m_alignment; }
    void setAlignment(NSTextAlignment alignment);

    /// In points; 100 at first. A new width is brought within the limits, and what is not a number becomes the least.
    /// It is kept exactly, whatever pixels make of it; the table posts `NSTableViewColumnDidResizeNotification`.
    [[nodiscard]] double width() const { return m_width; }
    void setWidth(double width);
    /// The limits of the width, 10 and 10000 at first. A new limit is applied to the width at once; a negative one, and
    /// what is not a number, counts as 0. Where the two contradict each other, the least width wins.
    [[nodiscard]] double minWidth() const { return m_minWidth; }
    void setMinWidth(double width);
    [[nodiscard]] double maxWidth() const { return m_maxWidth; }
    void setMaxWidth(double width);

    /// Whether the column takes part in the table without being shown; false at first.
    [[nodiscard]] bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);

    /// The table that the column belongs to; null when there is none, or it is gone.
    [[nodiscard]] Ref<NSTableView> tableView() const;

  private:
    friend class NSTableView;

    void looksChanged();

    Ref<NSString> m_identifier;
    Ref<NSString> m_title = ""_ns;
    Weak<NSTableView> m_tableView;
    NSTextAlignment m_alignment = NSTextAlignmentNatural;
    double m_width = 100;
    double m_minWidth = 10;
    double m_maxWidth = 10000;
    bool m_hidden = false;
};

} // namespace zr
