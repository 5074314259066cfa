# Installs a finished build, moves the tree, and has the programs speak Chinese from there; what they
# offer must stand in their manual pages and completions:
#   cmake -DBUILD=<build folder> -DWORK=<scratch folder> -DTRANSLATED=<0|1> -P installed.cmake
cmake_minimum_required(VERSION 3.16)

file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/first"
    RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "cannot be installed")
endif()
file(RENAME "${WORK}/first" "${WORK}/moved")

set(ENV{LC_ALL} zh_CN.UTF-8)
set(ENV{LANGUAGE} zh_CN)
foreach(program IN ITEMS production-bench production-stick)
    execute_process(COMMAND "${WORK}/moved/bin/${program}" --help
        RESULT_VARIABLE result OUTPUT_VARIABLE help)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${program} does not run where it was moved to (${result})")
    endif()
    if(TRANSLATED AND NOT help MATCHES "退出码")
        message(FATAL_ERROR "${program} does not find its translation:\n${help}")
    endif()
    file(READ "${WORK}/moved/share/man/man1/${program}.1" manual)
    file(READ "${WORK}/moved/share/bash-completion/completions/${program}" completion)
    string(REPLACE "\\-" "-" manual "${manual}")
    string(REGEX MATCHALL "--[a-z-]+[a-z]" options "${help}")
    foreach(option IN LISTS options)
        string(FIND "${manual}" "${option}" in_manual)
        string(FIND "${completion}" "${option}" in_completion)
        if(in_manual LESS 0 OR in_completion LESS 0)
            message(SEND_ERROR "${program}: manual page or completion lacks ${option}")
        endif()
    endforeach()
endforeach()
