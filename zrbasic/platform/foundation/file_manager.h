#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSArray;
class NSData;
class NSDictionary;
class NSError;
class NSString;

/// Files and directories by path. Relative paths start at the current directory.
///
/// A null or empty path, and one that holds U+0000, names nothing. An operation with an error argument gives zero when
/// it fails and puts an error of `NSCocoaErrorDomain` there unless the argument is null; nothing raises. Safe from any
/// thread, as far as the file system itself is.
class ZR_EXPORT NSFileManager : public NSObject {
    ZR_DECLARE_CLASS(NSFileManager, NSObject)

  public:
    ~NSFileManager() override;

    /// Borrowed: it lives as long as the process. Never null.
    [[nodiscard]] static NSFileManager* defaultManager();

    /// Whether something is there; a symbolic link counts as what it leads to, so a dangling one does not exist.
    [[nodiscard]] bool fileExistsAtPath(NSString* path) const;
    /// Also says, unless `isDirectory` is null, whether it is a directory; false when nothing is there.
    [[nodiscard]] bool fileExistsAtPath_isDirectory(NSString* path, bool* isDirectory) const;

    /// The bare names of a directory's entries, without "." and "..", in no particular order; null when the path is
    /// not a directory that can be read.
    [[nodiscard]] Ref<NSArray> contentsOfDirectoryAtPath_error(NSString* path, Ref<NSError>* error) const;
    /// Null when it is not a file that can be read.
    [[nodiscard]] Ref<NSData> contentsAtPath(NSString* path) const;

    /// Makes a file or overwrites one; null contents make an empty file, attributes other than null are ignored.
    bool createFileAtPath_contents_attributes(NSString* path, NSData* contents, NSDictionary* attributes) const;
    /// Makes a directory, with those above it when `withIntermediates` is set; only then is a directory that exists
    /// already a success. Attributes other than null are ignored.
    bool createDirectoryAtPath_withIntermediateDirectories_attributes_error(NSString* path, bool withIntermediates,
                                                                            NSDictionary* attributes,
                                                                            Ref<NSError>* error) const;
    /// Removes a file, a symbolic link (never what it leads to), or a directory with all it holds. Refuses the root
    /// and paths that end in "." or "..".
    bool removeItemAtPath_error(NSString* path, Ref<NSError>* error) const;

    /// Empty when there is none, because it was removed for example.
    [[nodiscard]] Ref<NSString> currentDirectoryPath() const;
    /// For the whole process. False, and nothing changed, when the path is not a directory that may be entered.
    bool changeCurrentDirectoryPath(NSString* path) const;
};

} // namespace zr
