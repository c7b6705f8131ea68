# CLI11, which reads the command lines of the project's programs.

# tov_use_cli11(<target> <source>): lets the target's one source with the command line include <CLI/CLI.hpp>, and tells it
# the version that it shows.
function(tov_use_cli11 target source)
    # Only CLI11's own folder is put on the path: a cross compiler must not see the host's headers.
    find_path(TOV_CLI11_INCLUDE CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
    if(NOT TOV_CLI11_INCLUDE)
        message(FATAL_ERROR "${target} needs CLI11: install the package libcli11-dev, name its folder with "
                            "-D TOV_CLI11_INCLUDE=FOLDER, or do without programs by "
                            "-D TOV_BUILD_TEST_HOST=OFF -D TOV_BUILD_EXAMPLES=OFF")
    endif()
    set(folder "${PROJECT_BINARY_DIR}/CLI11")
    file(MAKE_DIRECTORY "${folder}")
    file(CREATE_LINK "${TOV_CLI11_INCLUDE}/CLI" "${folder}/CLI" SYMBOLIC)
    target_include_directories(${target} SYSTEM PRIVATE "${folder}")

    set_property(SOURCE ${source} APPEND PROPERTY COMPILE_DEFINITIONS "TOV_VERSION=\"${PROJECT_VERSION}\"")

    # The header is the largest piece of code in the project, and a command line is read once: what costs is compiling it.
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS "-O1")
    endif()
endfunction()
