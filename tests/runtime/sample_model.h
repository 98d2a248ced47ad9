#pragma once

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/declare.h>

#include <cstdint>
#include <string>

namespace zr::test {

/// A protocol with one operation.
class Listener {
    ZR_PROTOCOL(Listener)

  public:
    virtual bool heard(NSString* what) = 0;
    ZR_PROTOCOL_METHOD(heard, "heard:")
};

/// A model with a property of every kind.
class Sample : public NSObject, public Listener {
    ZR_OBJECT(Sample, NSObject, Listener)

  public:
    ZR_PROPERTY(Copied<NSString>, symbol, setSymbol)
    ZR_PROPERTY(Ref<NSString>, title, setTitle)
    ZR_PROPERTY(Ref<NSObject>, anything, setAnything)
    ZR_PROPERTY(Weak<NSObject>, owner, setOwner)
    ZR_PROPERTY(Ref<Sample>, next, setNext)
    ZR_PROPERTY(bool, isHidden, setHidden)
    ZR_PROPERTY(std::int8_t, tiny, setTiny)
    ZR_PROPERTY(std::uint8_t, tinyUnsigned, setTinyUnsigned)
    ZR_PROPERTY(std::int16_t, small, setSmall)
    ZR_PROPERTY(std::uint16_t, smallUnsigned, setSmallUnsigned)
    ZR_PROPERTY(std::int32_t, middle, setMiddle)
    ZR_PROPERTY(std::uint32_t, middleUnsigned, setMiddleUnsigned)
    ZR_PROPERTY(std::int64_t, large, setLarge)
    ZR_PROPERTY(std::uint64_t, largeUnsigned, setLargeUnsigned)
    ZR_PROPERTY(float, ratio, setRatio)
    ZR_PROPERTY(double, change, setChange)
    ZR_READONLY(Ref<NSString>, code)
    ZR_READONLY(int, revision)
    ZR_PROPERTY(int, URL, setURL)
    ZR_PROPERTY(int, level, putLevel)

    void prime(NSString* code) {
        m_code = code;
        m_revision = 7;
    }

    bool heard(NSString* what) override { return what && what->length() == 3; }

    int doubled(int value) const { return 2 * value; }
    ZR_METHOD(doubled, "doubled:")

    Ref<NSString> joined(NSString* first, NSString* second) const {
        return NSString::fromUtf8((first ? first->utf8() : "-") + (second ? second->utf8() : "-"));
    }
    ZR_METHOD(joined, "joined:with:")

    static Ref<NSString> greeting() { return "hello"_ns; }
    ZR_CLASS_METHOD(greeting, "greeting")
};

/// Redeclares a read-only property so that it can be set.
class SettableSample : public Sample {
    ZR_OBJECT(SettableSample, Sample)

  public:
    ZR_PROPERTY(Ref<NSString>, code, setCode)
};

/// Adds nothing.
class PlainSample : public Sample {
    ZR_OBJECT(PlainSample, Sample)
};

/// Appends one letter to a log when its life ends.
class Witness : public NSObject {
    ZR_OBJECT(Witness, NSObject)

  public:
    id initWithLog_mark(std::string* log, char mark) {
        m_log = log;
        m_mark = mark;
        return id(this);
    }

    ~Witness() override {
        if (m_log) {
            *m_log += m_mark;
        }
    }

    /// Let go of among the witness's own variables.
    id held;

  private:
    std::string* m_log = nullptr;
    char m_mark = '?';
};

inline Ref<Witness> witness(std::string& log, char mark) {
    return make<Witness>(&Witness::initWithLog_mark, &log, mark);
}

} // namespace zr::test
