#include <zrbasic/platform/foundation/uuid.h>

#include <zrbasic/platform/foundation/random.h>
#include <zrbasic/platform/foundation/string.h>

#include <cstring>

namespace zr {

namespace {

constexpr bool isDashAt(std::size_t position) noexcept {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

NSUUID::Bytes randomBytes() {
    NSUUID::Bytes bytes;
    arc4random_buf(bytes.data(), bytes.size());
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    return bytes;
}

std::string textOf(const NSUUID::Bytes& bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (const std::uint8_t byte : bytes) {
        if (isDashAt(text.size())) {
            text.push_back('-');
        }
        text.push_back(digits[byte / 16]);
        text.push_back(digits[byte % 16]);
    }
    return text;
}

int hexValue(char16_t c) noexcept {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    const int letter = c | 0x20;
    return letter >= 'a' && letter <= 'f' && c < 0x80 ? letter - 'a' + 10 : -1;
}

} // namespace

ZR_DEFINE_CLASS(NSUUID) {
    is.classMethod<&NSUUID::UUID>("UUID")
        .method<&NSUUID::initWithUUIDString>("initWithUUIDString:")
        .method<&NSUUID::UUIDString>("UUIDString");
}

NSUUID::NSUUID() = default;
NSUUID::~NSUUID() = default;

Ref<NSUUID> NSUUID::UUID() {
    return make<NSUUID>();
}

id NSUUID::init() {
    m_bytes = randomBytes();
    return this;
}

id NSUUID::initWithUUIDString(NSString* text) {
    if (text == nullptr || text->length() != 36) {
        return nullptr;
    }
    const std::u16string_view digits = text->view();
    std::size_t count = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (isDashAt(i)) {
            if (digits[i] != u'-') {
                return nullptr;
            }
            continue;
        }
        const int value = hexValue(digits[i]);
        if (value < 0) {
            return nullptr;
        }
        m_bytes[count / 2] = static_cast<std::uint8_t>(m_bytes[count / 2] << 4 | value);
        ++count;
    }
    return this;
}

id NSUUID::initWithUUIDBytes(const Bytes& bytes) {
    m_bytes = bytes;
    return this;
}

Ref<NSString> NSUUID::UUIDString() const {
    return NSString::stringWithUTF8String(textOf(m_bytes).c_str());
}

bool NSUUID::isEqual(NSObject* other) const {
    const NSUUID* const identifier = cast<NSUUID>(other);
    return identifier != nullptr && identifier->m_bytes == m_bytes;
}

NSUInteger NSUUID::hash() const {
    // The bytes are random already; both halves are taken for identifiers made otherwise.
    std::uint64_t halves[2];
    std::memcpy(halves, m_bytes.data(), sizeof halves);
    return halves[0] ^ (halves[1] * 0x9E3779B97F4A7C15U);
}

Ref<NSString> NSUUID::description() const {
    return UUIDString();
}

id NSUUID::copy() const {
    return id(const_cast<NSUUID*>(this));
}

namespace detail {

std::string randomUUIDText() {
    return textOf(randomBytes());
}

} // namespace detail

} // namespace zr
