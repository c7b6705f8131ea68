# How the project's tests are built and registered.

# GoogleTest comes as sources, built here with each target's compiler and flags: a library built elsewhere would differ
# in the size of wchar_t on Linux and in the thread model on Windows.
find_path(TOV_GOOGLETEST_SOURCES src/gtest-all.cc
          PATHS /usr/src/googletest/googletest NO_CMAKE_FIND_ROOT_PATH
          DOC "The googletest folder of GoogleTest's sources")
if(NOT TOV_GOOGLETEST_SOURCES)
    message(FATAL_ERROR "The tests need the sources of GoogleTest: install the package googletest, name their folder with "
                        "-D TOV_GOOGLETEST_SOURCES=FOLDER, or do without tests by -D TOV_BUILD_TESTS=OFF")
endif()
find_package(Threads REQUIRED)

# What scripts compile with: a compiler that needs no options for its target.
set(TOV_COMPILER_BY_HAND "${CMAKE_CXX_COMPILER}")
if(TOV_RUNTIME_COMPILER)
    set(TOV_COMPILER_BY_HAND "${TOV_RUNTIME_COMPILER}")
endif()

# Test code is large and runs once, so that its compilation is what costs: an optimised build optimises the library and
# not its tests, and the four undefined-behaviour checks that guard each single member access are left to the library.
# AddressSanitizer sees the same mistakes in the tests.
function(tov_compile_quickly target)
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        target_compile_options(${target} PRIVATE -O0)
    endif()
    if(TOV_SANITIZE MATCHES "undefined")
        target_compile_options(${target} PRIVATE -fno-sanitize=alignment,null,object-size,vptr)
    endif()
    if(TOV_SANITIZE MATCHES "address" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE --param=asan-instrumentation-with-call-threshold=0)
    endif()
endfunction()

function(tov_test_code target)
    tov_own_code(${target})
    tov_compile_quickly(${target})
    # ccache can then read precompiled headers.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endfunction()

add_library(TOVGoogleTest STATIC "${TOV_GOOGLETEST_SOURCES}/src/gtest-all.cc")
target_include_directories(TOVGoogleTest SYSTEM PUBLIC "${TOV_GOOGLETEST_SOURCES}/include")
target_include_directories(TOVGoogleTest PRIVATE "${TOV_GOOGLETEST_SOURCES}")
# Nobody wants its counts, and they are the first of which a killed process may leave a half.
target_compile_options(TOVGoogleTest PRIVATE -w -fno-profile-arcs -fno-test-coverage)
target_link_libraries(TOVGoogleTest PUBLIC Threads::Threads)
# Its macros are called without their last argument, which C++17 does not know.
target_compile_options(TOVGoogleTest INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
tov_compile_quickly(TOVGoogleTest)

# tov_list_tests(<program> <file>...): checks that the folder's CMakeLists.txt is complete. The build of the program
# fails when the folder holds a source file that is among the files of no such call.
function(tov_list_tests program)
    get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    set(check "Tests${folder}IsComplete")
    if(NOT TARGET ${check})
        add_custom_target(${check}
            COMMAND "${CMAKE_COMMAND}" "-DFOLDER=${CMAKE_CURRENT_SOURCE_DIR}"
                    "-DLISTED=$<JOIN:$<TARGET_PROPERTY:${check},TOV_LISTED>,|>"
                    "-DOTHER=$<IF:$<BOOL:${WIN32}>,Posix,Windows>"
                    -P "${PROJECT_SOURCE_DIR}/CMake/TOVCheckListed.cmake"
            VERBATIM)
    endif()
    set_property(TARGET ${check} APPEND PROPERTY TOV_LISTED ${ARGN})
    add_dependencies(${program} ${check})
endfunction()

# tov_add_tests(<Folder> <file>... [NATIVE <file>...] [POSIX <file>...] [WINDOWS <file>...] [THREADS <file>...]): builds
# the test program Test<Folder> of the listed files and makes it a test of CTest, which runs its cases as
# CMake/run-cases describes. NATIVE, POSIX and WINDOWS are told in TOVNativeSources. THREADS names once more the files
# in which threads meet: of the files with tests, a build with ThreadSanitizer holds no others. The build fails when a
# source file of the folder is not listed, and a program without a case is a failed test.
function(tov_add_tests folder)
    cmake_parse_arguments(PARSE_ARGV 1 files "" "" "NATIVE;POSIX;WINDOWS;THREADS")
    tov_native_files(native NATIVE ${files_NATIVE} POSIX ${files_POSIX} WINDOWS ${files_WINDOWS})
    set(all ${files_UNPARSED_ARGUMENTS} ${files_NATIVE} ${files_POSIX} ${files_WINDOWS})
    foreach(name IN LISTS files_THREADS)
        if(NOT name IN_LIST all)
            message(FATAL_ERROR "tov_add_tests: ${folder} has no ${name} in which threads could meet")
        endif()
    endforeach()
    set(program "Test${folder}")
    set(sources ${files_UNPARSED_ARGUMENTS} ${native})
    if(files_THREADS AND TOV_SANITIZE MATCHES "thread")
        foreach(source IN LISTS sources)
            get_filename_component(name "${source}" NAME)
            if(name MATCHES "Test[.]cpp$" AND NOT name IN_LIST files_THREADS)
                list(REMOVE_ITEM sources "${source}")
            endif()
        endforeach()
    endif()
    add_executable(${program} ${sources})
    target_link_libraries(${program} PRIVATE TOVTestSupport)
    tov_test_code(${program})
    target_precompile_headers(${program} REUSE_FROM TOVTestSupport)
    tov_list_tests(${program} ${files_UNPARSED_ARGUMENTS} ${native})

    set(apart "$<TARGET_PROPERTY:${program},TOV_APART>")
    tov_add_test_of_cases(${folder} ${program} "*$<$<BOOL:${apart}>:-$<JOIN:${apart},:>>")
endfunction()

# The cases are asked for when the tests run, not in the build: a build needs no Wine, and a program that cannot even
# tell its cases does not keep the others from being tested.
function(tov_add_test_of_cases folder name filter)
    add_test(NAME ${name}
             COMMAND "${PROJECT_SOURCE_DIR}/CMake/run-cases" ${name} "--cases=${filter}"
                     "--own-process=$<JOIN:$<TARGET_PROPERTY:Test${folder},TOV_OWN_PROCESS>,:>"
                     ${CMAKE_CROSSCOMPILING_EMULATOR} "$<TARGET_FILE:Test${folder}>")
    set_tests_properties(${name} PROPERTIES LABELS ${folder} TIMEOUT 3600)
endfunction()

# tov_test_apart(<Folder> <Name> <pattern>...): makes the cases of Test<Folder> with these patterns a test of their own,
# Test<Folder>.<Name>, which runs beside that of the others.
function(tov_test_apart folder name)
    set_property(TARGET Test${folder} APPEND PROPERTY TOV_APART ${ARGN})
    string(JOIN ":" filter ${ARGN})
    tov_add_test_of_cases(${folder} Test${folder}.${name} "${filter}")
endfunction()

# tov_own_process(<Folder> <pattern>...): cases of Test<Folder>, by googletest's patterns, that need a process of their own.
function(tov_own_process folder)
    set_property(TARGET Test${folder} APPEND PROPERTY TOV_OWN_PROCESS ${ARGN})
endfunction()
