# Defines the targets of Corvane.
#
# A folder of src/ that holds sources is a layer: a library corvane_<folder> whose headers are included
# as "<folder>/Name.h". The include root of a layer contains links to the headers of that folder only,
# not to those of its subfolders, which are layers of their own. The compiler therefore finds a header
# only if its layer is linked, and the link lists enforce the order of the layers.

add_library(corvane_flags INTERFACE)
target_compile_options(corvane_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Werror
    # Designated initializers rely on the defaults of the other members.
    -Wno-missing-designated-field-initializers
    # clang 19 reports the deprecated function that libstdc++ 12's stable_sort calls.
    -Wno-deprecated-declarations)
target_compile_definitions(corvane_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    QT_NO_URL_CAST_FROM_STRING QT_STRICT_ITERATORS)
if(CORVANE_SANITIZE)
    target_compile_options(corvane_flags INTERFACE
        -fsanitize=${CORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g1
        -fsanitize-ignorelist=${CMAKE_SOURCE_DIR}/cmake/sanitizer-ignore.txt)
    target_link_options(corvane_flags INTERFACE -fsanitize=${CORVANE_SANITIZE})
endif()

if(CORVANE_PRECOMPILED_HEADERS)
    target_precompile_headers(corvane_flags INTERFACE
        <algorithm> <functional> <memory> <optional> <vector>
        <QCoroTask> <QHash> <QList> <QObject> <QString> <QStringList>)
    # Lets ccache reuse objects that were built with a precompiled header.
    target_compile_options(corvane_flags INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()

# corvane_include_root(<target> <folder>): makes the headers of the current source folder available as
# "<folder>/Name.h" to the targets that link this one.
function(corvane_include_root target folder)
    string(REPLACE "/" "_" name "${folder}")
    set(root "${CMAKE_BINARY_DIR}/include/${name}")
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}"
         "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    # Recreated each time, so that no link to a deleted header remains.
    file(REMOVE_RECURSE "${root}")
    file(MAKE_DIRECTORY "${root}/${folder}")
    foreach(header ${headers})
        file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${root}/${folder}/${header}" SYMBOLIC)
    endforeach()
    target_include_directories(${target} PUBLIC "${root}")
endfunction()

# corvane_layer(<folder> LINKS <target>... [PRIVATE_LINKS <target>...]): a library of all sources of
# the current folder except main.cpp. A nested folder, "review/list", becomes corvane_review_list.
function(corvane_layer folder)
    cmake_parse_arguments(LAYER "" "" "LINKS;PRIVATE_LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp"
                                        "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    string(REPLACE "/" "_" name "corvane_${folder}")
    add_library(${name} STATIC ${sources})
    corvane_include_root(${name} ${folder})
    target_link_libraries(${name} PUBLIC ${LAYER_LINKS} PRIVATE ${LAYER_PRIVATE_LINKS} corvane_flags)
endfunction()

# corvane_test(<folder> [LINKS <target>...]): an executable test_<folder> of all test files in
# tests/<folder>, linked with the layer of that name. No-op if the folder holds no tests.
function(corvane_test folder)
    cmake_parse_arguments(TEST "" "" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
    if(NOT sources)
        return()
    endif()
    string(REPLACE "/" "_" name "${folder}")
    add_executable(test_${name} ${sources})
    target_link_libraries(test_${name} PRIVATE corvane_test_support corvane_${name} ${TEST_LINKS}
                                               corvane_flags)
    corvane_register_suite(test_${name} ${folder})
endfunction()

# corvane_register_suite(<target> <folder>): CTest runs each test of the executable by itself, under the
# name "<folder>/<suite>.<test>". scripts/test runs the executable as a whole, which is faster.
function(corvane_register_suite target folder)
    gtest_discover_tests(${target} TEST_PREFIX "${folder}/" DISCOVERY_MODE PRE_TEST
                         DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
    set_property(GLOBAL APPEND PROPERTY CORVANE_SUITES ${target})
endfunction()
