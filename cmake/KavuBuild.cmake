# How every target of ours is compiled: warnings are errors, ccache when it is there,
# sanitizers and coverage by option. Link `kavu_options` to get it.
include(FeatureSummary)

option(KAVU_PCH "Use precompiled headers" ON)
# Most of the time of a build goes into headers and templates, which eight files in one unit
# share. Whoever edits a file at a time is quicker without.
option(KAVU_UNITY "Compile several files in one unit" ON)
if(KAVU_UNITY)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
endif()
find_program(KAVU_CCACHE ccache)
if(KAVU_CCACHE)
    # A precompiled header carries time stamps; without this every ccache look-up misses.
    set(sloppiness pch_defines,time_macros,include_file_mtime,include_file_ctime)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=${sloppiness} ${KAVU_CCACHE})
endif()
add_feature_info(ccache KAVU_CCACHE "compiler cache")

add_library(kavu_options INTERFACE)
target_include_directories(kavu_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(kavu_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(KAVU_CCACHE AND KAVU_PCH AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(kavu_options INTERFACE -fpch-preprocess)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlaps and overflows in concatenations of strings that it has inlined;
    # there are none, and no way to write them that it likes at every level.
    target_compile_options(kavu_options INTERFACE
        -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
if(KAVU_SANITIZE)
    # What undefined behaviour checks would find in a test is a fault of the test; to compile
    # them into the tests takes as long as the tests themselves.
    target_compile_options(kavu_options INTERFACE
        -fsanitize=${KAVU_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        $<$<BOOL:$<TARGET_PROPERTY:KAVU_IS_TEST>>:-fno-sanitize=undefined>)
    target_link_options(kavu_options INTERFACE -fsanitize=${KAVU_SANITIZE})
    # The names and lines that the reports of the sanitizers need make programs of a size that
    # the usual linker takes long for.
    find_program(KAVU_MOLD mold)
    if(KAVU_MOLD)
        target_link_options(kavu_options INTERFACE -fuse-ld=mold)
    endif()
endif()
if(KAVU_COVERAGE)
    target_compile_options(kavu_options INTERFACE --coverage -O0)
    target_link_options(kavu_options INTERFACE --coverage)
endif()
add_feature_info(larger_units KAVU_UNITY "of several files, for whole builds")
add_feature_info(precompiled_headers KAVU_PCH "of the standard library and the test framework")
add_feature_info(sanitizers KAVU_SANITIZE "${KAVU_SANITIZE}")

# A build without precompiled headers and one file a unit (the debug preset's) finds the
# includes that a file has forgotten.
function(kavu_precompile target)
    if(KAVU_PCH)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# Files that use a name in a sense of their own are a unit of their own.
function(kavu_alone)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# One library for a folder of src with its rooms. DEPENDS names the folders it may include; the build
# rule that folders only include to their left is checked by tests/architecture.
function(kavu_add_library folder)
    cmake_parse_arguments(arg "" "" "DEPENDS;LINK" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp)
    set(scope PUBLIC)
    if(sources)
        add_library(kavu_${folder} STATIC ${sources})
        kavu_precompile(kavu_${folder} <algorithm> <functional> <map> <optional>
                        <string> <string_view> <unordered_map> <vector>)
        # It is also part of a shared library. Hidden names are called as directly as without.
        set_target_properties(kavu_${folder} PROPERTIES POSITION_INDEPENDENT_CODE ON
            CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    else()
        # A folder of headers alone.
        add_library(kavu_${folder} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_link_libraries(kavu_${folder} ${scope} kavu_options)
    foreach(left IN LISTS arg_DEPENDS)
        target_link_libraries(kavu_${folder} ${scope} kavu_${left})
    endforeach()
    target_link_libraries(kavu_${folder} ${arg_LINK})
endfunction()
