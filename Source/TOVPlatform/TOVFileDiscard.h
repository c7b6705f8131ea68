// Declares Discard, which closes a file whose owner no longer needs its handle. It is not exported: applications use
// CTOVFile.
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
