// A database of two things, for the tests of handles.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVDesignPatterns/TOVHandle.h>
#include <TOVDesignPatterns/TOVRefCount.h>

#include <map>
#include <string>
#include <vector>

constexpr char NO_DATABASE[] = "m_pDatabase != NULL";

// Counted without ever being freed, so that it can be looked at after its end.
class CCountedThing : public ITOVRefCount
{
public:
    long AddRef() override { return ++m_lCount; }
    long Release() override
    {
        const long lCount = --m_lCount;
        if (lCount == 0)
            ++m_nDeaths;
        return lCount;
    }
    long GetRefCount() const override { return m_lCount; }

    long m_lCount = 1;
    int m_nDeaths = 0;
};

// Really gone after its end.
class CMortal : public CTOVRefCount
{
public:
    explicit CMortal(int& nDeaths) : m_nDeaths(nDeaths) {}
    ~CMortal() override { ++m_nDeaths; }
    CMortal(const CMortal&) = delete;
    CMortal& operator=(const CMortal&) = delete;

private:
    int& m_nDeaths;
};

// Once spent, its next release raises a check.
class CSpent : public CTOVRefCount
{
public:
    void Spend() { m_lRefCount = 0; }
};

// Knows things by number, and remembers what it was called for.
class CTestDatabase : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long lHandle) override
    {
        m_aCalls.push_back("id " + std::to_string(lHandle));
        if (m_bRefuses)
            throw 7;
        return m_aThings.count(lHandle) == 0 ? CTOVHandle() : NewHandle(lHandle, m_aThings[lHandle]);
    }

    CTOVHandle GetHandle(ITOVRefCount* pObject) override
    {
        m_aCalls.push_back("object");
        if (m_bRefuses)
            throw 7;
        for (const auto& oThing : m_aThings)
            if (oThing.second == pObject)
                return NewHandle(oThing.first, pObject);
        return CTOVHandle();
    }

    void RemoveHandle(long lHandle) override
    {
        m_aCalls.push_back("remove " + std::to_string(lHandle));
        m_aThings.erase(lHandle);
    }

    CTOVHandle New(long lHandle, ITOVRefCount* pObject) { return NewHandle(lHandle, pObject); }

    // The calls since the last look.
    std::vector<std::string> Calls()
    {
        std::vector<std::string> aCalls;
        aCalls.swap(m_aCalls);
        return aCalls;
    }

    std::map<long, ITOVRefCount*> m_aThings;
    bool m_bRefuses = false;

private:
    std::vector<std::string> m_aCalls;
};

typedef std::vector<std::string> tCalls;

// A database with two things of the numbers 5 and 8; each is held once by the test.
class CHandleFixture : public testing::Test
{
protected:
    CHandleFixture()
    {
        m_oDatabase.m_aThings[5] = &m_oFive;
        m_oDatabase.m_aThings[8] = &m_oEight;
    }

    CCountedThing m_oFive;
    CCountedThing m_oEight;
    CTestDatabase m_oDatabase;
};
