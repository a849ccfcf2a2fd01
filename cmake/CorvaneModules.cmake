# How the program is divided between what it starts with and what it loads once it needs it.
#
# Between start and first frame most time goes into loading libraries, and the media libraries bring
# two hundred of them. So the program holds the floors below whole and lets a module see them, and the
# module holds the floors with media and is loaded when the first project is opened. Each object of
# the program exists once: a module links none of the floors that the program holds.

# corvane_hold_whole(<executable> <target>...): links all of these floors, whatever of them the
# executable itself uses, and exports their symbols to modules.
function(corvane_hold_whole target)
    set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
    set(archives)
    foreach(floor ${ARGN})
        list(APPEND archives $<TARGET_FILE:${floor}>)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS $<TARGET_FILE:${floor}>)
    endforeach()
    # Named once more behind, for what they link; nothing of them is missing by then.
    target_link_libraries(${target} PRIVATE -Wl,--whole-archive ${archives} -Wl,--no-whole-archive
                                            ${ARGN})
endfunction()

# corvane_module(<target> FLOORS <target>... LIBRARIES <target>...)
#
# A module of all objects of these floors, without what they link: that is the program's, or named as
# LIBRARIES.
function(corvane_module target)
    cmake_parse_arguments(MODULE "" "" "FLOORS;LIBRARIES" ${ARGN})
    set(empty "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
    file(CONFIGURE OUTPUT "${empty}" CONTENT "// All of the module comes from libraries.\n")
    add_library(${target} MODULE "${empty}")
    set_target_properties(${target} PROPERTIES PREFIX "" AUTOMOC OFF)
    foreach(floor ${MODULE_FLOORS})
        # What Qt keeps beside a library's archive: the objects that register its resources.
        get_target_property(beside ${floor} INTERFACE_LINK_LIBRARIES)
        list(FILTER beside INCLUDE REGEX "TARGET_OBJECTS")
        target_link_libraries(${target} PRIVATE ${beside}
            -Wl,--whole-archive $<TARGET_FILE:${floor}> -Wl,--no-whole-archive)
        add_dependencies(${target} ${floor})
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS $<TARGET_FILE:${floor}>)
    endforeach()
    target_link_libraries(${target} PRIVATE ${MODULE_LIBRARIES} corvane_flags)
endfunction()
