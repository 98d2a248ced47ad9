#include <zrbasic/platform/foundation/file_manager.h>

#include "checks.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

namespace zr {

namespace {

namespace fs = std::filesystem;

/// Every test has a directory of its own.
class FileManager : public testing::Test {
  protected:
    FileManager() {
        std::string pattern = (fs::temp_directory_path() / "zrbasic-XXXXXX").string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        m_directory = pattern;
        m_home = fs::current_path();
    }
    ~FileManager() override {
        fs::current_path(m_home);
        fs::remove_all(m_directory);
    }

    [[nodiscard]] Ref<NSString> path(const char* name) const {
        return NSString::fromUtf8((m_directory / name).string());
    }
    /// The directory's entries in ascending order, one blank between them.
    [[nodiscard]] std::string entries(const char* name) const {
        const Ref<NSArray> names = files->contentsOfDirectoryAtPath_error(path(name), nullptr);
        return names ? names->sortedArrayUsingSelector("compare:"_sel)->componentsJoinedByString(" "_ns)->utf8()
                     : "no directory";
    }
    void touch(const char* name) const {
        ASSERT_TRUE(files->createFileAtPath_contents_attributes(path(name), nullptr, nullptr)) << name;
    }
    void makeDirectory(const char* name) const {
        ASSERT_TRUE(files->createDirectoryAtPath_withIntermediateDirectories_attributes_error(path(name), true, nullptr,
                                                                                              nullptr));
    }

