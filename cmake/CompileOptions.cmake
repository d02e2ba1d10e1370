# SPDX-License-Identifier: MIT
#
# Compiler flags of this project's own targets. They are set per directory, so that neither a project
# that adds this one as a subdirectory nor a user of the installed package inherits them.

include(CheckCXXSourceCompiles)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  find_program(CNTR_CCACHE ccache)
  mark_as_advanced(CNTR_CCACHE)
  if(CNTR_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # ccache caches precompiled headers only under these conditions.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CNTR_CCACHE})
  endif()
endif()

# A build without a type is optimised: if the choice is ours, by setting the type; if this is a part
# of a project without a type, by the same flags.
get_property(multi_config GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(NOT multi_config AND NOT CMAKE_BUILD_TYPE)
  if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
  else()
    set(CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS_RELEASE} ${CMAKE_CXX_FLAGS}")
  endif()
endif()

if(MSVC)
  add_compile_options(/W4 /fp:precise /utf-8 $<$<BOOL:${CNTR_WERROR}>:/WX>)
  return()
endif()

# Nobody replaces single functions of the libraries, so calls within a library need no indirection.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
  add_compile_options(-fno-semantic-interposition)
  add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,-Bsymbolic-functions>)
endif()

# Fused multiply-adds would make answers depend on the processor. When g++ vectorizes
# a * b - c * d, e * f + g * h it fuses them nevertheless.
add_compile_options(-ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  check_cxx_source_compiles("
    #ifndef __FMA__
    #error No fused multiply-adds to be had.
    #endif
    int main() {}" CNTR_HAS_FUSED_MULTIPLY_ADD)
  if(CNTR_HAS_FUSED_MULTIPLY_ADD)
    add_compile_options(-fno-tree-loop-vectorize -fno-tree-slp-vectorize)
  endif()
endif()

add_compile_options(
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wcast-qual -Wunused -Wdouble-promotion
  -Wformat=2 -Wundef -Wimplicit-fallthrough -Wextra-semi)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wduplicated-cond -Wduplicated-branches -Wlogical-op)
elseif(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # typeid(*handle) is meant to evaluate its operand.
  add_compile_options(-Wno-potentially-evaluated-expression)
endif()
# With instrumented code g++ warns of things that cannot happen.
if(CNTR_WERROR AND NOT CNTR_SANITIZE AND NOT CNTR_SANITIZE_THREADS)
  add_compile_options(-Werror)
endif()

# What Debian demands of its packages.
if(CNTR_HARDENING)
  add_compile_definitions(_FORTIFY_SOURCE=2)
  add_compile_options(-fstack-protector-strong -Werror=format-security)
  add_link_options(LINKER:-z,relro LINKER:-z,now)
endif()

if(CNTR_SANITIZE)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  set(sanitizers -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all)
  add_compile_options(${sanitizers} -fno-omit-frame-pointer)
  add_link_options(${sanitizers})
  if(CNTR_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
  endif()
elseif(CNTR_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  # A library must not leave it to its users to find out which symbols it lacks.
  add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:LINKER:--no-undefined>)
endif()
