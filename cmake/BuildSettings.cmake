# Language level, build type and the compile flags every target of ours gets.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# A sanitizer build defaults to RelWithDebInfo: in Release JUCE's recommended
# flags append -O3 after the sanitizer's own optimisation level.
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    if(QUINDREL_SANITIZE)
        set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
    else()
        set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
    endif()
endif()

find_program(QUINDREL_CCACHE ccache)
if(QUINDREL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER "${QUINDREL_CCACHE}")
    set(CMAKE_CXX_COMPILER_LAUNCHER "${QUINDREL_CCACHE}")
endif()

# The DSP is written to the operation: no fast-math and no fused multiply-add,
# so the equations run exactly as written, on every compiler and machine.
add_compile_options(-ffp-contract=off -fno-fast-math)

# Warnings for our own code. JUCE's headers come in as system headers, so
# they do not add to this list.
function(quindrel_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()
