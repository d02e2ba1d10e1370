# SPDX-License-Identifier: MIT
#
# The Debian packages that CPack makes: libcntr1 (libcntr and libqcplatform, which are released as
# one), libcntr-dev, libcntrsets1, libcntrsets-dev, libcntrtable1, libcntrtable-dev, libcntr-doc and cntr
# (the program). Build them with the preset `package`, whose prefix is /usr: there the libraries live in the
# machine's own directory and no run path is needed.
set(CNTR_MAINTAINER
    "cntr maintainers <maintainers@cntr.example>"
    CACHE STRING "Whom the Debian packages name as their maintainer")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES TRUE)
set(CPACK_DEB_COMPONENT_INSTALL TRUE)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)

set(soname_package libcntr${PROJECT_VERSION_MAJOR})
set(same_version "${soname_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${CNTR_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS TRUE)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/platform
                                                ${PROJECT_BINARY_DIR}/cntr
                                                ${PROJECT_BINARY_DIR}/cntrsets
                                                ${PROJECT_BINARY_DIR}/cntrtable)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS TRUE)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)

# CPack has no variable for this field before CMake 3.31; it is appended to the previous field.
set(multi_arch_same "\nMulti-Arch: same")
set(multi_arch_foreign "\nMulti-Arch: foreign")

# The symbols files are made from debian/*.symbols by scripts/check-symbols.
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME ${soname_package})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs${multi_arch_same})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers
                                                 ${PROJECT_BINARY_DIR}/symbols/${soname_package}/symbols)
set(CPACK_DEBIAN_LIBRARIES_DESCRIPTION
    "planar geometry for machine vision (shared libraries)
Measures contours, regions with holes and region sets: lengths, areas,
positions, roundness, distances, containment and crossings. Repairs outlines
that cross themselves; draws and archives shapes.

This package holds the shared libraries libcntr and libqcplatform.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libcntr-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel${multi_arch_same})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS FALSE)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${same_version})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libcntr-doc)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "planar geometry for machine vision (development files)
Contours, regions with holes and region sets, measured, queried, repaired,
drawn and archived from C++20.

This package holds the headers and the files of pkg-config and CMake.")

