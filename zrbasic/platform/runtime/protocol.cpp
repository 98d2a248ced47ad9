#include <zrbasic/platform/runtime/protocol.h>

#include <zrbasic/platform/runtime/runtime_p.h>

namespace zr {

Protocol::Protocol(std::string_view name) : m_name(name) {}

Protocol::~Protocol() = default;

Protocol* objc_getProtocol(std::string_view name) {
    return detail::Runtime::shared().protocolNamed(name, false);
}

const char* protocol_getName(const Protocol* protocol) {
    return protocol ? protocol->name().c_str() : "nil";
}

namespace detail {

Protocol* registerProtocol(std::string_view name) {
    return Runtime::shared().protocolNamed(name, true);
}

void* adoptedInterface(NSObject* object, const Protocol* protocol) {
    return Runtime::shared().interfaceOf(object, protocol);
}

} // namespace detail

} // namespace zr
