#pragma once

#include <zrbasic/platform/appkit/view.h>

#include <limits>

namespace zr {

class NSDictionary;

/// The extents that a constraint can speak of.
enum NSLayoutAttribute : NSInteger {
    NSLayoutAttributeNotAnAttribute = 0,
    NSLayoutAttributeWidth = 7,
    NSLayoutAttributeHeight = 8,
};

enum NSLayoutRelation : NSInteger {
    NSLayoutRelationLessThanOrEqual = -1,
    NSLayoutRelationEqual = 0,
    NSLayoutRelationGreaterThanOrEqual = 1,
};

/// How formats are read; a sum of these. They matter between views only.
enum NSLayoutFormatOptions : NSUInteger {
    NSLayoutFormatDirectionLeadingToTrailing = 0,
    NSLayoutFormatDirectionLeftToRight = 1 << 16,
    NSLayoutFormatDirectionRightToLeft = 2 << 16,
};

/// How wide or high a view may be. Takes effect once it was added to the view, or to one that the view lies in.
///
/// Never changes; the view is not kept. Main thread only.
class ZR_EXPORT NSLayoutConstraint : public NSObject {
    ZR_DECLARE_CLASS(NSLayoutConstraint, NSObject)
  public:
    NSLayoutConstraint();
    ~NSLayoutConstraint() override;

    /// The constraints that a format names, in its order:
    ///
    ///     H:[name(>=20)]             at least 20 points wide; "H:" may be left out
    ///     V:[name(==30)], V:[name(30)]   30 points high
    ///     [name(>=20,<=limit@750)]   two of them; 750 is the second one's priority, and "limit" a metric
    ///
    /// Blanks do not count. `views` says which view has the name, `metrics`, which may be null, which number a name
    /// stands for where a number could be. Views side by side, margins, and extents taken from other views cannot be
    /// expressed. `options` change nothing.
    ///
    /// Raises `NSInvalidArgumentException` for a format that is null or cannot be read, a name that stands for nothing
    /// of its kind, a number that is not finite, and a priority that is not above 0 and up to 1000.
    [[nodiscard]] static Ref<NSArray> constraintsWithVisualFormat_options_metrics_views(NSString* format,
                                                                                        NSUInteger options,
                                                                                        NSDictionary* metrics,
                                                                                        NSDictionary* views);

    /// The view; null when it is gone.
    [[nodiscard]] Ref<NSView> firstItem() const { return m_view.lock(); }
    [[nodiscard]] NSLayoutAttribute firstAttribute() const { return m_attribute; }
    [[nodiscard]] NSLayoutRelation relation() const { return m_relation; }
    /// In points.
    [[nodiscard]] double constant() const { return m_constant; }
    [[nodiscard]] NSLayoutPriority priority() const { return m_priority; }

  private:
    Weak<NSView> m_view;
    NSLayoutAttribute m_attribute = NSLayoutAttributeNotAnAttribute;
    NSLayoutRelation m_relation = NSLayoutRelationEqual;
    double m_constant = 0;
    NSLayoutPriority m_priority = NSLayoutPriorityRequired;
};

/// How large a view may be, in points; an extent of which both are the same is fixed.
struct SizeLimits {
    double minWidth = 0;
    double minHeight = 0;
    double maxWidth = std::numeric_limits<double>::infinity();
    double maxHeight = std::numeric_limits<double>::infinity();

    friend bool operator==(const SizeLimits&, const SizeLimits&) = default;
};

/// What the constraints on that view say, its own and those of the views around it. Of two that cannot both hold, the
/// one of the higher priority does, and of equal ones the one that was added first, the view's own before others.
[[nodiscard]] ZR_EXPORT SizeLimits sizeLimitsOf(NSView& view);

} // namespace zr
