cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${STAGED}" "${MOVED}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --config "${CONFIG}" --prefix "${STAGED}"
    COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${STAGED}" "${MOVED}")
