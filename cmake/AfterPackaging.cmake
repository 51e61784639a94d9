# CPack runs this when the packages are made, and takes what it finds then. The library's gets what CPack does not know:
# its symbols file, that those of several architectures lie beside each other, and the trigger by which dpkg tells of a
# new library, which Debian wants in the place of CPack's scripts.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  if(NOT package MATCHES "/${CPACK_KOBALTRIX_RUNTIME}_([^_]*)-[^_-]*_[^_]*\\.deb$")
    continue()
  endif()
  set(version ${CMAKE_MATCH_1})
  set(tree ${CPACK_TEMPORARY_DIRECTORY}/${CPACK_KOBALTRIX_RUNTIME})
  file(REMOVE_RECURSE ${tree})
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  file(WRITE ${tree}/DEBIAN/triggers "activate-noawait ldconfig\n")
  file(READ ${tree}/DEBIAN/control control)
  string(STRIP "${control}" control)
  file(WRITE ${tree}/DEBIAN/control "${control}\nMulti-Arch: same\n")
  set(listed)
  if(CPACK_KOBALTRIX_SYMBOLS)
    set(listed -I${CPACK_KOBALTRIX_SYMBOLS})
  endif()
  # A name that is gone is an error; those that are new belong to this version.
  execute_process(
    COMMAND dpkg-gensymbols -c1 -q -p${CPACK_KOBALTRIX_RUNTIME} -v${version} -P${tree} ${listed}
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND dpkg-deb --root-owner-group --build ${tree} ${package} OUTPUT_QUIET
                          COMMAND_ERROR_IS_FATAL ANY)
endforeach()
