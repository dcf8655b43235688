# Debian packages by cpack: libnqcommon940r, libnqcommon-dev and nqcommon-examples, one a component.

set(NQ_RUNTIME_PACKAGE libnqcommon940r)
set(NQ_DEVELOPMENT_PACKAGE libnqcommon-dev)
set(NQ_EXAMPLES_PACKAGE nqcommon-examples)

# Each package carries the licence and the changelog under its own name. The date of the changelog's
# entry is that of the sources, so that the same sources give the same package.
find_program(GZIP_PROGRAM gzip)
string(CONFIGURE "nqcommon (${PROJECT_VERSION}) unstable; urgency=medium\n
  * Changes by version stand in CHANGELOG.md of the sources.\n
 -- nqcommon maintainers <maintainers@nqcommon.example>  Sun, 22 Nov 2026 00:00:00 +0000\n" NQ_DEBIAN_CHANGELOG)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/packages/changelog CONTENT "${NQ_DEBIAN_CHANGELOG}" @ONLY)
file(READ ${PROJECT_SOURCE_DIR}/LICENSE NQ_LICENSE)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/packages/copyright CONTENT "${NQ_LICENSE}" @ONLY)
if(GZIP_PROGRAM)
  execute_process(COMMAND ${GZIP_PROGRAM} -9nkf ${PROJECT_BINARY_DIR}/packages/changelog)
endif()
foreach(component RUNTIME DEVELOPMENT EXAMPLES)
  string(TOLOWER ${component} name)
  install(FILES ${PROJECT_BINARY_DIR}/packages/copyright
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${NQ_${component}_PACKAGE} COMPONENT ${name})
  install(FILES ${PROJECT_BINARY_DIR}/packages/changelog.gz OPTIONAL
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${NQ_${component}_PACKAGE} COMPONENT ${name})
  set(CPACK_DEBIAN_${component}_PACKAGE_NAME ${NQ_${component}_PACKAGE})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME nqcommon)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "numerical and data layer for statistical model builders")
set(CPACK_PACKAGE_CONTACT "nqcommon maintainers <maintainers@nqcommon.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development examples)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_EXAMPLES_PACKAGE_SECTION science)
# The symbols of a version are those of its file name, so its dependents need no more than the package.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${NQ_RUNTIME_PACKAGE} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_EXAMPLES_PACKAGE_DEPENDS "${NQ_RUNTIME_PACKAGE} (= ${PROJECT_VERSION})")
set(NQ_ABOUT "Means and cross-products, matrices with sweep and Cholesky,
distributions, random variates, variables and encoders, and the PMML,
StatXML and JSON that builders write.")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${NQ_ABOUT}
This package holds the shared library.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "${NQ_ABOUT}
This package holds headers, static archive, CMake and pkg-config files
and documents.")
set(CPACK_DEBIAN_EXAMPLES_DESCRIPTION "${NQ_ABOUT}
This package holds programs that show what builders make of the library.")

# The loader's cache is renewed by the trigger that Debian has for it.
file(WRITE ${PROJECT_BINARY_DIR}/packages/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/packages/triggers)

include(CPack)
