#pragma once

#include <zrbasic/platform/appkit/toolkit.h>

#include <string>
#include <utility>
#include <vector>

namespace zr::test {

/// In use while it stands; the one before is in use again afterwards.
class ToolkitInUse : public Toolkit {
  public:
    ToolkitInUse() : m_before(setCurrentToolkit(this)) {}
    ~ToolkitInUse() override { setCurrentToolkit(m_before); }

  private:
    Toolkit* m_before;
};

/// A desktop with these screens.
class ScreensToolkit : public ToolkitInUse {
  public:
    explicit ScreensToolkit(std::vector<ScreenState> screens) : m_screens(std::move(screens)) {}

    std::vector<ScreenState> screens() override { return m_screens; }

  private:
    std::vector<ScreenState> m_screens;
};

/// A desktop with keyboard layouts.
class KeyboardToolkit : public ToolkitInUse {
  public:
    explicit KeyboardToolkit(std::vector<std::string> known = {}, NSInteger inUse = -1)
        : layouts(std::move(known)), current(inUse) {}

    std::vector<std::string> keyboardLayouts() override { return layouts; }
    NSInteger currentKeyboardLayout() override { return current; }
    void selectKeyboardLayout(NSInteger index) override {
        current = index;
        ++selections;
    }

    std::vector<std::string> layouts;
    NSInteger current;
    int selections = 0;
};

} // namespace zr::test
