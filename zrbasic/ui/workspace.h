#pragma once

#include <zrbasic/platform/appkit/workspace.h>

#include <concepts>

namespace zr {

class NSString;

namespace detail {

ZR_EXPORT void openURLString(NSString* text);
ZR_EXPORT void openAddress(NSURL* url);

} // namespace detail

// NSWorkspace(ZRXHelper)
//
// Main thread only. Nothing says whether anything was opened.

/// Opens an address with the program that the user has for it. Text that is no URL, as one with a blank or a letter
/// beyond ASCII, opens nothing; so does null.
template <std::derived_from<NSWorkspace> T = NSWorkspace>
void zr_openURLString(NSString* text) {
    detail::openURLString(text);
}
template <std::derived_from<NSWorkspace> T = NSWorkspace>
void zr_openURL(NSURL* url) {
    detail::openAddress(url);
}

} // namespace zr
