# Divides the program into an executable and a module that it loads on demand.
#
# Most of the time between start and first frame goes into loading libraries, and the media libraries
# pull in two hundred of them. The executable therefore contains the layers without media in full and
# exports their symbols; the module contains the layers with media and is loaded with the first project.
# Each object exists once: a module links no layer that the executable contains.

# corvane_link_whole(<executable> <target>...): links every object of these layers, used or not, and
# exports their symbols to modules.
function(corvane_link_whole target)
    set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
    set(archives)
    foreach(layer ${ARGN})
        list(APPEND archives $<TARGET_FILE:${layer}>)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS $<TARGET_FILE:${layer}>)
    endforeach()
    # Linked again for their own link dependencies. Their symbols are resolved by then.
    target_link_libraries(${target} PRIVATE -Wl,--whole-archive ${archives} -Wl,--no-whole-archive
                                            ${ARGN})
endfunction()

# corvane_module(<target> LAYERS <target>... LIBRARIES <target>...)
#
# A module with every object of these layers but without their link dependencies, which are either in
# the executable or listed as LIBRARIES.
function(corvane_module target)
    cmake_parse_arguments(MODULE "" "" "LAYERS;LIBRARIES" ${ARGN})
    set(empty "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
    file(CONFIGURE OUTPUT "${empty}" CONTENT "// The module consists of libraries only.\n")
    add_library(${target} MODULE "${empty}")
    set_target_properties(${target} PROPERTIES PREFIX "" AUTOMOC OFF)
    foreach(layer ${MODULE_LAYERS})
        # Qt puts the registration of resources into object libraries outside the archive.
        get_target_property(beside ${layer} INTERFACE_LINK_LIBRARIES)
        list(FILTER beside INCLUDE REGEX "TARGET_OBJECTS")
        target_link_libraries(${target} PRIVATE ${beside}
            -Wl,--whole-archive $<TARGET_FILE:${layer}> -Wl,--no-whole-archive)
        add_dependencies(${target} ${layer})
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS $<TARGET_FILE:${layer}>)
    endforeach()
    target_link_libraries(${target} PRIVATE ${MODULE_LIBRARIES} corvane_flags)
endfunction()
