# 32-bit Windows, built with clang over the headers and libraries of MinGW-w64 GCC and its posix thread model.

if(NOT DEFINED CMAKE_CXX_COMPILER)
    set(CMAKE_CXX_COMPILER clang++)
endif()
set(CMAKE_CXX_COMPILER_TARGET i686-w64-mingw32)

# Clang does not look for GCC's parts where a distribution has put those of one thread model.
set(TOV_RUNTIME_COMPILER i686-w64-mingw32-g++-posix)
execute_process(COMMAND ${TOV_RUNTIME_COMPILER} -print-libgcc-file-name
                OUTPUT_VARIABLE library OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET library PARENT_PATH folder)
# Its threads' own variables are GCC's, and so are the libraries that GCC links by itself.
string(JOIN " " CMAKE_CXX_FLAGS_INIT
       -femulated-tls --start-no-unused-arguments -nostdinc++ --end-no-unused-arguments
       -isystem "${folder}/include/c++" -isystem "${folder}/include/c++/i686-w64-mingw32")
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-B${folder} -L${folder}")
endforeach()

set(CMAKE_CXX_STANDARD_LIBRARIES "-lpthread -lkernel32 -luser32" CACHE STRING "What every program is linked with")

foreach(tool AR DLLTOOL NM OBJDUMP RANLIB STRIP)
    string(TOLOWER ${tool} name)
    find_program(CMAKE_${tool} i686-w64-mingw32-${name} REQUIRED)
endforeach()

include("${CMAKE_CURRENT_LIST_DIR}/Toolchain-windows-i686.cmake")
