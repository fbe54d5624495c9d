# What users get is hardened: position independent, its tables of addresses read-only once it runs, the stack and
# buffers of known size checked. scripts/check-package looks at the result. Not with sanitizers, which check all that
# themselves.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT LARKSPOOL_SANITIZER)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options(-fstack-protector-strong -fstack-clash-protection)
    # A build system may have chosen a level of its own.
    if(NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
        add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    endif()
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
        add_compile_options(-fcf-protection)
    endif()
    add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
