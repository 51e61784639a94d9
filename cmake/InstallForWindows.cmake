# A Kobaltrix for Windows, installed on the machine that builds games for it, holds all that these need: the toolchain, what
# runs its programs here, and what the static library links, with its licences. It may be moved.
install(
  FILES ${PROJECT_SOURCE_DIR}/cmake/windows.cmake
  DESTINATION ${kobaltrix_cmake_dir}
  COMPONENT dev)
install(
  PROGRAMS ${PROJECT_SOURCE_DIR}/scripts/wine
  DESTINATION ${kobaltrix_cmake_dir}
  COMPONENT dev)
install(
  DIRECTORY ${KOBALTRIX_WINDOWS}/licenses
  DESTINATION ${kobaltrix_cmake_dir}/game
  COMPONENT dev)
install(
  DIRECTORY ${KOBALTRIX_WINDOWS}/include/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT dev
  PATTERN "gtest" EXCLUDE
  PATTERN "gmock" EXCLUDE
  PATTERN "nlohmann" EXCLUDE
  PATTERN "stb" EXCLUDE)
install(
  DIRECTORY ${KOBALTRIX_WINDOWS}/lib/
  DESTINATION ${CMAKE_INSTALL_LIBDIR}
  COMPONENT dev
  FILES_MATCHING
  PATTERN "*.a"
  PATTERN "libgtest*" EXCLUDE
  PATTERN "libgmock*" EXCLUDE
  PATTERN "cmake" EXCLUDE
  PATTERN "libpng" EXCLUDE
  PATTERN "pkgconfig" EXCLUDE)
file(GLOB pc_files ${KOBALTRIX_WINDOWS}/lib/pkgconfig/*.pc)
list(FILTER pc_files EXCLUDE REGEX "/(gtest|gmock)[^/]*$")
foreach(file IN LISTS pc_files)
  get_filename_component(file_name ${file} NAME)
  file(READ ${file} text)
  string(REPLACE "${KOBALTRIX_WINDOWS}" "\${pcfiledir}/../.." text "${text}")
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/pkgconfig/${file_name} "${text}")
  install(
    FILES ${CMAKE_CURRENT_BINARY_DIR}/pkgconfig/${file_name}
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT dev)
endforeach()
