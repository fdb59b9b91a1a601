# GoogleTest built from Debian's source package with the current compiler. Used when no
# GoogleTest package exists for the target (cross builds); gives the same GTest::gtest and
# GTest::gtest_main targets as find_package(GTest).
set(CAMTUNE_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest source tree")

if(NOT TARGET GTest::gtest)
    if(NOT EXISTS ${CAMTUNE_GTEST_SOURCE_DIR}/CMakeLists.txt)
        message(FATAL_ERROR "GoogleTest sources not found in ${CAMTUNE_GTEST_SOURCE_DIR} "
                            "(install the googletest package)")
    endif()
    set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    add_subdirectory(${CAMTUNE_GTEST_SOURCE_DIR} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    # Recent GoogleTest releases define the namespaced names themselves.
    foreach(library gtest gtest_main)
        if(NOT TARGET GTest::${library})
            add_library(GTest::${library} ALIAS ${library})
        endif()
    endforeach()
endif()
