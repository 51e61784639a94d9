# CPack runs this when all files of the packages lie in place. In a package kxsprite finds the library where the
# system looks for libraries; Debian wants no other path in it.
file(GLOB_RECURSE programs ${CPACK_TEMPORARY_DIRECTORY}/kxsprite)
foreach(program IN LISTS programs)
  file(RPATH_REMOVE FILE ${program})
endforeach()
