#include <zrbasic/platform/appkit/layout_manager.h>

#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/toolkit.h>

#include <algorithm>

namespace zr {
namespace {

/// Containers of at least this width never break a line, so that the text's own lines say all.
constexpr double endlessWidth = 1e7;

} // namespace

ZR_DEFINE_CLASS(NSTextContainer) {
    is.method<&NSTextContainer::containerSize>("containerSize");
    is.method<&NSTextContainer::setContainerSize>("setContainerSize:");
    is.method<&NSTextContainer::widthTracksTextView>("widthTracksTextView");
    is.method<&NSTextContainer::setWidthTracksTextView>("setWidthTracksTextView:");
    is.method<&NSTextContainer::heightTracksTextView>("heightTracksTextView");
    is.method<&NSTextContainer::setHeightTracksTextView>("setHeightTracksTextView:");
    is.method<&NSTextContainer::lineFragmentPadding>("lineFragmentPadding");
    is.method<&NSTextContainer::setLineFragmentPadding>("setLineFragmentPadding:");
    is.method<&NSTextContainer::textView>("textView");
    is.method<&NSTextContainer::setTextView>("setTextView:");
}

NSTextContainer::NSTextContainer() = default;
NSTextContainer::~NSTextContainer() = default;

NSSize NSTextContainer::containerSize() const {
    NSSize size = m_size;
    const Ref<NSTextView> view = m_view.lock();
    if (view && m_widthTracks) {
        size.width = view->frame().size.width;
    }
    if (view && m_heightTracks) {
        size.height = view->frame().size.height;
    }
    return size;
}

void NSTextContainer::setContainerSize(NSSize size) {
    m_size = size;
    changed();
}

void NSTextContainer::setWidthTracksTextView(bool tracks) {
    m_widthTracks = tracks;
    changed();
}

void NSTextContainer::setHeightTracksTextView(bool tracks) {
    m_heightTracks = tracks;
    changed();
}

void NSTextContainer::setLineFragmentPadding(double padding) {
    m_padding = padding;
    changed();
}

Ref<NSTextView> NSTextContainer::textView() const {
    return m_view.lock();
}

void NSTextContainer::setTextView(NSTextView* view) {
    m_view = Weak<NSTextView>(view);
}

void NSTextContainer::changed() {
    if (const Ref<NSTextView> view = m_view.lock()) {
        view->layoutChanged();
    }
}

ZR_DEFINE_CLASS(NSLayoutManager) {
    is.method<&NSLayoutManager::textStorage>("textStorage");
    is.method<&NSLayoutManager::replaceTextStorage>("replaceTextStorage:");
    is.method<&NSLayoutManager::ensureLayoutForTextContainer>("ensureLayoutForTextContainer:");
    is.method<&NSLayoutManager::usedRectForTextContainer>("usedRectForTextContainer:");
}

NSLayoutManager::NSLayoutManager() : m_storage(make<NSTextStorage>()) {
    m_storage->m_layoutManagers.push_back(Weak<NSLayoutManager>(this));
}

NSLayoutManager::~NSLayoutManager() {
    leaveStorage();
}

void NSLayoutManager::leaveStorage() {
    std::erase_if(m_storage->m_layoutManagers,
                  [this](const Weak<NSLayoutManager>& manager) { return manager.refersTo(this); });
}

Ref<NSTextStorage> NSLayoutManager::textStorage() const {
    return m_storage;
}

void NSLayoutManager::replaceTextStorage(NSTextStorage* storage) {
    const Ref<NSTextStorage> fresh = storage ? Ref<NSTextStorage>(storage) : make<NSTextStorage>();
    if (fresh == m_storage) {
        return;
    }
    leaveStorage();
    m_storage = fresh;
    m_storage->m_layoutManagers.push_back(Weak<NSLayoutManager>(this));
    textDidChange();
}

void NSLayoutManager::textDidChange() {
    m_measured = {};
    if (const Ref<NSTextView> view = m_view.lock()) {
        view->textWasReplaced();
    }
}

NSSize NSLayoutManager::usedSize(const NSTextContainer& container) {
    Toolkit& toolkit = currentToolkit();
    const NSSize size = container.containerSize();
    const double padding = container.lineFragmentPadding();
    if (m_measured.toolkit == &toolkit && m_measured.containerSize == size && m_measured.padding == padding) {
        return m_measured.used;
    }
    NSSize used;
    if (m_storage->length() != 0) {
        used = toolkit.naturalSizeOfText(m_storage, padding);
        if (size.width < endlessWidth && used.width > size.width) {
            used = {size.width, toolkit.heightOfText(m_storage, size.width, padding)};
        }
    }
    m_measured = {&toolkit, size, padding, used};
    return used;
}

void NSLayoutManager::ensureLayoutForTextContainer(NSTextContainer* container) {
    if (container) {
        static_cast<void>(usedSize(*container));
    }
}

NSRect NSLayoutManager::usedRectForTextContainer(NSTextContainer* container) {
    return container ? NSRect{NSZeroPoint, usedSize(*container)} : NSZeroRect;
}

void NSLayoutManager::setTextView(NSTextView* view) {
    m_view = Weak<NSTextView>(view);
}

} // namespace zr
