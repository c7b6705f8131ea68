# Fails when one of the flat memory functions calls anything but what it may: they serve below the runtime.
#
#   cmake -DOBJDUMP=... -DLIBRARY=... -DPREFIX=... -P TOVPlainMemoryCalls.cmake
#
# PREFIX is what the target's compiler puts in front of a C name. A jump that leaves the function is a call as well.

set(disassemble --disassemble)
if(OBJDUMP MATCHES "llvm")
    set(disassemble --disassemble-symbols)
endif()

function(expect_calls function allowed)
    set(symbol "${PREFIX}${function}")
    execute_process(COMMAND "${OBJDUMP}" -d --no-show-raw-insn "${disassemble}=${symbol}" "${LIBRARY}"
                    OUTPUT_VARIABLE text RESULT_VARIABLE result)
    string(REGEX MATCHALL "\n *[0-9a-f]+: *\t[^\n]*" instructions "${text}")
    list(LENGTH instructions count)
    if(NOT result EQUAL 0 OR count EQUAL 0)
        message(FATAL_ERROR "no code of ${symbol} in ${LIBRARY}")
    endif()

    foreach(instruction IN LISTS instructions)
        if(NOT instruction MATCHES "\t(bnd |notrack )?(call|jmp|j[a-z]+)[a-z]*[ \t]+(.*)$")
            continue()
        endif()
        set(mnemonic "${CMAKE_MATCH_2}")
        set(target "${CMAKE_MATCH_3}")
        set(inside FALSE)
        if(NOT mnemonic STREQUAL "call" AND target MATCHES "<${symbol}(\\+0x[0-9a-f]+|\\.cold|\\.cold\\+0x[0-9a-f]+)?>")
            set(inside TRUE)
        endif()
        if(NOT inside AND (allowed STREQUAL "" OR NOT target MATCHES "${allowed}"))
            message(SEND_ERROR "${function}: ${instruction}")
        endif()
    endforeach()
    message(STATUS "${function}: ${count} instructions")
endfunction()

expect_calls(TOVMemory_Cmp "")
expect_calls(TOVMemory_Copy "")
expect_calls(TOVMemory_Set "TOVDebug6Assert")
expect_calls(TOVMemory_Zero "TOVDebug6Assert|TOVMemory_Set")
