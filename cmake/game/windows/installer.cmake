# cmake -DBUILD=FOLDER -DCOMPONENT=NAME -DSTAGE=FOLDER -DSCRIPT=FILE -DMAKENSIS=PROGRAM -P installer.cmake
#
# Lays the component down in the folder STAGE, and has an installer made of it. The uninstaller takes away what was laid
# down, file by file: whoever had the game installed into a folder of other things keeps those.
file(REMOVE_RECURSE "${STAGE}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --component "${COMPONENT}" --prefix "${STAGE}" --strip
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE entries LIST_DIRECTORIES TRUE RELATIVE "${STAGE}" "${STAGE}/*")
list(SORT entries ORDER DESCENDING) # what is in a folder before the folder
set(commands "")
foreach(entry IN LISTS entries)
  set(command Delete)
  if(IS_DIRECTORY "${STAGE}/${entry}")
    set(command RMDir)
  endif()
  string(REPLACE "$" "$$" entry "${entry}")
  string(REPLACE "/" "\\" entry "${entry}")
  string(APPEND commands "${command} \"$INSTDIR\\${entry}\"\n")
endforeach()
file(WRITE "${STAGE}.nsh" "${commands}")
execute_process(COMMAND "${MAKENSIS}" -V2 -WX -INPUTCHARSET UTF8 "${SCRIPT}" COMMAND_ERROR_IS_FATAL ANY)
