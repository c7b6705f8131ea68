# CTest reads this for tov_discover_tests, once for each of its targets, with the variables TOV_TARGET, TOV_PREFIX,
# TOV_FOLDER, TOV_COMMAND, TOV_ARGUMENTS and TOV_PROPERTIES.

execute_process(COMMAND ${TOV_COMMAND} ${TOV_ARGUMENTS} --list WORKING_DIRECTORY "${TOV_FOLDER}"
                RESULT_VARIABLE result OUTPUT_VARIABLE rest ERROR_QUIET)
string(REPLACE "\r" "" rest "${rest}")

set(known "\n")
if(result STREQUAL "0")
    # No list of CMake: a name may have any characters.
    string(FIND "${rest}" "\n" length)
    while(length GREATER_EQUAL 0)
        string(SUBSTRING "${rest}" 0 ${length} case)
        math(EXPR begin "${length} + 1")
        string(SUBSTRING "${rest}" ${begin} -1 rest)
        string(FIND "${rest}" "\n" length)

        string(FIND "${known}" "\n${case}\n" at)
        if(at EQUAL -1)
            string(APPEND known "${case}\n")
            # In a pattern, * stands for what --list escapes, and ? for a byte that a command line may change.
            string(REGEX REPLACE "\\\\(x[0-9a-f][0-9a-f]|[nrt])" "\n" pattern "${case}")
            string(REGEX REPLACE "[^\n -)+-:<-Z^-~]" "?" pattern "${pattern}")
            string(REPLACE "\n" "*" pattern "${pattern}")
            add_test("${TOV_PREFIX}${case}" ${TOV_COMMAND} ${TOV_ARGUMENTS} "--filter=${pattern}")
            set_tests_properties("${TOV_PREFIX}${case}" PROPERTIES WORKING_DIRECTORY "${TOV_FOLDER}" ${TOV_PROPERTIES})
        endif()
    endwhile()
endif()

# Without cases, a test that shows the complaint and cannot pass.
if(known STREQUAL "\n")
    set(name "${TOV_PREFIX}${TOV_TARGET}.discovery")
    add_test("${name}" ${TOV_COMMAND} ${TOV_ARGUMENTS} --list)
    set_tests_properties("${name}" PROPERTIES WORKING_DIRECTORY "${TOV_FOLDER}"
                         PASS_REGULAR_EXPRESSION "^the cases of ${TOV_TARGET} are known after all$")
endif()
