#include <zrbasic/platform/foundation/json_serialization.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/json_reader_p.h>
#include <zrbasic/platform/foundation/json_writer_p.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

namespace {

void report(Ref<NSError>* error, NSInteger code, const std::string& description, std::size_t offset) {
    if (!error) {
        return;
    }
    const auto details = NSMutableDictionary::dictionary();
    details->setObject_forKey(NSString::fromUtf8(description), NSLocalizedDescriptionKey());
    if (offset != detail::JsonFault::nowhere) {
        details->setObject_forKey(box(static_cast<NSUInteger>(offset)), NSJSONSerializationErrorIndex());
    }
    *error = NSError::errorWithDomain_code_userInfo(NSCocoaErrorDomain(), code, details);
}

void reportReading(Ref<NSError>* error, const detail::JsonFault& fault) {
    std::string description = "The text is not valid JSON: " + fault.reason;
    if (fault.offset != detail::JsonFault::nowhere) {
        description += ", at byte " + std::to_string(fault.offset);
    }
    report(error, NSPropertyListReadCorruptError, description + '.', fault.offset);
}

} // namespace

Ref<NSString> NSJSONSerializationErrorIndex() {
    return "NSJSONSerializationErrorIndex"_ns;
}

NSJSONSerialization::~NSJSONSerialization() = default;

id NSJSONSerialization::objectWithText(std::string_view text, NSUInteger options, Ref<NSError>* error,
                                       std::size_t readable) {
    detail::JsonFault fault;
    id object = detail::readJson(text, readable, options, fault);
    if (!object) {
        reportReading(error, fault);
    }
    return object;
}

id NSJSONSerialization::JSONObjectWithData_options_error(NSData* data, NSUInteger options, Ref<NSError>* error) {
    if (!data) {
        reportReading(error, {"there is no data", detail::JsonFault::nowhere});
        return nullptr;
    }
    return objectWithText(data->view(), options, error);
}

std::string NSJSONSerialization::textWithObject(NSObject* object, NSUInteger options, Ref<NSError>* error) {
    std::string json;
    const std::string fault = detail::writeJson(object, options, json);
    if (!fault.empty()) {
        report(error, NSPropertyListWriteInvalidError, "The object cannot be written as JSON: " + fault + '.',
               detail::JsonFault::nowhere);
        json.clear();
    }
    return json;
}

Ref<NSData> NSJSONSerialization::dataWithJSONObject_options_error(NSObject* object, NSUInteger options,
                                                                  Ref<NSError>* error) {
    const std::string json = textWithObject(object, options, error);
    // No object has an empty text.
    return json.empty() ? nullptr : NSData::fromBytes(json);
}

bool NSJSONSerialization::isValidJSONObject(NSObject* object) {
    std::string json;
    return detail::writeJson(object, 0, json).empty();
}

ZR_DEFINE_CLASS(NSJSONSerialization) {
    is.classMethod<&NSJSONSerialization::JSONObjectWithData_options_error>("JSONObjectWithData:options:error:");
    is.classMethod<&NSJSONSerialization::dataWithJSONObject_options_error>("dataWithJSONObject:options:error:");
    is.classMethod<&NSJSONSerialization::isValidJSONObject>("isValidJSONObject:");
}

} // namespace zr
