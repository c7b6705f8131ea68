# Installs the umbrella header and every header of the library that it reaches, each in its folder.
# SOURCE: the library's source folder. DESTINATION: the full name of the include folder.

cmake_policy(VERSION 3.25)

set(waiting TOVKernel.h)
set(reached "")
while(waiting)
    list(POP_FRONT waiting header)
    if(NOT header IN_LIST reached)
        list(APPEND reached "${header}")
        file(STRINGS "${SOURCE}/${header}" lines REGEX "^ *# *include +[<\"]")
        foreach(line IN LISTS lines)
            string(REGEX REPLACE "^ *# *include +[<\"]([^>\"]+)[>\"].*$" "\\1" included "${line}")
            if(EXISTS "${SOURCE}/${included}")
                list(APPEND waiting "${included}")
            endif()
        endforeach()
    endif()
endwhile()

foreach(header IN LISTS reached)
    get_filename_component(folder "${header}" DIRECTORY)
    file(INSTALL "${SOURCE}/${header}" DESTINATION "${DESTINATION}/${folder}")
endforeach()
