# Puts beside the executable what it needs: the delivered database, unless one is there already,
# and Lame.exe as a link to the machine's encoder.

if(NOT EXISTS ${FOLDER}/Tarnwick.mdb)
    file(COPY ${SEED} DESTINATION ${FOLDER})
endif()
find_program(lame lame)
if(lame)
    file(CREATE_LINK ${lame} ${FOLDER}/Lame.exe SYMBOLIC)
endif()
