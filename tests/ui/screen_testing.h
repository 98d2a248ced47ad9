#pragma once

#include <zrbasic/platform/appkit/toolkit.h>

#include <vector>

namespace zr::test {

/// A toolkit with these screens, in use while it lives.
class ScreensToolkit : public Toolkit {
  public:
    explicit ScreensToolkit(std::vector<ScreenState> screens)
        : m_screens(std::move(screens)), m_before(setCurrentToolkit(this)) {}
    ~ScreensToolkit() override { setCurrentToolkit(m_before); }

    std::vector<ScreenState> screens() override { return m_screens; }

  private:
    std::vector<ScreenState> m_screens;
    Toolkit* m_before;
};

} // namespace zr::test
