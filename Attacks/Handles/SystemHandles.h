// Counts what the system has open for this process. Each system has its own source.
#pragma once

// Posix: descriptors. Windows: handles of all kinds.
long CountSystemHandles();
