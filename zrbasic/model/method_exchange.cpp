#include <zrbasic/model/method_exchange.h>

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

void methodExchangeImplementations(Class* ofClass, SEL first, SEL second) {
    method_exchangeImplementations(class_getInstanceMethod(ofClass, first), class_getInstanceMethod(ofClass, second));
}

ZR_GROUP(NSObject, ZRXMethodExchange) {
    is.receivingClassMethod<&methodExchangeImplementations>(
        "methodExchangeImplementationsWithOriginSelector:swizedSelector:");
}

} // namespace zr
