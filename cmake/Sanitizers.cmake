# -DQUINDREL_SANITIZE=address|thread|undefined builds everything with that sanitizer.

set(QUINDREL_SANITIZE "" CACHE STRING "Sanitizer to build with: address, thread, undefined or empty")

if(QUINDREL_SANITIZE)
    if(NOT QUINDREL_SANITIZE MATCHES "^(address|thread|undefined)$")
        message(FATAL_ERROR "QUINDREL_SANITIZE must be address, thread or undefined")
    endif()
    # Unoptimised with line tables: the reports stay exact, and JUCE's big units
    # compile four times faster than at -O3 (the checked tests run for seconds).
    # These come after CMake's flags for the build type, so they win over them.
    add_compile_options(-fsanitize=${QUINDREL_SANITIZE} -fno-omit-frame-pointer -g1 -O0)
    add_link_options(-fsanitize=${QUINDREL_SANITIZE})
endif()
