# One libFuzzer program per parser: fuzz/<name>_fuzz.cpp. Each also runs as a short CTest
# smoke test seeded from fuzz/corpus/<name>/ when present. libFuzzer writes new inputs into its
# first corpus folder, so that one lives in the build tree and the checked-in seeds stay read-only.
set(CAMTUNE_FUZZ_SMOKE_RUNS 2000 CACHE STRING "Inputs each fuzzer tries when run as a test")

file(GLOB camtune_fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp)
foreach(source ${camtune_fuzz_sources})
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE camtune_internal)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)

    set(work_corpus ${PROJECT_BINARY_DIR}/fuzz-corpus/${name})
    file(MAKE_DIRECTORY ${work_corpus})
    set(corpus_args ${work_corpus})
    if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
        list(APPEND corpus_args ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    endif()
    if(CAMTUNE_BUILD_TESTS)
        add_test(NAME ${name} COMMAND ${name} -seed=1 -runs=${CAMTUNE_FUZZ_SMOKE_RUNS} ${corpus_args})
        set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 300)
    endif()
endforeach()
