# SPDX-License-Identifier: MIT

# Makes the examples of a Markdown page a test, page_<name>: each of its ```cpp blocks is built as a
# program, and tests/docs/check-page runs them and the page's commands and compares what they print
# with what the page shows.
function(cntr_add_page page)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page})
  cmake_path(GET page STEM name)
  string(TOLOWER ${name} name)
  file(READ ${page} text)

  set(opening "\n```cpp\n")
  string(LENGTH ${opening} opening_length)
  set(programs)
  while(TRUE)
    string(FIND "${text}" "${opening}" begin)
    if(begin EQUAL -1)
      break()
    endif()
    math(EXPR begin "${begin} + ${opening_length}")
    string(SUBSTRING "${text}" ${begin} -1 text)
    string(FIND "${text}" "\n```" end)
    if(end EQUAL -1)
      message(FATAL_ERROR "The last ```cpp block of ${page} has no end")
    endif()
    string(SUBSTRING "${text}" 0 ${end} code)

    list(LENGTH programs count)
    set(program page_${name}_${count})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${program}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "${code}\n" @ONLY)
    add_executable(${program} ${source})
    set_target_properties(${program} PROPERTIES INCLUDE_DIRECTORIES "")  # the public headers alone
    target_link_libraries(${program} PRIVATE cntr::cntr)
    list(APPEND programs ${program})
  endwhile()

  list(TRANSFORM programs REPLACE "(.+)" "$<TARGET_FILE:\\1>")
  set(tool)
  if(TARGET cntr_tool)
    set(tool --tool $<TARGET_FILE:cntr_tool>)
  endif()
  add_test(NAME page_${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/docs/check-page ${tool}
                                     ${page} ${programs})
endfunction()
