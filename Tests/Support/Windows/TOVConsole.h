// A terminal for a program under test, on Windows.
#pragma once

#include <windows.h>

// A new console of this size, in characters, in the place of this program's own; its screen, which child processes can
// inherit. The caller closes the screen and calls FreeConsole. The console is this program's too, because one that
// belonged to the child alone would vanish together with it, before it could be read.
//
// Throws std::runtime_error where no console works, so that no test waits for what never appears.
HANDLE OpenConsole(COORD oSize);
