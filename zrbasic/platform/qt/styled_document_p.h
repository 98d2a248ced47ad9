#pragma once

#include <zrbasic/platform/foundation/attributed_string.h>

class QTextDocument;

namespace zr::qt {

/// Puts `text` into the document in place of what is there, with `padding` pixels left free at both ends of every
/// line. A place in the document is the place in the text. Images on text lines stand as their cells say.
void fillDocument(QTextDocument& document, NSAttributedString& text, double padding);

} // namespace zr::qt
