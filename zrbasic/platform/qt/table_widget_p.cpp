#include <zrbasic/platform/qt/table_widget_p.h>

#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/qt/canvas_p.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/flat_scroll_bar_p.h>
#include <zrbasic/platform/qt/input_delivery_p.h>
#include <zrbasic/platform/qt/palette_p.h>
#include <zrbasic/platform/qt/table_model_p.h>
#include <zrbasic/platform/qt/text_layout_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <optional>
#include <utility>

namespace zr::qt {
namespace {

/// Left free on both sides of a text.
constexpr int padding = 4;

/// More than a screen can show of one cell; measuring all of a text that somebody sent would take its time.
constexpr int mostUnits = 1000;

QColor lineColor(const QPalette& palette) {
    QColor color = palette.color(QPalette::Text);
    color.setAlphaF(0.1F);
    return color;
}

/// How the letters of a text look that is the same from end to end.
struct Look {
    QFont font;
    QColor color;
};

/// None for a text that changes on the way, or that has pictures in it.
std::optional<Look> uniformLook(NSAttributedString* text, const Look& ordinary) {
    NSRange range{};
    const Ref<NSDictionary> attributes =
        text->length() > 0 ? text->attributesAtIndex_effectiveRange(0, &range) : nullptr;
    if (range.length < text->length() || (attributes && attributes->objectForKey(NSAttachmentAttributeName()))) {
        return {};
    }
    Look look = ordinary;
    if (!attributes) {
        return look;
    }
    const id font = attributes->objectForKey(NSFontAttributeName());
    const id color = attributes->objectForKey(NSForegroundColorAttributeName());
    const id underline = attributes->objectForKey(NSUnderlineStyleAttributeName());
    if (auto* const ownFont = cast<NSFont>(font)) {
        look.font = toQt(ownFont);
    }
    if (auto* const ownColor = cast<NSColor>(color)) {
        look.color = toQt(ownColor);
    }
    if (const auto* const style = cast<NSNumber>(underline)) {
        look.font.setUnderline(style->integerValue() != NSUnderlineStyleNone);
    }
    return look;
}

void drawLine(QPainter& painter, const QString& text, const Look& look, const QRect& rect, Qt::Alignment alignment) {
    painter.setFont(look.font);
    painter.setPen(look.color);
    const QString shown = painter.fontMetrics().elidedText(text.left(mostUnits), Qt::ElideRight, rect.width());
    painter.drawText(rect, static_cast<int>(alignment) | Qt::TextSingleLine, shown);
}

void drawStyled(QPainter& painter, NSAttributedString* text, const QRect& rect) {
    painter.translate(rect.topLeft());
    const NSSize size = NSMakeSize(rect.width(), rect.height());
    PainterCanvas canvas(painter, size, true);
    const double height = std::min(naturalSizeOf(text, 0).height, size.height);
    canvas.drawText(text, NSMakeRect(0, (size.height - height) / 2, size.width, height), true);
}

/// A menu runs a loop of its own, in which the widget may go that Qt is still in the middle of.
template <class Work>
void onceQtIsDone(Work work) {
    QMetaObject::invokeMethod(
        qApp, [work = std::move(work)] { duringEvent(work); }, Qt::QueuedConnection);
}

} // namespace

TableHeader::TableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setMinimumSectionSize(1);
    setStretchLastSection(false);
    setHighlightSections(false);
    setSectionsClickable(false);
    // A double click on an edge is to fit what is seen, not to read a thousand rows.
    setResizeContentsPrecision(0);
}

TableHeader::~TableHeader() = default;

QSize TableHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), fontMetrics().height() + 2 * padding};
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->fillRect(rect, palette().color(QPalette::Base));
    const QColor line = lineColor(palette());
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), line);
    painter->fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), line);
    const auto alignment = model()->headerData(section, orientation(), Qt::TextAlignmentRole).value<Qt::Alignment>();
    drawLine(*painter, model()->headerData(section, orientation(), Qt::DisplayRole).toString(),
             {font(), palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text)},
             rect.adjusted(padding, 0, -padding, 0), alignment);
}

void TableHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    // Where there are no columns the style would show what is behind all windows.
    const int end = length() - offset();
    const int left = viewport()->width() - end;
    if (left > 0) {
        QPainter painter(viewport());
        const QRect rest(isRightToLeft() ? 0 : end, 0, left, viewport()->height());
        painter.fillRect(rest, palette().color(QPalette::Base));
        painter.fillRect(QRect(rest.left(), rest.bottom(), rest.width(), 1), lineColor(palette()));
    }
}

void TableHeader::mousePressEvent(QMouseEvent* event) {
    const auto& shown = static_cast<const TableModel&>(*model());
    const Ref<NSTableView> table(shown.table());
    if (event->button() != Qt::RightButton || !table || !table->headerMenu()) {
        QHeaderView::mousePressEvent(event);
        return;
    }
    event->accept();
    const NSInteger column = shown.positionOf(logicalIndexAt(event->position().toPoint()));
    onceQtIsDone([weak = Weak<NSTableView>(table), column, press = translated(*event, *viewport()).event] {
        if (const Ref<NSTableView> told = weak.lock()) {
            told->userDidAskForHeaderMenu(column, press);
        }
    });
}

TableCellPainter::TableCellPainter(QObject* parent) : QStyledItemDelegate(parent) {}

