#pragma once

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <string>
#include <vector>

namespace zr::test {

/// The descriptions of the elements with a blank between them.
inline std::string elements(const Ref<NSArray>& list) {
    return list ? list->componentsJoinedByString(" "_ns)->utf8() : "no array";
}

/// An array of numbers, of whatever kind `Number` boxes as.
template <class List = NSArray, class Number>
Ref<List> numbers(const std::vector<Number>& values) {
    std::vector<id> boxed;
    boxed.reserve(values.size());
    for (const Number value : values) {
        boxed.push_back(box(value));
    }
    return List::fromElements(std::move(boxed));
}

/// 0, 1, 2 ... up to `count` - 1.
template <class List = NSArray>
Ref<List> countedTo(int count) {
    std::vector<int> values;
    for (int i = 0; i < count; ++i) {
        values.push_back(i);
    }
    return numbers<List>(values);
}

inline int intOf(NSObject* number) {
    return static_cast<NSNumber*>(number)->intValue();
}

/// Equal by number, while the hash is still that of the address: a class that forgot to override one of the two.
class Forgetful : public NSObject {
    ZR_OBJECT(Forgetful, NSObject)

  public:
    static id of(int number) {
        const Ref<Forgetful> made = make<Forgetful>();
        made->m_number = number;
        return made;
    }
    [[nodiscard]] bool isEqual(NSObject* other) const override {
        const auto* const forgetful = cast<Forgetful>(other);
        return forgetful && forgetful->m_number == m_number;
    }
    [[nodiscard]] Ref<NSString> description() const override { return box(m_number)->stringValue(); }

  private:
    int m_number = 0;
};

/// Says that it equals every string, of which no string knows.
class OneSided : public NSObject {
    ZR_OBJECT(OneSided, NSObject)

  public:
    [[nodiscard]] bool isEqual(NSObject* other) const override {
        return other == this || cast<NSString>(other) != nullptr;
    }
    [[nodiscard]] Ref<NSString> description() const override { return "?"_ns; }
};

} // namespace zr::test
