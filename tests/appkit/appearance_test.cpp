#include "appearance_testing.h"
#include "toolkit_testing.h"

#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace zr {
namespace {

using test::InAppearance;

/// "aqua" or "dark".
std::string effective() {
    return NSAppearance::currentDrawingAppearance()->name()->isEqual(NSAppearanceNameAqua()) ? "aqua" : "dark";
}

void setAppearance(NSString* name) {
    NSApplication::sharedApplication()->setAppearance(NSAppearance::appearanceNamed(name));
}

/// Writes down that it was told, and of which.
class ToldView : public NSView {
    ZR_OBJECT(ToldView, NSView)
  public:
    void viewDidChangeEffectiveAppearance() override {
        NSView::viewDidChangeEffectiveAppearance();
        *log += word + ' ' + effective() + ", ";
        if (whenTold) {
            const auto work = whenTold;
            work();
        }
    }

    std::string word;
    std::string* log = nullptr;
    std::function<void()> whenTold;
};

class Appearance : public testing::Test {
  protected:
    ~Appearance() override { setAppearance(nullptr); }

    Ref<ToldView> view(const char* word, NSView* in) {
        const Ref<ToldView> made = make<ToldView>();
        made->word = word;
        made->log = &m_log;
        in->addSubview(made);
        return made;
    }

    std::string told() { return std::exchange(m_log, {}); }

    const Ref<NSWindow> window = make<NSWindow>();
    const Ref<NSView> content = window->contentView();
    const Ref<ToldView> outer = view("outer", content);
    const Ref<ToldView> inner = view("inner", outer);
    const Ref<ToldView> next = view("next", content);
    std::string m_log;
};

TEST_F(Appearance, isOneOfTwoByName) {
    const Ref<NSAppearance> light = NSAppearance::appearanceNamed(NSAppearanceNameAqua());
    const Ref<NSAppearance> dark = NSAppearance::appearanceNamed(NSAppearanceNameDarkAqua());
    ASSERT_TRUE(light);
    ASSERT_TRUE(dark);
    EXPECT_EQ(light, NSAppearance::appearanceNamed("NSAppearanceNameAqua"_ns));
    EXPECT_EQ(dark, NSAppearance::appearanceNamed("NSAppearanceNameDarkAqua"_ns));
    EXPECT_TRUE(light->name()->isEqual(NSAppearanceNameAqua()));
    EXPECT_TRUE(dark->name()->isEqual(NSAppearanceNameDarkAqua()));
    EXPECT_TRUE(dark->isDark());
    EXPECT_FALSE(light->isDark());
    EXPECT_EQ(send<Ref<NSAppearance>>(NSAppearance::classObject(), "appearanceNamed:"_sel, dark->name().get()), dark);
}

TEST_F(Appearance, ofAnotherNameThereIsNone) {
    EXPECT_EQ(NSAppearance::appearanceNamed(nullptr), nullptr);
    EXPECT_EQ(NSAppearance::appearanceNamed(""_ns), nullptr);
    EXPECT_EQ(NSAppearance::appearanceNamed("DarkAqua"_ns), nullptr);
    EXPECT_EQ(NSAppearance::appearanceNamed("nsappearancenamedarkaqua"_ns), nullptr);
    EXPECT_EQ(NSAppearance::appearanceNamed(NSString::fromUtf16(std::u16string(100000, u'x'))), nullptr);
    EXPECT_TRUE(make<NSAppearance>()->name()->isEqual(NSAppearanceNameAqua()));
}

TEST_F(Appearance, isLightUntilItIsSet) {
    const auto application = NSApplication::sharedApplication();
    EXPECT_EQ(application->appearance(), nullptr);
    EXPECT_EQ(effective(), "aqua");
    const Ref<NSAppearance> dark = NSAppearance::appearanceNamed(NSAppearanceNameDarkAqua());
    application->setAppearance(dark);
    EXPECT_EQ(application->appearance(), dark);
    EXPECT_EQ(application->effectiveAppearance(), dark);
    EXPECT_EQ(effective(), "dark");
    send<void>(application, "setAppearance:"_sel, nullptr);
    EXPECT_EQ(application->appearance(), nullptr);
    EXPECT_EQ(effective(), "aqua");
}

TEST_F(Appearance, isToldFromTheOutsideToTheInside) {
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "outer dark, inner dark, next dark, ");
    setAppearance(NSAppearanceNameAqua());
    EXPECT_EQ(told(), "outer aqua, inner aqua, next aqua, ");
}

