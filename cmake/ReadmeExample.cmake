# SPDX-License-Identifier: MIT

# Builds the first C++ block of the given README as a program and runs it as the test
# `readme_example`, so that what the README shows always compiles. A README without such a block is
# an error.
function(cntr_add_readme_example readme)
  if(NOT EXISTS ${readme})
    return()
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${readme})
  file(READ ${readme} text)
  set(opening "```cpp\n")
  string(FIND "${text}" "${opening}" begin)
  if(begin EQUAL -1)
    message(FATAL_ERROR "${readme} has no ```cpp block")
  endif()
  string(LENGTH "${opening}" skipped)
  math(EXPR begin "${begin} + ${skipped}")
  string(SUBSTRING "${text}" ${begin} -1 text)
  string(FIND "${text}" "```" end)
  if(end EQUAL -1)
    message(FATAL_ERROR "The first ```cpp block of ${readme} has no end")
  endif()
  string(SUBSTRING "${text}" 0 ${end} text)

  set(source ${CMAKE_CURRENT_BINARY_DIR}/readme_example.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "${text}" @ONLY)
  add_executable(readme_example ${source})
  target_link_libraries(readme_example PRIVATE cntr::cntr)
  add_test(NAME readme_example COMMAND readme_example)
endfunction()
