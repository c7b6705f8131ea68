// How the library asks the system for a box. Windows only: elsewhere a box has neither owner nor flags.
#pragma once

// From now on each box that the library asks for is told on standard output, and shown all the same: "box flags 40003,
// owner desktop". That a window is brought to the foreground is told as "foreground desktop".
void TellBoxCalls();
