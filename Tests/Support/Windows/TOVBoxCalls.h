// How the library asks the system for a box. Only on Windows does a box have an owner and flags.
#pragma once

// From now on standard output tells of each box that the library asks for, "box flags 40003, owner desktop", and of
// each window that it brings to the foreground, "foreground desktop". The box is shown all the same.
void TellBoxCalls();
