// The end of a file whose owner forgets its handle. Not exported: applications use CTOVFile.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
namespace TOVFile
{
// Closes the stream and frees its slot, even if what it still holds cannot be written and is lost. Does nothing for an
// empty slot.
void Discard(tHandle hFile);
} // namespace TOVFile
} // namespace TOVPlatform
