# Installs the build into an empty folder and looks at what came out.
#   BUILD     the library's build folder
#   PREFIX    where to install, made anew
#   HEADERS   the include root in the source tree
#   SHARED    whether the library is the shared one
#   VERSION   its full version
#   QT        whether the toolkit is built
#   LIBDIR, INCLUDEDIR   where libraries and headers go

file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} COMMAND_ERROR_IS_FATAL ANY)

set(wrong "")

file(GLOB_RECURSE installed RELATIVE ${PREFIX} ${PREFIX}/*)
foreach(file IN LISTS installed)
    if(file MATCHES "_p\\.h$" OR file MATCHES "[Tt]est" OR file MATCHES "\\.(cpp|in|md)$")
        string(APPEND wrong "\n  must not be installed: ${file}")
    elseif(NOT file MATCHES "^${INCLUDEDIR}/zrbasic/.*\\.h$" AND NOT file MATCHES "^${LIBDIR}/")
        string(APPEND wrong "\n  installed to an unexpected place: ${file}")
    endif()
endforeach()

file(GLOB_RECURSE headers RELATIVE ${HEADERS} ${HEADERS}/zrbasic/*.h)
foreach(header IN LISTS headers)
    if(NOT header MATCHES "_p\\.h$" AND NOT header MATCHES "^zrbasic/platform/qt/" AND NOT EXISTS ${PREFIX}/${INCLUDEDIR}/${header})
        string(APPEND wrong "\n  not installed: ${header}")
    endif()
endforeach()

set(expected
    ${INCLUDEDIR}/zrbasic/version.h
    ${INCLUDEDIR}/zrbasic/platform/runtime/export.h
    ${LIBDIR}/pkgconfig/zrbasic.pc
    ${LIBDIR}/cmake/ZRBasic/ZRBasicBundle.cmake
    ${LIBDIR}/cmake/ZRBasic/ZRBasicConfig.cmake
    ${LIBDIR}/cmake/ZRBasic/ZRBasicConfigVersion.cmake
    ${LIBDIR}/cmake/ZRBasic/ZRBasicTargets.cmake)
string(REGEX MATCH "^[0-9]+" major ${VERSION})
if(QT)
    list(APPEND expected ${INCLUDEDIR}/zrbasic/platform/qt/session.h ${LIBDIR}/pkgconfig/zrbasic-qt.pc
         ${LIBDIR}/cmake/ZRBasic/ZRBasicQtTargets.cmake)
endif()
if(SHARED)
    list(APPEND expected ${LIBDIR}/libzrbasic.so ${LIBDIR}/libzrbasic.so.${major} ${LIBDIR}/libzrbasic.so.${VERSION})
else()
    list(APPEND expected ${LIBDIR}/libzrbasic.a)
endif()
foreach(file IN LISTS expected)
    if(NOT EXISTS ${PREFIX}/${file})
        string(APPEND wrong "\n  missing: ${file}")
    endif()
endforeach()

if(SHARED)
    set(target nothing)
    if(IS_SYMLINK ${PREFIX}/${LIBDIR}/libzrbasic.so.${major})
        file(READ_SYMLINK ${PREFIX}/${LIBDIR}/libzrbasic.so.${major} target)
    endif()
    if(NOT target STREQUAL "libzrbasic.so.${VERSION}")
        string(APPEND wrong "\n  libzrbasic.so.${major} points at ${target}")
    endif()
    execute_process(COMMAND readelf -d ${PREFIX}/${LIBDIR}/libzrbasic.so OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
    if(NOT dynamic MATCHES "SONAME[^\n]*\\[libzrbasic\\.so\\.${major}\\]")
        string(APPEND wrong "\n  the SONAME is not libzrbasic.so.${major}")
    endif()
    if(dynamic MATCHES "R(UN)?PATH")
        string(APPEND wrong "\n  the library carries a run path of the build")
    endif()
endif()

# Nothing that is installed may lead back to where it was built.
file(GLOB_RECURSE texts ${PREFIX}/*.h ${PREFIX}/*.cmake ${PREFIX}/*.pc)
foreach(file IN LISTS texts)
    file(READ ${file} text)
    string(FIND "${text}" "${BUILD}" build_position)
    string(FIND "${text}" "${HEADERS}/" source_position)
    if(NOT build_position EQUAL -1 OR NOT source_position EQUAL -1)
        string(APPEND wrong "\n  names the build's folders: ${file}")
    endif()
endforeach()

if(wrong)
    message(FATAL_ERROR "The installed tree is wrong:${wrong}")
endif()
