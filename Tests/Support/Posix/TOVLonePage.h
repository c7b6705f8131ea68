// CLonePage: memory that ends where nobody may read on.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

// One page between two that nobody may read.
class CLonePage
{
public:
    CLonePage() : m_nSize(static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)))
    {
        m_pPages = ::mmap(nullptr, 3 * m_nSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m_pPages == MAP_FAILED || ::mprotect(GetStart(), m_nSize, PROT_READ | PROT_WRITE) != 0)
            throw std::runtime_error("no page");
    }
    ~CLonePage() { ::munmap(m_pPages, 3 * m_nSize); }
    CLonePage(const CLonePage&) = delete;
    CLonePage& operator=(const CLonePage&) = delete;

    char* GetStart() const { return static_cast<char*>(m_pPages) + m_nSize; }
    char* GetEnd() const { return GetStart() + m_nSize; }

private:
    std::size_t m_nSize;
    void* m_pPages;
};
