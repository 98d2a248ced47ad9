#include <zrbasic/platform/foundation/data.h>

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/runtime/exception.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>

namespace zr {

namespace {

std::string_view requireBytes(const NSObject* self, std::string_view selector, const void* bytes, NSUInteger length) {
    if (length == 0) {
        return {};
    }
    if (bytes == nullptr) {
        detail::raiseNilArgument(self, selector);
    }
    return {static_cast<const char*>(bytes), length};
}

std::optional<std::string> contentsOfFile(const std::string& path) {
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, Closer> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        return std::nullopt;
    }
    // Read to the end rather than by the reported size, which devices and files that grow get wrong.
    std::string contents;
    std::string block(1U << 16, '\0');
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
        contents.append(block, 0, count);
    }
    // A folder opens like a file and fails only here.
    if (std::ferror(file.get()) != 0) {
        return std::nullopt;
    }
    return contents;
}

} // namespace

ZR_DEFINE_CLASS(NSData) {
    is.classMethod<&NSData::data>("data")
        .classMethod<&NSData::dataWithBytes_length>("dataWithBytes:length:")
        .classMethod<&NSData::dataWithData>("dataWithData:")
        .classMethod<&NSData::dataWithContentsOfFile>("dataWithContentsOfFile:")
        .method<&NSData::initWithBytes_length>("initWithBytes:length:")
        .method<&NSData::initWithData>("initWithData:")
        .method<&NSData::initWithContentsOfFile>("initWithContentsOfFile:")
        .method<&NSData::bytes>("bytes")
        .method<&NSData::length>("length")
        .method<&NSData::subdataWithRange>("subdataWithRange:")
        .method<&NSData::isEqualToData>("isEqualToData:");
}

NSData::NSData() = default;
NSData::~NSData() = default;

Ref<NSData> NSData::data() {
    static NSData* const empty = make<NSData>().leak();
    return empty;
}

Ref<NSData> NSData::dataWithBytes_length(const void* bytes, NSUInteger length) {
    return make<NSData>(&NSData::initWithBytes_length, bytes, length);
}

Ref<NSData> NSData::dataWithData(NSData* other) {
    return make<NSData>(&NSData::initWithData, other);
}

Ref<NSData> NSData::dataWithContentsOfFile(NSString* path) {
    return make<NSData>(&NSData::initWithContentsOfFile, path);
}

Ref<NSData> NSData::fromBytes(std::string_view bytes) {
    return dataWithBytes_length(bytes.data(), bytes.size());
}

id NSData::initWithBytes_length(const void* bytes, NSUInteger length) {
    m_bytes = requireBytes(this, "initWithBytes:length:", bytes, length);
    return id(this);
}

id NSData::initWithData(NSData* other) {
    if (other == nullptr) {
        detail::raiseNilArgument(this, "initWithData:");
    }
    m_bytes = other->m_bytes;
    return id(this);
}

id NSData::initWithContentsOfFile(NSString* path) {
    // The system's paths end at a zero byte; a longer name must not open the shorter one's file.
    if (path == nullptr || path->view().find(u'\0') != std::u16string_view::npos) {
        return nullptr;
    }
    auto contents = contentsOfFile(path->utf8());
    if (!contents) {
        return nullptr;
    }
    m_bytes = std::move(*contents);
    return id(this);
}

Ref<NSData> NSData::subdataWithRange(NSRange range) const {
    if (range.location > m_bytes.size() || range.length > m_bytes.size() - range.location) {
        NSException::raise(NSRangeException, "*** -[" + class_()->name() + " subdataWithRange:]: range {" +
                                                 std::to_string(range.location) + ", " + std::to_string(range.length) +
                                                 "} exceeds data length " + std::to_string(m_bytes.size()));
    }
    return fromBytes(view().substr(range.location, range.length));
}

bool NSData::isEqualToData(NSData* other) const {
    return other == this || (other != nullptr && other->m_bytes == m_bytes);
}

