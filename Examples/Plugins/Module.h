// Declares CModule, a shared library that is loaded at run time. Each system has its own source.
#pragma once

class CModule
{
public:
    explicit CModule(const char* szFile);
    ~CModule();
    CModule(const CModule&) = delete;
    CModule& operator=(const CModule&) = delete;

    bool IsLoaded() const { return m_pModule != nullptr; }

    // Returns the address of an exported function, or null.
    void* Find(const char* szName) const;

private:
    void* const m_pModule;
};
