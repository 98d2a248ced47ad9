#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/ui/app.h>
#include <zrbasic/version.h>

#include <cstdio>
#include <cstring>
#include <string>

using namespace zr;

namespace {

class Quote : public NSObject {
    ZR_OBJECT(Quote, NSObject)

  public:
    ZR_PROPERTY(Copied<NSString>, symbol, setSymbol)
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
};

int failures = 0;

void check(bool passed, const char* what) {
    if (!passed) {
        std::fprintf(stderr, "failed: %s\n", what);
        ++failures;
    }
}

} // namespace

// What an application does with the library, in small: a class of its own, messages by name, an exception that crosses
// the border between library and application. It exits with zero only if all of it worked.
int main() {
    char expected[64];
    std::snprintf(expected, sizeof expected, "%d.%d.%d", ZRBASIC_VERSION_MAJOR, ZRBASIC_VERSION_MINOR,
                  ZRBASIC_VERSION_PATCH);
    check(std::strcmp(ZRBasicVersionString, expected) == 0, "headers and library are of one version");

    auto quote = make<Quote>();
    quote->setSymbol("BTCUSDT"_ns);
    quote->setPrice(box(2241.78));
    check(quote->symbol()->utf8() == "BTCUSDT", "a property of a class of ours");

    // Nothing here refers to the function behind this message; it is there if the whole library was linked.
    const auto price = send<Ref<NSNumber>>(quote, "valueForKey:"_sel, "price"_ns);
    check(price && price->doubleValue() == 2241.78, "key-value access by message");

    bool caught = false;
    try {
        send(quote, "noSuchOperation"_sel);
    } catch (const NSException& exception) {
        caught = exception.name() == NSInvalidArgumentException;
    }
    check(caught, "an exception of the library, caught by its type");

#if defined(CONSUMER_HAS_BUNDLE_INFORMATION)
    check("\"Desk\";\\n"_ns->isEqual(ZRXApp::appBundleName()), "the name that the build gave");
    check("1.4.0"_ns->isEqual(ZRXApp::appVersion()), "the version that the build gave");
    check("1873"_ns->isEqual(ZRXApp::appBuildVersion()), "the build's number");
#else
    check(!ZRXApp::appVersion(), "no version, as the build gave none");
#endif
    check(!NSBundle::mainBundle()->bundleIdentifier(), "no identifier, as the build gave none");
    check(ZRXApp::shared()->startupTimeInterval() > 1.6e12, "a moment of the start");
    return failures;
}
