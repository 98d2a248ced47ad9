#pragma once

#include "measuring_testing.h"

#include <zrbasic/platform/foundation/url.h>

#include <string>

namespace zr::test {

/// Letters are 6 points wide and lines 10 points high; addresses are written down instead of opened.
class TextToolkit : public MeasuringToolkit {
  public:
    TextToolkit() : MeasuringToolkit(6, {8, -2, 1}) {}

    Ref<NSAttributedString> attributedStringFromHTML(NSString* html) override {
        lastHTML = html->utf8();
        const auto text = "read: "_ns->stringByAppendingString(html);
        return readsNothing ? make<NSAttributedString>()
                            : make<NSAttributedString>(&NSAttributedString::initWithString, text);
    }
    bool openURL(NSURL* url) override {
        opened += url->absoluteString()->utf8() + ' ';
        return true;
    }

    bool readsNothing = false;
    std::string lastHTML;
    std::string opened;
};

} // namespace zr::test
