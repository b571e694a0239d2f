# A room is one folder of src/, one static library and one include root. A header is included as
# "room/header.h", and that name resolves only for a target that links the room. A room may lie in
# a subfolder, such as sound/samples. Its headers are included as "sound/samples/header.h", and a
# target that links it does not see the other rooms of that folder.

# Target names of rooms, such as room_sound_samples for sound/samples.
function(tarnwick_room_targets out)
    set(targets ${ARGN})
    list(TRANSFORM targets REPLACE "/" "_")
    list(TRANSFORM targets PREPEND room_)
    set(${out} ${targets} PARENT_SCOPE)
endfunction()

# tarnwick_room(NAME [USES rooms...] [HIDES rooms...] [LINK libs...] [PCH core|widgets])
#   USES   rooms whose headers this room may include
#   HIDES  the same, but targets that link this room cannot include them
#   LINK   external libraries
#   PCH    the precompiled header to use; it also links Qt Core or Qt Widgets
function(tarnwick_room name)
    cmake_parse_arguments(ROOM "" "PCH" "USES;HIDES;LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
    tarnwick_room_targets(room ${name})
    tarnwick_room_targets(used ${ROOM_USES})
    tarnwick_room_targets(hidden ${ROOM_HIDES})
    add_library(${room} STATIC ${sources})
    set_target_properties(${room} PROPERTIES LINKER_LANGUAGE CXX)
    # The include root contains only a link to this room, so no other room's headers resolve.
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
