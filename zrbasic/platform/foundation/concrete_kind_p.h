#pragma once

#include <zrbasic/platform/runtime/declare.h>

/// Opens a concrete kind's list of operations like `ZR_DEFINE_CLASS`, for a class whose name is not its C++ name.
#define ZR_DEFINE_KIND(Kind, name)                                                 \
    ::zr::Class* Kind::classObject() {                                             \
        static ::zr::Class* const record = ::zr::detail::definedClass<Kind>(name); \
        return record;                                                             \
    }                                                                              \
    ::zr::Class* Kind::nativeClass() const {                                       \
        return Kind::classObject();                                                \
    }                                                                              \
    Kind::~Kind() = default;                                                       \
    void Kind::zrDescribeAll([[maybe_unused]] ::zr::ClassBuilder& is)
