# -DQUINDREL_SANITIZE=address|thread|undefined builds everything with that sanitizer.

set(QUINDREL_SANITIZE "" CACHE STRING "Sanitizer to build with: address, thread, undefined or empty")

if(QUINDREL_SANITIZE)
    if(NOT QUINDREL_SANITIZE MATCHES "^(address|thread|undefined)$")
        message(FATAL_ERROR "QUINDREL_SANITIZE must be address, thread or undefined")
    endif()
    add_compile_options(-fsanitize=${QUINDREL_SANITIZE} -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${QUINDREL_SANITIZE})
endif()
