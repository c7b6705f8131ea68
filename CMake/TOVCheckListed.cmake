# Fails when the folder FOLDER holds a source file that is not in LISTED, a list with | between its elements.

string(REPLACE "|" ";" listed "${LISTED}")
file(GLOB present RELATIVE "${FOLDER}" "${FOLDER}/*.cpp")
list(REMOVE_ITEM present ${listed})
if(present)
    list(JOIN present ", " names)
    message(FATAL_ERROR "${FOLDER}/CMakeLists.txt does not list ${names}")
endif()
