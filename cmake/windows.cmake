# The toolchain for Windows on a Debian machine: `cmake --preset windows`, or for a game
# -DCMAKE_TOOLCHAIN_FILE=FOLDER/lib/cmake/Kobaltrix/windows.cmake, where FOLDER is an installed Kobaltrix for Windows,
# which is then found. The libraries that it calls come from KOBALTRIX_WINDOWS: that same folder, or for a checkout one
# that scripts/windows-dependencies fills.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# Of the two kinds the one with threads of the standard library.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# What is built runs here, too: kxsprite, which makes the sprites, and tests.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine) # as installed
if(NOT EXISTS ${CMAKE_CROSSCOMPILING_EMULATOR})
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine)
endif()

# A game for Windows brings nothing but itself: the compiler's own libraries stand inside each program.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)

if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/KobaltrixConfig.cmake)
  get_filename_component(KOBALTRIX_WINDOWS ${CMAKE_CURRENT_LIST_DIR}/../../.. ABSOLUTE)
elseif(NOT DEFINED KOBALTRIX_WINDOWS)
  set(KOBALTRIX_WINDOWS "$ENV{KOBALTRIX_WINDOWS}")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KOBALTRIX_WINDOWS)
set(CMAKE_FIND_ROOT_PATH ${KOBALTRIX_WINDOWS} ${CMAKE_PREFIX_PATH} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(ENV{PKG_CONFIG_LIBDIR} ${KOBALTRIX_WINDOWS}/lib/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "")
set(PKG_CONFIG_ARGN --static)
