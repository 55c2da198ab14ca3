# The images of the program: make_images renders them from the folder assets while the program is
# built and leaves C++ files in the build folder, which become part of the library resources.
# Nothing of this runs again until a source of an image, or make_images, has changed; even then only
# images that look different are rendered, and files that would stay the same keep their time.
find_program (RSVG_CONVERT rsvg-convert REQUIRED)

add_executable (make_images image_maker/main/main.cpp)
target_link_libraries (make_images PRIVATE ostrand_image_maker)

set (images "${CMAKE_CURRENT_BINARY_DIR}/images")
file (GLOB_RECURSE image_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/assets/*")
# The time of `made` tells when images were last looked at; the other file keeps its own time, so
# that it is compiled again only when an image has become another.
add_custom_command (
    OUTPUT "${images}/made"
    BYPRODUCTS "${images}/embedded_images.cpp"
    COMMAND make_images "${CMAKE_SOURCE_DIR}/assets" "${images}" "${RSVG_CONVERT}"
    COMMAND "${CMAKE_COMMAND}" -E touch "${images}/made"
    DEPENDS make_images ${image_sources}
    COMMENT "Images"
    VERBATIM)
add_custom_target (images DEPENDS "${images}/made")

target_sources (ostrand_resources PRIVATE "${images}/embedded_images.cpp")
add_dependencies (ostrand_resources images)
