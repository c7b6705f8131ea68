// A disk that takes nothing more.
#pragma once

#include <memory>
#include <string>

// While it lives, nothing that is written to the file of this path can be flushed: on Linux it is the system's full
// device; on Windows the library's flushes fail, of this file and of all others.
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
