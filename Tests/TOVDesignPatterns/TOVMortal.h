// Objects whose end can be seen or goes wrong.
#pragma once

#include <Debug/TOVDebug.h>

// Counts its death.
struct sMortal
{
    explicit sMortal(int& nDeaths) : m_nDeaths(nDeaths) {}
    ~sMortal() { ++m_nDeaths; }

    int& m_nDeaths;
};

// Raises a check at its end, unless it has been told that it may die.
struct sReluctant
{
    ~sReluctant() noexcept(false) { TOV_ASSERT(bMayDie); }

    bool bMayDie = false;
};
