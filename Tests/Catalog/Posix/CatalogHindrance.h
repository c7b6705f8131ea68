// Obstacles for a run of tovcatalog that only Posix can put in its way.
#pragma once

#include "Catalog/CatalogProcess.h"

#include <functional>

// Does the same as RunCatalog, with this action of the new process before it becomes the program.
sRun RunHindered(const std::vector<std::string>& aArguments, const std::string& sFolder,
                 const std::function<void()>& fnInChild);

// Actions for RunHindered follow.

// The permissions of files count from now on, also for root.
void GiveUpPrivileges();

// No file can grow beyond this size: a write fails there, as on a full disk.
void LimitFileSize(unsigned long ulBytes);

// No file can grow beyond this size: a write beyond it ends the process.
void DieBeyondFileSize(unsigned long ulBytes);