TEST_F(Appearance, thatIsTheSameAgainTellsNobody) {
    setAppearance(NSAppearanceNameAqua());
    setAppearance(nullptr);
    NSApplication::sharedApplication()->setAppearance(make<NSAppearance>());
    EXPECT_EQ(told(), "") << "all of them are light";
    setAppearance(NSAppearanceNameDarkAqua());
    told();
    inner->setNeedsDisplay(false);
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "");
    EXPECT_FALSE(inner->needsDisplay());
}

TEST_F(Appearance, hasEveryViewDrawnAgainHiddenOnesToo) {
    next->setHidden(true);
    for (const Ref<NSView>& one : {content, Ref<NSView>(outer), Ref<NSView>(inner), Ref<NSView>(next)}) {
        one->setNeedsDisplay(false);
    }
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_TRUE(content->needsDisplay());
    EXPECT_TRUE(outer->needsDisplay());
    EXPECT_TRUE(inner->needsDisplay());
    EXPECT_TRUE(next->needsDisplay());
}

TEST_F(Appearance, reachesAllWindowsAndTheButtonsInTheirTitleBars) {
    const auto titled = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {200, 100}},
                                       NSUInteger{NSWindowStyleMaskTitled | NSWindowStyleMaskClosable});
    const Ref<NSButton> button = titled->standardWindowButton(NSWindowCloseButton);
    const Ref<ToldView> second = view("second", titled->contentView());
    button->setNeedsDisplay(false);
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "outer dark, inner dark, next dark, second dark, ");
    EXPECT_TRUE(button->needsDisplay());
}

TEST_F(Appearance, doesNotReachAViewOutsideOfWindows) {
    const auto alone = make<NSView>();
    view("alone", alone);
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "outer dark, inner dark, next dark, ");
    content->addSubview(alone);
    EXPECT_EQ(told(), "") << "it asks when it is drawn";
}

TEST_F(Appearance, isNotToldToAViewThatIsRemovedMeanwhile) {
    outer->whenTold = [this] { next->removeFromSuperview(); };
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "outer dark, inner dark, ");
    outer->whenTold = [this] { outer->removeFromSuperview(); };
    setAppearance(nullptr);
    EXPECT_EQ(told(), "outer aqua, ") << "nor to those in one that takes itself away";
}

TEST_F(Appearance, isToldToWhatAViewPutsIntoItself) {
    outer->whenTold = [this] {
        view("late", outer);
        outer->whenTold = nullptr;
    };
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "outer dark, inner dark, late dark, next dark, ");
}

TEST_F(Appearance, thatIsSetWhileItIsToldIsTheOneThatAllHearOfLast) {
    outer->whenTold = [] {
        if (effective() == "dark") {
            setAppearance(nullptr);
        }
    };
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "outer dark, outer aqua, inner aqua, next aqua, ");
    EXPECT_EQ(effective(), "aqua");
}

TEST_F(Appearance, isToldToAllWhateverOneOfThemRaises) {
    outer->whenTold = [] { NSException::raise("first", "of two"); };
    inner->whenTold = [] { NSException::raise("second", "of two"); };
    next->setNeedsDisplay(false);
    try {
        setAppearance(NSAppearanceNameDarkAqua());
        ADD_FAILURE() << "nothing was raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), "first");
    }
    EXPECT_EQ(told(), "outer dark, inner dark, next dark, ");
    EXPECT_TRUE(next->needsDisplay());
    EXPECT_EQ(effective(), "dark");
    outer->whenTold = nullptr;
    inner->whenTold = nullptr;
}

TEST_F(Appearance, isToldToTheToolkitFirst) {
    class ListeningToolkit : public test::ToolkitInUse {
      public:
        explicit ListeningToolkit(std::string& of) : log(of) {}
        void appearanceChanged() override { log += "toolkit " + effective() + ", "; }
        std::string& log;
    };
    const ListeningToolkit toolkit(m_log);
    setAppearance(NSAppearanceNameDarkAqua());
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "toolkit dark, outer dark, inner dark, next dark, ");
}

