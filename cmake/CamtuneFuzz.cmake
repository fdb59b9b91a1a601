# One libFuzzer program per parser: fuzz/<name>_fuzz.cpp. Each also runs as a short CTest
# smoke test (label "fuzz") seeded from fuzz/corpus/<name>/ when present. libFuzzer writes new
# inputs into its first corpus folder, so each run starts from a fresh empty one in the build
# tree: the checked-in seeds stay read-only and every run with the same seed starts alike. The
# run is bounded by time, not by a number of inputs, so slow and fast targets cost the same.
set(CAMTUNE_FUZZ_SMOKE_SECONDS 20 CACHE STRING "Seconds each fuzzer runs when run as a test")

# Libraries a fuzzer needs beyond camtune_lint, by fuzzer name. A fuzzer whose library is not
# part of this build (the tools are optional) is left out.
set(camtune_fuzz_libraries_parse_fuzz camtune_parse)

file(GLOB camtune_fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp)
foreach(source ${camtune_fuzz_sources})
    get_filename_component(name ${source} NAME_WE)
    set(missing "")
    foreach(library ${camtune_fuzz_libraries_${name}})
        if(NOT TARGET ${library})
            list(APPEND missing ${library})
        endif()
    endforeach()
    if(missing)
        message(STATUS "Fuzzer ${name} skipped: ${missing} not built")
        continue()
    endif()

    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE camtune_lint ${camtune_fuzz_libraries_${name}})
    target_compile_definitions(${name} PRIVATE
        CAMTUNE_EXAMPLES_DIR="${PROJECT_SOURCE_DIR}/examples")
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)

    set(work_corpus ${PROJECT_BINARY_DIR}/fuzz-corpus/${name})
    set(seeds "")
    if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
        set(seeds ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    endif()
    if(CAMTUNE_BUILD_TESTS)
        add_test(NAME ${name}
            COMMAND sh -c "rm -rf \"$1\" && mkdir -p \"$1\" && exec \"$0\" -seed=1 -max_total_time=$2 \"$1\" $3"
                $<TARGET_FILE:${name}> ${work_corpus} ${CAMTUNE_FUZZ_SMOKE_SECONDS} ${seeds})
        # Room for start-up, loading the seeds and a slow last input on a loaded machine.
        math(EXPR timeout "${CAMTUNE_FUZZ_SMOKE_SECONDS} * 3 + 60")
        set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT ${timeout})
    endif()
endforeach()
