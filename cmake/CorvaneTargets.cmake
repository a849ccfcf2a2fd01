# How every target of Corvane is made.
#
# A folder of src/ is a floor: a library corvane_<folder> whose headers are included as
# "<folder>/Name.h". Each floor's include root holds a link to its own folder and nothing else, so a
# header of a floor that isn't linked isn't found: the order of the floors is kept by the compiler.

add_library(corvane_flags INTERFACE)
target_compile_options(corvane_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Werror
    # A designated initialiser leaves the other fields at their defaults; that is its point.
    -Wno-missing-designated-field-initializers
    # libstdc++ 12's stable_sort calls a function that it deprecates itself, which clang 19 reports.
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

# corvane_floor(<folder> [SOURCES <file>...] LINKS <target>...)
function(corvane_floor folder)
    cmake_parse_arguments(FLOOR "" "" "LINKS;PRIVATE_LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp"
                                        "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    set(root "${CMAKE_BINARY_DIR}/include/${folder}")
    file(MAKE_DIRECTORY "${root}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${folder}" SYMBOLIC)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(corvane_${folder} STATIC ${sources})
    target_include_directories(corvane_${folder} PUBLIC "${root}")
    target_link_libraries(corvane_${folder} PUBLIC ${FLOOR_LINKS}
                                            PRIVATE ${FLOOR_PRIVATE_LINKS} corvane_flags)
endfunction()

# corvane_test(<folder>): all test files of tests/<folder> as one executable over that floor.
function(corvane_test folder)
    cmake_parse_arguments(TEST "" "" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
    if(NOT sources)
        return()
    endif()
    add_executable(test_${folder} ${sources})
    target_link_libraries(test_${folder} PRIVATE corvane_test_support corvane_${folder} ${TEST_LINKS}
                                                 corvane_flags)
    add_test(NAME ${folder} COMMAND test_${folder})
    set_tests_properties(${folder} PROPERTIES TIMEOUT 600)
endfunction()
