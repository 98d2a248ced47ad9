#include "same_name.h"

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

class Namesake : public NSObject {
    ZR_OBJECT(Namesake, NSObject)
  public:
    int number = 1;
    int describeYourself() { return number; }
    ZR_METHOD(describeYourself, "describeYourself")
};

TEST(ClassesOfOneName, areTwoWhenTheyAreOfTwoFiles) {
    const auto ours = make<Namesake>();
    const auto theirs = test::namesakeOfTheOtherFile();
    EXPECT_NE(object_getClass(ours), object_getClass(theirs));
    EXPECT_EQ(cast<Namesake>(theirs.get()), nullptr);
    EXPECT_EQ(cast<Namesake>(id(ours)), ours);
    EXPECT_EQ(send<int>(ours, "describeYourself"_sel), 1);
    EXPECT_EQ(send<int>(theirs, "describeYourself"_sel), 2);
}

} // namespace
} // namespace zr
