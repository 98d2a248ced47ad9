#pragma once

#include <zrbasic/platform/foundation/mutable_attributed_string.h>

#include <vector>

namespace zr {

class NSData;
class NSDictionary;
class NSLayoutManager;

/// The text that text views show: a change of it shows at once in all of them. Main thread only.
class ZR_EXPORT NSTextStorage : public NSMutableAttributedString {
    ZR_DECLARE_CLASS(NSTextStorage, NSMutableAttributedString)
  public:
    NSTextStorage();
    ~NSTextStorage() override;

    /// From HTML in UTF-8, read by the toolkit. Nothing is written to `attributes`, which may be null, as may `data`,
    /// which gives an empty text.
    id initWithHTML_documentAttributes(NSData* data, Ref<NSDictionary>* attributes);

    /// Those that lay the text out; a list of the moment. Never null.
    [[nodiscard]] Ref<NSArray> layoutManagers() const;

  protected:
    void didChange() override;

  private:
    friend class NSLayoutManager;

    std::vector<Weak<NSLayoutManager>> m_layoutManagers;
};

} // namespace zr
