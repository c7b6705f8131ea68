// What a fault may have damaged without being noticed at once.
#pragma once

// Whether the system finds every heap of the process whole: that of the process, and those of the runtimes.
bool AreHeapsWhole();
