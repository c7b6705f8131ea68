# Sources that each system has for itself stand in a folder Posix or Windows beside those of all systems.

# tov_native_files(<variable> [NATIVE <file>...] [POSIX <file>...] [WINDOWS <file>...]): gives the files of this system,
# each with its folder. Those after NATIVE stand in both folders, the others in the one that is named.
function(tov_native_files variable)
    cmake_parse_arguments(PARSE_ARGV 1 files "" "" "NATIVE;POSIX;WINDOWS")
    if(DEFINED files_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "tov_native_files: ${files_UNPARSED_ARGUMENTS} has no keyword before it")
    endif()
    if(WIN32)
        set(folder Windows)
        list(APPEND files_NATIVE ${files_WINDOWS})
    else()
        set(folder Posix)
        list(APPEND files_NATIVE ${files_POSIX})
    endif()
    list(TRANSFORM files_NATIVE PREPEND "${folder}/")
    set(${variable} ${files_NATIVE} PARENT_SCOPE)
endfunction()

# tov_native_sources(<target> [NATIVE <file>...] [POSIX <file>...] [WINDOWS <file>...]): adds such files to a target.
function(tov_native_sources target)
    tov_native_files(files ${ARGN})
    target_sources(${target} PRIVATE ${files})
endfunction()
