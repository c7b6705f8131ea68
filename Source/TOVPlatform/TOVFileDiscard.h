// The end of a file whose owner forgets its handle. Internal and not exported: applications use CTOVFile.
#pragma once

namespace TOVPlatform
{
namespace TOVFile
{
// Closes the stream and frees its slot, although what it still holds may be lost. An empty slot is left alone.
void Discard(tHandle hFile);
} // namespace TOVFile
} // namespace TOVPlatform
