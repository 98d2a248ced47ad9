#include <zrbasic/platform/qt/attachment_layout_p.h>

#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/qt/conversions_p.h>

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextCursor>

#include <algorithm>
#include <cmath>

namespace zr::qt {
namespace {

/// Far beyond every screen, and far below where Qt's line heights run over.
double bounded(double extent) {
    constexpr double most = 1 << 16;
    return std::isnan(extent) ? 0 : std::clamp(extent, -most, most);
}

/// Only what lines ask of a layout about the objects in them; the lines themselves are made by whoever has the document.
class CellLayout final : public QAbstractTextDocumentLayout {
  public:
    CellLayout(QTextDocument* document, std::vector<PlacedCell> cells)
        : QAbstractTextDocumentLayout(document), m_cells(std::move(cells)) {}

    void draw(QPainter*, const PaintContext&) override {}
    int hitTest(const QPointF&, Qt::HitTestAccuracy) const override { return -1; }
    int pageCount() const override { return 1; }
    QSizeF documentSize() const override { return {}; }
    QRectF frameBoundingRect(QTextFrame*) const override { return {}; }
    QRectF blockBoundingRect(const QTextBlock&) const override { return {}; }

  protected:
    void documentChanged(int, int, int) override {}

    void resizeInlineObject(QTextInlineObject object, int position, const QTextFormat&) override {
        const NSTextAttachmentCell* const cell = cellAt(position);
        const NSSize size = cell ? cell->cellSize() : NSZeroSize;
        const double up = cell ? bounded(cell->cellBaselineOffset().y) : 0;
        object.setWidth(std::max(0.0, bounded(size.width)));
        object.setAscent(std::max(0.0, bounded(size.height) + up));
        object.setDescent(std::max(0.0, -up));
    }

    void drawInlineObject(QPainter* painter, const QRectF& rect, QTextInlineObject object, int position,
                          const QTextFormat&) override {
        NSTextAttachmentCell* const cell = cellAt(position);
        const Ref<NSImage> image = cell ? cell->image() : nullptr;
        const Ref<NSBitmapImageRep> bitmap = image ? image->bestRepresentation() : nullptr;
        if (!bitmap) {
            return;
        }
        const NSSize size = cell->cellSize();
        const NSPoint offset = cell->cellBaselineOffset();
        const double baseline = rect.top() + object.ascent();
        painter->save();
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(QRectF(rect.left() + bounded(offset.x), baseline - bounded(offset.y) - bounded(size.height),
                                  bounded(size.width), bounded(size.height)),
                           imageOver(*bitmap));
        painter->restore();
    }

  private:
    NSTextAttachmentCell* cellAt(int position) const {
        const auto found = std::lower_bound(m_cells.begin(), m_cells.end(), position,
                                            [](const PlacedCell& cell, int place) { return cell.position < place; });
        return found != m_cells.end() && found->position == position ? found->cell.get() : nullptr;
    }

    std::vector<PlacedCell> m_cells;
};

} // namespace

std::unique_ptr<QTextDocument> documentWithCells(const QString& text, const QFont& font,
                                                 std::vector<PlacedCell> cells) {
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    document->setDefaultFont(font);
    document->setDocumentLayout(new CellLayout(document.get(), std::move(cells)));
    QTextCursor(document.get()).insertText(text);
    return document;
}

} // namespace zr::qt
