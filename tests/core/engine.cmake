# The abstract object and the runner, with a fake client and real windows.
tandrel_add_test(core_engine_test
    SOURCES command_log_test.cpp customvcs_test.cpp progress_form_test.cpp runner_test.cpp
    LIBS test_support core SERIAL NO_MAIN TIMEOUT 120)
add_dependencies(core_engine_test fake_client)
