# How every target of the house is built: the language, the warnings, the sanitizers, and the two
# functions by which a module and its test program say what they consist of.

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

option(ORVANE_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(ORVANE_THREAD_SANITIZE "Build with the thread sanitizer instead" OFF)
option(ORVANE_WERROR "Treat warnings as errors" OFF)
option(ORVANE_BENCHMARKS "Build the benchmark programs" OFF)
option(ORVANE_PRIVATE_QT "Use the private headers of Qt where that is faster" ON)
option(ORVANE_FUZZ "Build the fuzzers (clang only)" OFF)
set(ORVANE_OPTIMISE "" CACHE STRING "Optimisation flag added to debug builds")

find_program(ORVANE_CCACHE ccache)
if(ORVANE_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${ORVANE_CCACHE})
endif()
find_program(ORVANE_MOLD mold)
if(ORVANE_MOLD)
    add_link_options(-fuse-ld=mold)
endif()
# What a program doesn't use is not loaded when it starts.
add_link_options(-Wl,--as-needed)

add_compile_options(-Wall -Wextra -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override
                    -Wimplicit-fallthrough -fno-omit-frame-pointer)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes moved-from optionals for uninitialised ones.
    add_compile_options(-Wno-maybe-uninitialized)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # ccache keeps precompiled headers apart by their content only with this.
    add_compile_options(-fpch-preprocess)
endif()
if(ORVANE_OPTIMISE)
    add_compile_options(${ORVANE_OPTIMISE} -g1)
endif()
if(ORVANE_WERROR)
    add_compile_options(-Werror)
endif()
if(ORVANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr
                        -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=address,undefined -fno-sanitize=vptr)
endif()
if(ORVANE_THREAD_SANITIZE)
    add_compile_options(-fsanitize=thread -Wno-tsan)
    add_link_options(-fsanitize=thread)
endif()
if(ORVANE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=vptr
                        -fno-sanitize-recover=undefined)
    add_compile_definitions(QT_FORCE_ASSERTS)
    add_link_options(-fsanitize=address,undefined)
endif()
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
                        QT_NO_JAVA_STYLE_ITERATORS)

# orvane_module(NAME SOURCES … USES module… LINKS external… [PCH core|gui|widgets])
# A static library orvane_NAME from src/NAME. Headers are included as "NAME/Header.h".
function(orvane_module name)
    cmake_parse_arguments(ARG "" "PCH" "SOURCES;USES;LINKS" ${ARGN})
    add_library(orvane_${name} STATIC ${ARG_SOURCES})
    target_include_directories(orvane_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    list(TRANSFORM ARG_USES PREPEND orvane_)
    target_link_libraries(orvane_${name} PUBLIC ${ARG_USES} ${ARG_LINKS})
    if(ARG_PCH)
        target_precompile_headers(orvane_${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch_${ARG_PCH}.h)
    endif()
endfunction()

# orvane_test(NAME SOURCES … [LINKS …] [APP core|gui|widgets])
# The test program of one module: it links that module alone, so an include that points the wrong
# way does not link. APP picks the application object that its main() makes.
function(orvane_test name)
    cmake_parse_arguments(ARG "" "APP" "SOURCES;LINKS" ${ARGN})
    add_executable(${name}_test ${ARG_SOURCES})
    target_link_libraries(${name}_test PRIVATE orvane_${name} orvane_test_main_${ARG_APP}
                          ${ARG_LINKS} GTest::gtest Qt6::Test)
    target_include_directories(${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_definitions(${name}_test PRIVATE
                               ORVANE_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data")
    target_precompile_headers(${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch_${ARG_APP}.h
                              <gtest/gtest.h>)
    set_property(GLOBAL APPEND PROPERTY ORVANE_TESTS ${name}_test)
    add_test(NAME ${name} COMMAND ${name}_test)
endfunction()
