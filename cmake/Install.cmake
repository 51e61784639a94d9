# What `cmake --install` lays down, and how other projects find it there. Two components, one for each Debian package:
# `runtime` is what a game needs to run, `dev` what it needs to be built.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(kobaltrix_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Kobaltrix)

# kobaltrix_install_target(TARGET SET): installs a library or a program; the set is a file of its own in
# the package, so that a project that wants one library need not have what another one links.
function(kobaltrix_install_target target set)
  install(
    TARGETS ${target}
    EXPORT Kobaltrix${set}Targets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT dev
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    FRAMEWORK DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
    PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Kobaltrix COMPONENT dev
    INCLUDES
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(
    EXPORT Kobaltrix${set}Targets
    NAMESPACE Kobaltrix::
    DESTINATION ${kobaltrix_cmake_dir}
    COMPONENT dev)
endfunction()

set_target_properties(KobaltrixStatic PROPERTIES EXPORT_NAME Static)
kobaltrix_install_target(KobaltrixStatic Static)
if(TARGET Kobaltrix)
  kobaltrix_install_target(Kobaltrix Shared)
endif()
if(TARGET kxsprite)
  # Finds the library wherever the two are moved together.
  file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  if(APPLE)
    set(here @loader_path)
  else()
    set(here $ORIGIN)
  endif()
  set_target_properties(kxsprite PROPERTIES INSTALL_RPATH ${here}/${libraries})
  kobaltrix_install_target(kxsprite Tools)
  install(
    FILES ${PROJECT_SOURCE_DIR}/cmake/KobaltrixSprites.cmake
    DESTINATION ${kobaltrix_cmake_dir}
    COMPONENT dev)
  if(TARGET kxsprite_manual)
    install(
      FILES ${PROJECT_BINARY_DIR}/tools/kxsprite.1
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
      COMPONENT dev)
  endif()
endif()
# What makes a game of sources; the library's licence goes with each, since it is in the program.
install(
  FILES ${PROJECT_SOURCE_DIR}/cmake/KobaltrixGame.cmake ${PROJECT_SOURCE_DIR}/packaging/copyright
  DESTINATION ${kobaltrix_cmake_dir}
  COMPONENT dev)
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/cmake/game
  DESTINATION ${kobaltrix_cmake_dir}
  COMPONENT dev)
if(WIN32 AND KOBALTRIX_WINDOWS)
  include(${PROJECT_SOURCE_DIR}/cmake/InstallForWindows.cmake)
endif()
set(header_folders ${PROJECT_SOURCE_DIR}/include/Kobaltrix)
if(TARGET KobaltrixTest AND KOBALTRIX_BUILD_TESTKIT)
  kobaltrix_install_target(KobaltrixTest Test)
  list(APPEND header_folders ${PROJECT_SOURCE_DIR}/testkit/KobaltrixTest)
endif()
install(
  DIRECTORY ${header_folders}
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT dev
  FILES_MATCHING
  PATTERN *.h)

# Before version 1.0 a new minor version may break what is built against the old one; the soname says the same.
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KobaltrixConfig.cmake.in KobaltrixConfig.cmake
                              INSTALL_DESTINATION ${kobaltrix_cmake_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(KobaltrixConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/KobaltrixConfig.cmake ${PROJECT_BINARY_DIR}/KobaltrixConfigVersion.cmake
  DESTINATION ${kobaltrix_cmake_dir}
  COMPONENT dev)

# For pkg-config. Paths are written relative to the file's own, so that an installed tree may be moved, unless
# somebody chose absolute ones. kobaltrix-static.pc links this library alone statically: --static would take in all that
# the others link as well, and Debian does not carry all of that.
set(pc_modules ${kobaltrix_modules})
list(TRANSFORM pc_modules REPLACE ".*=" "")
set(pc_shared "-L\${libdir} -lKobaltrix")
set(pc_static "\${libdir}/libKobaltrix.a")
if(APPLE) # not tested
  set(pc_shared "-F\${libdir} -framework Kobaltrix")
  string(APPEND pc_static " -framework OpenGL")
else()
  list(APPEND pc_modules gl glu)
endif()
list(JOIN pc_modules " " pc_modules)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
foreach(kind LIBDIR INCLUDEDIR)
  set(pc_${kind} "\${prefix}/${CMAKE_INSTALL_${kind}}")
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${kind}}")
    set(pc_${kind} "${CMAKE_INSTALL_${kind}}")
  endif()
endforeach()

# kobaltrix_pc(FILE LIBS FIELD [FLAGS]): FIELD names what the library links, for those who need it too.
function(kobaltrix_pc file pc_libs pc_requires)
  list(JOIN ARGN " " pc_flags)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/kobaltrix.pc.in ${file} @ONLY)
  install(
    FILES ${PROJECT_BINARY_DIR}/${file}
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT dev)
endfunction()
kobaltrix_pc(kobaltrix-static.pc "${pc_static}" Requires)
if(TARGET Kobaltrix)
  kobaltrix_pc(kobaltrix.pc "${pc_shared}" Requires.private " -DKX_SHARED_LIBRARY")
else()
  kobaltrix_pc(kobaltrix.pc "${pc_static}" Requires)
endif()
if(TARGET KobaltrixTest AND KOBALTRIX_BUILD_TESTKIT)
  # Beside kobaltrix or kobaltrix-static, whichever the game links.
  set(pc_modules sdl2)
  kobaltrix_pc(kobaltrix-test.pc "\${libdir}/libKobaltrixTest.a" Requires)
endif()
