# How every target of the project is compiled, and the functions that make them.

# Compile options of all our targets. Counts and pictures must be the same on every machine
# and in every build, so a multiplication and an addition are never fused and no fast-math
# is allowed.
add_library (ostrand_options INTERFACE)
target_compile_options (ostrand_options INTERFACE
    -Wall -Wextra -Wconversion -Wshadow -Werror=switch -Wno-psabi -ffp-contract=off
    -pthread) # some libraries ask for it; a precompiled header fits only where all have it
if (CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # This version sees overlapping copies in std::string that are not there (its bug 105651).
    target_compile_options (ostrand_options INTERFACE -Wno-restrict)
endif ()
if (OSTRAND_WARNINGS_AS_ERRORS)
    target_compile_options (ostrand_options INTERFACE -Werror -Wno-error=invalid-pch)
endif ()
if (OSTRAND_MAP_PATHS)
    target_compile_options (ostrand_options INTERFACE
        "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=." "-ffile-prefix-map=${CMAKE_BINARY_DIR}=build")
endif ()
if (OSTRAND_FUZZ)
    # Libraries report their coverage to the fuzzer, which steers by it.
    target_compile_options (ostrand_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options (ostrand_options INTERFACE -fsanitize=fuzzer-no-link)
endif ()
if (OSTRAND_SANITIZE)
    foreach (sanitizer IN LISTS OSTRAND_SANITIZE)
        target_compile_options (ostrand_options INTERFACE -fsanitize=${sanitizer})
        target_link_options (ostrand_options INTERFACE -fsanitize=${sanitizer})
    endforeach ()
    target_compile_options (ostrand_options INTERFACE -fno-omit-frame-pointer)
    if (CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Under the sanitizers this compiler loses track of what the standard library initializes.
        target_compile_options (ostrand_options INTERFACE -Wno-maybe-uninitialized)
    endif ()
    if ("undefined" IN_LIST OSTRAND_SANITIZE)
        target_compile_options (ostrand_options INTERFACE -fno-sanitize-recover=undefined)
    endif ()
endif ()

# Outside libraries that a layer may name in layers.txt.
add_library (external_threads INTERFACE)
target_link_libraries (external_threads INTERFACE Threads::Threads)
add_library (external_zlib INTERFACE)
target_link_libraries (external_zlib INTERFACE ZLIB::ZLIB)
add_library (external_png INTERFACE)
target_link_libraries (external_png INTERFACE PNG::PNG)
add_library (external_jpeg INTERFACE)
target_link_libraries (external_jpeg INTERFACE JPEG::JPEG)
add_library (external_haru INTERFACE)
target_include_directories (external_haru SYSTEM INTERFACE "${HPDF_INCLUDE_DIR}")
target_link_libraries (external_haru INTERFACE "${HPDF_LIBRARY}")
add_library (external_hwy INTERFACE)
target_include_directories (external_hwy SYSTEM INTERFACE "${HWY_INCLUDE_DIR}")
target_link_libraries (external_hwy INTERFACE "${HWY_LIBRARY}")
if (MPI_CXX_FOUND)
    add_library (external_mpi INTERFACE)
    target_compile_definitions (external_mpi INTERFACE OMPI_SKIP_MPICXX MPICH_SKIP_MPICXX)
    target_link_libraries (external_mpi INTERFACE MPI::MPI_CXX)
endif ()

add_library (external_graphviz INTERFACE)
target_include_directories (external_graphviz SYSTEM INTERFACE "${GRAPHVIZ_INCLUDE_DIR}")
target_link_libraries (external_graphviz INTERFACE "${GRAPHVIZ_DOT_LIBRARY}"
    "${GRAPHVIZ_NEATO_LIBRARY}" "${GRAPHVIZ_GVC_LIBRARY}" "${GRAPHVIZ_CGRAPH_LIBRARY}")
add_library (external_rsvg INTERFACE)
target_link_libraries (external_rsvg INTERFACE PkgConfig::RSVG)
add_library (external_sbml INTERFACE)
target_include_directories (external_sbml SYSTEM INTERFACE "${SBML_INCLUDE_DIR}")
target_link_libraries (external_sbml INTERFACE "${SBML_LIBRARY}")
add_library (external_opengl INTERFACE)
target_link_libraries (external_opengl INTERFACE OpenGL::GL OpenGL::GLU)
add_library (external_fltk INTERFACE)
target_link_libraries (external_fltk INTERFACE fltk::gl fltk::images fltk::fltk)

# ostrand_precompile (target): the standard headers that nearly every file includes are read once for
# all libraries. Only where OSTRAND_PRECOMPILE asks for it: a build without shows that each file
# includes what it needs.
function (ostrand_precompile target)
    if (NOT OSTRAND_PRECOMPILE)
        return ()
    endif ()
    if (NOT TARGET ostrand_base OR target STREQUAL "ostrand_base")
        target_precompile_headers (${target} PRIVATE <algorithm> <array> <cmath> <cstdint> <filesystem>
            <functional> <map> <memory> <optional> <set> <span> <string> <string_view> <utility> <vector>)
    else ()
        target_precompile_headers (${target} REUSE_FROM ostrand_base)
    endif ()
endfunction ()

# ostrand_layer (folder uses...): the static library of one folder of src. The libraries named
# here are all that its files may include; tests/layers holds every #include against that. Without
# MPI the folders that need it are left out.
function (ostrand_layer name)
    if ("mpi" IN_LIST ARGN AND NOT TARGET external_mpi)
        message (STATUS "MPI was not found: ${name} is not built")
        return ()
    endif ()
    file (GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp")
    if (NOT sources)
        return ()
    endif ()
    add_library (ostrand_${name} STATIC ${sources})
    target_include_directories (ostrand_${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries (ostrand_${name} PUBLIC ostrand_options)
    ostrand_precompile (ostrand_${name})
    foreach (used IN LISTS ARGN)
        if (TARGET external_${used})
            target_link_libraries (ostrand_${name} PUBLIC external_${used})
        elseif (TARGET ostrand_${used})
            target_link_libraries (ostrand_${name} PUBLIC ostrand_${used})
        endif ()
    endforeach ()
endfunction ()

# ostrand_embed_chapters (name folder): the folder's *.html become the chapters of the library, in the
# order of their file names. A change of a text rebuilds it.
function (ostrand_embed_chapters name folder)
    file (GLOB texts CONFIGURE_DEPENDS "${folder}/*.html")
    set (made "${CMAKE_CURRENT_BINARY_DIR}/${name}_chapters.cpp")
    set (script "${CMAKE_SOURCE_DIR}/cmake/EmbedChapters.cmake")
    add_custom_command (OUTPUT "${made}"
        COMMAND "${CMAKE_COMMAND}" "-DOUTPUT=${made}" "-DTEXTS=${texts}" -P "${script}"
        DEPENDS ${texts} "${script}" VERBATIM)
    target_sources (ostrand_${name} PRIVATE "${made}")
endfunction ()
