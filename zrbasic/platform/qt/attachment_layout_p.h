#pragma once

#include <zrbasic/platform/appkit/text_attachment.h>

#include <QFont>
#include <QString>
#include <QTextDocument>

#include <memory>
#include <vector>

namespace zr::qt {

/// An attachment's cell and the character that it stands for.
struct PlacedCell {
    int position = 0;
    Ref<NSTextAttachmentCell> cell;
};

/// A document of one paragraph, in the layout of which the cells, in the order of their places, have their room and are
/// drawn.
[[nodiscard]] std::unique_ptr<QTextDocument> documentWithCells(const QString& text, const QFont& font,
                                                               std::vector<PlacedCell> cells);

} // namespace zr::qt
