# Fails when the folder FOLDER, or one below it, holds a source file that is not in LISTED, a list with | between its
# elements. What stands in a folder named OTHER is for the other system.

string(REPLACE "|" ";" listed "${LISTED}")
file(GLOB_RECURSE present RELATIVE "${FOLDER}" "${FOLDER}/*.cpp")
list(REMOVE_ITEM present ${listed})
list(FILTER present EXCLUDE REGEX "^${OTHER}/")
if(present)
    list(JOIN present ", " names)
    message(FATAL_ERROR "${FOLDER}/CMakeLists.txt does not list ${names}")
endif()
