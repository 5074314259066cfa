# The target "tidy": clang-tidy over the module and the programs, in parallel. It reads the compile
# commands (the preset "tidy" writes them), nothing needs to be built.
find_program(RUN_CLANG_TIDY run-clang-tidy)
if(RUN_CLANG_TIDY)
    add_custom_target(tidy
        COMMAND "${RUN_CLANG_TIDY}" -quiet -p "${PROJECT_BINARY_DIR}"
            "${PROJECT_SOURCE_DIR}/(module|worker|settings|bench|stick|translations)/.*\\.cpp$"
        COMMENT "clang-tidy"
        VERBATIM USES_TERMINAL)
endif()
