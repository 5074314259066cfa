# Builds and runs examples/headunit in every way in which a head unit can take the module in:
#   cmake -DSOURCE=<repo> -DWORK=<scratch folder> [-DOPTIONS=<cmake options>] -P headunit.cmake
cmake_minimum_required(VERSION 3.16)

set(headunit "${SOURCE}/examples/headunit")
set(prefix "${WORK}/install")

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed (${result}): ${ARGN}")
    endif()
endfunction()

function(build source folder)
    run("${CMAKE_COMMAND}" -S "${source}" -B "${WORK}/${folder}" ${OPTIONS} ${ARGN})
    run("${CMAKE_COMMAND}" --build "${WORK}/${folder}")
endfunction()

file(REMOVE_RECURSE "${WORK}")

# A head unit's way: its services, the module on top of them, the application on top of both.
build("${headunit}" app -DHEADUNIT_MODULE=none)
build("${SOURCE}" module
    "-DPRODUCTION_PLATFORM=${WORK}/app/libheadunit_services.so"
    "-DCMAKE_INSTALL_PREFIX=${prefix}" -DCMAKE_INSTALL_LIBDIR=lib)
run("${CMAKE_COMMAND}" --install "${WORK}/module")
# A moved tree must do as well.
file(RENAME "${prefix}" "${prefix}-moved")
set(ENV{PKG_CONFIG_PATH} "${prefix}-moved/lib/pkgconfig")
foreach(way IN ITEMS package pkgconfig)
    build("${headunit}" app -DHEADUNIT_MODULE=${way} -DCMAKE_PREFIX_PATH=${prefix}-moved)
    run("${WORK}/app/headunit")
endforeach()

# One project for everything, static, with the head unit's own declarations.
file(COPY "${SOURCE}/platform/" DESTINATION "${WORK}/headers")
build("${headunit}" subproject "-DHEADUNIT_PLATFORM=${WORK}/headers")
run("${WORK}/subproject/headunit")
file(GLOB_RECURSE surplus "${WORK}/subproject/*bench*" "${WORK}/subproject/*production-stick*"
    "${WORK}/subproject/*testunit*")
if(surplus)
    message(FATAL_ERROR "built as a part of somebody else's project: ${surplus}")
endif()
