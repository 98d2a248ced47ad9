#pragma once

#include "specimen.h"

#include <zrbasic/platform/appkit/window.h>

namespace controls {

/// A window with all specimens, in columns under their headings.
class Gallery {
  public:
    Gallery();
    ~Gallery();
    Gallery(const Gallery&) = delete;
    Gallery& operator=(const Gallery&) = delete;

    [[nodiscard]] const zr::Ref<zr::NSWindow>& window() const { return m_window; }
    /// Shows the window and brings the specimens into their states.
    void show();

  private:
    std::vector<Section> m_sections;
    zr::Ref<zr::NSWindow> m_window;
};

} // namespace controls
