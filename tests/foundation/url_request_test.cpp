#include <zrbasic/platform/foundation/url_request.h>

#include "listing.h"

#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/url.h>

#include <gtest/gtest.h>

namespace zr {

namespace {

using test::listing;

Ref<NSMutableURLRequest> request() {
    return NSMutableURLRequest::requestWithURL(NSURL::URLWithString("http://h/"_ns));
}

std::string field(NSURLRequest* of, NSString* name) {
    const Ref<NSString> value = of->valueForHTTPHeaderField(name);
    return value ? value->utf8() : "-";
}

TEST(URLRequest, asksToGetAUrl) {
    const Ref<NSURLRequest> made = NSURLRequest::requestWithURL(NSURL::URLWithString("http://h/"_ns));
    EXPECT_EQ(made->URL()->absoluteString()->utf8(), "http://h/");
    EXPECT_EQ(made->HTTPMethod()->utf8(), "GET");
    EXPECT_FALSE(made->HTTPBody());
    EXPECT_FALSE(made->allHTTPHeaderFields());
    EXPECT_EQ(field(made, "a"_ns), "-");
    EXPECT_FALSE(NSURLRequest::requestWithURL(nullptr)->URL());
    EXPECT_NE(made->description()->utf8().find("{ URL: http://h/ }"), std::string::npos);
}

TEST(URLRequest, holdsMethodAndBody) {
    const Ref<NSMutableURLRequest> made = request();
    const Ref<NSMutableString> method = NSMutableString::stringWithString("POST"_ns);
    made->setHTTPMethod(method);
    method->appendString("!"_ns);
    made->setHTTPBody(NSData::fromBytes("body"));
    made->setURL(nullptr);
    EXPECT_EQ(made->HTTPMethod()->utf8(), "POST");
    EXPECT_EQ(made->HTTPBody()->view(), "body");
    EXPECT_FALSE(made->URL());
    made->setHTTPMethod(nullptr);
    made->setHTTPBody(nullptr);
    EXPECT_EQ(made->HTTPMethod()->utf8(), "GET");
    EXPECT_FALSE(made->HTTPBody());
}

TEST(URLRequestFields, areReplacedAsAWhole) {
    const Ref<NSMutableURLRequest> made = request();
    made->setAllHTTPHeaderFields(dictionary({{"x-a"_ns, "1"_ns}, {"B"_ns, "2"_ns}}));
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "x-a=1 B=2");
    made->setAllHTTPHeaderFields(dictionary({{"C"_ns, "3"_ns}}));
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "C=3");
    made->setAllHTTPHeaderFields(NSDictionary::dictionary());
    EXPECT_EQ(made->allHTTPHeaderFields()->count(), 0U);
    made->setAllHTTPHeaderFields(nullptr);
    EXPECT_FALSE(made->allHTTPHeaderFields());
}

TEST(URLRequestFields, areFoundWithoutRegardToCase) {
    const Ref<NSMutableURLRequest> made = request();
    made->setAllHTTPHeaderFields(dictionary({{"X-Trace"_ns, "1"_ns}, {u"É"_ns, "2"_ns}}));
    EXPECT_EQ(field(made, "x-trace"_ns), "1");
    EXPECT_EQ(field(made, "X-TRACE"_ns), "1");
    EXPECT_EQ(field(made, "x_trace"_ns), "-");
    EXPECT_EQ(field(made, u"é"_ns), "-");
    EXPECT_EQ(field(made, ""_ns), "-");
    EXPECT_EQ(field(made, nullptr), "-");
}

TEST(URLRequestFields, keepTheLastOfNamesThatDifferInCase) {
    const Ref<NSMutableURLRequest> made = request();
    made->setAllHTTPHeaderFields(
        dictionary({{"X-A"_ns, "1"_ns}, {"B"_ns, "2"_ns}, {"x-a"_ns, "3"_ns}, {"X-a"_ns, "4"_ns}}));
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "B=2 X-a=4");
    EXPECT_EQ(field(made, "x-A"_ns), "4");
}

TEST(URLRequestFields, areStringsOnly) {
    const Ref<NSMutableURLRequest> made = request();
    made->setAllHTTPHeaderFields(
        dictionary({{"a"_ns, box(1)}, {box(2), "b"_ns}, {"c"_ns, NSNull::null()}, {"d"_ns, "4"_ns}, {"D"_ns, box(5)}}));
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "d=4");
}

