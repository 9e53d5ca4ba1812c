# Plays one scenario in application folders made for it alone: its own, and those that its steps "folder" name.
# cmake -DRUNNER=... -DDATABASE=... -DFOLDER=... -DSCENARIO=... [-DWINDOWS=--desktop] -P Play.cmake
find_program(archiver 7za)
get_filename_component(build ${DATABASE} DIRECTORY)
file(GLOB catalogues ${build}/catalogos/*.zip)

function(install folder)
  file(MAKE_DIRECTORY ${folder} ${folder}/Datos ${folder}/Consultas)
  file(COPY_FILE ${DATABASE} ${folder}/Tarmel_11.mdb)
  if(archiver)
    file(CREATE_LINK ${archiver} ${folder}/7za SYMBOLIC)
  endif()
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
