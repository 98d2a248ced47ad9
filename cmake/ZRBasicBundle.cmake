# zrbasic_bundle_information(<target> [NAME <text>] [VERSION <text>] [BUILD <text>] [IDENTIFIER <text>])
#
# Compiles into an application, which links ZRBasic::ZRBasic, what the library's NSBundle tells about it: its name, its
# version ("1.4.0"), the number of this build ("1873") and an identifier of its own ("com.example.desk"), which also
# names the file of its user defaults. What is left out, or empty, the application does not have.
function(zrbasic_bundle_information target)
    set(entries NAME VERSION BUILD IDENTIFIER)
    cmake_parse_arguments(PARSE_ARGV 1 bundle "" "${entries}" "")
    if(DEFINED bundle_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "zrbasic_bundle_information does not know: ${bundle_UNPARSED_ARGUMENTS}")
    endif()
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL "EXECUTABLE")
        message(FATAL_ERROR "zrbasic_bundle_information is for applications, and ${target} is none")
    endif()
    foreach(entry IN LISTS entries)
        set(text "${bundle_${entry}}")
        string(REPLACE "\\" "\\\\" text "${text}")
        string(REPLACE "\"" "\\\"" text "${text}")
        string(REPLACE "\n" "\\n" text "${text}")
        set(${entry} "${text}")
    endforeach()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_bundle_information.cpp)
    # Leaves the file alone where nothing changed.
    file(
        CONFIGURE
        OUTPUT ${source}
        CONTENT
            [[#include <zrbasic/platform/foundation/bundle.h>

static const zr::BundleInformation information("@NAME@", "@VERSION@", "@BUILD@", "@IDENTIFIER@");
]]
        @ONLY)
    target_sources(${target} PRIVATE ${source})
endfunction()
