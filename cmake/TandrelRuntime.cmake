# tandrel_copy_runtime()
#
# Adds the target tandrel_runtime (part of "all"), which puts the compiler's run-time DLLs beside
# the programs in ${CMAKE_BINARY_DIR}/bin.  The run-time is shared because exceptions and objects
# cross the borders of our DLLs, which a static run-time in each of them does not survive.
function(tandrel_copy_runtime)
    get_filename_component(compiler_dir "${CMAKE_CXX_COMPILER}" DIRECTORY)
    set(copies)
    # The middle name of the unwinder's DLL depends on the exception model of the compiler.
    foreach(choice "libstdc++-6.dll" "libgcc_s_dw2-1.dll;libgcc_s_seh-1.dll;libgcc_s_sjlj-1.dll"
            "libwinpthread-1.dll")
        set(found)
        foreach(name IN LISTS choice)
            execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${name}"
                OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
            # A compiler that does not know the file answers with the bare name; on Windows the
            # DLLs lie beside the compiler.
            foreach(candidate "${path}" "${compiler_dir}/${name}")
                if(NOT found AND IS_ABSOLUTE "${candidate}" AND EXISTS "${candidate}")
                    set(found "${candidate}")
                endif()
            endforeach()
        endforeach()
        if(NOT found)
            message(FATAL_ERROR "The compiler ${CMAKE_CXX_COMPILER} has none of: ${choice}")
        endif()
        get_filename_component(name "${found}" NAME)
        set(copy "${CMAKE_BINARY_DIR}/bin/${name}")
        add_custom_command(OUTPUT "${copy}"
            COMMAND "${CMAKE_COMMAND}" -E copy_if_different "${found}" "${copy}"
            COMMAND "${CMAKE_COMMAND}" -E touch "${copy}"
            DEPENDS "${found}" VERBATIM)
        list(APPEND copies "${copy}")
    endforeach()
    add_custom_target(tandrel_runtime ALL DEPENDS ${copies})
endfunction()
