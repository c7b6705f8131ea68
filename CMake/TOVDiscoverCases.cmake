# Read by CTest when it starts: makes a test of each case that a test program holds.

cmake_policy(VERSION 3.25)

# tov_discover_cases(<program> <file> <label> <command>...): asks the program in this file for its cases, by the command
# that runs it (none, or an emulator). A program that does not tell, or holds none, becomes a test that fails.
# TOV_CMAKE is the cmake program.
function(tov_discover_cases program file label)
    set(output "")
    set(result "it is not built")
    if(EXISTS "${file}")
        execute_process(COMMAND ${ARGN} "${file}" --gtest_list_tests
                        TIMEOUT 120 OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE result)
    endif()

    # A suite stands at the margin and ends with a dot, its cases are indented; behind a # stand values, of any content.
    string(REGEX REPLACE " *#[^\n]*" "" output "${output}")
    string(REGEX REPLACE "[\r;]" "" output "${output}")
    string(REPLACE "\n" ";" lines "${output}")
    set(suite "")
    set(count 0)
    foreach(line IN LISTS lines)
        if(line MATCHES "^([^ ]+\\.)$")
            set(suite "${CMAKE_MATCH_1}")
        elseif(line MATCHES "^  ([^ ]+)$")
            set(name "${suite}${CMAKE_MATCH_1}")
            add_test("${name}" ${ARGN} "${file}" "--gtest_filter=${name}")
            set_tests_properties("${name}" PROPERTIES
                LABELS "${label}" TIMEOUT 300 SKIP_REGULAR_EXPRESSION "\\[  SKIPPED \\]")
            if(name MATCHES "(^|[./])DISABLED_")
                set_tests_properties("${name}" PROPERTIES DISABLED TRUE)
            endif()
            math(EXPR count "${count} + 1")
        endif()
    endforeach()

    if(NOT result EQUAL 0)
        set(complaint "${program} does not tell its cases: ${result}\n${errors}")
    elseif(count EQUAL 0)
        set(complaint "${program} holds no case")
    else()
        return()
    endif()
    add_test("${program}.HoldsCases" "${TOV_CMAKE}" -E echo "${complaint}")
    set_tests_properties("${program}.HoldsCases" PROPERTIES LABELS "${label}" WILL_FAIL TRUE)
endfunction()
