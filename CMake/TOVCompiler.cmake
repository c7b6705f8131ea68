# What every target of this project is compiled with.

if(NOT DEFINED CMAKE_CXX_STANDARD)
    set(CMAKE_CXX_STANDARD 17)
endif()
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Where ccache is installed, sources that have not changed are not compiled again. It reads precompiled headers only when
# told that their macros and times do not matter.
find_program(TOV_CCACHE ccache)
if(TOV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${TOV_CCACHE}")
endif()

# wchar_t has 16 bits on every target; everything that is linked together must agree on it.
if(NOT WIN32)
    add_compile_options(-fshort-wchar)
endif()

# As the other compilers do, clang tells an operator delete how large the block is.
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options(-fsized-deallocation)
endif()

if(TOV_SANITIZE)
    # A report needs lines, not variables.
    add_compile_options(-fsanitize=${TOV_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1)
    add_link_options(-fsanitize=${TOV_SANITIZE})

    # ThreadSanitizer has fixed places for its own data and gives up where a newer kernel loads a program into one of
    # them. Where the system lets a program ask for it, tests are loaded at the same addresses each time.
    if(TOV_SANITIZE MATCHES "thread")
        execute_process(COMMAND setarch --addr-no-randomize true RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
        if(result EQUAL 0)
            set(CMAKE_CROSSCOMPILING_EMULATOR setarch --addr-no-randomize)
        endif()
    endif()
endif()

# Warnings and the naming of source files in checks, for the project's own code. The presets make errors of warnings; a
# build without them does not end at what a compiler says that nobody here knows.
function(tov_own_code target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Woverloaded-virtual -Wundef
        # Clang complains of each inline member of an imported class, and of members that only the other system uses.
        "$<$<AND:$<CXX_COMPILER_ID:Clang>,$<BOOL:${WIN32}>>:-Wno-ignored-attributes;-Wno-unused-private-field>"
        # The last one that fits counts.
        "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
        "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/Source/=")
endfunction()
