// Declares what CTOVFile needs of a file besides TOVFile.h. It is not exported: applications use CTOVFile.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
namespace TOVFile
{
// Closes the stream and frees its slot, even if what it still holds cannot be written and is lost. Does nothing for an
// empty slot.
void Discard(tHandle hFile);

// Returns the size of a file that has not been used since it was opened, without moving its position, and -1 if that is
// not known or beyond 0x7FFFFFFF. Checks the handle.
long GetSizeOfUnused(tHandle hFile);
} // namespace TOVFile
} // namespace TOVPlatform
