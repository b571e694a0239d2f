# A room is one folder of src/, one static library and one include root. A header is included as
# "room/header.h", and that name resolves only for a target that was given the room. A room may lie
# in a folder with others, as "sound/samples": it then is included as "sound/samples/header.h", and
# whoever is given it sees nothing of the others there.

# The targets of rooms: room_sound_samples for sound/samples.
function(tarnwick_room_targets out)
    set(targets ${ARGN})
    list(TRANSFORM targets REPLACE "/" "_")
    list(TRANSFORM targets PREPEND room_)
    set(${out} ${targets} PARENT_SCOPE)
endfunction()

# tarnwick_room(NAME [USES rooms...] [HIDES rooms...] [LINK libs...] [PCH core|widgets])
#   USES   rooms whose headers this room may include
#   HIDES  the same, but the room's own users do not get them with it
#   LINK   outside libraries
#   PCH    the precompiled header to share: also the Qt modules that the room gets
function(tarnwick_room name)
    cmake_parse_arguments(ROOM "" "PCH" "USES;HIDES;LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
    tarnwick_room_targets(room ${name})
    tarnwick_room_targets(used ${ROOM_USES})
    tarnwick_room_targets(hidden ${ROOM_HIDES})
    add_library(${room} STATIC ${sources})
    set_target_properties(${room} PROPERTIES LINKER_LANGUAGE CXX)
    # The include root holds this room alone, by a link at the end of its path.
    string(REPLACE "/" "_" flat ${name})
    set(root ${CMAKE_BINARY_DIR}/rooms/${flat})
    cmake_path(GET name PARENT_PATH folder)
    file(MAKE_DIRECTORY ${root}/${folder})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${name} ${root}/${name} SYMBOLIC)
    target_include_directories(${room} PUBLIC ${root})
    target_link_libraries(${room} PRIVATE tarnwick_flags ${ROOM_LINK} PUBLIC ${used}
        PRIVATE ${hidden})
    if(ROOM_PCH STREQUAL "widgets")
        target_link_libraries(${room} PUBLIC Qt6::Widgets)
    elseif(ROOM_PCH STREQUAL "core")
        target_link_libraries(${room} PUBLIC Qt6::Core)
    else()
        set_target_properties(${room} PROPERTIES AUTOMOC OFF)
    endif()
    if(ROOM_PCH)
        target_precompile_headers(${room} REUSE_FROM tarnwick_pch_${ROOM_PCH})
    endif()
    set_property(GLOBAL APPEND PROPERTY TARNWICK_ROOMS ${name})
    set_property(GLOBAL PROPERTY TARNWICK_ROOM_${name}_USES ${ROOM_USES} ${ROOM_HIDES})
endfunction()
