#include <zrbasic/platform/appkit/text_storage.h>

#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_DEFINE_CLASS(NSTextStorage) {
    is.method<&NSTextStorage::initWithHTML_documentAttributes>("initWithHTML:documentAttributes:");
    is.method<&NSTextStorage::layoutManagers>("layoutManagers");
}

NSTextStorage::NSTextStorage() = default;
NSTextStorage::~NSTextStorage() = default;

id NSTextStorage::initWithHTML_documentAttributes(NSData* data, Ref<NSDictionary>*) {
    const Ref<NSString> html = data ? NSString::fromUtf8(data->view()) : NSString::string();
    const Ref<NSAttributedString> text = currentToolkit().attributedStringFromHTML(html);
    return initWithAttributedString(text);
}

Ref<NSArray> NSTextStorage::layoutManagers() const {
    std::vector<id> managers;
    for (const Weak<NSLayoutManager>& manager : m_layoutManagers) {
        if (id kept = manager.lock()) {
            managers.push_back(std::move(kept));
        }
    }
    return NSArray::fromElements(std::move(managers));
}

void NSTextStorage::didChange() {
    if (m_layoutManagers.empty()) {
        return;
    }
    // A copy, because a view that is told may show another text from then on.
    const Ref<NSTextStorage> self(this);
    const std::vector<Weak<NSLayoutManager>> managers = m_layoutManagers;
    for (const Weak<NSLayoutManager>& manager : managers) {
        if (const Ref<NSLayoutManager> kept = manager.lock()) {
            kept->textDidChange();
        }
    }
}

} // namespace zr
