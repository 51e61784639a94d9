# CPack runs this when all files of the packages lie in place.

# In a package kxsprite finds the library where the system looks for libraries; Debian wants no other path in it.
file(GLOB_RECURSE programs ${CPACK_TEMPORARY_DIRECTORY}/kxsprite)
foreach(program IN LISTS programs)
  file(RPATH_REMOVE FILE ${program})
endforeach()

# Debian wants manual pages and changelogs compressed, and the same bytes whenever and wherever they are.
file(GLOB_RECURSE texts ${CPACK_TEMPORARY_DIRECTORY}/*)
list(FILTER texts INCLUDE REGEX "/man1/[^/]*\\.1$|/changelog(\\.Debian)?$")
foreach(text IN LISTS texts)
  execute_process(COMMAND gzip -9 -n ${text} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
