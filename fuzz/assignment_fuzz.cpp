#include "rule.h"

#include <zrbasic/model/assignment.h>
#include <zrbasic/model/observation.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/exception.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace zr;
using fuzz::rule;

namespace {

class Order : public NSObject {
    ZR_OBJECT(Order, NSObject)
  public:
    ZR_PROPERTY(Copied<NSString>, symbol, setSymbol)
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(double, change, setChange)
    ZR_PROPERTY(NSInteger, volume, setVolume)
    ZR_PROPERTY(bool, open, setOpen)
    ZR_READONLY(Ref<NSString>, code)
};

} // namespace

// Any reply fills a model: what cannot be taken raises the platform's exception, and observers hear of the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto reply = cast<NSDictionary>(NSJSONSerialization::objectWithText(text, 0, nullptr));
    if (reply == nullptr)
        return 0;
    const auto order = make<Order>();
    int heard = 0;
    addObserver_forKeyPath_withBlock(order, order, "price"_ns,
                                     [&heard](NSObject*, NSString*, NSObject*, NSObject*) { ++heard; });
    try {
        assignPropertiesFromDictionary_replacedKeys(order, reply, dictionary({{"s"_ns, "symbol"_ns}}));
    } catch (const NSException&) {
        return 0;
    }
    rule(heard <= 1, "one reply sets a property once");
    const id price = reply->objectForKey("price"_ns);
    rule(price == nullptr || valueForKey(order, "price"_ns) == price, "an object property holds what it was given");
    rule(order->code() == nullptr, "a property without a setter stays as it was");
    return 0;
}