bool NSData::isEqual(NSObject* other) const {
    return isEqualToData(cast<NSData>(other));
}

NSUInteger NSData::hash() const {
    return std::hash<std::string_view>()(m_bytes);
}

Ref<NSString> NSData::description() const {
    constexpr char16_t digits[] = u"0123456789abcdef";
    std::u16string text = u"<";
    text.reserve(m_bytes.size() * 9 / 4 + 2);
    for (std::size_t i = 0; i < m_bytes.size(); ++i) {
        if (i != 0 && i % 4 == 0) {
            text.push_back(u' ');
        }
        const auto byte = static_cast<unsigned char>(m_bytes[i]);
        text.push_back(digits[byte / 16]);
        text.push_back(digits[byte % 16]);
    }
    text.push_back(u'>');
    return NSString::fromUtf16(std::move(text));
}

id NSData::copy() const {
    return id(const_cast<NSData*>(this));
}

id NSData::mutableCopy() const {
    return make<NSMutableData>(&NSData::initWithBytes_length, m_bytes.data(), m_bytes.size());
}

ZR_DEFINE_CLASS(NSMutableData) {
    is.classMethod<&NSMutableData::data>("data")
        .classMethod<&NSMutableData::dataWithBytes_length>("dataWithBytes:length:")
        .classMethod<&NSMutableData::dataWithData>("dataWithData:")
        .classMethod<&NSMutableData::dataWithContentsOfFile>("dataWithContentsOfFile:")
        .method<&NSMutableData::setLength>("setLength:")
        .method<&NSMutableData::appendBytes_length>("appendBytes:length:")
        .method<&NSMutableData::appendData>("appendData:")
        .method<&NSMutableData::replaceBytesInRange_withBytes>("replaceBytesInRange:withBytes:");
}

NSMutableData::NSMutableData() = default;
NSMutableData::~NSMutableData() = default;

Ref<NSMutableData> NSMutableData::data() {
    return make<NSMutableData>();
}

Ref<NSMutableData> NSMutableData::dataWithBytes_length(const void* bytes, NSUInteger length) {
    return make<NSMutableData>(&NSData::initWithBytes_length, bytes, length);
}

Ref<NSMutableData> NSMutableData::dataWithData(NSData* other) {
    return make<NSMutableData>(&NSData::initWithData, other);
}

Ref<NSMutableData> NSMutableData::dataWithContentsOfFile(NSString* path) {
    return make<NSMutableData>(&NSData::initWithContentsOfFile, path);
}

void NSMutableData::setLength(NSUInteger length) {
    if (length > m_bytes.max_size()) {
        NSException::raise(NSInvalidArgumentException,
                           "*** -[" + class_()->name() + " setLength:]: absurd length: " + std::to_string(length));
    }
    m_bytes.resize(length);
}

void NSMutableData::appendBytes_length(const void* bytes, NSUInteger length) {
    m_bytes += requireBytes(this, "appendBytes:length:", bytes, length);
}

void NSMutableData::appendData(NSData* other) {
    if (other != nullptr) {
        m_bytes += other->view();
    }
}

void NSMutableData::replaceBytesInRange_withBytes(NSRange range, const void* bytes) {
    const std::string_view added = requireBytes(this, "replaceBytesInRange:withBytes:", bytes, range.length);
    if (range.location > m_bytes.size()) {
        NSException::raise(NSRangeException, "*** -[" + class_()->name() + " replaceBytesInRange:withBytes:]: range {" +
                                                 std::to_string(range.location) + ", " + std::to_string(range.length) +
                                                 "} exceeds data length " + std::to_string(m_bytes.size()));
    }
    // Bytes past the end make the object longer.
    m_bytes.replace(range.location, std::min<NSUInteger>(range.length, m_bytes.size() - range.location), added);
}

id NSMutableData::copy() const {
    return NSData::fromBytes(view());
}

} // namespace zr
