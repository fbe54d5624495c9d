# What every target of the house has in common.

# One library per folder, linked by the folder's name. Headers are included from src/: "store/ModelContext.h".
function(larkspool_library name)
    add_library(${name} STATIC ${ARGN})
    larkspool_target(${name})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
endfunction()

# Warnings are errors unless a package is made, Qt is strict, sanitizers as chosen by the preset; none with UNSANITIZED,
# for programs that only stand beside what is tested.
function(larkspool_target name)
    target_compile_options(${name} PRIVATE
        $<$<BOOL:${LARKSPOOL_WARNINGS_AS_ERRORS}>:-Werror>
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        -Wcast-qual -Wformat=2 -Wimplicit-fallthrough)
    target_compile_definitions(${name} PRIVATE
        QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH QT_STRICT_ITERATORS
        QT_DISABLE_DEPRECATED_BEFORE=0x060400)
    if(LARKSPOOL_SANITIZER AND NOT "UNSANITIZED" IN_LIST ARGN)
        target_compile_options(${name} PUBLIC -fsanitize=${LARKSPOOL_SANITIZER} -fno-omit-frame-pointer)
        target_link_options(${name} PUBLIC -fsanitize=${LARKSPOOL_SANITIZER})
        if(LARKSPOOL_SANITIZER STREQUAL "thread")
            # Qt's headers use a fence, which this sanitizer cannot follow; nothing of ours does.
            target_compile_options(${name} PUBLIC -Wno-tsan)
        endif()
    endif()
endfunction()

# A GoogleTest program; its cases are listed when it has been built, and each is a test of ctest's. Under a sanitizer,
# where starting takes longest, the whole program is one test.
function(larkspool_gtest name)
    cmake_parse_arguments(arg "" "LABEL" "SOURCES;LIBRARIES;ENVIRONMENT" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    larkspool_target(${name})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
    if(arg_LABEL MATCHES "^(unit|contract)$")
        add_dependencies(thread_tests ${name})
    endif()
    if(LARKSPOOL_SANITIZER)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES LABELS ${arg_LABEL} TIMEOUT 1200 ENVIRONMENT "${arg_ENVIRONMENT}")
        return()
    endif()
    gtest_discover_tests(${name}
        NO_PRETTY_VALUES
        DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS ${arg_LABEL} TIMEOUT 300 ENVIRONMENT "${arg_ENVIRONMENT}")
endfunction()

# A QML module's library: as every target, but Qt's generated code shadows names.
function(larkspool_qml_target name)
    larkspool_target(${name})
    target_compile_options(${name} PRIVATE -Wno-shadow -Wno-unused-variable)
    # The C++ that Qt's compiler would make of QML besides is another one each time.
    set_target_properties(${name} PROPERTIES QT_QMLCACHEGEN_ARGUMENTS "--only-bytecode")
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
endfunction()
