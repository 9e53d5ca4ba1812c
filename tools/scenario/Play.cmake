# Plays one scenario in application folders made for it alone: its own, and those that its steps "folder" name.
# cmake -DRUNNER=... -DDATABASE=... -DFOLDER=... -DSCENARIO=... [-DWINDOWS=--desktop] -P Play.cmake
find_program(archiver 7za)
get_filename_component(build ${DATABASE} DIRECTORY)
file(GLOB catalogues ${build}/catalogos/*.zip)

# A story may say in a line of its own that it begins with another database than the prepared one: that of the former
# version, or a sample of an Access file.
get_filename_component(tools ${RUNNER} DIRECTORY)
file(STRINGS ${SCENARIO} base REGEX "^# base: " ENCODING UTF-8)
string(REPLACE "# base: " "" base "${base}")
if(base STREQUAL "anterior")
  set(DATABASE ${build}/Tarmel_11.anterior.mdb)
elseif(base)
  set(DATABASE ${CMAKE_CURRENT_LIST_DIR}/../../tests/data/access/${base})
endif()

function(install folder)
  file(MAKE_DIRECTORY ${folder} ${folder}/Datos ${folder}/Consultas)
  file(COPY_FILE ${DATABASE} ${folder}/Tarmel_11.mdb)
  if(archiver)
    file(CREATE_LINK ${archiver} ${folder}/7za SYMBOLIC)
  endif()
  file(CREATE_LINK ${tools}/tarmel_access ${folder}/tarmel_access SYMBOLIC)
  file(COPY ${catalogues} DESTINATION ${folder}/Catalogos)
endfunction()

file(REMOVE_RECURSE ${FOLDER})
install(${FOLDER})
file(STRINGS ${SCENARIO} others REGEX "^ *folder +\"[^\"]+\"" ENCODING UTF-8)
list(TRANSFORM others REPLACE "^ *folder +\"([^\"]+)\".*" "\\1")
list(REMOVE_DUPLICATES others)
foreach(other ${others})
  install(${FOLDER}/${other})
endforeach()
execute_process(COMMAND ${RUNNER} ${WINDOWS} --app ${FOLDER} ${SCENARIO} COMMAND_ERROR_IS_FATAL ANY)
