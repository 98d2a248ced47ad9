#include <zrbasic/platform/appkit/table_column.h>

#include <zrbasic/platform/appkit/table_view.h>

#include <algorithm>
#include <utility>

namespace zr {

namespace {

double limit(double width) {
    return width > 0 ? width : 0;
}

} // namespace

ZR_DEFINE_CLASS(NSTableColumn) {
    is.method<&NSTableColumn::initWithIdentifier>("initWithIdentifier:");
    is.method<&NSTableColumn::identifier>("identifier");
    is.method<&NSTableColumn::setIdentifier>("setIdentifier:");
    is.method<&NSTableColumn::title>("title");
    is.method<&NSTableColumn::setTitle>("setTitle:");
    is.method<&NSTableColumn::alignment>("alignment");
    is.method<&NSTableColumn::setAlignment>("setAlignment:");
    is.method<&NSTableColumn::width>("width");
    is.method<&NSTableColumn::setWidth>("setWidth:");
    is.method<&NSTableColumn::minWidth>("minWidth");
    is.method<&NSTableColumn::setMinWidth>("setMinWidth:");
    is.method<&NSTableColumn::maxWidth>("maxWidth");
    is.method<&NSTableColumn::setMaxWidth>("setMaxWidth:");
    is.method<&NSTableColumn::isHidden>("isHidden");
    is.method<&NSTableColumn::setHidden>("setHidden:");
    is.method<&NSTableColumn::tableView>("tableView");
}

NSTableColumn::NSTableColumn() = default;
NSTableColumn::~NSTableColumn() = default;

id NSTableColumn::initWithIdentifier(NSString* identifier) {
    setIdentifier(identifier);
    return id(this);
}

void NSTableColumn::setIdentifier(NSString* identifier) {
    m_identifier = identifier ? Ref<NSString>(cast<NSString>(identifier->copy())) : nullptr;
}

void NSTableColumn::setTitle(NSString* title) {
    m_title = title ? Ref<NSString>(cast<NSString>(title->copy())) : ""_ns;
    looksChanged();
}

void NSTableColumn::setAlignment(NSTextAlignment alignment) {
    if (m_alignment != alignment) {
        m_alignment = alignment;
        looksChanged();
    }
}

void NSTableColumn::setWidth(double width) {
    const double narrowed = std::min(width, m_maxWidth);
    const double before = std::exchange(m_width, narrowed > m_minWidth ? narrowed : m_minWidth);
    if (m_width == before) {
        return;
    }
    if (const Ref<NSTableView> table = tableView()) {
        table->columnWasResized(this, before);
    }
}

void NSTableColumn::setMinWidth(double width) {
    m_minWidth = limit(width);
    setWidth(m_width);
}

void NSTableColumn::setMaxWidth(double width) {
    m_maxWidth = limit(width);
    setWidth(m_width);
}

void NSTableColumn::setHidden(bool hidden) {
    if (m_hidden != hidden) {
        m_hidden = hidden;
        looksChanged();
    }
}

void NSTableColumn::looksChanged() {
    if (const Ref<NSTableView> table = tableView()) {
        table->columnsChanged();
    }
}

Ref<NSTableView> NSTableColumn::tableView() const {
    return m_tableView.lock();
}

} // namespace zr
