# Everything the library calls and does not contain. All of it is packaged by Debian.
find_package(OpenGL REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(SDL2 REQUIRED IMPORTED_TARGET sdl2)
pkg_check_modules(SDL2_image REQUIRED IMPORTED_TARGET SDL2_image)
pkg_check_modules(SDL2_mixer REQUIRED IMPORTED_TARGET SDL2_mixer)
pkg_check_modules(FTGL REQUIRED IMPORTED_TARGET ftgl)
pkg_check_modules(FreeType REQUIRED IMPORTED_TARGET freetype2)
