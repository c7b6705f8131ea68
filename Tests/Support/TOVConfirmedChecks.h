// What the attack "Checks" learns from the tests.
#pragma once

#include <string>

// Tells that a test has heard a failed check and compares its text: appends a line FILE|LINE|TESTFILE|TESTLINE|TEXT to
// the file that the environment variable TOV_CONFIRMED_CHECKS names. Does nothing without that variable.
void NoteConfirmedCheck(const std::string& sFile, unsigned long ulLine, const std::string& sExpression,
                        const std::string& sTestFile, int nTestLine);
