#pragma once

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/types.h>

#include <string>
#include <string_view>

namespace zr {

class NSString;

/// A run of bytes. Never changes (but see `NSMutableData`), so it may be used from any thread.
///
/// A range that is not inside the bytes raises `NSRangeException`.
class ZR_EXPORT NSData : public NSObject {
    ZR_DECLARE_CLASS(NSData, NSObject)

  public:
    NSData();
    ~NSData() override;

    /// No bytes.
    [[nodiscard]] static Ref<NSData> data();
    /// A copy of the bytes; `bytes` may be null when `length` is 0, and raises `NSInvalidArgumentException` otherwise.
    [[nodiscard]] static Ref<NSData> dataWithBytes_length(const void* bytes, NSUInteger length);
    /// A copy of the other's bytes. Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] static Ref<NSData> dataWithData(NSData* other);
    /// The contents of the file; null when the path is null or the file cannot be read.
    [[nodiscard]] static Ref<NSData> dataWithContentsOfFile(NSString* path);
    /// A copy of the bytes of a C++ string.
    [[nodiscard]] static Ref<NSData> fromBytes(std::string_view bytes);

    id initWithBytes_length(const void* bytes, NSUInteger length);
    id initWithData(NSData* other);
    id initWithContentsOfFile(NSString* path);

    /// The first byte, borrowed while the object lives and, for a mutable one, is not changed. Never null.
    [[nodiscard]] const void* bytes() const { return m_bytes.data(); }
    /// All bytes, borrowed likewise.
    [[nodiscard]] std::string_view view() const { return m_bytes; }
    /// In bytes.
    [[nodiscard]] NSUInteger length() const { return m_bytes.size(); }
    [[nodiscard]] Ref<NSData> subdataWithRange(NSRange range) const;

    [[nodiscard]] bool isEqualToData(NSData* other) const;
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The bytes in lower-case hexadecimal, four to a group: "<68656c6c 6f>".
    [[nodiscard]] Ref<NSString> description() const override;
    [[nodiscard]] id copy() const override;
    [[nodiscard]] id mutableCopy() const override;

  protected:
    std::string m_bytes;
};

/// Bytes that can be changed in place. Must not be changed while another thread uses them.
class ZR_EXPORT NSMutableData : public NSData {
    ZR_DECLARE_CLASS(NSMutableData, NSData)

  public:
    NSMutableData();
    ~NSMutableData() override;

    [[nodiscard]] static Ref<NSMutableData> data();
    [[nodiscard]] static Ref<NSMutableData> dataWithBytes_length(const void* bytes, NSUInteger length);
    [[nodiscard]] static Ref<NSMutableData> dataWithData(NSData* other);
    [[nodiscard]] static Ref<NSMutableData> dataWithContentsOfFile(NSString* path);

    /// The first byte, to write to; borrowed until the length changes.
    [[nodiscard]] void* mutableBytes() { return m_bytes.data(); }
    /// Cuts off, or adds bytes of zero.
    void setLength(NSUInteger length);
    void appendBytes_length(const void* bytes, NSUInteger length);
    /// Null adds nothing.
    void appendData(NSData* other);
    void replaceBytesInRange_withBytes(NSRange range, const void* bytes);

    /// An immutable object of the present bytes.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