TEST_F(Appearance, ofAClosedWindowReachesItAsWell) {
    outer->whenTold = [this] { window->close(); };
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(told(), "outer dark, inner dark, next dark, ");
    outer->whenTold = nullptr;
    setAppearance(nullptr);
    EXPECT_EQ(told(), "outer aqua, inner aqua, next aqua, ") << "it may be shown again";
}

// The roles

struct Role {
    const char* name;
    Ref<NSColor> (*color)();
};

constexpr Role roles[] = {
    {"labelColor", &NSColor::labelColor},
    {"secondaryLabelColor", &NSColor::secondaryLabelColor},
    {"disabledControlTextColor", &NSColor::disabledControlTextColor},
    {"placeholderTextColor", &NSColor::placeholderTextColor},
    {"linkColor", &NSColor::linkColor},
    {"separatorColor", &NSColor::separatorColor},
    {"windowBackgroundColor", &NSColor::windowBackgroundColor},
    {"textBackgroundColor", &NSColor::textBackgroundColor},
    {"controlColor", &NSColor::controlColor},
    {"controlAccentColor", &NSColor::controlAccentColor},
    {"selectedContentBackgroundColor", &NSColor::selectedContentBackgroundColor},
};

TEST_F(Appearance, givesEveryRoleAColourOfItsOwn) {
    for (const Role& role : roles) {
        SCOPED_TRACE(role.name);
        const Ref<NSColor> light = role.color();
        EXPECT_EQ(light, role.color());
        EXPECT_EQ(light->numberOfComponents(), 4);
        EXPECT_EQ(light->alphaComponent(), 1);
        const InAppearance dark(NSAppearanceNameDarkAqua());
        EXPECT_FALSE(role.color()->isEqual(light));
        EXPECT_EQ(send<Ref<NSColor>>(NSColor::classObject(), sel_registerName(role.name)), role.color());
    }
}

TEST_F(Appearance, doesNotChangeAColourThatWasAskedForBefore) {
    const Ref<NSColor> before = NSColor::labelColor();
    const double white = before->redComponent();
    setAppearance(NSAppearanceNameDarkAqua());
    EXPECT_EQ(before->redComponent(), white);
    EXPECT_GT(NSColor::labelColor()->redComponent(), white);
}

TEST_F(Appearance, isReadableInBoth) {
    struct Pair {
        const char* what;
        Ref<NSColor> (*text)();
        Ref<NSColor> (*behind)();
        double least;
    };
    const Pair pairs[] = {
        {"labels in windows", &NSColor::labelColor, &NSColor::windowBackgroundColor, 4.5},
        {"labels on buttons", &NSColor::labelColor, &NSColor::controlColor, 4.5},
        {"texts", &NSColor::labelColor, &NSColor::textBackgroundColor, 4.5},
        {"selected rows", &NSColor::labelColor, &NSColor::selectedContentBackgroundColor, 4.5},
        {"lesser labels", &NSColor::secondaryLabelColor, &NSColor::windowBackgroundColor, 4.5},
        {"links in texts", &NSColor::linkColor, &NSColor::textBackgroundColor, 4.5},
        {"links in windows", &NSColor::linkColor, &NSColor::windowBackgroundColor, 4.5},
        {"links in selected rows", &NSColor::linkColor, &NSColor::selectedContentBackgroundColor, 4.5},
        {"white on the accent", &NSColor::whiteColor, &NSColor::controlAccentColor, 4.5},
        {"placeholders", &NSColor::placeholderTextColor, &NSColor::textBackgroundColor, 3},
        {"what cannot be used", &NSColor::disabledControlTextColor, &NSColor::windowBackgroundColor, 2},
        {"the accent in windows", &NSColor::controlAccentColor, &NSColor::windowBackgroundColor, 3},
    };
    for (const Ref<NSString>& name : {NSAppearanceNameAqua(), NSAppearanceNameDarkAqua()}) {
        const InAppearance appearance(name);
        for (const Pair& pair : pairs) {
            SCOPED_TRACE(name->utf8() + ", " + pair.what);
            EXPECT_GE(test::contrast(test::luminance(pair.text()), test::luminance(pair.behind())), pair.least);
        }
    }
}

} // namespace
} // namespace zr
