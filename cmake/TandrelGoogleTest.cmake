# Provides GTest::gtest, GTest::gtest_main, GTest::gmock and GTest::gmock_main.
#
# Debian ships GoogleTest as source (package googletest), because it has to be built with the
# flags of its user; elsewhere an installed GoogleTest serves.
set(TANDREL_GOOGLETEST_DIR "/usr/src/googletest" CACHE PATH "Source folder of GoogleTest")

if(EXISTS "${TANDREL_GOOGLETEST_DIR}/CMakeLists.txt")
    set(BUILD_SHARED_LIBS OFF)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
    add_subdirectory("${TANDREL_GOOGLETEST_DIR}" "${CMAKE_BINARY_DIR}/googletest"
        EXCLUDE_FROM_ALL SYSTEM)
    unset(BUILD_SHARED_LIBS)
    foreach(library gtest gtest_main gmock gmock_main)
        # The project's own warning flags are not meant for it.
        target_compile_options(${library} PRIVATE -w)
        if(NOT TARGET GTest::${library})
            add_library(GTest::${library} ALIAS ${library})
        endif()
    endforeach()
else()
    find_package(GTest REQUIRED)
endif()
