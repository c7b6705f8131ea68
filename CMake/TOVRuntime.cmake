# The compiler's own DLLs that TOVKernel.dll and every program beside it need, on Windows.
#
# Exceptions cross the library's boundary, so library and programs share one compiler runtime. The DLLs are put beside
# them in the build tree and in the package. TOV_RUNTIME_LIBRARIES holds their full names.

set(TOV_RUNTIME_LIBRARIES "")
if(MINGW)
    # A compiler that uses another one's libraries names that in its toolchain file.
    if(NOT DEFINED TOV_RUNTIME_COMPILER)
        set(TOV_RUNTIME_COMPILER "${CMAKE_CXX_COMPILER}")
    endif()
    foreach(name libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND "${TOV_RUNTIME_COMPILER}" -print-file-name=${name}
                        OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT IS_ABSOLUTE "${file}")
            message(FATAL_ERROR "${TOV_RUNTIME_COMPILER} does not know where its ${name} is")
        endif()
        # Without what only the compiler's own developers debug, it takes a tenth of the place.
        set(stripped "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name}")
        if("${file}" IS_NEWER_THAN "${stripped}")
            file(MAKE_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
            execute_process(COMMAND "${CMAKE_STRIP}" -o "${stripped}" "${file}" COMMAND_ERROR_IS_FATAL ANY)
        endif()
        list(APPEND TOV_RUNTIME_LIBRARIES "${stripped}")
    endforeach()
endif()
