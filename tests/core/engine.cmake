# The abstract object and the runner, with a fake client and real windows.
tandrel_add_test(core_engine_test
    SOURCES command_log_test.cpp customvcs_test.cpp progress_form_test.cpp runner_test.cpp
        work_dir_tree_test.cpp
    LIBS test_support core NO_MAIN)
add_dependencies(core_engine_test fake_client)

# One process for one switch of its command line, so it is no discovered test.
add_executable(core_debug_test debug_mode_test.cpp)
target_link_libraries(core_debug_test PRIVATE test_support core)
tandrel_warnings(core_debug_test)
add_dependencies(core_debug_test fake_client tandrel_runtime)
add_test(NAME core_debug_test COMMAND core_debug_test -DEBUG)
set_tests_properties(core_debug_test PROPERTIES TIMEOUT 60)
