# cpack makes ostrand_*.deb, ostrand-mpi_*.deb and a .tar.gz that runs from any folder. Two builds of
# one commit give the same bytes: see FinishPackages.cmake.
set (CPACK_GENERATOR "TGZ")
find_program (DPKG_DEB dpkg-deb)
find_program (DPKG_SHLIBDEPS dpkg-shlibdeps)
if (DPKG_DEB AND DPKG_SHLIBDEPS)
    list (PREPEND CPACK_GENERATOR "DEB")
endif ()

set (CPACK_PACKAGE_NAME ostrand)
set (CPACK_PACKAGE_VENDOR "The Ostrand authors")
set (CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set (CPACK_PACKAGE_CONTACT "The Ostrand authors <authors@ostrand.example>")
set (CPACK_PACKAGE_HOMEPAGE_URL "https://ostrand.example/")
set (CPACK_PACKAGE_DESCRIPTION_SUMMARY "workbench for biochemical networks")
set (CPACK_RESOURCE_FILE_LICENSE "${CMAKE_SOURCE_DIR}/LICENSE")
set (CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set (CPACK_STRIP_FILES ON)
set (CPACK_COMPONENTS_ALL ostrand)
if (TARGET program_ranks)
    list (APPEND CPACK_COMPONENTS_ALL ostrand-mpi)
endif ()

set (CPACK_DEB_COMPONENT_INSTALL ON)
set (CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set (CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set (CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set (CPACK_DEBIAN_PACKAGE_SECTION science)
set (CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set (CPACK_DEBIAN_OSTRAND_PACKAGE_NAME ostrand)
set (CPACK_DEBIAN_OSTRAND_PACKAGE_RECOMMENDS
     "fonts-liberation, fonts-dejavu-core, libgl1-mesa-dri")
set (CPACK_DEBIAN_OSTRAND_PACKAGE_SUGGESTS "ostrand-mpi")
set (CPACK_COMPONENT_OSTRAND_DESCRIPTION
"Ostrand draws networks of species, complexes, compartments and reactions,
simulates them by chance or by mean values over any number of starting
concentrations, and shows the curves.

It reads and writes SBML, arranges networks by itself, and finds networks of
enzymatic logic gates that compute a formula. The program ostrand-tool does
all this from the command line.")
set (CPACK_DEBIAN_OSTRAND-MPI_PACKAGE_NAME ostrand-mpi)
set (CPACK_DEBIAN_OSTRAND-MPI_PACKAGE_DEPENDS "mpi-default-bin | openmpi-bin")
set (CPACK_DEBIAN_OSTRAND-MPI_PACKAGE_SUGGESTS "ostrand")
set (CPACK_COMPONENT_OSTRAND-MPI_DESCRIPTION
"This package has the program ostrand-mpi. It simulates all combinations of
the starting concentrations of a model, with replicates, on the processes of
an MPI program. The result is the same, to the last byte, as that of the
program ostrand-tool on one machine.")

set (CPACK_PROJECT_CONFIG_FILE "${CMAKE_BINARY_DIR}/PackageKind.cmake")
string (TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" machine)
configure_file ("${CMAKE_SOURCE_DIR}/cmake/PackageKind.cmake.in" "${CPACK_PROJECT_CONFIG_FILE}"
                @ONLY)
set (CPACK_POST_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/cmake/FinishPackages.cmake")

ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/lintian/overrides
                      "${packaging}/lintian-overrides" ostrand)
include (CPack)

# The packages, with all that is in them built before; tests and benchmarks are not.
add_custom_target (packages COMMAND "${CMAKE_CPACK_COMMAND}" --config CPackConfig.cmake
                   WORKING_DIRECTORY "${CMAKE_BINARY_DIR}" VERBATIM)
add_dependencies (packages desktop_files program_startup program_tool)
if (TARGET program_ranks)
    add_dependencies (packages program_ranks)
endif ()
