#include <zrbasic/platform/appkit/workspace.h>

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <utility>

namespace zr {

namespace {

/// Of `NSCocoaErrorDomain`.
enum LaunchError : NSInteger {
    UnsupportedScheme = 262,
    NotLoadable = 3584,
};

OpenURLHandler& openURLHandler() {
    static auto* const handler = new OpenURLHandler;
    return *handler;
}

bool isEqualToAnyCase(NSString* text, NSString* other) {
    return text && text->lowercaseString()->isEqual(other);
}

/// Null unless it is the URL of a file on this machine.
Ref<NSString> pathOfFile(NSURL* url) {
    if (!url || !isEqualToAnyCase(url->scheme(), "file"_ns)) {
        return nullptr;
    }
    const Ref<NSString> host = url->host();
    return !host || isEqualToAnyCase(host, "localhost"_ns) ? url->path() : nullptr;
}

void report(Ref<NSError>* error, LaunchError code) {
    if (error) {
        *error = NSError::errorWithDomain_code_userInfo(NSCocoaErrorDomain(), code, nullptr);
    }
}

} // namespace

ZR_DEFINE_CLASS(NSWorkspace) {
    is.classMethod<&NSWorkspace::sharedWorkspace>("sharedWorkspace");
    is.method<&NSWorkspace::openURL>("openURL:");
    is.method<&NSWorkspace::launchApplicationAtURL_options_configuration_error>(
        "launchApplicationAtURL:options:configuration:error:");
}

NSWorkspace::~NSWorkspace() = default;

Ref<NSWorkspace> NSWorkspace::sharedWorkspace() {
    static NSWorkspace* const workspace = make<NSWorkspace>().leak();
    return Ref<NSWorkspace>(workspace);
}

bool NSWorkspace::openURL(NSURL* url) {
    if (!url) {
        return false;
    }
    // A copy: the handler may set another one.
    const OpenURLHandler handler = openURLHandler();
    return handler ? handler(url) : currentToolkit().openURL(url);
}

bool NSWorkspace::launchApplicationAtURL_options_configuration_error(NSURL* url, NSUInteger, NSDictionary*,
                                                                     Ref<NSError>* error) {
    const Ref<NSString> path = pathOfFile(url);
    if (!path) {
        report(error, UnsupportedScheme);
        return false;
    }
    // The system would silently end the path at a zero character.
    const bool namesFile = path->length() != 0 && path->view().find(u'\0') == std::u16string_view::npos;
    if (!namesFile || !currentToolkit().launch(path)) {
        report(error, NotLoadable);
        return false;
    }
    return true;
}

OpenURLHandler setOpenURLHandler(OpenURLHandler handler) {
    return std::exchange(openURLHandler(), std::move(handler));
}

} // namespace zr
