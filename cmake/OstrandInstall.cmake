# What is installed where, below the prefix; and the icons and pages that are made for it. Nothing
# installed knows the prefix, so a folder of it can be moved anywhere.
include (GNUInstallDirs)
set (CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # tests need not be built for it

set (packaging "${CMAKE_SOURCE_DIR}/packaging")
set (made "${CMAKE_BINARY_DIR}/desktop")

# ostrand_install_file (component folder file [name]): a data file.
function (ostrand_install_file component folder file)
    set (rename "")
    if (ARGN)
        set (rename RENAME ${ARGN})
    endif ()
    install (FILES "${file}" DESTINATION "${folder}" COMPONENT ${component} ${rename}
             PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction ()

# ---- programs ----
# Graphviz has its layouts in a folder of its own, which the loader does not look into by itself.
get_filename_component (graphviz_folder "${GRAPHVIZ_DOT_LIBRARY}" DIRECTORY)
set (run_path "")
if (NOT graphviz_folder IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
    set (run_path "${graphviz_folder}")
endif ()
set_target_properties (program_startup program_tool PROPERTIES INSTALL_RPATH "${run_path}")
install (TARGETS program_startup program_tool DESTINATION ${CMAKE_INSTALL_BINDIR}
         COMPONENT ostrand)
if (TARGET program_ranks)
    install (TARGETS program_ranks DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ostrand-mpi)
endif ()

# ---- icons ----
# ostrand_icon (source size folder name): a PNG of this size, and its installation.
set (icon_files "")
function (ostrand_icon source size folder name)
    set (file "${made}/icons/${size}/${folder}/${name}.png")
    get_filename_component (place "${file}" DIRECTORY)
    add_custom_command (OUTPUT "${file}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${place}"
        COMMAND "${RSVG_CONVERT}" --width ${size} --height ${size} --output "${file}" "${source}"
        DEPENDS "${source}" VERBATIM)
    ostrand_install_file (ostrand
        "${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/${folder}" "${file}")
    set (icon_files ${icon_files} "${file}" PARENT_SCOPE)
endfunction ()

set (icons "${CMAKE_SOURCE_DIR}/assets/icon")
set (scalable "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable")
foreach (size 16 22 24 32 48 64 96 128 256 512)
    set (source "${icons}/ostrand.svg")
    if (EXISTS "${icons}/ostrand-${size}.svg")
        set (source "${icons}/ostrand-${size}.svg")
    elseif (size EQUAL 24)
        set (source "${icons}/ostrand-22.svg")
    endif ()
    ostrand_icon ("${source}" ${size} apps ostrand)
    ostrand_icon ("${icons}/mime-network.svg" ${size} mimetypes application-x-ostrand-network)
    ostrand_icon ("${icons}/mime-model.svg" ${size} mimetypes text-x-ostrand-model)
    ostrand_icon ("${icons}/mime-result.svg" ${size} mimetypes application-x-ostrand-result)
endforeach ()
ostrand_install_file (ostrand "${scalable}/apps" "${icons}/ostrand.svg")
ostrand_install_file (ostrand "${scalable}/mimetypes" "${icons}/mime-network.svg"
                      application-x-ostrand-network.svg)
ostrand_install_file (ostrand "${scalable}/mimetypes" "${icons}/mime-model.svg"
                      text-x-ostrand-model.svg)
ostrand_install_file (ostrand "${scalable}/mimetypes" "${icons}/mime-result.svg"
                      application-x-ostrand-result.svg)

# ---- what the desktop reads ----
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/applications "${packaging}/ostrand.desktop")
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/applications
                      "${packaging}/ostrand-viewer.desktop")
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/mime/packages "${packaging}/ostrand.xml")
configure_file ("${packaging}/example.ostrand.Ostrand.metainfo.xml.in"
                "${made}/example.ostrand.Ostrand.metainfo.xml" @ONLY)
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/metainfo
                      "${made}/example.ostrand.Ostrand.metainfo.xml")

