# Runs the tests of a cross-build under Wine, with the DLLs where they were built or installed.
get_filename_component(qt "${Qt6_DIR}/../../.." ABSOLUTE)
set(folders "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}" "${qt}/bin")
foreach(dll libstdc++-6.dll libwinpthread-1.dll)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${dll}" OUTPUT_VARIABLE file
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    get_filename_component(folder "${file}" DIRECTORY)
    get_filename_component(folder "${folder}" ABSOLUTE)
    list(APPEND folders "${folder}")
endforeach()
list(JOIN folders ":" folders)
set(CMAKE_CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/tests/support/windows/run"
    "${CMAKE_BINARY_DIR}/wine" "${folders}")