TEST(URLRequestFields, areSetOneByOneWithCapitals) {
    const Ref<NSMutableURLRequest> made = request();
    made->setAllHTTPHeaderFields(dictionary({{"x-a"_ns, "1"_ns}, {"b"_ns, "2"_ns}}));
    made->setValue_forHTTPHeaderField("3"_ns, "X-A"_ns);
    made->setValue_forHTTPHeaderField("4"_ns, "content-type"_ns);
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "b=2 X-A=3 Content-Type=4");
    made->setValue_forHTTPHeaderField(nullptr, "B"_ns);
    made->setValue_forHTTPHeaderField(nullptr, "unknown"_ns);
    made->setValue_forHTTPHeaderField("x"_ns, nullptr);
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "X-A=3 Content-Type=4");
}

TEST(URLRequestFields, areAddedBehindAComma) {
    const Ref<NSMutableURLRequest> made = request();
    made->addValue_forHTTPHeaderField("a"_ns, "accept"_ns);
    made->addValue_forHTTPHeaderField("b"_ns, "ACCEPT"_ns);
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "Accept=a,b");
    made->addValue_forHTTPHeaderField(nullptr, "accept"_ns);
    made->addValue_forHTTPHeaderField("c"_ns, nullptr);
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "Accept=a,b");
}

TEST(URLRequestFields, doNotChangeWithTheDictionaryThatWasSet) {
    const Ref<NSMutableURLRequest> made = request();
    const Ref<NSMutableDictionary> fields = NSMutableDictionary::dictionary();
    const Ref<NSMutableString> value = NSMutableString::stringWithString("1"_ns);
    fields->setObject_forKey(value, "a"_ns);
    made->setAllHTTPHeaderFields(fields);
    fields->setObject_forKey("2"_ns, "b"_ns);
    value->appendString("0"_ns);
    EXPECT_EQ(listing(made->allHTTPHeaderFields()), "a=1");
}

TEST(URLRequestValues, areEqualByTheirContent) {
    const Ref<NSMutableURLRequest> a = request();
    const Ref<NSMutableURLRequest> b = request();
    EXPECT_TRUE(a->isEqual(b));
    EXPECT_EQ(a->hash(), b->hash());
    b->setHTTPMethod("PUT"_ns);
    EXPECT_FALSE(a->isEqual(b));
    a->setHTTPMethod("PUT"_ns);
    b->setHTTPBody(NSData::fromBytes("x"));
    EXPECT_FALSE(a->isEqual(b));
    EXPECT_FALSE(b->isEqual(a));
    a->setHTTPBody(NSData::fromBytes("x"));
    a->setValue_forHTTPHeaderField("1"_ns, "A"_ns);
    EXPECT_FALSE(a->isEqual(b));
    EXPECT_FALSE(a->isEqual(nullptr));
    EXPECT_FALSE(a->isEqual("x"_ns));
    EXPECT_EQ(NSURLRequest::requestWithURL(nullptr)->hash(), 0U);
}

TEST(URLRequestValues, areCopiedToBeChangedApart) {
    const Ref<NSMutableURLRequest> made = request();
    made->setValue_forHTTPHeaderField("1"_ns, "A"_ns);
    const id copied = made->copy();
    EXPECT_FALSE(copied->isKindOfClass(NSMutableURLRequest::classObject()));
    EXPECT_TRUE(copied->isEqual(made));
    EXPECT_EQ(copied->copy().get(), copied.get());
    const Ref<NSMutableURLRequest> twin(cast<NSMutableURLRequest>(id(copied->mutableCopy())));
    ASSERT_TRUE(twin);
    twin->setValue_forHTTPHeaderField("2"_ns, "A"_ns);
    EXPECT_EQ(field(made, "A"_ns), "1");
    EXPECT_EQ(field(twin, "A"_ns), "2");
}

TEST(URLRequestMessages, areAnsweredUnderTheirNames) {
    const id made = send<id>(NSMutableURLRequest::classObject(), "requestWithURL:"_sel, NSNull::null());
    EXPECT_FALSE(send<id>(made, "URL"_sel));
    send(made, "setURL:"_sel, NSURL::URLWithString("http://h"_ns));
    send(made, "setHTTPMethod:"_sel, "POST"_ns);
    send(made, "setHTTPBody:"_sel, NSData::fromBytes("x"));
    send(made, "setValue:forHTTPHeaderField:"_sel, "1"_ns, "a"_ns);
    send(made, "addValue:forHTTPHeaderField:"_sel, "2"_ns, "a"_ns);
    EXPECT_EQ(send<Ref<NSString>>(made, "valueForHTTPHeaderField:"_sel, "A"_ns)->utf8(), "1,2");
    EXPECT_EQ(send<Ref<NSString>>(made, "HTTPMethod"_sel)->utf8(), "POST");
    EXPECT_EQ(send<Ref<NSData>>(made, "HTTPBody"_sel)->view(), "x");
    send(made, "setAllHTTPHeaderFields:"_sel, "not a dictionary"_ns);
    EXPECT_FALSE(send<id>(made, "allHTTPHeaderFields"_sel));
}

} // namespace

} // namespace zr
