# Configures, builds and runs one consumer project.
#   KIND      package, pkgconfig or subdirectory
#   WORK      folder to build in, made anew
#   PREFIX    where the library is installed (package, pkgconfig)
#   LIBRARY   where the library's sources are (subdirectory)
#   LIBDIR    where below that its libraries are (pkgconfig)
#   COMPILER, GENERATOR, LAUNCHER   what to build with

file(REMOVE_RECURSE ${WORK})
set(arguments -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
if(KIND STREQUAL subdirectory)
    # The whole library is compiled just to be linked, so this saves the most time.
    list(APPEND arguments -DZRBASIC_SOURCE=${LIBRARY} -DZRBASIC_PRECOMPILE=ON)
else()
    list(APPEND arguments -DCMAKE_PREFIX_PATH=${PREFIX})
    set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig:$ENV{PKG_CONFIG_PATH}")
endif()

execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/${KIND} -B ${WORK} -G ${GENERATOR} ${arguments}
            COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK} --target consumer COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${WORK}/consumer COMMAND_ERROR_IS_FATAL ANY)
