// Hard times for a run of tovcatalog, as only Posix has them.
#pragma once

#include "Catalog/CatalogProcess.h"

#include <functional>
#include <sys/types.h>

// As RunCatalog; the new process does the action before it becomes the program.
sRun RunHindered(const std::vector<std::string>& aArguments, const std::string& sFolder,
                 const std::function<void()>& fnInChild);

// Becomes the program, in a new process. Standard streams are the caller's.
[[noreturn]] void BecomeCatalogProgram(const std::vector<std::string>& aArguments, const std::string& sFolder);

// Actions for it.

// From now on the rights of files count, also for root.
void GiveUpPrivileges();

// No file can grow beyond this size: a write fails there, as on a full disk.
void LimitFileSize(unsigned long ulBytes);

// As above, but such a write ends the process there.
void DieBeyondFileSize(unsigned long ulBytes);
