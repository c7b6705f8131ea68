// An element that counts what happens to its kind, and refuses on demand.
#pragma once

#include <climits>
#include <stdexcept>

struct sCounted
{
    sCounted(int nSetValue = 0) : nValue(nSetValue) { ++s_nAlive; }

    sCounted(const sCounted& oOther) : nValue(oOther.nValue)
    {
        if (s_bRefusesCopies)
            throw std::runtime_error("refused");
        ++s_nAlive;
        ++s_nCopies;
    }

    sCounted& operator=(const sCounted& oOther)
    {
        if (s_nAssignmentsUntilRefusal-- == 0)
            throw std::runtime_error("refused");
        nValue = oOther.nValue;
        ++s_nAssignments;
        return *this;
    }

    ~sCounted() { --s_nAlive; }

    // Counts copies and assignments anew, and refuses neither.
    static void Reset()
    {
        s_nCopies = 0;
        s_nAssignments = 0;
        s_bRefusesCopies = false;
        s_nAssignmentsUntilRefusal = INT_MAX;
    }

    int nValue;
    static inline int s_nAlive = 0;
    static inline int s_nCopies = 0;
    static inline int s_nAssignments = 0;
    static inline bool s_bRefusesCopies = false;
    static inline int s_nAssignmentsUntilRefusal = INT_MAX;
};
