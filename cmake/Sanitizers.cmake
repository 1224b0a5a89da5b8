# -DQUINDREL_SANITIZE=address|thread|undefined builds everything with that sanitizer.

set(QUINDREL_SANITIZE "" CACHE STRING "Sanitizer to build with: address, thread, undefined or empty")

if(QUINDREL_SANITIZE)
    if(NOT QUINDREL_SANITIZE MATCHES "^(address|thread|undefined)$")
        message(FATAL_ERROR "QUINDREL_SANITIZE must be address, thread or undefined")
    endif()
    # Line tables are enough for the reports, and -O1 halves the compile time of
    # JUCE's big units against -O2 with full debug information (a Debug build keeps -O0).
    add_compile_options(-fsanitize=${QUINDREL_SANITIZE} -fno-omit-frame-pointer -g1
                        $<$<NOT:$<CONFIG:Debug>>:-O1>)
    add_link_options(-fsanitize=${QUINDREL_SANITIZE})
endif()
