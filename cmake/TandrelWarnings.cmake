# tandrel_warnings(<target>)
#
# The language level and the warnings of all code that is ours.  GNU extensions stay on: in strict
# mode the mingw-w64 headers hide functions that GoogleTest's headers call (fdopen).
function(tandrel_warnings target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANGUAGE:C,CXX>:-Wall -Wextra -Wconversion -Werror>)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY")
        target_link_options(${target} PRIVATE -Wl,--fatal-warnings)
    endif()
endfunction()
