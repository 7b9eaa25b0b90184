# What every target of this project is built with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
# One folder for all DLLs and programs, so that a program finds its DLLs on Windows.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
if(MINGW)
    set(CMAKE_SHARED_LIBRARY_PREFIX "") # sfx.dll, as with every other compiler there
endif()

find_program(SFX_CCACHE ccache)
if(SFX_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${SFX_CCACHE}")
endif()

add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)

if(SFX_SANITIZE)
    add_compile_options(-fsanitize=${SFX_SANITIZE} -fno-omit-frame-pointer -g -O1)
    add_link_options(-fsanitize=${SFX_SANITIZE})
    if(SFX_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
    if(SFX_SANITIZE MATCHES "thread" AND NOT CMAKE_PREFIX_PATH)
        message(WARNING "CMAKE_PREFIX_PATH names no Qt built with ThreadSanitizer (scripts/lib/qt-tsan "
            "builds one): every queued signal will look like a race")
    endif()
endif()

# Warnings of this project's own code; linked privately, so they never reach a host.
add_library(sfx_warnings INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(sfx_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion
        -Wno-sign-conversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # gcc 12 sees overlapping copies inside std::string's own operator+.
        target_compile_options(sfx_warnings INTERFACE -Wno-restrict)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND SFX_SANITIZE MATCHES "thread")
        # gcc warns that TSan does not model fences; Qt's headers use them.
        target_compile_options(sfx_warnings INTERFACE -Wno-tsan)
    endif()
    if(SFX_WERROR)
        target_compile_options(sfx_warnings INTERFACE -Werror)
    endif()
endif()