set(sets_package libcntrsets${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_SETS_LIBRARIES_PACKAGE_NAME ${sets_package})
set(CPACK_DEBIAN_SETS_LIBRARIES_PACKAGE_SECTION libs${multi_arch_same})
set(CPACK_DEBIAN_SETS_LIBRARIES_PACKAGE_DEPENDS ${same_version})
set(CPACK_DEBIAN_SETS_LIBRARIES_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers
                                                      ${PROJECT_BINARY_DIR}/symbols/${sets_package}/symbols)
set(CPACK_DEBIAN_SETS_LIBRARIES_DESCRIPTION
    "set operations on outlines for machine vision (shared library)
Unions, intersections, differences and offsets of outlines with holes, valid
outlines of the same area for those that cross themselves, measures of what
outlines fill, and the largest circle inside.

This package holds the shared library libcntrsets.")

set(CPACK_DEBIAN_SETS_DEVELOPMENT_PACKAGE_NAME libcntrsets-dev)
set(CPACK_DEBIAN_SETS_DEVELOPMENT_PACKAGE_SECTION libdevel${multi_arch_same})
set(CPACK_DEBIAN_SETS_DEVELOPMENT_PACKAGE_SHLIBDEPS FALSE)
set(CPACK_DEBIAN_SETS_DEVELOPMENT_PACKAGE_DEPENDS
    "${sets_package} (= ${PROJECT_VERSION}), libcntr-dev (= ${PROJECT_VERSION}), libgeos-dev")
set(CPACK_DEBIAN_SETS_DEVELOPMENT_PACKAGE_SUGGESTS libcntr-doc)
set(CPACK_DEBIAN_SETS_DEVELOPMENT_DESCRIPTION
    "set operations on outlines for machine vision (development files)
Unions, intersections, differences and offsets of outlines with holes, and
valid outlines of the same area for those that cross themselves, from C++20.

This package holds the headers and the files of pkg-config and CMake.")

# libcntrtable uses what libcntrsets hides from others: both must have the same version.
set(table_package libcntrtable${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_TABLE_LIBRARIES_PACKAGE_NAME ${table_package})
set(CPACK_DEBIAN_TABLE_LIBRARIES_PACKAGE_SECTION libs${multi_arch_same})
set(CPACK_DEBIAN_TABLE_LIBRARIES_PACKAGE_DEPENDS "${sets_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_TABLE_LIBRARIES_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers
                                                       ${PROJECT_BINARY_DIR}/symbols/${table_package}/symbols)
set(CPACK_DEBIAN_TABLE_LIBRARIES_DESCRIPTION
    "many outlines for machine vision as columns (shared library)
Outlines with holes as columns, from and to Arrow's C structs, well-known
binary and ragged arrays; their measures, their repair, and the points that lie
in them, on several threads.

This package holds the shared library libcntrtable.")

set(CPACK_DEBIAN_TABLE_DEVELOPMENT_PACKAGE_NAME libcntrtable-dev)
set(CPACK_DEBIAN_TABLE_DEVELOPMENT_PACKAGE_SECTION libdevel${multi_arch_same})
set(CPACK_DEBIAN_TABLE_DEVELOPMENT_PACKAGE_SHLIBDEPS FALSE)
set(CPACK_DEBIAN_TABLE_DEVELOPMENT_PACKAGE_DEPENDS
    "${table_package} (= ${PROJECT_VERSION}), libcntrsets-dev (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_TABLE_DEVELOPMENT_PACKAGE_SUGGESTS libcntr-doc)
set(CPACK_DEBIAN_TABLE_DEVELOPMENT_DESCRIPTION
    "many outlines for machine vision as columns (development files)
Outlines with holes as columns, from and to Arrow's C structs, well-known
binary and ragged arrays, measured and repaired on several threads, from C++20.

This package holds the headers and the files of pkg-config and CMake.")

set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_NAME libcntr-doc)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_SECTION doc${multi_arch_foreign})
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_SHLIBDEPS FALSE)
set(CPACK_DEBIAN_DOCUMENTS_DESCRIPTION
    "planar geometry for machine vision (documents)
Contours, regions with holes and region sets, measured, queried, repaired,
drawn and archived from C++20.

This package holds the pages, the reference of the library and the examples.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME cntr)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS ${same_version})
# Loaded when a PNG picture is asked for.
if(CNTR_PNG)
  set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS librsvg2-2)
endif()
set(CPACK_DEBIAN_TOOL_DESCRIPTION
    "measure, query, repair and draw the outlines of machine vision
Reads outlines as image annotation tools write them and tells their lengths,
areas, positions, roundness and distances, and which points they contain;
repairs, combines, compares, converts and draws them.")

# What a Debian package has besides, or instead of, the files of its component. These files are small
# and are made while configuring.
find_program(CNTR_GZIP gzip REQUIRED)
mark_as_advanced(CNTR_GZIP)

# Makes <output>.gz in the build directory, without a time stamp.
function(cntr_compress file output)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  execute_process(
    COMMAND ${CNTR_GZIP} -9 -n -c ${file}
    OUTPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/${output}.gz COMMAND_ERROR_IS_FATAL ANY)
endfunction()

configure_file(debian/changelog.in changelog @ONLY)
cntr_compress(${CMAKE_CURRENT_BINARY_DIR}/changelog changelog)
foreach(component IN ITEMS libraries development sets_libraries sets_development table_libraries
                           table_development documents tool)
  string(TOUPPER ${component} upper)
  install(
    FILES debian/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
    COMPONENT debian_${component} EXCLUDE_FROM_ALL)
endforeach()
set(overrides_libraries ${soname_package})
set(overrides_sets_libraries ${sets_package})
set(overrides_table_libraries ${table_package})
foreach(component IN ITEMS libraries sets_libraries table_libraries)
  install(
    FILES debian/${overrides_${component}}.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
    RENAME ${overrides_${component}}
    COMPONENT debian_${component} EXCLUDE_FROM_ALL)
endforeach()
cntr_compress(${manual} cntr.1)
install(
  FILES ${CMAKE_CURRENT_BINARY_DIR}/cntr.1.gz
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
  COMPONENT debian_tool EXCLUDE_FROM_ALL)

set(CPACK_COMPONENTS_ALL
    libraries debian_libraries headers development debian_development sets_libraries
    debian_sets_libraries sets_headers sets_development debian_sets_development table_libraries
    debian_table_libraries table_headers table_development debian_table_development documents reference
    debian_documents tool debian_tool)
include(CPack)
cpack_add_component_group(libraries)
cpack_add_component_group(development)
foreach(library IN ITEMS sets table)
  cpack_add_component_group(${library}_libraries)
  cpack_add_component_group(${library}_development)
endforeach()
cpack_add_component_group(documents)
cpack_add_component_group(tool)
cpack_add_component(libraries GROUP libraries)
cpack_add_component(debian_libraries GROUP libraries)
foreach(component IN ITEMS headers development debian_development)
  cpack_add_component(${component} GROUP development)
endforeach()
foreach(library IN ITEMS sets table)
  cpack_add_component(${library}_libraries GROUP ${library}_libraries)
  cpack_add_component(debian_${library}_libraries GROUP ${library}_libraries)
  foreach(component IN ITEMS ${library}_headers ${library}_development debian_${library}_development)
    cpack_add_component(${component} GROUP ${library}_development)
  endforeach()
endforeach()
foreach(component IN ITEMS documents reference debian_documents)
  cpack_add_component(${component} GROUP documents)
endforeach()
cpack_add_component(tool GROUP tool)
cpack_add_component(debian_tool GROUP tool)
