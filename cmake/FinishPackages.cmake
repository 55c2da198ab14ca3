# Run by cpack behind each kind of packages: packs them again with sorted names, one owner, folders of
# the same rights whatever the umask was, and the time that SOURCE_DATE_EPOCH tells (else that of the
# commit), so that nothing of this machine and this moment is left in them.
set (epoch "$ENV{SOURCE_DATE_EPOCH}")
if (NOT epoch)
    execute_process (COMMAND git -C "${CMAKE_CURRENT_LIST_DIR}" log -1 --format=%ct
                     OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif ()
if (NOT epoch MATCHES "^[0-9]+$")
    message (STATUS "Neither SOURCE_DATE_EPOCH nor a commit: packages carry the time of now")
    string (TIMESTAMP epoch "%s")
endif ()
set (ENV{SOURCE_DATE_EPOCH} "${epoch}")

foreach (package IN LISTS CPACK_PACKAGE_FILES)
    set (work "${package}.unpacked")
    file (REMOVE_RECURSE "${work}")
    file (MAKE_DIRECTORY "${work}")
    if (package MATCHES "\\.deb$")
        execute_process (COMMAND dpkg-deb --raw-extract "${package}" "${work}"
                         COMMAND_ERROR_IS_FATAL ANY)
        execute_process (COMMAND sh -c "LC_ALL=C sort -k 2 -o \"$1\" \"$1\"" sort
                                 "${work}/DEBIAN/md5sums" COMMAND_ERROR_IS_FATAL ANY)
        execute_process (COMMAND find "${work}" -type d -exec chmod 755 {} +
                         COMMAND_ERROR_IS_FATAL ANY)
        execute_process (COMMAND sh -c "find \"$1\" -exec touch -h -d \"@$2\" {} +" touch
                                 "${work}" "${epoch}" COMMAND_ERROR_IS_FATAL ANY)
        execute_process (COMMAND dpkg-deb --root-owner-group -Zxz --build "${work}" "${package}"
                         OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    else ()
        execute_process (COMMAND tar -xzf "${package}" -C "${work}" COMMAND_ERROR_IS_FATAL ANY)
        execute_process (COMMAND find "${work}" -type d -exec chmod 755 {} +
                         COMMAND_ERROR_IS_FATAL ANY)
        execute_process (
            COMMAND sh -c "cd \"$1\" && LC_ALL=C tar --sort=name --format=gnu --owner=0 --group=0 \
--numeric-owner --mtime=\"@$2\" -cf - * | gzip -9 -n > \"$3\"" tar "${work}" "${epoch}" "${package}"
            COMMAND_ERROR_IS_FATAL ANY)
    endif ()
    file (REMOVE_RECURSE "${work}")
endforeach ()
