# The Debian packages libkobaltrix and libkobaltrix-dev: `cmake --workflow --preset package` leaves them in
# build/package. kxsprite goes with the headers, since those who build games are those who use it.
set(CPACK_PACKAGE_VENDOR Kobaltrix)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "framework for 2D games in C++")
set(CPACK_PACKAGE_CONTACT "Kobaltrix <kobaltrix@kobaltrix.invalid>")
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
if(APPLE)
  set(CPACK_GENERATOR TGZ) # not tested
else()
  set(CPACK_GENERATOR DEB)
endif()

set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/BeforePackaging.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
# What packages of games depend on: minor versions differ in the soname, which is in the same line.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkobaltrix)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "Windows with OpenGL, a logic loop of fixed rate, textures, sprites, text,
input, sound, widgets and network messages for games in C++.
.
This package holds the library that games are linked with.")
# SDL opens this one by its name.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS libgl1)

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libkobaltrix-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "Windows with OpenGL, a logic loop of fixed rate, textures, sprites, text,
input, sound, widgets and network messages for games in C++.
.
This package holds the headers, the static library, the kit for tests, the
files for CMake and pkg-config, and kxsprite, which makes sprite files.")
set(development_packages libsdl2-dev libsdl2-image-dev libsdl2-mixer-dev libftgl-dev libfreetype-dev libharfbuzz-dev
                         libfribidi-dev libunibreak-dev libfontconfig-dev zlib1g-dev libzstd-dev libgl-dev
                         "libglu1-mesa-dev | libglu-dev")
list(JOIN development_packages ", " development_packages)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libkobaltrix (= ${PROJECT_VERSION}), ${development_packages}")

# Only packages have a folder of their own to say this in.
foreach(component_package runtime=libkobaltrix dev=libkobaltrix-dev)
  string(REPLACE "=" ";" component_package ${component_package})
  list(GET component_package 0 component)
  list(GET component_package 1 package)
  install(
    FILES ${PROJECT_SOURCE_DIR}/packaging/copyright
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}
    COMPONENT ${component}
    EXCLUDE_FROM_ALL)
endforeach()
include(CPack)
