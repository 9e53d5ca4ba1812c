# Plays one scenario in an application folder made for it alone.
# cmake -DRUNNER=... -DDATABASE=... -DFOLDER=... -DSCENARIO=... [-DWINDOWS=--desktop] -P Play.cmake
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER} ${FOLDER}/Datos ${FOLDER}/Consultas)
file(COPY_FILE ${DATABASE} ${FOLDER}/Tarmel_11.mdb)
find_program(archiver 7za)
if(archiver)
  file(CREATE_LINK ${archiver} ${FOLDER}/7za SYMBOLIC)
endif()
get_filename_component(build ${DATABASE} DIRECTORY)
file(GLOB catalogues ${build}/catalogos/*.zip)
file(COPY ${catalogues} DESTINATION ${FOLDER}/Catalogos)
execute_process(COMMAND ${RUNNER} ${WINDOWS} --app ${FOLDER} ${SCENARIO} COMMAND_ERROR_IS_FATAL ANY)
