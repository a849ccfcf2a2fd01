# How a QML module of Corvane is made, and how screens are tested.
#
# A module is a static library that holds its QML files, compiled ahead of time in release builds.
# Everything lies in resources under the engine's built-in import path, and the registration of its types is kept by the
# linker, so whoever links the library writes `import Corvane.Kit` and needs no plugin, no file on
# disk and no import path.

# corvane_screens(<target> URI <uri> FOLDER <folder> LINKS <target>... [PRIVATE_LINKS <target>...]
#                 [DEPENDENCIES <uri>...])
#
# Takes every *.qml, *.cpp and *.h of the current folder. FOLDER is how its headers are included:
# "kit" makes them "kit/Name.h". A QML file that says `pragma Singleton` is registered as one.
# DEPENDENCIES are the modules whose types its own C++ types derive from.
function(corvane_screens target)
    cmake_parse_arguments(SCREENS "" "URI;FOLDER" "LINKS;PRIVATE_LINKS;DEPENDENCIES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp"
                                        "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    file(GLOB screens CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}"
         "${CMAKE_CURRENT_SOURCE_DIR}/*.qml")
    foreach(screen ${screens})
        file(STRINGS "${screen}" singleton REGEX "^pragma Singleton")
        if(singleton)
            set_source_files_properties("${screen}" PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
        endif()
    endforeach()

    # Compiling each QML file ahead of time is for what is delivered; it takes minutes, and the
    # builds for the tests read the same files at run time.
    set(cachegen)
    if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
        set(cachegen NO_CACHEGEN)
    endif()

    string(REPLACE "." "/" uri_path "${SCREENS_URI}")
    qt_add_qml_module(${target} STATIC
        URI ${SCREENS_URI}
        VERSION 1.0
        RESOURCE_PREFIX "/qt-project.org/imports"
        OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/qml/${uri_path}"
        IMPORT_PATH "${CMAKE_BINARY_DIR}/qml"
        DEPENDENCIES QtQuick ${SCREENS_DEPENDENCIES}
        NO_PLUGIN
        ${cachegen}
        SOURCES ${sources}
        QML_FILES ${screens})

    # What Qt generates isn't held to this house's warnings, and apart from the rest it is compiled
    # with what it needs.
    get_target_property(generated ${target} SOURCES)
    list(FILTER generated INCLUDE REGEX "(qmlcache/.*|_qmltyperegistrations|qmlcache_loader)\\.cpp$")
    set_source_files_properties(${generated} PROPERTIES COMPILE_OPTIONS "-w")

    corvane_include_root(${target} ${SCREENS_FOLDER})
    # The generated registration names headers without a folder.
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${target} PUBLIC Qt6::Quick ${SCREENS_LINKS}
                                    PRIVATE ${SCREENS_PRIVATE_LINKS} corvane_flags)
    corvane_keep_registration(${target} ${SCREENS_URI})
endfunction()

# Nothing calls the function that registers a module's types, so a linker would leave its object file
# in the archive; naming the function as needed brings it in.
function(corvane_keep_registration target uri)
    string(REPLACE "." "_" name "qml_register_types_${uri}")
    string(LENGTH "${name}" length)
    target_link_options(${target} INTERFACE "LINKER:--undefined=_Z${length}${name}v")
endfunction()

# corvane_screen_test(<folder> SOURCES <file>... [LINKS <target>...]): tests of a layer's screens as
# one executable test_<folder>_ui. They run without a display. Under ThreadSanitizer they aren't
# built: Qt Quick's own threads, which aren't instrumented, would fill the report.
function(corvane_screen_test folder)
    cmake_parse_arguments(TEST "" "" "SOURCES;LINKS" ${ARGN})
    if(NOT TEST_SOURCES OR CORVANE_SANITIZE MATCHES "thread")
        return()
    endif()
    string(REPLACE "/" "_" name "${folder}_ui")
    add_executable(test_${name} ${TEST_SOURCES})
    target_link_libraries(test_${name} PRIVATE corvane_screen_support ${TEST_LINKS} corvane_flags)
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()
