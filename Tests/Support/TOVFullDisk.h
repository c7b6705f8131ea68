// A disk that takes nothing more.
#pragma once

#include <memory>
#include <string>

// While it lives, nothing that is written to the file of this path can be flushed. On Linux the file is the system's
// device that is always full; on Windows all flushes of the library fail, those of other files too.
class CFullDisk
{
public:
    CFullDisk();
    ~CFullDisk();
    CFullDisk(const CFullDisk&) = delete;
    CFullDisk& operator=(const CFullDisk&) = delete;

    const char* Path() const;

private:
    struct sSystem;

    std::unique_ptr<sSystem> m_pSystem;
};
