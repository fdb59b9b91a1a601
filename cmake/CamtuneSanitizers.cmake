# Sanitizer and fuzzer instrumentation for the whole build (library, tools, tests).
#   CAMTUNE_SANITIZE: comma-separated -fsanitize list, e.g. "address,undefined" or "thread".
#   CAMTUNE_BUILD_FUZZ: also instrument for libFuzzer coverage (clang only).
set(CAMTUNE_SANITIZE "" CACHE STRING "Sanitizers to build with (-fsanitize=...), empty for none")

if(CAMTUNE_SANITIZE)
    # A finding must fail the run, not scroll past.
    add_compile_options(-fsanitize=${CAMTUNE_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${CAMTUNE_SANITIZE})
endif()

if(CAMTUNE_BUILD_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "CAMTUNE_BUILD_FUZZ needs clang (libFuzzer)")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
