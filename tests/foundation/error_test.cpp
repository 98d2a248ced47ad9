#include <zrbasic/platform/foundation/error.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

TEST(Error, holdsWhatItWasMadeOf) {
    const Ref<NSDictionary> info = dictionary({{"key"_ns, box(1)}});
    const Ref<NSError> error = NSError::errorWithDomain_code_userInfo("Shop"_ns, -7, info);
    EXPECT_EQ(error->domain()->utf8(), "Shop");
    EXPECT_EQ(error->code(), -7);
    EXPECT_TRUE(error->userInfo()->isEqual(info));
    EXPECT_EQ(error->copy(), error);
}

TEST(Error, mayBeMadeOfNothing) {
    const Ref<NSError> error = NSError::errorWithDomain_code_userInfo(nullptr, 0, nullptr);
    EXPECT_FALSE(error->domain());
    EXPECT_FALSE(error->userInfo());
    EXPECT_TRUE(error->localizedDescription());
    EXPECT_TRUE(error->description());
    EXPECT_TRUE(error->isEqual(NSError::errorWithDomain_code_userInfo(nullptr, 0, nullptr)));
    EXPECT_EQ(error->hash(), NSError::errorWithDomain_code_userInfo(nullptr, 0, nullptr)->hash());
}

TEST(Error, describesItselfWithItsOwnTextOrWithDomainAndCode) {
    const Ref<NSDictionary> info = dictionary({{NSLocalizedDescriptionKey(), "Sold out."_ns}});
    const Ref<NSError> told = NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, info);
    EXPECT_EQ(told->localizedDescription()->utf8(), "Sold out.");
    EXPECT_EQ(told->description()->utf8(), "Error Domain=Shop Code=3 \"Sold out.\"");
    const Ref<NSError> untold = NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, nullptr);
    EXPECT_NE(untold->localizedDescription()->utf8().find("Shop error 3"), std::string::npos);
    const Ref<NSDictionary> odd = dictionary({{NSLocalizedDescriptionKey(), box(1)}});
    EXPECT_NE(NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, odd)->localizedDescription()->utf8().find("Shop"),
              std::string::npos);
}

TEST(Error, equalsAnErrorOfTheSameParts) {
    const Ref<NSDictionary> info = dictionary({{"key"_ns, box(1)}});
    const Ref<NSError> error = NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, info);
    EXPECT_TRUE(error->isEqual(NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, info)));
    EXPECT_EQ(error->hash(), NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, nullptr)->hash());
    EXPECT_FALSE(error->isEqual(NSError::errorWithDomain_code_userInfo("Shop"_ns, 4, info)));
    EXPECT_FALSE(error->isEqual(NSError::errorWithDomain_code_userInfo("Bank"_ns, 3, info)));
    EXPECT_FALSE(error->isEqual(NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, nullptr)));
    EXPECT_FALSE(error->isEqual("Shop"_ns));
    EXPECT_FALSE(error->isEqual(nullptr));
}

TEST(Error, keepsItsInfoWhenTheDictionaryChanges) {
    const Ref<NSMutableDictionary> info = NSMutableDictionary::dictionary();
    const Ref<NSError> error = NSError::errorWithDomain_code_userInfo("Shop"_ns, 3, info);
    info->setObject_forKey(box(1), "key"_ns);
    EXPECT_EQ(error->userInfo()->count(), 0U);
}

} // namespace
} // namespace zr
