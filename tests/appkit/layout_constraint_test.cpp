#include <zrbasic/platform/appkit/layout_constraint.h>

#include "../foundation/checks.h"
#include "text_toolkit.h"

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zr {
namespace {

using test::raisedName;
using test::TextToolkit;

constexpr double infinity = std::numeric_limits<double>::infinity();

class LayoutConstraint : public testing::Test {
  protected:
    Ref<NSArray> constraints(NSString* format) {
        return NSLayoutConstraint::constraintsWithVisualFormat_options_metrics_views(format, 0, metrics, views);
    }
    /// "width >= 20 @ 1000", one behind the other.
    std::string read(const char* format) {
        std::string text;
        const Ref<NSArray> made = constraints(NSString::fromUtf8(format));
        for (const id& element : made->elements()) {
            const auto* const constraint = cast<NSLayoutConstraint>(element);
            EXPECT_EQ(constraint->firstItem(), view);
            text += constraint->firstAttribute() == NSLayoutAttributeWidth ? "width" : "height";
            text += constraint->relation() == NSLayoutRelationEqual             ? " == "
                    : constraint->relation() == NSLayoutRelationLessThanOrEqual ? " <= "
                                                                                : " >= ";
            text += NSString::stringWithFormat("%g @ %g; "_ns, constraint->constant(),
                                               static_cast<double>(constraint->priority()))
                        ->utf8();
        }
        return text;
    }
    void limit(NSView* owner, const char* format) { owner->addConstraints(constraints(NSString::fromUtf8(format))); }

    Ref<NSView> view = make<NSView>();
    Ref<NSDictionary> views = dictionary({{"self"_ns, view}, {"price_2"_ns, view}, {"text"_ns, "no view"_ns}});
    Ref<NSDictionary> metrics = dictionary({{"low"_ns, box(250)},
                                            {"limit"_ns, box(99.5)},
                                            {"text"_ns, "7"_ns},
                                            {"endless"_ns, box(infinity)},
                                            {"debt"_ns, box(-4)}});
};

TEST_F(LayoutConstraint, isReadFromAFormat) {
    const struct {
        const char* format;
        const char* read;
    } rows[] = {
        {"H:[self(>=20)]", "width >= 20 @ 1000; "},
        {"V:[self(==30)]", "height == 30 @ 1000; "},
        {"V:[self(30)]", "height == 30 @ 1000; "},
        {"[self(<=7.5)]", "width <= 7.5 @ 1000; "},
        {"H:[price_2(>=20@750)]", "width >= 20 @ 750; "},
        {"[self(>=20,<=limit@low,==.5@0.5)]", "width >= 20 @ 1000; width <= 99.5 @ 250; width == 0.5 @ 0.5; "},
        {"[self(>=debt)]", "width >= -4 @ 1000; "},
        {"  H: [ self ( >= 20 @ 750 ) ]  ", "width >= 20 @ 750; "},
        {"V:[self]", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        EXPECT_EQ(read(row.format), row.read);
    }
}

TEST_F(LayoutConstraint, doesNotCareForTheOptions) {
    const auto made = NSLayoutConstraint::constraintsWithVisualFormat_options_metrics_views("H:[self(>=20)]"_ns, 196608,
                                                                                            nullptr, views);
    ASSERT_EQ(made->count(), 1u);
    EXPECT_EQ(NSLayoutFormatDirectionLeftToRight | NSLayoutFormatDirectionRightToLeft, 196608u);
    EXPECT_EQ(cast<NSLayoutConstraint>(made->elements()[0])->constant(), 20);
}

TEST_F(LayoutConstraint, raisesForAFormatThatItCannotRead) {
    const std::string deep = "[self(" + std::string(100000, '(');
    const std::string digits = "[self(" + std::string(100000, '9') + ")]";
    const char* const formats[] = {
        "",
        " ",
        "H:",
        "[",
        "[]",
        "[self",
        "[self(]",
        "[self()]",
        "[self(>=)]",
        "[self(20]",
        "[self(20)",
        "[self(20,)]",
        "[self(20@)]",
        "[self(20@0)]",
        "[self(20@1001)]",
        "[self(=20)]",
        "[self(>20)]",
        "[self(-20)]",
        "[self(1.2.3)]",
        "[self(.)]",
        "[self(20)]x",
        "[self(20)][self(20)]",
        "[self]-8-[self]",
        "|[self]|",
        "D:[self(20)]",
        "h:[self(20)]",
        "[2self(20)]",
        "[Self(20)]",
        "[other(20)]",
        "[text(20)]",
        "[self(missing)]",
        "[self(text)]",
        "[self(endless)]",
        "[self(==self)]",
        "[s\xC3\xA9lf(20)]",
        "[self(20)]\n",
        deep.c_str(),
        digits.c_str(),
    };
    for (const char* format : formats) {
        SCOPED_TRACE(std::string(format).substr(0, 40));
        EXPECT_EQ(raisedName([&] { (void)constraints(NSString::fromUtf8(format)); }), "NSInvalidArgumentException");
    }
}

TEST_F(LayoutConstraint, raisesForWhatIsMissingOrOfAnotherKind) {
    const auto format = "[self(low)]"_ns;
    EXPECT_EQ(raisedName([&] { (void)constraints(nullptr); }), "NSInvalidArgumentException");
    EXPECT_EQ(raisedName([&] {
                  (void)NSLayoutConstraint::constraintsWithVisualFormat_options_metrics_views(format, 0, nullptr,
                                                                                              views);
              }),
              "NSInvalidArgumentException");
    EXPECT_EQ(raisedName([&] {
                  (void)NSLayoutConstraint::constraintsWithVisualFormat_options_metrics_views(format, 0, metrics,
                                                                                              nullptr);
              }),
              "NSInvalidArgumentException");
    EXPECT_EQ(raisedName([&] {
                  send<id>(NSLayoutConstraint::classObject(), "constraintsWithVisualFormat:options:metrics:views:"_sel,
                           NSNull::null(), 0, metrics, views);
              }),
              "NSInvalidArgumentException");
    EXPECT_EQ(send<id>(NSLayoutConstraint::classObject(), "constraintsWithVisualFormat:options:metrics:views:"_sel,
                       format, 0, metrics, views)
                  ->isKindOfClass(NSArray::classObject()),
              true);
}

TEST_F(LayoutConstraint, doesNotKeepTheView) {
    const auto made = constraints("[self(20)]"_ns);
    views = nullptr;
    view = nullptr;
    EXPECT_EQ(cast<NSLayoutConstraint>(made->elements()[0])->firstItem(), nullptr);
}

TEST_F(LayoutConstraint, isKeptByTheViewThatItIsAddedTo) {
    const auto made = constraints("[self(>=20,<=30)]"_ns);
    view->addConstraints(made);
    view->addConstraint(cast<NSLayoutConstraint>(made->elements()[0]));
    view->addConstraint(nullptr);
    view->addConstraints(nullptr);
    view->addConstraints(array({NSNull::null(), "text"_ns}));
    EXPECT_TRUE(view->constraints()->isEqual(made));
    view->removeConstraint(cast<NSLayoutConstraint>(made->elements()[0]));
    view->removeConstraint(cast<NSLayoutConstraint>(made->elements()[0]));
    view->removeConstraint(nullptr);
    EXPECT_EQ(view->constraints()->count(), 1u);
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{0, 0, 30, infinity}));
}

TEST_F(LayoutConstraint, tellsThePeerOfTheViewThatItLimits) {
    TextToolkit toolkit;
    const auto outer = make<NSView>();
    outer->addSubview(view);
    view->ensurePeer();
    limit(view, "[self(20)]");
    EXPECT_EQ(toolkit.taken(), "layout\n");
    limit(outer, "[self(30)]");
    EXPECT_EQ(toolkit.taken(), "layout\n");
    outer->removeConstraint(cast<NSLayoutConstraint>(outer->constraints()->elements()[0]));
    EXPECT_EQ(toolkit.taken(), "layout\n");
    EXPECT_TRUE(view->translatesAutoresizingMaskIntoConstraints());
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    EXPECT_FALSE(view->translatesAutoresizingMaskIntoConstraints());
    EXPECT_EQ(toolkit.taken(), "layout\n");
}

TEST_F(LayoutConstraint, limitsTheSizeOfAView) {
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{0, 0, infinity, infinity}));
    limit(view, "[self(>=20)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{20, 0, infinity, infinity}));
    limit(view, "V:[self(30)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{20, 30, infinity, 30}));
    limit(view, "[self(>=15,<=40)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{20, 30, 40, 30}));
    limit(view, "V:[self(>=debt)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{20, 30, 40, 30}));
}

TEST_F(LayoutConstraint, givesWayToOneOfAHigherPriority) {
    limit(view, "[self(==10@low)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{10, 0, 10, infinity}));
    limit(view, "[self(>=20@750)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{20, 0, 20, infinity}));
    limit(view, "[self(>=30)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{30, 0, 30, infinity}));
}

TEST_F(LayoutConstraint, addedFirstWinsOverOneThatItCannotHoldWith) {
    const auto outer = make<NSView>();
    outer->addSubview(view);
    limit(outer, "[self(<=10)]");
    limit(view, "[self(>=50,<=20)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{50, 0, 50, infinity}));
    EXPECT_EQ(sizeLimitsOf(*outer), SizeLimits{});
    view->removeFromSuperview();
    limit(make<NSView>(), "[self(<=10)]");
    EXPECT_EQ(sizeLimitsOf(*view), (SizeLimits{50, 0, 50, infinity}));
}

} // namespace
} // namespace zr
