# What a release holds: the two libraries and the host with the run-time they need, the headers and
# what a host's build needs to use them, the documents, and the licences.
target_include_directories(framework INTERFACE $<INSTALL_INTERFACE:include>)
target_compile_features(framework INTERFACE cxx_std_20)
target_compile_definitions(framework INTERFACE
    $<INSTALL_INTERFACE:NOMINMAX> $<INSTALL_INTERFACE:_WIN32_WINNT=0x0601>)

install(TARGETS framework tandrel hosting EXPORT TandrelTargets
    RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(TARGETS workbench RUNTIME DESTINATION bin)
install(DIRECTORY ${CMAKE_BINARY_DIR}/bin/ DESTINATION bin
    FILES_MATCHING PATTERN "libstdc++-6.dll" PATTERN "libgcc_s_*.dll" PATTERN "libwinpthread-1.dll")

foreach(folder framework core cvs forms tools package hosting)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DESTINATION include
        FILES_MATCHING PATTERN "*.h")
endforeach()
install(EXPORT TandrelTargets NAMESPACE Tandrel:: FILE TandrelConfig.cmake
    DESTINATION lib/cmake/Tandrel)
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TandrelConfigVersion.cmake
    COMPATIBILITY SameMinorVersion ARCH_INDEPENDENT)
install(FILES ${PROJECT_BINARY_DIR}/TandrelConfigVersion.cmake DESTINATION lib/cmake/Tandrel)

install(FILES LICENSE README.md CHANGELOG.md DESTINATION .)
install(DIRECTORY docs DESTINATION .)
# The compiler's run-time comes with licences of its own.
foreach(name gcc-mingw-w64-base mingw-w64-common)
    install(FILES /usr/share/doc/${name}/copyright DESTINATION licences RENAME ${name}.txt OPTIONAL)
endforeach()