TableCellPainter::~TableCellPainter() = default;

void TableCellPainter::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto& model = static_cast<const TableModel&>(*index.model());
    const TableCellContent content = model.content(index);
    const auto group = !option.state.testFlag(QStyle::State_Enabled) ? QPalette::Disabled
                       : option.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                     : QPalette::Inactive;
    painter->save();
    painter->setClipRect(option.rect);
    // Over the selection, which the table draws, so that a cell that lights up does so there too.
    if (content.backgroundColor) {
        painter->fillRect(option.rect, toQt(content.backgroundColor));
    }
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                      lineColor(option.palette));
    const Look ordinary{option.font, option.palette.color(group, QPalette::Text)};
    const QRect rect = option.rect.adjusted(padding, 0, -padding, 0);
    const auto look = content.styledText ? uniformLook(content.styledText, ordinary) : ordinary;
    if (look) {
        drawLine(*painter, toQt(content.text), *look, rect, alignmentOf(model.columnNumbered(index.column())));
    } else {
        drawStyled(*painter, content.styledText, rect);
    }
    painter->restore();
}

QSize TableCellPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QString text = toQt(static_cast<const TableModel&>(*index.model()).content(index).text).left(mostUnits);
    const QFontMetrics metrics(option.font);
    return {metrics.horizontalAdvance(text) + 2 * padding, metrics.height()};
}

TableWidget::TableWidget(std::shared_ptr<TableModel> model, QWidget* parent)
    : QTableView(parent), m_model(std::move(model)) {
    // It may lie in a window of somebody else's.
    dress(*this);
    setHorizontalHeader(new TableHeader(this));
    setModel(m_model.get());
    setItemDelegate(new TableCellPainter(this));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollBar(new FlatScrollBar(Qt::Vertical, this));
    setHorizontalScrollBar(new FlatScrollBar(Qt::Horizontal, this));
    auto* const corner = new QWidget(this);
    corner->setAutoFillBackground(true);
    corner->setBackgroundRole(QPalette::Base);
    setCornerWidget(corner);
    setFocusPolicy(Qt::ClickFocus);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

TableWidget::~TableWidget() = default;

bool TableWidget::viewportEvent(QEvent* event) {
    const Ref<NSTableView> told(table());
    if (told && event->type() == QEvent::MouseButtonPress && opensMenu(static_cast<const QMouseEvent&>(*event))) {
        event->accept();
        return true;
    }
    switch (told ? event->type() : QEvent::None) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            tellBeside(*told, translated(static_cast<const QMouseEvent&>(*event), *viewport()));
            break;
        case QEvent::Wheel:
            tellBeside(*told, translated(static_cast<const QWheelEvent&>(*event), *viewport()));
            break;
        default:
            break;
    }
    return QTableView::viewportEvent(event);
}

bool TableWidget::opensMenu(const QMouseEvent& event) {
    if (event.button() != Qt::RightButton || !table()->menu()) {
        return false;
    }
    const QModelIndex at = indexAt(event.position().toPoint());
    const NSInteger column = m_model->positionOf(at.column());
    onceQtIsDone([weak = Weak<NSTableView>(table()), column, row = NSInteger{at.row()},
                  press = translated(event, *viewport()).event] {
        if (const Ref<NSTableView> told = weak.lock()) {
            told->userDidAskForMenu(column, row, press);
        }
    });
    return true;
}

void TableWidget::keyPressEvent(QKeyEvent* event) {
    if (const Ref<NSTableView> told(table()); told) {
        tellBeside(*told, translated(*event, *this));
    }
    QTableView::keyPressEvent(event);
}

void TableWidget::initViewItemOption(QStyleOptionViewItem* option) const {
    QTableView::initViewItemOption(option);
    // A pale selection, so that texts keep their own colours on it.
    option->palette.setColor(QPalette::Highlight, toQt(NSColor::selectedContentBackgroundColor()));
}

NSTableView* TableWidget::table() const {
    return m_model->table();
}

void TableWidget::keyboardSearch(const QString&) {}

bool TableWidget::visibleRows(int& first, int& last) const {
    first = rowAt(0);
    last = rowAt(viewport()->height() - 1);
    if (last < 0) {
        last = m_model->rowCount() - 1;
    }
    return first >= 0 && first <= last;
}

QItemSelectionModel::SelectionFlags TableWidget::selectionCommand(const QModelIndex& index, const QEvent* event) const {
    const auto flags = QTableView::selectionCommand(index, event);
    if (!table() || table()->allowsEmptySelection()) {
        return flags;
    }
    // The only selected row must not be clicked away, neither by a second click nor by one into the empty space.
    const bool takesAway = flags & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle);
    const bool isTheOnlyOne = table()->numberOfSelectedRows() == 1 && table()->isRowSelected(index.row());
    return !index.isValid() || (takesAway && isTheOnlyOne) ? QItemSelectionModel::NoUpdate : flags;
}

bool TableWidget::focusNextPrevChild(bool next) {
    const Ref<NSWindow> window = table() ? table()->window() : nullptr;
    if (!window) {
        return QTableView::focusNextPrevChild(next);
    }
    const Ref<NSTableView> sender(table());
    duringEvent(
        [&] { send<void>(window, next ? "selectNextKeyView:"_sel : "selectPreviousKeyView:"_sel, sender.get()); });
    return true;
}

} // namespace zr::qt
