#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <functional>

namespace zr {

class NSDictionary;
class NSError;
class NSURL;

/// How a program is started; a sum of these.
enum NSWorkspaceLaunchOptions : NSUInteger {
    /// Also when the program is running already.
    NSWorkspaceLaunchNewInstance = 0x80000,
};

/// What the desktop does for an application: opens addresses, starts programs. There is one. Main thread only.
class ZR_EXPORT NSWorkspace final : public NSObject {
    ZR_DECLARE_CLASS(NSWorkspace, NSObject)
  public:
    ~NSWorkspace() override;

    /// The same object every time. Never null.
    [[nodiscard]] static Ref<NSWorkspace> sharedWorkspace();

    /// Opens the address with the program that the user has for it. False when it could not be tried; for null, without
    /// asking anybody.
    virtual bool openURL(NSURL* url);

    /// Starts the program file that a file URL leads to, as a process of its own that outlasts this one, without
    /// arguments. False when it could not be started, with an error of `NSCocoaErrorDomain` unless `error` is null.
    ///
    /// It is always a new instance, whatever `options` say; `configuration` is for things that this desktop does not
    /// know and may be null.
    virtual bool launchApplicationAtURL_options_configuration_error(NSURL* url, NSUInteger options,
                                                                    NSDictionary* configuration, Ref<NSError>* error);
};

/// Opens an address and says whether that could be tried.
using OpenURLHandler = std::function<bool(NSURL* url)>;

/// Lets `handler` open addresses instead of the desktop, until another one is set; an empty handler leaves them to the
/// desktop, as at first. Gives the one before. The address is never null. Main thread only.
ZR_EXPORT OpenURLHandler setOpenURLHandler(OpenURLHandler handler);

} // namespace zr
