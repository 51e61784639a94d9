# kobaltrix_sprites(TARGET SOURCE... [DESTINATION FOLDER] [STEP_MS N])
#
# Makes a sprite file of each source, with its sheet beside it, before TARGET is built, and again when a source changes;
# `kxsprite check` looks at each. The target TARGET_sprites makes them alone. A source is
#   FILE.json              of kxsprite, or exported with a sheet; the sheet lies beside it and is copied, or is made in
#                          the destination by a command of the project's own
#   FILE.aseprite, .ase    a drawing
#   FOLDER                 pictures, or folders of pictures, one for each animation
# What is drawn keeps its whole canvas (--no-trim), so that nothing moves in the game when a drawing grows. All comes into
# FOLDER, `assets` unless it is given, beside the program; the property KOBALTRIX_FILES of TARGET_sprites names the
# files. STEP_MS is the length of a logic step (16).
function(kobaltrix_sprites target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESTINATION;STEP_MS" "")
  if(NOT arg_DESTINATION)
    set(arg_DESTINATION assets)
  endif()
  get_target_property(folder ${target} RUNTIME_OUTPUT_DIRECTORY)
  if(NOT folder)
    set(folder ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  get_filename_component(folder "${arg_DESTINATION}" ABSOLUTE BASE_DIR ${folder})
  set(step "")
  if(arg_STEP_MS)
    set(step --step-ms ${arg_STEP_MS})
  endif()

  set(kxsprite Kobaltrix::kxsprite)
  get_target_property(is_installed Kobaltrix::kxsprite IMPORTED)
  if(is_installed AND CMAKE_CROSSCOMPILING) # CMake knows by itself how programs of the project are run
    set(kxsprite ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:Kobaltrix::kxsprite>)
  endif()

  set(sprites "")
  set(files "")
  foreach(source IN LISTS arg_UNPARSED_ARGUMENTS)
    get_filename_component(source "${source}" ABSOLUTE)
    get_filename_component(name "${source}" NAME_WE)
    set(sprite ${folder}/${name}.spr)
    set(depends "${source}")
    set(made ${sprite})
    set(command make "${source}" -o ${sprite} ${step})
    if(IS_DIRECTORY "${source}")
      file(GLOB_RECURSE depends CONFIGURE_DEPENDS "${source}/*")
      set(command pack "${source}" -o ${folder}/${name} --no-trim ${step})
      list(APPEND made ${folder}/${name}.png)
    elseif(source MATCHES "\\.json$")
      _kobaltrix_sheet("${source}" ${folder} sheet)
      list(APPEND depends ${sheet})
      list(APPEND files ${sheet})
    else()
      list(APPEND command --no-trim)
      list(APPEND made ${folder}/${name}.png)
    endif()
    add_custom_command(
      OUTPUT ${made}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${kxsprite} ${command}
      COMMAND ${kxsprite} check ${sprite}
      DEPENDS $<TARGET_FILE:Kobaltrix::kxsprite> ${depends}
      COMMENT "Making ${name}.spr"
      VERBATIM)
    list(APPEND sprites ${sprite})
    list(APPEND files ${made})
  endforeach()
  list(REMOVE_DUPLICATES files)
  add_custom_target(${target}_sprites DEPENDS ${sprites})
  set_target_properties(${target}_sprites PROPERTIES KOBALTRIX_FILES "${files}")
  add_dependencies(${target} ${target}_sprites)
endfunction()

# The sheet that a JSON file names, where the sprite file will look for it; copied if it lies beside the JSON file.
function(_kobaltrix_sheet json folder result)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${json}")
  file(READ "${json}" text)
  string(JSON name ERROR_VARIABLE missing GET "${text}" texture)
  if(missing)
    string(JSON name ERROR_VARIABLE missing GET "${text}" meta image)
    string(REGEX REPLACE ".*[/\\]" "" name "${name}")
  endif()
  if(missing OR NOT name) # if that is a mistake, kxsprite says so
    set(${result} "" PARENT_SCOPE)
    return()
  endif()
  set(sheet ${folder}/${name})
  set(${result} ${sheet} PARENT_SCOPE)
  get_filename_component(beside "${json}" DIRECTORY)
  get_property(known DIRECTORY PROPERTY kobaltrix_sheets)
  if(EXISTS "${beside}/${name}" AND NOT sheet IN_LIST known) # several sprites may share one
    set_property(DIRECTORY APPEND PROPERTY kobaltrix_sheets ${sheet})
    add_custom_command(
      OUTPUT ${sheet}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${CMAKE_COMMAND} -E copy "${beside}/${name}" ${sheet}
      DEPENDS "${beside}/${name}"
      VERBATIM)
  endif()
endfunction()
