#pragma once

#include <zrbasic/platform/runtime/class.h>

namespace zr {

/// A named set of operations that classes of any ancestry may adopt.
///
/// In C++ a protocol is an abstract class with `ZR_PROTOCOL(Name)` in it and a `ZR_PROTOCOL_METHOD` for every
/// operation that adopters answer as a message (see declare.h).
class ZR_EXPORT Protocol final : public NSObject {
  public:
    explicit Protocol(std::string_view name);
    ~Protocol() override;

    [[nodiscard]] const std::string& name() const { return m_name; }
    [[nodiscard]] Ref<NSString> description() const override;

  private:
    std::string m_name;
};

/// The protocol of that name; null when nobody has used one of that name yet.
[[nodiscard]] ZR_EXPORT Protocol* objc_getProtocol(std::string_view name);
[[nodiscard]] ZR_EXPORT const char* protocol_getName(const Protocol* protocol);

namespace detail {

/// The protocol record of that name, made on first use.
ZR_EXPORT Protocol* registerProtocol(std::string_view name);
ZR_EXPORT void* adoptedInterface(NSObject* object, const Protocol* protocol);

} // namespace detail

/// `object` seen through the protocol's C++ interface; null when its compiled class did not adopt the protocol.
///
/// A class that adopted it at run time conforms too, but has no C++ interface: send it messages instead.
template <class P>
[[nodiscard]] P* protocolCast(NSObject* object) {
    return object ? static_cast<P*>(detail::adoptedInterface(object, P::protocolObject())) : nullptr;
}

} // namespace zr
