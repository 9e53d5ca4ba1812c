# Plays one scenario in an application folder made for it alone.
# cmake -DRUNNER=... -DDATABASE=... -DFOLDER=... -DSCENARIO=... [-DWINDOWS=--desktop] -P Play.cmake
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER} ${FOLDER}/Datos ${FOLDER}/Consultas)
file(COPY_FILE ${DATABASE} ${FOLDER}/Tarmel_11.mdb)
execute_process(COMMAND ${RUNNER} ${WINDOWS} --app ${FOLDER} ${SCENARIO} COMMAND_ERROR_IS_FATAL ANY)
