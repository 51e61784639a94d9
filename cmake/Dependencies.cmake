# Everything the library calls and does not contain. All of it is packaged by Debian.
find_package(OpenGL REQUIRED)
if(APPLE AND NOT TARGET OpenGL::GLU) # a part of the system's OpenGL framework
  add_library(OpenGL::GLU INTERFACE IMPORTED)
  target_link_libraries(OpenGL::GLU INTERFACE OpenGL::GL)
endif()
find_package(PkgConfig REQUIRED)
find_package(nlohmann_json REQUIRED) # headers alone, for the sources of the library and of kxsprite
# NAME=MODULE: what pkg-config knows as MODULE is the target PkgConfig::NAME. Installed files repeat this list.
set(kobaltrix_modules SDL2=sdl2 SDL2_image=SDL2_image SDL2_mixer=SDL2_mixer FTGL=ftgl FreeType=freetype2
                       HarfBuzz=harfbuzz FriBidi=fribidi Unibreak=libunibreak Fontconfig=fontconfig ZLIB=zlib ZSTD=libzstd)
foreach(pair IN LISTS kobaltrix_modules)
  string(REPLACE "=" ";" pair ${pair})
  list(GET pair 0 name)
  list(GET pair 1 module)
  pkg_check_modules(${name} REQUIRED IMPORTED_TARGET ${module})
endforeach()
# The tool alone links this, and compiles that.
if(KOBALTRIX_BUILD_TOOLS OR KOBALTRIX_BUILD_DEMO OR KOBALTRIX_BUILD_EXAMPLES)
  find_package(GIF REQUIRED)
  find_path(STB_INCLUDES stb/stb_rect_pack.h REQUIRED)
endif()
