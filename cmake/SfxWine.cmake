# Runs programs of a cross-build under Wine.

# sfx_wine(VARIABLE PREFIX FOLDER...): sets VARIABLE to the command that runs a program in the Wine
# prefix, with the DLLs in the folders and those of Qt and the compiler.
function(sfx_wine variable prefix)
    get_filename_component(qt "${Qt6_DIR}/../../.." ABSOLUTE)
    set(folders ${ARGN} "${qt}/bin")
    foreach(dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${dll}" OUTPUT_VARIABLE file
            OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        get_filename_component(folder "${file}" DIRECTORY)
        get_filename_component(folder "${folder}" ABSOLUTE)
        list(APPEND folders "${folder}")
    endforeach()
    list(JOIN folders ":" folders)
    set(${variable} "${PROJECT_SOURCE_DIR}/tests/support/windows/run" "${prefix}" "${folders}"
        PARENT_SCOPE)
endfunction()

# The tests, with the DLLs where they were built or installed.
sfx_wine(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_BINARY_DIR}/wine" "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
