# tandrel_version(<target> <file> <description>)
#
# Gives a program or DLL the version that the system shows as its properties.
function(tandrel_version version_target version_file version_description)
    set(version_type VFT_APP)
    if(version_file MATCHES "[.]dll$")
        set(version_type VFT_DLL)
    endif()
    set(resource "${PROJECT_BINARY_DIR}/generated/${version_target}_version.rc")
    configure_file("${PROJECT_SOURCE_DIR}/resources/version.rc.in" "${resource}" @ONLY)
    target_sources(${version_target} PRIVATE "${resource}")
endfunction()
