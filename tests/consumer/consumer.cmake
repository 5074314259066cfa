# Builds and runs the consumer in every way in which a head unit can take the module in:
#   cmake -DSOURCE=<repo> -DWORK=<scratch folder> [-DOPTIONS=<cmake options>] -P consumer.cmake
cmake_minimum_required(VERSION 3.16)

set(consumer "${CMAKE_CURRENT_LIST_DIR}")
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

# A head unit's way: its platform, the module on top of it, the application on top of both.
set(app -DCONSUMER_HEADERS=${SOURCE}/platform)
build("${consumer}" app ${app})
build("${SOURCE}" module
    "-DPRODUCTION_PLATFORM=${WORK}/app/libconsumer_platform.so"
    "-DCMAKE_INSTALL_PREFIX=${prefix}" -DCMAKE_INSTALL_LIBDIR=lib)
run("${CMAKE_COMMAND}" --install "${WORK}/module")
# A moved tree must do as well.
file(RENAME "${prefix}" "${prefix}-moved")
set(ENV{PKG_CONFIG_PATH} "${prefix}-moved/lib/pkgconfig")
foreach(way IN ITEMS package pkgconfig)
    build("${consumer}" app ${app} -DCONSUMER_MODULE=${way} -DCMAKE_PREFIX_PATH=${prefix}-moved)
    run("${WORK}/app/consumer")
endforeach()

# One project for everything, static, with the head unit's own declarations.
file(COPY "${SOURCE}/platform/" DESTINATION "${WORK}/headers")
build("${consumer}" subproject
    -DCONSUMER_MODULE=subproject
    -DCONSUMER_PRODUCTION=${SOURCE}
    -DCONSUMER_HEADERS=${WORK}/headers)
run("${WORK}/subproject/consumer")
