// Declares sSettings, which a program keeps in a file from one run to the next, and the functions that read and write
// the file.
#pragma once

#include <TOVString/TOVStringA.h>

#include <stdexcept>
#include <string>

class ITOVStream;

// Says why a file of settings cannot be used.
class CSettingsError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Each part has a section of its own in the file, with a version that grows when the part changes.
struct sWindowSettings
{
    int nWidth = 640;  // pixels; characters of 8 pixels in version 1
    int nHeight = 400; // pixels; since version 2

    void Transfer(ITOVStream& oStream);
};

struct sEditorSettings
{
    int nTabWidth = 4;
    CTOVStringA oFont = "Mono"; // since version 2

    void Transfer(ITOVStream& oStream);
};

struct sSettings
{
    sWindowSettings oWindow;
    sEditorSettings oEditor;
};

// Reads a file that this release or an older one has written. What the older one did not know has its default. Throws
// CSettingsError if the file is none of these, or ends too early.
sSettings LoadSettings(const std::string& sFile);

// Returns false if there is no such file. A file of which the system does not tell whether it exists counts as one, so
// that the defaults do not replace it.
bool HasSettings(const std::string& sFile);

// Writes the newest form. The file is replaced in one step, after the new one has been read back: if anything fails,
// CSettingsError or an exception of the library's streams says so, the old file is still there, and the new one is
// removed. The new file never takes the place of any other, a link leads to the new file as it led to the old one, and
// the permissions of the old file remain.
void SaveSettings(const sSettings& oSettings, const std::string& sFile);
