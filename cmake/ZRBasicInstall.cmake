# Installs the library with its public headers, a CMake package and a pkg-config file.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZRBasic)

install(
    TARGETS ZRBasic
    EXPORT ZRBasicTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET public_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILE_SET generated_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(
    EXPORT ZRBasicTargets
    NAMESPACE ZRBasic::
    DESTINATION ${package_folder})
if(ZRBASIC_QT)
    install(
        TARGETS ZRBasicQt
        EXPORT ZRBasicQtTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET public_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
    install(
        EXPORT ZRBasicQtTargets
        NAMESPACE ZRBasic::
        DESTINATION ${package_folder})
endif()
set(ZRBASIC_X11_FOUND OFF)
if(ZRBASIC_QT AND X11_FOUND)
    set(ZRBASIC_X11_FOUND ON)
endif()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZRBasicConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/ZRBasicConfig.cmake INSTALL_DESTINATION ${package_folder})
# Before 1.0 a minor version may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZRBasicConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZRBasicConfig.cmake ${PROJECT_BINARY_DIR}/ZRBasicConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/ZRBasicBundle.cmake DESTINATION ${package_folder})

# Users of the shared library need nothing else. Those of the static one get what it stands on without asking with
# --static, which nobody remembers.
if(ZRBASIC_SHARED)
    set(pc_requires "")
    set(pc_libs_private "")
else()
    set(pc_requires "icu-i18n icu-uc simdjson libcrypto liburiparser")
    set(pc_libs_private ${CMAKE_THREAD_LIBS_INIT})
endif()
# Relative to the file itself, so that the installed tree can be moved.
set(pc_folder ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pc_libdir ${pc_folder} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH pc_includedir ${pc_folder} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(${PROJECT_SOURCE_DIR}/cmake/zrbasic.pc.in ${PROJECT_BINARY_DIR}/zrbasic.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zrbasic.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(ZRBASIC_QT)
    set(pc_qt_requires "")
    if(NOT ZRBASIC_SHARED)
        set(pc_qt_requires "Qt6DBus")
        if(ZRBASIC_X11_FOUND)
            string(APPEND pc_qt_requires " x11")
        endif()
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/cmake/zrbasic-qt.pc.in ${PROJECT_BINARY_DIR}/zrbasic-qt.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/zrbasic-qt.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
