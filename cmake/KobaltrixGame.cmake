# kobaltrix_add_game(NAME
#   SOURCES FILE...          its C++
#   ICON FILE...             a PNG of 16 to 512 pixels, as wide as high, or an SVG; or several of them
#   [VERSION 1.2]            the project's version, unless it is given
#   [ASSETS FILE... FOLDER...]  what the game loads; `sounds` comes as assets/sounds, `files/` with what is in it
#   [SPRITES SOURCE...]      what kobaltrix_sprites() makes sprites of
#   [STEP_MS 16]             the length of a logic step, for the sprites
#   [TITLE "My Game"]        for people; else NAME
#   [SUMMARY "..."]          what it is, in one line
#   [DESCRIPTION "..."]      the same in paragraphs, with an empty line between two
#   [CATEGORIES ArcadeGame...]  of the desktop's menu, below Game
#   [DEVELOPER "Ada"]        who made it
#   [CONTACT "Ada <ada@example.org>"]
#   [HOMEPAGE https://...]
#   [ID org.example.my_game] the game's name in software centres, which never changes; else made of HOMEPAGE and NAME
#   [LICENSE MIT]            in SPDX's terms; nobody has any rights unless it is given
#   [COPYRIGHT FILE]         the licence itself
#   [DATE 2024-07-03]        the version's; else today
#   [DEPENDS PACKAGE...]     of Debian, beside those of the libraries that the game links
#   [EXCLUDE_FROM_ALL])      `cmake --install` leaves the game out
#
# makes the program NAME, linked with the static library, so that it needs no Kobaltrix where it is played. What it
# loads lies in the folder assets beside it, and is made anew when it changes: run from the build folder, KXDataFolder()
# is there. One game a folder of the project. The program's code has KOBALTRIX_GAME_NAME, for KXSetGameName(), and
# KOBALTRIX_GAME_VERSION as texts.
#
# `cmake --install` lays down bin/NAME, share/NAME, and what desktops and software centres want to know. The target
# NAME_package leaves in the folder packages of the build folder
#   a .deb          where this is Debian
#   a .tar.gz       to be unpacked anywhere, with the libraries in it that a machine may lack (game/libraries.cmake)
# or, for Windows,
#   a .zip          to be unpacked anywhere
#   a -setup.exe    which installs the same, where makensis is to make it
# What the project itself installs with COMPONENT NAME goes into the .deb too, with COMPONENT NAME_portable into
# the others. On macOS there is the program alone.
function(kobaltrix_add_game name)
  set(texts VERSION STEP_MS TITLE SUMMARY DESCRIPTION DEVELOPER CONTACT HOMEPAGE ID LICENSE COPYRIGHT DATE)
  cmake_parse_arguments(PARSE_ARGV 1 game "EXCLUDE_FROM_ALL" "${texts}" "SOURCES;ICON;ASSETS;SPRITES;CATEGORIES;DEPENDS")
  _kobaltrix_game_defaults()
  _kobaltrix_game_checks()

  add_executable(${name} ${game_SOURCES})
  target_link_libraries(${name} PRIVATE Kobaltrix::Static)
  target_compile_definitions(${name} PRIVATE KOBALTRIX_GAME_NAME="${name}" KOBALTRIX_GAME_VERSION="${game_VERSION}")
  get_target_property(folder ${name} RUNTIME_OUTPUT_DIRECTORY)
  if(NOT folder)
    set(folder ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  string(APPEND folder /assets)
  _kobaltrix_game_files(files) # all of the assets, as paths in that folder
  set(described ${CMAKE_CURRENT_BINARY_DIR}/${name}_files)
  if(WIN32)
    _kobaltrix_game_resources()
    _kobaltrix_game_installation()
    _kobaltrix_game_windows_packages()
  elseif(NOT APPLE)
    _kobaltrix_game_descriptions()
    _kobaltrix_game_installation()
    _kobaltrix_game_packages()
  endif()
endfunction()
include(${CMAKE_CURRENT_LIST_DIR}/game/windows.cmake)

# What follows are the parts of the function above; they see its variables.
function(_kobaltrix_game_error)
  string(CONCAT text ${ARGV})
  message(FATAL_ERROR "kobaltrix_add_game(${name}): ${text}")
endfunction()

macro(_kobaltrix_game_defaults)
  foreach(pair VERSION=PROJECT_VERSION HOMEPAGE=PROJECT_HOMEPAGE_URL SUMMARY=PROJECT_DESCRIPTION)
    string(REGEX MATCH "(.*)=(.*)" pair ${pair})
    if(NOT DEFINED game_${CMAKE_MATCH_1})
      set(game_${CMAKE_MATCH_1} "${${CMAKE_MATCH_2}}")
    endif()
  endforeach()
  if(NOT game_TITLE)
    set(game_TITLE "${name}")
  endif()
  if(NOT game_SUMMARY)
    set(game_SUMMARY "A game")
  endif()
  if(NOT game_DESCRIPTION)
    set(game_DESCRIPTION "${game_SUMMARY}.")
  endif()
  if(NOT game_DEVELOPER)
    set(game_DEVELOPER "The makers of ${game_TITLE}")
  endif()
  if(NOT game_CONTACT)
    set(game_CONTACT "${game_DEVELOPER} <nobody@localhost>")
  endif()
  if(NOT game_ID) # the homepage's host backwards
    string(REGEX MATCH "^https?://([^/:]+)" host "${game_HOMEPAGE}")
    string(REPLACE . ";" host "${CMAKE_MATCH_1}")
    if(NOT host)
      set(host example org)
    endif()
    list(REVERSE host)
    list(APPEND host ${name})
    list(JOIN host . game_ID)
    string(REGEX REPLACE "[^A-Za-z0-9._]" _ game_ID "${game_ID}")
  endif()
  if(NOT game_LICENSE)
    set(game_LICENSE LicenseRef-proprietary)
  endif()
  if(NOT game_DATE)
    string(TIMESTAMP game_DATE %Y-%m-%d UTC)
  endif()
  list(REMOVE_ITEM game_CATEGORIES Game)
  list(PREPEND game_CATEGORIES Game)
  set(exclude "")
  if(game_EXCLUDE_FROM_ALL)
    set(exclude EXCLUDE_FROM_ALL)
  endif()
endmacro()

function(_kobaltrix_game_checks)
  if(game_UNPARSED_ARGUMENTS)
    list(JOIN game_UNPARSED_ARGUMENTS " " words)
    _kobaltrix_game_error("\"${words}\" belongs to no option.")
  endif()
  if(game_KEYWORDS_MISSING_VALUES)
    list(JOIN game_KEYWORDS_MISSING_VALUES ", " words)
    _kobaltrix_game_error("There is nothing behind ${words}.")
  endif()
  if(NOT "${name}" MATCHES "^[A-Za-z0-9][A-Za-z0-9_.+-]+$")
    _kobaltrix_game_error("A game's name has at least two of the letters A to Z, a to z, digits and _ . + -, and begins "
                          "with a letter or a digit. TITLE may be any text.")
  endif()
  if(NOT game_SOURCES)
    _kobaltrix_game_error("SOURCES are missing.")
  endif()
  if("${game_VERSION}" STREQUAL "")
    _kobaltrix_game_error("VERSION is missing, here and in project().")
  elseif(NOT game_VERSION MATCHES "^[0-9][A-Za-z0-9.+~]*$")
    _kobaltrix_game_error("\"${game_VERSION}\" is no VERSION. It begins with a digit, and has letters, digits and . + ~.")
  endif()
  foreach(option TITLE SUMMARY DEVELOPER CONTACT HOMEPAGE ID LICENSE DATE)
    if(game_${option} MATCHES "[\n\r\t]")
      _kobaltrix_game_error("${option} has to be one line.")
    endif()
  endforeach()
  foreach(pair "ID=^[A-Za-z_][A-Za-z0-9_-]*(\\.[A-Za-z0-9_-]+)+$=such as org.example.my_game"
               "CONTACT=^[^<>]+ <[^<>@ ]+@[^<>@ ]+>$=such as \"Ada <ada@example.org>\""
               "HOMEPAGE=^(https?://[^ ]+)?$=a page that begins with https://"
               "DATE=^[0-9][0-9][0-9][0-9]-[01][0-9]-[0-3][0-9]$=a day such as 2024-07-03"
               "STEP_MS=^([1-9][0-9]*)?$=a number of milliseconds"
               "LICENSE=^[A-Za-z0-9.+() -]+$=one of SPDX's terms, such as MIT or GPL-3.0-or-later")
    string(REGEX MATCH "^([A-Z_]+)=(.*)=(.*)$" pair "${pair}")
    set(option ${CMAKE_MATCH_1})
    set(pattern "${CMAKE_MATCH_2}")
    set(example "${CMAKE_MATCH_3}")
    if(NOT "${game_${option}}" MATCHES "${pattern}")
      _kobaltrix_game_error("\"${game_${option}}\" is no ${option}. It has to be ${example}.")
    endif()
  endforeach()
  foreach(category IN LISTS game_CATEGORIES)
    if(NOT category MATCHES "^[A-Za-z0-9-]+$")
      _kobaltrix_game_error("\"${category}\" is none of the CATEGORIES that desktops know, such as ArcadeGame.")
    endif()
  endforeach()
  if(NOT game_ICON)
    _kobaltrix_game_error("ICON is missing, a PNG or an SVG.")
  endif()
  foreach(file IN LISTS game_SOURCES game_ICON game_COPYRIGHT game_ASSETS game_SPRITES)
    get_filename_component(path "${file}" ABSOLUTE)
    get_source_file_property(generated "${path}" GENERATED)
    if(NOT EXISTS "${path}" AND NOT generated AND NOT file MATCHES "\\$<")
      _kobaltrix_game_error("${path} is not there.")
    endif()
    string(FIND "${CMAKE_BINARY_DIR}/" "${path}/" position)
    if(position EQUAL 0)
      _kobaltrix_game_error("${path} holds the build folder. Keep what the game loads in a folder of its own.")
    endif()
  endforeach()
  if(NOT TARGET Kobaltrix::Static)
    _kobaltrix_game_error("The static library is not found here, or not all that it links. "
                          "find_package(Kobaltrix REQUIRED COMPONENTS static) says what is missing.")
  endif()
  if(game_SPRITES AND NOT TARGET Kobaltrix::kxsprite)
    _kobaltrix_game_error("SPRITES are made with kxsprite, which is not found here. Ask for it with "
                          "find_package(Kobaltrix REQUIRED COMPONENTS tools), or set(KOBALTRIX_BUILD_TOOLS ON) before the "
                          "library's folder is added.")
  endif()
endfunction()

# Has the sprites made, and the assets copied.
function(_kobaltrix_game_files result)
  set(files "")
  set(step "")
  if(game_STEP_MS)
    set(step STEP_MS ${game_STEP_MS})
  endif()
  if(game_SPRITES)
    kobaltrix_sprites(${name} ${game_SPRITES} DESTINATION ${folder} ${step})
    get_target_property(sprites ${name}_sprites KOBALTRIX_FILES)
    foreach(file IN LISTS sprites)
      file(RELATIVE_PATH file ${folder} "${file}")
      list(APPEND files "${file}")
    endforeach()
  endif()
  foreach(asset IN LISTS game_ASSETS)
    get_filename_component(path "${asset}" ABSOLUTE)
    get_filename_component(prefix "${path}" NAME)
    if(NOT IS_DIRECTORY "${path}")
      _kobaltrix_game_asset("${path}" "${prefix}")
      continue()
    endif()
    string(APPEND prefix /)
    if(asset MATCHES "/$")
      set(prefix "")
    endif()
    file(GLOB_RECURSE found CONFIGURE_DEPENDS RELATIVE "${path}" "${path}/*")
    list(FILTER found EXCLUDE REGEX "(^|/)\\.|~$") # what is hidden, and editors' own
    foreach(file IN LISTS found)
      _kobaltrix_game_is_sprite("${path}/${file}" "${prefix}${file}" is_sprite)
      if(NOT is_sprite)
        _kobaltrix_game_asset("${path}/${file}" "${prefix}${file}")
      endif()
    endforeach()
  endforeach()
  list(TRANSFORM files PREPEND ${folder}/ OUTPUT_VARIABLE made)
  add_custom_target(${name}_assets DEPENDS ${made})
  add_dependencies(${name} ${name}_assets)
  set(${result} "${files}" PARENT_SCOPE)
endfunction()

# Whether a file in a folder of assets belongs to a sprite: what that is made of, or its sheet.
function(_kobaltrix_game_is_sprite path file result)
  set(is_sprite FALSE)
  foreach(source IN LISTS game_SPRITES)
    get_filename_component(source "${source}" ABSOLUTE)
    string(FIND "${path}/" "${source}/" position)
    if(position EQUAL 0 OR "${folder}/${file}" IN_LIST sprites)
      set(is_sprite TRUE)
    endif()
  endforeach()
  set(${result} ${is_sprite} PARENT_SCOPE)
endfunction()

function(_kobaltrix_game_asset path file)
  set(target "${folder}/${file}")
  if("${path}" STREQUAL target AND "${target}" IN_LIST sprites) # a sheet that the project makes
    return()
  endif()
  if("${file}" IN_LIST files)
    _kobaltrix_game_error("There are two assets \"${file}\".")
  endif()
  list(APPEND files "${file}")
  set(files "${files}" PARENT_SCOPE)
  if(NOT "${path}" STREQUAL target) # what the project makes may be made there
    get_filename_component(parent "${target}" DIRECTORY)
    file(MAKE_DIRECTORY "${parent}")
    add_custom_command(
      OUTPUT "${target}"
      COMMAND ${CMAKE_COMMAND} -E copy "${path}" "${target}"
      DEPENDS "${path}"
      VERBATIM)
  endif()
endfunction()

# What desktops and software centres are told, as files in `described`.
function(_kobaltrix_game_descriptions)
  set(here ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  string(REPLACE "\\" "\\\\" desktop_title "${game_TITLE}")
  string(REPLACE "\\" "\\\\" desktop_summary "${game_SUMMARY}")
  set(desktop_categories "${game_CATEGORIES};")
  configure_file(${here}/game/game.desktop.in ${described}/${name}.desktop @ONLY)

  foreach(option TITLE SUMMARY DESCRIPTION DEVELOPER HOMEPAGE LICENSE)
    string(REPLACE "&" "&amp;" xml_${option} "${game_${option}}")
    string(REPLACE "<" "&lt;" xml_${option} "${xml_${option}}")
    string(REPLACE ">" "&gt;" xml_${option} "${xml_${option}}")
  endforeach()
  string(REGEX REPLACE "\n[ \t]*\n[ \t\n]*" "</p>\n    <p>" xml_paragraphs "${xml_DESCRIPTION}")
  set(xml_homepage "")
  if(game_HOMEPAGE)
    set(xml_homepage "\n  <url type=\"homepage\">${xml_HOMEPAGE}</url>")
  endif()
  set(xml_categories "")
  foreach(category IN LISTS game_CATEGORIES)
    string(APPEND xml_categories "\n    <category>${category}</category>")
  endforeach()
  configure_file(${here}/game/game.metainfo.xml.in ${described}/${game_ID}.metainfo.xml @ONLY)
endfunction()

# What readers of licences are told.
function(_kobaltrix_game_copyright)
  set(here ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  set(library_copyright ${here}/copyright)
  if(NOT EXISTS ${library_copyright}) # this is the library's source, and nothing that was installed
    set(library_copyright ${here}/../packaging/copyright)
  endif()
  set(copyright "${game_TITLE} ${game_VERSION}\nMade by: ${game_DEVELOPER}\nLicence: ${game_LICENSE}\n")
  if(game_COPYRIGHT)
    file(READ "${game_COPYRIGHT}" text)
    string(APPEND copyright "\n${text}")
  endif()
  file(READ ${library_copyright} text)
  file(WRITE ${described}/copyright "${copyright}\n\nThe program holds the library Kobaltrix:\n\n${text}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${library_copyright} ${game_COPYRIGHT} ${game_ICON})
endfunction()

# Two components: NAME, and NAME_portable, which is laid down for what is unpacked anywhere alone.
function(_kobaltrix_game_installation)
  set(installed COMPONENT ${name})
  if(game_EXCLUDE_FROM_ALL)
    list(APPEND installed EXCLUDE_FROM_ALL)
  endif()
  set(portable COMPONENT ${name}_portable EXCLUDE_FROM_ALL)
  string(TOLOWER "${name}" debian_name)
  string(REPLACE _ - debian_name ${debian_name})
  set(debian_name ${debian_name} PARENT_SCOPE)

  install(TARGETS ${name} RUNTIME DESTINATION . ${portable})
  install(TARGETS ${name} RUNTIME DESTINATION bin ${installed})
  foreach(file IN LISTS files)
    get_filename_component(parent "${file}" DIRECTORY)
    install(FILES "${folder}/${file}" DESTINATION "share/${name}/${parent}" ${installed})
    install(FILES "${folder}/${file}" DESTINATION "assets/${parent}" ${portable})
  endforeach()
  _kobaltrix_game_copyright()
  install(FILES ${described}/copyright DESTINATION share/doc/${debian_name} ${installed})
  install(FILES ${described}/copyright DESTINATION licenses RENAME ${name}.txt ${portable})
  if(WIN32)
    _kobaltrix_game_windows_installation()
  else()
    _kobaltrix_game_desktop_installation()
  endif()
endfunction()

function(_kobaltrix_game_desktop_installation)
  # In the portable folder the program looks for libraries in lib beside it, and so do the libraries there: only the
  # older of the two tags holds for them as well. An installed program has the system's.
  target_link_options(${name} PRIVATE LINKER:--disable-new-dtags)
  set_target_properties(${name} PROPERTIES INSTALL_RPATH $ORIGIN/lib)
  install(CODE "file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/${name}\")" ${installed})
  install(CODE "set(program \"$<TARGET_FILE:${name}>\")
set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")" ${portable})
  install(SCRIPT ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/game/libraries.cmake ${portable})

  install(FILES ${described}/${name}.desktop DESTINATION share/applications ${installed})
  install(FILES ${described}/${game_ID}.metainfo.xml DESTINATION share/metainfo ${installed})
  foreach(icon IN LISTS game_ICON)
    _kobaltrix_game_icon("${icon}" size suffix)
    install(FILES "${icon}" DESTINATION share/icons/hicolor/${size}/apps RENAME ${name}.${suffix} ${installed})
  endforeach()
endfunction()

# The folder of the desktop's icons that one belongs to.
function(_kobaltrix_game_icon icon size suffix)
  get_filename_component(path "${icon}" ABSOLUTE)
  file(READ "${path}" head LIMIT 24 HEX)
  if(head MATCHES "^89504e470d0a1a0a0000000d49484452(........)(........)$")
    math(EXPR width "0x${CMAKE_MATCH_1}")
    math(EXPR height "0x${CMAKE_MATCH_2}")
    set(sizes 16 22 24 32 36 48 64 72 96 128 192 256 512)
    if(NOT width EQUAL height OR NOT width IN_LIST sizes)
      list(JOIN sizes ", " sizes)
      _kobaltrix_game_error("${path} has ${width} by ${height} pixels. Desktops look for icons of ${sizes} pixels, as "
                            "wide as high.")
    endif()
    set(${size} ${width}x${width} PARENT_SCOPE)
    set(${suffix} png PARENT_SCOPE)
    return()
  endif()
  file(STRINGS "${path}" svg REGEX "<svg" LIMIT_COUNT 1)
  if(NOT svg)
    _kobaltrix_game_error("${path} is neither a PNG nor an SVG.")
  endif()
  set(${size} scalable PARENT_SCOPE)
  set(${suffix} svg PARENT_SCOPE)
endfunction()

# NAME_package. What is wrong with the descriptions is told before anything is packed.
function(_kobaltrix_game_packages)
  find_program(KOBALTRIX_APPSTREAMCLI appstreamcli)
  find_program(KOBALTRIX_DESKTOP_FILE_VALIDATE desktop-file-validate)
  find_program(KOBALTRIX_DPKG_SHLIBDEPS dpkg-shlibdeps)
  mark_as_advanced(KOBALTRIX_APPSTREAMCLI KOBALTRIX_DESKTOP_FILE_VALIDATE KOBALTRIX_DPKG_SHLIBDEPS)
  set(commands "")
  if(KOBALTRIX_APPSTREAMCLI)
    list(APPEND commands COMMAND ${KOBALTRIX_APPSTREAMCLI} validate --no-net ${described}/${game_ID}.metainfo.xml)
  endif()
  if(KOBALTRIX_DESKTOP_FILE_VALIDATE)
    list(APPEND commands COMMAND ${KOBALTRIX_DESKTOP_FILE_VALIDATE} ${described}/${name}.desktop)
  endif()

  if(KOBALTRIX_DPKG_SHLIBDEPS)
    set(debian_depends libgl1 libegl1 ${game_DEPENDS}) # SDL opens these two by their names
    list(JOIN debian_depends ", " debian_depends)
    _kobaltrix_game_package(DEB ${name} ${name} /usr)
  endif()
  _kobaltrix_game_package(TGZ ${name}_portable ${name}-${game_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR} /)
  add_custom_target(${name}_package ${commands} VERBATIM)
  add_dependencies(${name}_package ${name})
endfunction()

# _kobaltrix_game_package(GENERATOR COMPONENT FILE PREFIX): appends what makes it to the caller's `commands`.
function(_kobaltrix_game_package generator component file_name prefix)
  set(config ${described}/${generator}.cmake)
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/game/package.cmake.in ${config} @ONLY)
  list(APPEND commands COMMAND ${CMAKE_CPACK_COMMAND} --config ${config})
  set(commands "${commands}" PARENT_SCOPE)
endfunction()
