# What every target of this project has in common. Set target by target, so that a surrounding project keeps its flags.

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(ZRBASIC_CCACHE ccache)
endif()

function(zrbasic_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON)
    if(ZRBASIC_WARNINGS)
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                                 -Woverloaded-virtual)
        # GCC 12 has false positives in the copying of std::string (-Wrestrict).
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
            target_compile_options(${target} PRIVATE -Wno-restrict)
        endif()
        # Newer clang blames std::stable_sort of libstdc++ 12 on its caller; other compilers still see deprecated calls.
        if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 15)
            target_compile_options(${target} PRIVATE -Wno-deprecated-declarations)
        endif()
    endif()
    if(ZRBASIC_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(ZRBASIC_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${ZRBASIC_SANITIZE} -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${ZRBASIC_SANITIZE})
    endif()
    if(ZRBASIC_CCACHE)
        # Precompiled headers need the sloppiness, or every compilation misses.
        set_target_properties(
            ${target} PROPERTIES CXX_COMPILER_LAUNCHER
                                 "${CMAKE_COMMAND};-E;env;CCACHE_SLOPPINESS=pch_defines,time_macros;${ZRBASIC_CCACHE}")
    endif()
endfunction()

# Precompiles the given headers for the target, where the build asks for it.
function(zrbasic_precompile target)
    if(ZRBASIC_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
        if(ZRBASIC_CCACHE)
            if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
                target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
            else()
                target_compile_options(${target} PRIVATE -fpch-preprocess)
            endif()
        endif()
    endif()
endfunction()

# Writes a generated source, leaving the file alone where nothing changed, so that configuring again rebuilds nothing.
function(zrbasic_write_source file text)
    set(written "")
    if(EXISTS ${file})
        file(READ ${file} written)
    endif()
    if(NOT written STREQUAL text)
        file(WRITE ${file} "${text}")
    endif()
endfunction()