    NSFileManager* const files = NSFileManager::defaultManager();
    fs::path m_directory;
    fs::path m_home;
};

TEST_F(FileManager, tellsWhatIsThere) {
    touch("file");
    makeDirectory("folder");
    bool isDirectory = true;
    EXPECT_TRUE(files->fileExistsAtPath(path("file")));
    EXPECT_TRUE(files->fileExistsAtPath_isDirectory(path("file"), &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_TRUE(files->fileExistsAtPath_isDirectory(path("folder"), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(files->fileExistsAtPath_isDirectory(path("nothing"), &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_TRUE(files->fileExistsAtPath_isDirectory(path("folder/"), nullptr));
}

TEST_F(FileManager, aLinkIsWhatItLeadsTo) {
    touch("file");
    fs::create_symlink(m_directory / "file", m_directory / "link");
    fs::create_symlink(m_directory / "nothing", m_directory / "dangling");
    EXPECT_TRUE(files->fileExistsAtPath(path("link")));
    EXPECT_FALSE(files->fileExistsAtPath(path("dangling")));
    EXPECT_EQ(entries(""), "dangling file link");
}

TEST_F(FileManager, oddPathsNameNothing) {
    touch("file");
    Ref<NSString> cut = NSString::fromUtf16(std::u16string(path("file")->view()) + u'\0' + u"x");
    for (NSString* const odd : {static_cast<NSString*>(nullptr), (""_ns).get(), cut.get()}) {
        bool isDirectory = true;
        EXPECT_FALSE(files->fileExistsAtPath_isDirectory(odd, &isDirectory));
        EXPECT_FALSE(isDirectory);
        EXPECT_FALSE(files->contentsOfDirectoryAtPath_error(odd, nullptr));
        EXPECT_FALSE(files->contentsAtPath(odd));
        EXPECT_FALSE(files->createFileAtPath_contents_attributes(odd, nullptr, nullptr));
        EXPECT_FALSE(
            files->createDirectoryAtPath_withIntermediateDirectories_attributes_error(odd, true, nullptr, nullptr));
        EXPECT_FALSE(files->removeItemAtPath_error(odd, nullptr));
        EXPECT_FALSE(files->changeCurrentDirectoryPath(odd));
    }
    EXPECT_EQ(entries(""), "file");
}

TEST_F(FileManager, listsBareNames) {
    touch("b");
    touch("a");
    makeDirectory("folder/inner");
    EXPECT_EQ(entries(""), "a b folder");
    EXPECT_EQ(entries("folder"), "inner");
    EXPECT_EQ(entries("folder/inner"), "");
    EXPECT_EQ(entries("a"), "no directory");
    EXPECT_EQ(entries("nothing"), "no directory");
}

TEST_F(FileManager, errorsNameThePlace) {
    Ref<NSError> error;
    EXPECT_FALSE(files->contentsOfDirectoryAtPath_error(path("nothing"), &error));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain()->utf8(), "NSCocoaErrorDomain");
    EXPECT_EQ(error->code(), 260);
    error = nullptr;
    EXPECT_FALSE(files->removeItemAtPath_error(path("nothing"), &error));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code(), 4);
    error = nullptr;
    EXPECT_FALSE(files->removeItemAtPath_error(nullptr, &error));
    EXPECT_TRUE(error);
}

TEST_F(FileManager, successLeavesTheErrorAlone) {
    const Ref<NSError> before = NSError::errorWithDomain_code_userInfo("mine"_ns, 1, nullptr);
    Ref<NSError> error = before;
    touch("file");
    EXPECT_TRUE(files->contentsOfDirectoryAtPath_error(path(""), &error));
    EXPECT_TRUE(files->removeItemAtPath_error(path("file"), &error));
    EXPECT_EQ(error.get(), before.get());
}

TEST_F(FileManager, filesKeepTheirBytes) {
    const Ref<NSData> bytes = NSData::fromBytes(std::string_view("a\0\xFF", 3));
    EXPECT_TRUE(files->createFileAtPath_contents_attributes(path("file"), bytes, nullptr));
    EXPECT_TRUE(bytes->isEqual(files->contentsAtPath(path("file"))));
    EXPECT_TRUE(files->createFileAtPath_contents_attributes(path("file"), nullptr, nullptr));
    EXPECT_EQ(files->contentsAtPath(path("file"))->length(), 0U);
    EXPECT_FALSE(files->contentsAtPath(path("nothing")));
    EXPECT_FALSE(files->contentsAtPath(path("")));
    EXPECT_FALSE(files->createFileAtPath_contents_attributes(path("no/such/file"), bytes, nullptr));
}

TEST_F(FileManager, makesDirectories) {
    const auto makes = [&](const char* name, bool withIntermediates) {
        return files->createDirectoryAtPath_withIntermediateDirectories_attributes_error(path(name), withIntermediates,
                                                                                         nullptr, nullptr);
    };
    EXPECT_TRUE(makes("one", false));
    EXPECT_FALSE(makes("one", false));
    EXPECT_TRUE(makes("one", true));
    EXPECT_FALSE(makes("two/three", false));
    EXPECT_TRUE(makes("two/three/", true));
    touch("file");
    EXPECT_FALSE(makes("file", true));
    EXPECT_FALSE(makes("file/below", true));
    EXPECT_EQ(entries(""), "file one two");
}

TEST_F(FileManager, removesDirectoriesWithAllTheyHold) {
    makeDirectory("folder/inner/deep");
    touch("folder/inner/deep/file");
    touch("folder/file");
    touch("beside");
    EXPECT_TRUE(files->removeItemAtPath_error(path("folder/"), nullptr));
    EXPECT_TRUE(files->removeItemAtPath_error(path("beside"), nullptr));
    EXPECT_EQ(entries(""), "");
    EXPECT_FALSE(files->removeItemAtPath_error(path("folder"), nullptr));
}

TEST_F(FileManager, removingALinkLeavesWhatItLeadsTo) {
    makeDirectory("kept");
    touch("kept/file");
    fs::create_directory_symlink(m_directory / "kept", m_directory / "link");
    makeDirectory("folder");
    fs::create_directory_symlink(m_directory / "kept", m_directory / "folder/link");
    fs::create_symlink(m_directory / "nothing", m_directory / "dangling");
    // A slash at the end would make the system look through the link.
    EXPECT_TRUE(files->removeItemAtPath_error(path("link/"), nullptr));
    EXPECT_TRUE(files->removeItemAtPath_error(path("folder"), nullptr));
    EXPECT_TRUE(files->removeItemAtPath_error(path("dangling"), nullptr));
    EXPECT_EQ(entries(""), "kept");
    EXPECT_EQ(entries("kept"), "file");
}

TEST_F(FileManager, refusesToRemoveTheGroundItStandsOn) {
    makeDirectory("folder");
    touch("folder/file");
    Ref<NSError> error;
    EXPECT_FALSE(files->removeItemAtPath_error(path("folder/."), &error));
    EXPECT_TRUE(error);
    EXPECT_FALSE(files->removeItemAtPath_error(path("folder/.."), nullptr));
    EXPECT_FALSE(files->removeItemAtPath_error(path("folder/./"), nullptr));
    ASSERT_TRUE(files->changeCurrentDirectoryPath(path("folder")));
    EXPECT_FALSE(files->removeItemAtPath_error("."_ns, nullptr));
    EXPECT_FALSE(files->removeItemAtPath_error(".."_ns, nullptr));
    EXPECT_FALSE(files->removeItemAtPath_error("//"_ns, nullptr));
    EXPECT_EQ(entries("folder"), "file");
}

TEST_F(FileManager, relativePathsStartAtTheCurrentDirectory) {
    makeDirectory("folder");
    touch("folder/file");
    ASSERT_TRUE(files->changeCurrentDirectoryPath(path("folder")));
    EXPECT_EQ(files->currentDirectoryPath()->utf8(), fs::canonical(m_directory / "folder").string());
    EXPECT_TRUE(files->fileExistsAtPath("file"_ns));
    EXPECT_TRUE(files->fileExistsAtPath("../folder/file"_ns));
    EXPECT_FALSE(files->changeCurrentDirectoryPath("file"_ns));
    EXPECT_FALSE(files->changeCurrentDirectoryPath("nothing"_ns));
    EXPECT_TRUE(files->fileExistsAtPath("file"_ns));
    EXPECT_TRUE(files->removeItemAtPath_error("file"_ns, nullptr));
    EXPECT_EQ(entries("folder"), "");
}

TEST_F(FileManager, namesMayBeAnyText) {
    const Ref<NSString> name = u"\u4EF7 \U0001F600.txt"_ns;
    const Ref<NSString> place = path("")->stringByAppendingPathComponent(name);
    EXPECT_TRUE(files->createFileAtPath_contents_attributes(place, nullptr, nullptr));
    const Ref<NSArray> names = files->contentsOfDirectoryAtPath_error(path(""), nullptr);
    EXPECT_TRUE(names->containsObject(name));
    EXPECT_TRUE(files->fileExistsAtPath(place));
    EXPECT_EQ(send<id>(NSFileManager::classObject(), "defaultManager"_sel).get(), files);
    EXPECT_TRUE(send<bool>(files, "fileExistsAtPath:"_sel, place));
}

} // namespace

} // namespace zr
