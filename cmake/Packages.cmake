# The Debian packages of the library and of what games are built with: `cmake --workflow --preset package` leaves them in
# build/package. kxsprite goes with the headers, since those who build games are those who use it.
#
# The library's package has the soname in its name, as Debian wants it: those of two minor versions lie beside each other.
set(runtime_package libkobaltrix${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
# Debian's changelog says which packaging of the version this is.
set(changelog ${PROJECT_SOURCE_DIR}/packaging/changelog)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^kobaltrix \\(${PROJECT_VERSION}-([0-9]+)\\) ")
  message(FATAL_ERROR "${changelog} begins with another version than ${PROJECT_VERSION}: ${newest}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
set(debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

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
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/AfterPackaging.cmake)
set(CPACK_KOBALTRIX_RUNTIME ${runtime_package})
if(CMAKE_SIZEOF_VOID_P EQUAL 8) # the names are others elsewhere
  set(CPACK_KOBALTRIX_SYMBOLS ${PROJECT_SOURCE_DIR}/packaging/symbols)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_SOURCE kobaltrix)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
# What packages of games depend on: minor versions differ in the soname, which is in the same line.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
if(runtime_package STREQUAL libkobaltrix0.1)
  # What this one was called at first; packages of games may name it.
  foreach(relation CONFLICTS REPLACES)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_${relation} "libkobaltrix (<< 0.1.0-1)")
  endforeach()
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_PROVIDES "libkobaltrix (= ${debian_version})")
endif()
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
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${runtime_package} (= ${debian_version}), ${development_packages}")

# Only packages have a folder of their own for these.
foreach(component_package runtime=${runtime_package} dev=libkobaltrix-dev)
  string(REPLACE "=" ";" component_package ${component_package})
  list(POP_FRONT component_package component package)
  foreach(file_name packaging/copyright=copyright packaging/changelog=changelog.Debian CHANGELOG.md=changelog
                    README.md=README.md)
    string(REPLACE "=" ";" file_name ${file_name})
    list(POP_FRONT file_name file name)
    if(component STREQUAL dev OR NOT name STREQUAL README.md)
      install(
        FILES ${PROJECT_SOURCE_DIR}/${file}
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}
        COMPONENT ${component}
        RENAME ${name}
        EXCLUDE_FROM_ALL)
    endif()
  endforeach()
endforeach()
include(CPack)
