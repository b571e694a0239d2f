# A room is one folder of src/, one static library and one include root. A header is included as
# "room/header.h", and that name resolves only for a target that was given the room.

# tarnwick_room(NAME [USES rooms...] [HIDES rooms...] [LINK libs...] [PCH core|widgets])
#   USES   rooms whose headers this room may include
#   HIDES  the same, but the room's own users do not get them with it
#   LINK   outside libraries
#   PCH    the precompiled header to share: also the Qt modules that the room gets
function(tarnwick_room name)
    cmake_parse_arguments(ROOM "" "PCH" "USES;HIDES;LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
    add_library(room_${name} STATIC ${sources})
    set_target_properties(room_${name} PROPERTIES LINKER_LANGUAGE CXX)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/rooms/${name})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${name} ${CMAKE_BINARY_DIR}/rooms/${name}/${name}
         SYMBOLIC)
    target_include_directories(room_${name} PUBLIC ${CMAKE_BINARY_DIR}/rooms/${name})
    target_link_libraries(room_${name} PRIVATE tarnwick_flags ${ROOM_LINK})
    foreach(used IN LISTS ROOM_USES)
        target_link_libraries(room_${name} PUBLIC room_${used})
    endforeach()
    foreach(hidden IN LISTS ROOM_HIDES)
        target_link_libraries(room_${name} PRIVATE room_${hidden})
    endforeach()
    if(ROOM_PCH STREQUAL "widgets")
        target_link_libraries(room_${name} PUBLIC Qt6::Widgets)
    elseif(ROOM_PCH STREQUAL "core")
        target_link_libraries(room_${name} PUBLIC Qt6::Core)
    else()
        set_target_properties(room_${name} PROPERTIES AUTOMOC OFF)
    endif()
    if(ROOM_PCH)
        target_precompile_headers(room_${name} REUSE_FROM tarnwick_pch_${ROOM_PCH})
    endif()
    set_property(GLOBAL APPEND PROPERTY TARNWICK_ROOMS ${name})
    set_property(GLOBAL PROPERTY TARNWICK_ROOM_${name}_USES ${ROOM_USES} ${ROOM_HIDES})
endfunction()
