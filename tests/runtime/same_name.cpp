#include "same_name.h"

#include <zrbasic/platform/runtime/declare.h>

#include <string>

namespace zr {
namespace {

class Namesake : public NSObject {
    ZR_OBJECT(Namesake, NSObject)
  public:
    std::string text = "longer than the other one's number, so that a mistake shows";
    int describeYourself() { return 2; }
    ZR_METHOD(describeYourself, "describeYourself")
};

} // namespace

Ref<NSObject> test::namesakeOfTheOtherFile() {
    return make<Namesake>();
}

} // namespace zr
