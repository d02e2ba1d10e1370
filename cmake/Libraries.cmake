# SPDX-License-Identifier: MIT

# Offers the headers that match the given patterns, relative to the root of the repository, to the
# users of a library. Those who build it as a part of their own project find them in a tree of
# headers that only include the real ones, so that no internal header is within their reach;
# packaging/ installs those that the property CNTR_PUBLIC_HEADERS names.
function(cntr_offer_headers library)
  list(TRANSFORM ARGN PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE patterns)
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${patterns})
  foreach(header IN LISTS headers)
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/include/${header}
         CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n" @ONLY)
  endforeach()
  target_include_directories(
    ${library} INTERFACE $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>)
  set_target_properties(${library} PROPERTIES CNTR_PUBLIC_HEADERS "${headers}")
endfunction()

# What a static library needs: an empty export macro, so that its symbols stay hidden and Windows does
# not look for them in a DLL; and, for its users, a linker option that requires `symbol`, the list of
# the classes that archives can hold. Without it a linker leaves out each class that the program does not
# mention itself. Does nothing for a shared library.
function(cntr_make_static_usable library symbol)
  get_target_property(type ${library} TYPE)
  if(NOT type STREQUAL "STATIC_LIBRARY")
    return()
  endif()
  target_compile_definitions(${library} PUBLIC CNTR_STATIC)
  if(MSVC)
    target_link_options(${library} INTERFACE /INCLUDE:${symbol})
  else()
    target_link_options(${library} INTERFACE LINKER:-u,$<$<PLATFORM_ID:Darwin>:_>${symbol})
  endif()
endfunction()
