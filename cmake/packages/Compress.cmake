# Compresses manual pages and changes where CPack has laid out the packages, as Debian wants them, without
# a name or a time that would make two builds differ.
file(GLOB_RECURSE pages LIST_DIRECTORIES false
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/*.[1-9]"
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/changelog")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
