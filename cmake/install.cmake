# The application folder: portable, everything beside the executable. What the user owns (the database, what lies in Datos
# and Consultas) is put there once and never overwritten.

set(folder Tarmel)
install(TARGETS Tarmel tarmel_access RUNTIME DESTINATION ${folder})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/manual/ DESTINATION ${folder}/ayuda FILES_MATCHING
        PATTERN "*.html" PATTERN "*.css" PATTERN "*.png" PATTERN "*.svg")
install(CODE "
  set(home \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${folder}\")
  file(MAKE_DIRECTORY \"\${home}/Datos\" \"\${home}/Consultas\")
  if(NOT EXISTS \"\${home}/Tarmel_11.mdb\")
    file(COPY_FILE \"${TARMEL_PREPARED_DATABASE}\" \"\${home}/Tarmel_11.mdb\")
  endif()
  find_program(archiver 7za)
  if(archiver)
    file(CREATE_LINK \"\${archiver}\" \"\${home}/7za\" SYMBOLIC)
  endif()
")
