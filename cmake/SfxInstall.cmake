# Three packages: sfx, and the two libraries below it, each on its own so that a build finds either
# our edition or the maker's under one name.
include(CMakePackageConfigHelpers)

# sfx_install_package(TARGET): installs the library with its public headers as the CMake package
# TARGET, configured by cmake/TARGETConfig.cmake.in. Libraries look for each other in their own folder.
function(sfx_install_package target namespace)
    if(APPLE)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "@loader_path")
    elseif(UNIX)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    endif()
    set(folder "${CMAKE_INSTALL_LIBDIR}/cmake/${target}")
    install(TARGETS ${target} EXPORT ${target}
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
    install(EXPORT ${target} FILE ${target}Targets.cmake NAMESPACE ${namespace}:: DESTINATION "${folder}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${target}Config.cmake.in"
        "${CMAKE_CURRENT_BINARY_DIR}/${target}Config.cmake" INSTALL_DESTINATION "${folder}"
        NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
    # Until 1.0 every minor version may break its hosts.
    write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/${target}ConfigVersion.cmake"
        COMPATIBILITY SameMinorVersion)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${target}Config.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/${target}ConfigVersion.cmake" DESTINATION "${folder}")
endfunction()

foreach(library core audio)
    get_target_property(imported vemo::${library} IMPORTED)
    if(NOT imported)
        sfx_install_package(vemo_${library} vemo)
    endif()
endforeach()
sfx_install_package(sfx sfx)

# pcfiledir is the folder the file is found in, so the installed tree may be moved.
file(RELATIVE_PATH SFX_PC_PREFIX "/root/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/root")
string(REGEX REPLACE "/$" "" SFX_PC_PREFIX "${SFX_PC_PREFIX}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/sfx.pc.in" "${CMAKE_CURRENT_BINARY_DIR}/sfx.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/sfx.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
