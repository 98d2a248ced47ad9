#include <zrbasic/platform/foundation/data.h>

#include "checks.h"

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>

namespace zr {
namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger hugeLength = std::numeric_limits<NSUInteger>::max();

class TemporaryFile {
  public:
    explicit TemporaryFile(std::string_view contents) {
        static int count = 0;
        const auto name = "zrbasic-data-test-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "-" +
                          std::to_string(++count);
        m_path = std::filesystem::temp_directory_path() / name;
        std::ofstream(m_path, std::ios::binary).write(contents.data(), static_cast<std::streamsize>(contents.size()));
    }
    ~TemporaryFile() { std::filesystem::remove(m_path); }

    [[nodiscard]] Ref<NSString> path() const { return NSString::fromUtf8(m_path.string()); }

  private:
    std::filesystem::path m_path;
};

TEST(DataMaking, copiesTheBytes) {
    char bytes[] = {'a', '\0', 'b'};
    const Ref<NSData> data = NSData::dataWithBytes_length(bytes, sizeof bytes);
    bytes[0] = 'x';
    EXPECT_EQ(data->length(), 3U);
    EXPECT_EQ(std::memcmp(data->bytes(), "a\0b", 3), 0);
    EXPECT_EQ(NSData::data()->length(), 0U);
    EXPECT_NE(NSData::data()->bytes(), nullptr);
    EXPECT_EQ(NSData::dataWithBytes_length(nullptr, 0)->length(), 0U);
    EXPECT_TRUE(NSData::dataWithData(data)->isEqual(data));
    EXPECT_EQ(raisedName([] { (void)NSData::dataWithBytes_length(nullptr, 1); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { (void)NSData::dataWithData(nullptr); }), NSInvalidArgumentException);
}

TEST(DataFiles, areReadWhole) {
    const std::string contents = std::string(200'000, 'x') + std::string(1, '\0') + "end";
    const TemporaryFile file(contents);
    const Ref<NSData> data = make<NSData>(&NSData::initWithContentsOfFile, file.path());
    ASSERT_TRUE(data);
    EXPECT_EQ(data->view(), contents);
    const TemporaryFile empty("");
    EXPECT_EQ(NSData::dataWithContentsOfFile(empty.path())->length(), 0U);
    EXPECT_TRUE(NSMutableData::dataWithContentsOfFile(file.path())->isEqualToData(data));
}

TEST(DataFiles, whatCannotBeReadIsNull) {
    const TemporaryFile file("x");
    EXPECT_FALSE(NSData::dataWithContentsOfFile("/no/such/file"_ns));
    EXPECT_FALSE(NSData::dataWithContentsOfFile("/"_ns)) << "a folder";
    EXPECT_FALSE(NSData::dataWithContentsOfFile(""_ns));
    EXPECT_FALSE(NSData::dataWithContentsOfFile(nullptr));
    const Ref<NSString> withZero = file.path()->stringByAppendingString(NSString::fromUtf16(std::u16string(1, u'\0')));
    EXPECT_FALSE(NSData::dataWithContentsOfFile(withZero)) << "a path is not cut at a zero";
}

TEST(DataParts, lieInside) {
    const Ref<NSData> data = NSData::fromBytes("abcdef");
    EXPECT_EQ(data->subdataWithRange({1, 3})->view(), "bcd");
    EXPECT_EQ(data->subdataWithRange({6, 0})->length(), 0U);
    EXPECT_EQ(raised([&] {
                  (void)data->subdataWithRange({2, hugeLength});
              }),
              "NSRangeException: *** -[NSData subdataWithRange:]: range {2, 18446744073709551615} exceeds data length "
              "6");
    EXPECT_EQ(raisedName([&] { (void)data->subdataWithRange({7, 0}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { (void)data->subdataWithRange({0, 7}); }), NSRangeException);
}

TEST(DataEquality, goesByBytes) {
    const Ref<NSData> data = NSData::fromBytes("abc");
    EXPECT_TRUE(data->isEqual(NSData::fromBytes("abc")));
    EXPECT_EQ(data->hash(), NSData::fromBytes("abc")->hash());
    EXPECT_TRUE(data->isEqual(NSMutableData::dataWithData(data)));
    EXPECT_FALSE(data->isEqual(NSData::fromBytes("abd")));
    EXPECT_FALSE(data->isEqual(NSData::fromBytes("ab")));
    EXPECT_FALSE(data->isEqual(nullptr));
    EXPECT_FALSE(data->isEqual(NSNull::null()));
    EXPECT_FALSE(data->isEqualToData(nullptr));
    EXPECT_FALSE(data->isEqual("abc"_ns));
    EXPECT_EQ(data->copy().get(), static_cast<NSObject*>(data.get()));
}

TEST(DataDescription, isHexadecimalInGroupsOfFour) {
    EXPECT_EQ(NSData::fromBytes("hello")->description()->utf8(), "<68656c6c 6f>");
    EXPECT_EQ(NSData::data()->description()->utf8(), "<>");
    EXPECT_EQ(NSData::fromBytes("\xFF\x01")->description()->utf8(), "<ff01>");
    EXPECT_EQ(NSData::fromBytes("abcd")->description()->utf8(), "<61626364>");
}

TEST(MutableData, changesInPlace) {
    const Ref<NSMutableData> data = NSMutableData::data();
    data->appendBytes_length("abc", 3);
    data->appendData(NSData::fromBytes("de"));
    data->appendData(nullptr);
    EXPECT_EQ(data->view(), "abcde");
    data->appendData(data);
    EXPECT_EQ(data->view(), "abcdeabcde");
    data->setLength(3);
    data->setLength(4);
    EXPECT_EQ(data->view(), std::string_view("abc\0", 4));
    data->replaceBytesInRange_withBytes({2, 4}, "wxyz");
    EXPECT_EQ(data->view(), "abwxyz") << "bytes past the end make it longer";
    static_cast<char*>(data->mutableBytes())[0] = 'A';
    EXPECT_EQ(data->view(), "Abwxyz");
}

TEST(MutableData, whatLiesOutsideRaisesAndChangesNothing) {
    const Ref<NSMutableData> data = NSMutableData::dataWithBytes_length("abc", 3);
    EXPECT_EQ(raisedName([&] { data->replaceBytesInRange_withBytes({4, 1}, "x"); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { data->replaceBytesInRange_withBytes({0, 1}, nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { data->appendBytes_length(nullptr, 2); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { data->setLength(hugeLength); }), NSInvalidArgumentException);
    EXPECT_EQ(data->view(), "abc");
}

TEST(MutableData, copiesNoLongerChange) {
    const Ref<NSMutableData> data = NSMutableData::dataWithBytes_length("abc", 3);
    const id copy = data->copy();
    const id second = data->mutableCopy();
    data->setLength(0);
    EXPECT_TRUE(copy->isEqual(NSData::fromBytes("abc")));
    EXPECT_FALSE(copy->isKindOfClass(NSMutableData::classObject()));
    EXPECT_TRUE(second->isEqual(copy));
    EXPECT_TRUE(second->isKindOfClass(NSMutableData::classObject()));
    EXPECT_EQ(send<NSUInteger>(copy, "length"_sel), 3U);
}

} // namespace
} // namespace zr
