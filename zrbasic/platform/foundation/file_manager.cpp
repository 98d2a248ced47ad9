#include <zrbasic/platform/foundation/file_manager.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/string.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

namespace zr {

namespace {

namespace fs = std::filesystem;

/// The platform's numbers for what goes wrong with files, as far as they are told apart here.
enum ErrorCode : NSInteger {
    NoSuchFile = 4,
    ReadUnknown = 256,
    ReadNoPermission = 257,
    ReadNoSuchFile = 260,
    WriteUnknown = 512,
    WriteNoPermission = 513,
    WriteFileExists = 516,
    WriteOutOfSpace = 640,
};

enum class Access { Reading, Writing, Removing };

ErrorCode codeFor(std::error_code reason, Access access) {
    const bool reads = access == Access::Reading;
    if (reason == std::errc::no_such_file_or_directory) {
        return reads ? ReadNoSuchFile : NoSuchFile;
    }
    if (reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted) {
        return reads ? ReadNoPermission : WriteNoPermission;
    }
    if (reason == std::errc::file_exists) {
        return WriteFileExists;
    }
    if (reason == std::errc::no_space_on_device) {
        return WriteOutOfSpace;
    }
    return reads ? ReadUnknown : WriteUnknown;
}

void report(Ref<NSError>* error, std::error_code reason, Access access, NSString* path) {
    if (!error) {
        return;
    }
    const Ref<NSString> text = NSString::fromUtf8(reason.message());
    const id place(path);
    *error = NSError::errorWithDomain_code_userInfo(
        NSCocoaErrorDomain(), codeFor(reason, access),
        place ? dictionary({{NSLocalizedDescriptionKey(), text}, {"NSFilePath"_ns, place}})
              : dictionary({{NSLocalizedDescriptionKey(), text}}));
}

/// Null when the text cannot name a file: the system would silently end the path at a zero character.
std::optional<fs::path> pathFrom(NSString* text) {
    if (!text || text->length() == 0 || text->view().find(u'\0') != std::u16string_view::npos) {
        return std::nullopt;
    }
    return fs::path(text->utf8());
}

/// Without the slashes at its end, which would make a symbolic link stand for the directory that it leads to.
fs::path withoutTrailingSlash(fs::path path) {
    while (!path.has_filename() && path.has_relative_path()) {
        path = path.parent_path();
    }
    return path;
}

std::error_code notFound() {
    return std::make_error_code(std::errc::no_such_file_or_directory);
}

} // namespace

ZR_DEFINE_CLASS(NSFileManager) {
    is.classMethod<&NSFileManager::defaultManager>("defaultManager");
    is.method<&NSFileManager::fileExistsAtPath>("fileExistsAtPath:");
    is.method<&NSFileManager::fileExistsAtPath_isDirectory>("fileExistsAtPath:isDirectory:");
    is.method<&NSFileManager::contentsOfDirectoryAtPath_error>("contentsOfDirectoryAtPath:error:");
    is.method<&NSFileManager::contentsAtPath>("contentsAtPath:");
    is.method<&NSFileManager::createFileAtPath_contents_attributes>("createFileAtPath:contents:attributes:");
    is.method<&NSFileManager::createDirectoryAtPath_withIntermediateDirectories_attributes_error>(
        "createDirectoryAtPath:withIntermediateDirectories:attributes:error:");
    is.method<&NSFileManager::removeItemAtPath_error>("removeItemAtPath:error:");
    is.method<&NSFileManager::currentDirectoryPath>("currentDirectoryPath");
    is.method<&NSFileManager::changeCurrentDirectoryPath>("changeCurrentDirectoryPath:");
}

NSFileManager::~NSFileManager() = default;

NSFileManager* NSFileManager::defaultManager() {
    static NSFileManager* const shared = alloc<NSFileManager>().leak();
    return shared;
}

bool NSFileManager::fileExistsAtPath(NSString* path) const {
    return fileExistsAtPath_isDirectory(path, nullptr);
}

bool NSFileManager::fileExistsAtPath_isDirectory(NSString* path, bool* isDirectory) const {
    fs::file_status status;
    if (const auto place = pathFrom(path)) {
        std::error_code reason;
        status = fs::status(*place, reason);
    }
    if (isDirectory) {
        *isDirectory = fs::is_directory(status);
    }
    return fs::exists(status);
}

Ref<NSArray> NSFileManager::contentsOfDirectoryAtPath_error(NSString* path, Ref<NSError>* error) const {
    std::error_code reason = notFound();
    if (const auto place = pathFrom(path)) {
        std::vector<id> names;
        fs::directory_iterator entry(*place, reason);
        for (; !reason && entry != fs::directory_iterator(); entry.increment(reason)) {
            names.push_back(NSString::fromUtf8(entry->path().filename().string()));
        }
        if (!reason) {
            return NSArray::fromElements(std::move(names));
        }
    }
    report(error, reason, Access::Reading, path);
    return {};
}

Ref<NSData> NSFileManager::contentsAtPath(NSString* path) const {
    return pathFrom(path) ? NSData::dataWithContentsOfFile(path) : nullptr;
}

bool NSFileManager::createFileAtPath_contents_attributes(NSString* path, NSData* contents, NSDictionary*) const {
    const auto place = pathFrom(path);
    if (!place) {
        return false;
    }
    std::ofstream file(*place, std::ios::binary | std::ios::trunc);
    if (contents) {
        file << contents->view();
    }
    file.close();
    return !file.fail();
}

bool NSFileManager::createDirectoryAtPath_withIntermediateDirectories_attributes_error(NSString* path,
                                                                                       bool withIntermediates,
                                                                                       NSDictionary*,
                                                                                       Ref<NSError>* error) const {
    std::error_code reason = notFound();
    if (const auto place = pathFrom(path)) {
        const fs::path directory = withoutTrailingSlash(*place);
        reason.clear();
        const bool isNew =
            withIntermediates ? fs::create_directories(directory, reason) : fs::create_directory(directory, reason);
        if (!isNew && !reason) {
            std::error_code ignored;
            if (!withIntermediates || !fs::is_directory(directory, ignored)) {
                reason = std::make_error_code(std::errc::file_exists);
            }
        }
        if (!reason) {
            return true;
        }
    }
    report(error, reason, Access::Writing, path);
    return false;
}

bool NSFileManager::removeItemAtPath_error(NSString* path, Ref<NSError>* error) const {
    std::error_code reason = notFound();
    if (const auto place = pathFrom(path)) {
        const fs::path item = withoutTrailingSlash(*place);
        const fs::path name = item.filename();
        reason.clear();
        if (!item.has_filename() || name == "." || name == "..") {
            // The system would refuse these only after everything in them was gone.
            reason = std::make_error_code(std::errc::invalid_argument);
        } else if (fs::remove_all(item, reason) == 0 && !reason) {
            reason = notFound();
        }
        if (!reason) {
            return true;
        }
    }
    report(error, reason, Access::Removing, path);
    return false;
}

Ref<NSString> NSFileManager::currentDirectoryPath() const {
    std::error_code reason;
    return NSString::fromUtf8(fs::current_path(reason).string());
}

bool NSFileManager::changeCurrentDirectoryPath(NSString* path) const {
    const auto place = pathFrom(path);
    if (!place) {
        return false;
    }
    std::error_code reason;
    fs::current_path(*place, reason);
    return !reason;
}

} // namespace zr
