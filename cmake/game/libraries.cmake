# Runs while the portable folder of a game is laid down. Copies the libraries that the program needs into its folder
# lib, except those that have to be the machine's own, and the licences of all of them into its folder licenses.
# Given: `program`, as it was built, and `folder`.
set(licenses "${folder}/licenses")

# These are the machine's own, by the names that linkers know:
set(machine
    # The C and C++ libraries: older ones than the driver was built for would keep it from being loaded.
    "ld-linux.*" "libc" "libm" "libdl" "librt" "libpthread" "libresolv" "libutil" "libanl" "libgcc_s" "libstdc\\+\\+"
    # The driver, what speaks to the display for it, and what it was built with. (libOpenGL is no part of it, but hands
    # over to libGLdispatch; libGLU needs it, and not every desktop has it.)
    "libGL" "libGLX" "libGLdispatch" "libEGL" "libGLES.*" "libdrm" "libgbm" "libX11" "libX11-xcb" "libxcb.*"
    "libwayland-client" "libwayland-server" "libz" "libzstd" "liblzma" "libexpat"
    # What has settings or plugins of the machine: sound, fonts, messages between programs.
    "libasound" "libdbus-1" "libfontconfig" "libfreetype" "libharfbuzz.*" "libfribidi" "libglib-2.0" "libgobject-2.0"
    "libgmodule-2.0" "libgio-2.0")
list(TRANSFORM machine APPEND "\\.so.*")
list(TRANSFORM machine PREPEND "^")

file(
  GET_RUNTIME_DEPENDENCIES
  EXECUTABLES "${program}"
  RESOLVED_DEPENDENCIES_VAR libraries
  UNRESOLVED_DEPENDENCIES_VAR missing
  PRE_EXCLUDE_REGEXES ${machine})
if(missing)
  list(JOIN missing " " missing)
  message(FATAL_ERROR "The game needs libraries that are not found here: ${missing}")
endif()

# Which of Debian's packages each comes from. Its record may have the path of before /lib became a link.
set(real_libraries "")
set(patterns "")
foreach(library IN LISTS libraries)
  file(REAL_PATH "${library}" real)
  get_filename_component(file "${real}" NAME)
  list(APPEND real_libraries "${real}")
  list(APPEND patterns "*/${file}")
endforeach()
execute_process(COMMAND dpkg-query -S ${patterns} OUTPUT_VARIABLE owners ERROR_QUIET RESULT_VARIABLE found)
string(REGEX MATCHALL "[^\n]+" owners "${owners}")
set(packages "")
set(packaged "")
foreach(owner IN LISTS owners)
  if(owner MATCHES "^([^:, ]+)(:[^ ]*)?: (/.*)$")
    list(APPEND packages "${CMAKE_MATCH_1}")
    file(REAL_PATH "${CMAKE_MATCH_3}" real)
    list(APPEND packaged "${real}")
  endif()
endforeach()

set(notes "The libraries beside this game, and where they come from. Their licences are in this folder.\n\n")
set(shared_texts "")
file(MAKE_DIRECTORY "${folder}/lib")
foreach(library real IN ZIP_LISTS libraries real_libraries)
  get_filename_component(file "${library}" NAME)
  file(COPY_FILE "${real}" "${folder}/lib/${file}")
  file(CHMOD "${folder}/lib/${file}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  # With a path of its own it would not look where the program does.
  file(RPATH_REMOVE FILE "${folder}/lib/${file}")

  list(FIND packaged "${real}" index)
  set(package "")
  if(index GREATER_EQUAL 0)
    list(GET packages ${index} package)
  endif()
  set(copyright "/usr/share/doc/${package}/copyright")
  if(NOT package OR NOT EXISTS "${copyright}")
    message(WARNING "No licence is known of ${library}. Who passes the game on has to add it.")
    string(APPEND notes "lib/${file}\n    of the machine that the game was packed on\n")
    continue()
  endif()
  execute_process(COMMAND dpkg-query -W -f "\${Version}, built from the source package \${source:Package} \${source:Version}\n"
                          ${package} OUTPUT_VARIABLE version)
  string(REGEX REPLACE "\n.*" "" version "${version}") # a package of two architectures is there twice
  string(APPEND notes "lib/${file}\n    Debian's package ${package} ${version}\n")
  file(READ "${copyright}" text)
  file(WRITE "${licenses}/${package}.txt" "${text}")
  string(REGEX MATCHALL "/usr/share/common-licenses/[A-Za-z0-9.+-]*[A-Za-z0-9]" texts "${text}")
  list(APPEND shared_texts ${texts})
endforeach()
list(REMOVE_DUPLICATES shared_texts)
foreach(text IN LISTS shared_texts)
  get_filename_component(name "${text}" NAME)
  if(EXISTS "${text}")
    file(REAL_PATH "${text}" real)
    file(MAKE_DIRECTORY "${licenses}/common-licenses")
    file(COPY_FILE "${real}" "${licenses}/common-licenses/${name}")
  endif()
endforeach()
file(WRITE "${licenses}/libraries.txt" "${notes}")