# ---- pages and completion ----
find_program (GZIP_PROGRAM gzip REQUIRED)
# ostrand_packed (source name): the file packed by gzip, with no time and no name in it.
set (page_files "")
function (ostrand_packed source name)
    set (file "${made}/${name}.gz")
    get_filename_component (place "${file}" DIRECTORY)
    add_custom_command (OUTPUT "${file}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${place}"
        COMMAND sh -c "\"$1\" -9 -n < \"$2\" > \"$3\"" packed "${GZIP_PROGRAM}" "${source}" "${file}"
        DEPENDS "${source}" VERBATIM)
    set (page_files ${page_files} "${file}" PARENT_SCOPE)
endfunction ()

foreach (page ostrand ostrand-tool ostrand-mpi)
    ostrand_packed ("${packaging}/man/${page}.1" "man/${page}.1")
endforeach ()
ostrand_packed ("${packaging}/changelog" "changelog")
ostrand_install_file (ostrand ${CMAKE_INSTALL_MANDIR}/man1 "${made}/man/ostrand.1.gz")
ostrand_install_file (ostrand ${CMAKE_INSTALL_MANDIR}/man1 "${made}/man/ostrand-tool.1.gz")
if (TARGET program_ranks)
    ostrand_install_file (ostrand-mpi ${CMAKE_INSTALL_MANDIR}/man1 "${made}/man/ostrand-mpi.1.gz")
endif ()

foreach (shell bash zsh fish)
    set (file "${made}/completion/${shell}")
    add_custom_command (OUTPUT "${file}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${made}/completion"
        COMMAND sh -c "\"$1\" completion \"$2\" > \"$3\"" completion
                "$<TARGET_FILE:program_tool>" ${shell} "${file}"
        DEPENDS program_tool VERBATIM)
    list (APPEND page_files "${file}")
endforeach ()
# Each program's name leads bash to the one script of both.
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
                      "${made}/completion/bash" ostrand)
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
                      "${made}/completion/bash" ostrand-tool)
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
                      "${made}/completion/zsh" _ostrand)
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
                      "${made}/completion/fish" ostrand.fish)
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
                      "${made}/completion/fish" ostrand-tool.fish)

add_custom_target (desktop_files ALL DEPENDS ${icon_files} ${page_files})

# ---- documents, manual, examples ----
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/doc/ostrand "${packaging}/copyright")
ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/doc/ostrand "${made}/changelog.gz")
if (TARGET program_ranks)
    ostrand_install_file (ostrand-mpi ${CMAKE_INSTALL_DATADIR}/doc/ostrand-mpi
                          "${packaging}/copyright")
    ostrand_install_file (ostrand-mpi ${CMAKE_INSTALL_DATADIR}/doc/ostrand-mpi
                          "${made}/changelog.gz")
endif ()
set (readable FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
if (IS_DIRECTORY "${CMAKE_SOURCE_DIR}/docs/manual")
    install (DIRECTORY "${CMAKE_SOURCE_DIR}/docs/manual"
             DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ostrand COMPONENT ostrand ${readable})
endif ()
install (DIRECTORY "${CMAKE_SOURCE_DIR}/examples" DESTINATION ${CMAKE_INSTALL_DATADIR}/ostrand
         COMPONENT ostrand ${readable} PATTERN "examples/cluster" EXCLUDE)
foreach (file README.md Snakefile)
    ostrand_install_file (ostrand ${CMAKE_INSTALL_DATADIR}/ostrand/examples/cluster
                          "${CMAKE_SOURCE_DIR}/examples/cluster/${file}")
endforeach ()
file (GLOB scripts CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/examples/cluster/*.sh"
      "${CMAKE_SOURCE_DIR}/examples/cluster/*.slurm")
install (PROGRAMS ${scripts} DESTINATION ${CMAKE_INSTALL_DATADIR}/ostrand/examples/cluster
         COMPONENT ostrand)
