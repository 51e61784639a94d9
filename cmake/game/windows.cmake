# What a game is for Windows: the parts of kobaltrix_add_game() that are for it alone, which see that function's variables,
# and a function for programs of another kind.

# kobaltrix_add_manifest(TARGET)
#
# Gives a program a manifest, as those of kobaltrix_add_game() have it: what main() gets is UTF-8, as all texts of the
# library are, paths may be longer than 260 characters, and windows are as sharp as the display.
function(kobaltrix_add_manifest target)
  if(WIN32)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}_manifest.rc)
    file(CONFIGURE OUTPUT ${script} CONTENT "1 24 \"${CMAKE_CURRENT_FUNCTION_LIST_DIR}/windows/program.manifest\"\n")
    _kobaltrix_resources(${target} ${script})
  endif()
endfunction()

function(_kobaltrix_resources target script)
  target_sources(${target} PRIVATE ${script})
  set_property(
    SOURCE ${script}
    DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
    APPEND
    PROPERTY OBJECT_DEPENDS ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/windows/program.manifest)
  if(MSVC)
    target_link_options(${target} PRIVATE /MANIFEST:NO) # it has one
  endif()
endfunction()

# The program: no console, an icon, what it is, a manifest.
function(_kobaltrix_game_resources)
  set(here ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  if(MSVC)
    target_link_options(${name} PRIVATE /ENTRY:mainCRTStartup) # a plain main()
  endif()

  set(rc_icon "")
  _kobaltrix_game_ico(icon)
  if(icon)
    set(rc_icon "1 ICON \"${icon}\"\n")
  endif()
  _kobaltrix_game_numbers(numbers)
  list(JOIN numbers , rc_numbers)
  foreach(option TITLE SUMMARY DEVELOPER VERSION)
    set(rc_${option} "${game_${option}}")
  endforeach()
  string(SUBSTRING "${game_DATE}" 0 4 year)
  set(copyright_line "© ${year} ${game_DEVELOPER}")
  set(rc_COPYRIGHT "${copyright_line}")
  foreach(option TITLE SUMMARY DEVELOPER COPYRIGHT)
    string(REPLACE "\\" "\\\\" rc_${option} "${rc_${option}}")
    string(REPLACE "\"" "\"\"" rc_${option} "${rc_${option}}")
  endforeach()
  set(script ${described}/${name}.rc)
  configure_file(${here}/windows/game.rc.in ${script} @ONLY)
  _kobaltrix_resources(${name} ${script})
  if(icon)
    set_property(SOURCE ${script} APPEND PROPERTY OBJECT_DEPENDS ${icon})
  endif()
  set(icon "${icon}" PARENT_SCOPE)
  set(numbers "${numbers}" PARENT_SCOPE)
  set(copyright_line "${copyright_line}" PARENT_SCOPE)
endfunction()

# The version as Windows compares it: four numbers.
function(_kobaltrix_game_numbers result)
  string(REGEX MATCHALL "[0-9]+" found "${game_VERSION}")
  set(numbers "")
  foreach(number IN LISTS found ITEMS 0 0 0 0)
    if(number GREATER 65535)
      set(number 65535)
    endif()
    math(EXPR number "${number}")
    list(APPEND numbers ${number})
  endforeach()
  list(SUBLIST numbers 0 4 numbers)
  set(${result} "${numbers}" PARENT_SCOPE)
endfunction()

# Has the icon made in all sizes that Windows shows: of the PNG that has the size, else of the SVG, else of the next larger
# PNG. None is made larger than it was drawn.
function(_kobaltrix_game_ico result)
  set(${result} "" PARENT_SCOPE)
  set(names magick)
  if(NOT CMAKE_HOST_WIN32) # has another program of this name
    list(APPEND names convert)
  endif()
  find_program(KOBALTRIX_MAGICK NAMES ${names})
  find_program(KOBALTRIX_RSVG_CONVERT rsvg-convert)
  mark_as_advanced(KOBALTRIX_MAGICK KOBALTRIX_RSVG_CONVERT)
  if(NOT KOBALTRIX_MAGICK)
    message(WARNING "${name} has no icon: ImageMagick, which makes it, is not found.")
    return()
  endif()

  set(sizes "")
  set(drawing "")
  set(sources "")
  foreach(file IN LISTS game_ICON)
    get_filename_component(file "${file}" ABSOLUTE)
    list(APPEND sources "${file}")
    _kobaltrix_game_icon("${file}" folder suffix)
    if(folder STREQUAL scalable)
      set(drawing "${file}")
    else()
      string(REGEX REPLACE "x.*" "" size ${folder})
      list(APPEND sizes ${size})
      set(picture_${size} "${file}")
    endif()
  endforeach()
  if(drawing AND NOT KOBALTRIX_RSVG_CONVERT)
    message(WARNING "${name}: ${drawing} is no part of its icon: rsvg-convert, which draws it, is not found.")
    set(drawing "")
  endif()
  list(SORT sizes COMPARE NATURAL)

  set(pictures "")
  set(drawn "")
  foreach(size 16 20 24 32 40 48 64 128 256)
    set(source "")
    foreach(candidate IN LISTS sizes)
      if(candidate GREATER_EQUAL size AND NOT source)
        set(source ${candidate})
      endif()
    endforeach()
    if(drawing AND NOT size IN_LIST sizes)
      set(file ${described}/icon_${size}.png)
      list(APPEND drawn COMMAND ${KOBALTRIX_RSVG_CONVERT} -w ${size} -h ${size} -o ${file} "${drawing}")
      list(APPEND pictures "${file}")
    elseif(source)
      list(APPEND pictures "(" "${picture_${source}}" -resize ${size}x${size} ")")
    endif()
  endforeach()
  if(NOT pictures)
    return()
  endif()
  set(icon ${described}/icon.ico)
  add_custom_command(
    OUTPUT ${icon}
    ${drawn}
    COMMAND ${KOBALTRIX_MAGICK} ${pictures} ${icon}
    DEPENDS ${sources}
    COMMENT "Making the icon of ${name}"
    VERBATIM)
  set(${result} ${icon} PARENT_SCOPE)
endfunction()

# The program holds the libraries that it links; their licences come from where those do.
function(_kobaltrix_game_windows_installation)
  set(licenses ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/licenses) # as installed
  if(NOT EXISTS ${licenses})
    set(licenses ${KOBALTRIX_WINDOWS}/licenses)
  endif()
  if(EXISTS ${licenses}/libraries.txt)
    install(DIRECTORY ${licenses}/ DESTINATION licenses ${portable})
  else()
    message(WARNING "The licences of the libraries that ${name} holds are not known. Who passes the game on has to add them.")
  endif()
endfunction()

# NAME_package: a folder to be unpacked anywhere, and what installs it.
function(_kobaltrix_game_windows_packages)
  set(file_name ${name}-${game_VERSION}-windows-${CMAKE_SYSTEM_PROCESSOR})
  set(commands "")
  _kobaltrix_game_package(ZIP ${name}_portable ${file_name} /)
  find_program(KOBALTRIX_MAKENSIS makensis)
  mark_as_advanced(KOBALTRIX_MAKENSIS)
  if(KOBALTRIX_MAKENSIS)
    _kobaltrix_game_installer()
  else()
    list(APPEND commands COMMAND ${CMAKE_COMMAND} -E echo "No installer is made: makensis is not found.")
  endif()
  add_custom_target(${name}_package ${commands} VERBATIM)
  add_dependencies(${name}_package ${name})
endfunction()

# Appends what makes it to the caller's `commands`.
function(_kobaltrix_game_installer)
  set(stage ${described}/installed)
  set(script ${described}/installer.nsi)
  set(installer ${CMAKE_BINARY_DIR}/packages/${file_name}-setup.exe)
  # Folders and links have the title without what Windows has other uses for.
  string(REGEX REPLACE "[]\\/:*?\"<>|[]+" " " nsi_FOLDER "${game_TITLE}")
  string(REGEX REPLACE "  +" " " nsi_FOLDER "${nsi_FOLDER}")
  string(REGEX REPLACE "^[ .]+|[ .]+$" "" nsi_FOLDER "${nsi_FOLDER}")
  if(NOT nsi_FOLDER)
    set(nsi_FOLDER ${name})
  endif()
  foreach(option TITLE SUMMARY DEVELOPER HOMEPAGE COPYRIGHT)
    set(nsi_${option} "${game_${option}}")
  endforeach()
  set(nsi_COPYRIGHT "${copyright_line}")
  foreach(option TITLE FOLDER SUMMARY DEVELOPER HOMEPAGE COPYRIGHT)
    string(REPLACE "$" "$$" nsi_${option} "${nsi_${option}}")
    string(REPLACE "\"" "$\\\"" nsi_${option} "${nsi_${option}}")
  endforeach()
  list(JOIN numbers . nsi_numbers)
  set(nsi_icons "")
  if(icon)
    set(nsi_icons "!define MUI_ICON \"${icon}\"\n!define MUI_UNICON \"${icon}\"")
  endif()
  # One that is of 64 bits, too, where makensis has what that begins with: some systems run nothing else.
  set(nsi_target "Unicode true")
  get_filename_component(programs "${KOBALTRIX_MAKENSIS}" DIRECTORY)
  file(GLOB stubs ${programs}/Stubs/lzma_solid-amd64-unicode ${programs}/../share/nsis/Stubs/lzma_solid-amd64-unicode)
  if(stubs AND CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(nsi_target "Target amd64-unicode")
  endif()
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/windows/installer.nsi.in ${script} @ONLY)
  list(
    APPEND
    commands
    COMMAND
    ${CMAKE_COMMAND}
    -DBUILD=${CMAKE_BINARY_DIR}
    -DCOMPONENT=${name}_portable
    -DSTAGE=${stage}
    -DSCRIPT=${script}
    -DMAKENSIS=${KOBALTRIX_MAKENSIS}
    -P
    ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/windows/installer.cmake)
  set(commands "${commands}" PARENT_SCOPE)
endfunction()
