# One libFuzzer program per parser: fuzz/<name>_fuzz.cpp. Each also runs as a short CTest
# smoke test (label "fuzz") seeded from fuzz/corpus/<name>/ when present. libFuzzer writes new
# inputs into its first corpus folder, so each run starts from a fresh empty one in the build
# tree: the checked-in seeds stay read-only and every run with the same seed is the same run.
set(CAMTUNE_FUZZ_SMOKE_RUNS 2000 CACHE STRING "Inputs each fuzzer tries when run as a test")

file(GLOB camtune_fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp)
foreach(source ${camtune_fuzz_sources})
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE camtune_lint)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)

    set(work_corpus ${PROJECT_BINARY_DIR}/fuzz-corpus/${name})
    set(seeds "")
    if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
        set(seeds ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    endif()
    if(CAMTUNE_BUILD_TESTS)
        add_test(NAME ${name}
            COMMAND sh -c "rm -rf \"$1\" && mkdir -p \"$1\" && exec \"$0\" -seed=1 -runs=$2 \"$1\" $3"
                $<TARGET_FILE:${name}> ${work_corpus} ${CAMTUNE_FUZZ_SMOKE_RUNS} ${seeds})
        set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 300)
    endif()
endforeach()
