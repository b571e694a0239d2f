# Completes the program folder: copies the delivered database unless there is one already, and
# links Lame.exe to the installed encoder.

if(NOT EXISTS ${FOLDER}/Tarnwick.mdb)
    file(COPY ${SEED} DESTINATION ${FOLDER})
endif()
find_program(lame lame)
if(lame)
    file(CREATE_LINK ${lame} ${FOLDER}/Lame.exe SYMBOLIC)
endif()
