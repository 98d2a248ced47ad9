#pragma once

/// Marks what users of the library call; everything else stays hidden inside the shared library.
#define ZR_EXPORT [[gnu::visibility("default")]]
