#pragma once

#include <zrbasic/platform/appkit/view.h>

#include <functional>
#include <string>
#include <vector>

namespace controls {

/// One control in one state.
struct Specimen {
    /// Tells it from the others: "text-field/placeholder".
    std::string name;
    /// What the gallery writes beside it.
    std::string caption;
    zr::Ref<zr::NSView> view;
    /// Brings it into its state once it lies in a window that is shown; empty for one that is in it already.
    std::function<void()> pose;
    /// Only one control of a window can be edited, so the gallery as a whole poses the first of these alone.
    bool needsKeyboard = false;
};

/// Controls of one kind, under a heading.
struct Section {
    std::string title;
    std::vector<Specimen> specimens;
};

[[nodiscard]] Section textFields();
[[nodiscard]] Section secureFields();
[[nodiscard]] Section labels();
[[nodiscard]] Section messages();
[[nodiscard]] Section buttons();
[[nodiscard]] Section tables();
[[nodiscard]] Section scrollers();
[[nodiscard]] Section containers();
[[nodiscard]] Section images();

/// All of them, in the order of the gallery.
[[nodiscard]] std::vector<Section> allSections();

} // namespace controls
