#pragma once

#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/foundation/array.h>

namespace replay {

/// A table with a column for everything that the report says of an instrument.
[[nodiscard]] zr::Ref<zr::NSTableView> instrumentTable();

/// The same as the user left it. Null and damaged layouts leave the columns as they are.
[[nodiscard]] zr::Ref<zr::NSTableView> instrumentTable(zr::NSArray* savedLayout);

} // namespace replay
