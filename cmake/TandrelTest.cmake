# tandrel_add_test(<name> SOURCES <file>... [LIBS <target>...] [LABELS <label>...]
#                  [TIMEOUT <seconds>] [NO_MAIN])
#
# Adds the test program <name> to ${CMAKE_BINARY_DIR}/bin; every TEST() in it becomes a test of
# CTest named <name>.<suite>.<test>, with a time limit of its own (240 seconds unless TIMEOUT says
# otherwise).
#
# NO_MAIN  the sources have a main() of their own.
#
# The tests are listed when CTest starts, not when the program is linked: a build then needs no
# emulator and no display.
include(GoogleTest)

function(tandrel_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "NO_MAIN" "TIMEOUT" "SOURCES;LIBS;LABELS")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "tandrel_add_test(${name}): unknown ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT arg_SOURCES)
        message(FATAL_ERROR "tandrel_add_test(${name}): no SOURCES")
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 240)
    endif()

    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
    tandrel_warnings(${name})
    if(arg_NO_MAIN)
        target_link_libraries(${name} PRIVATE ${arg_LIBS} GTest::gtest)
    else()
        target_link_libraries(${name} PRIVATE ${arg_LIBS} GTest::gtest_main)
    endif()
    if(TARGET tandrel_runtime)
        add_dependencies(${name} tandrel_runtime)
    endif()

    set(properties TIMEOUT ${arg_TIMEOUT})
    if(arg_LABELS)
        # A list inside a list: the inner semicolons are escaped.
        string(REPLACE ";" "\\;" labels "${arg_LABELS}")
        list(APPEND properties LABELS "${labels}")
    endif()
    gtest_discover_tests(${name}
        TEST_PREFIX "${name}."
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES ${properties})
endfunction()
