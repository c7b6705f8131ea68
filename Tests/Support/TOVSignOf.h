// The results of comparisons of which only the sign is promised.
#pragma once

inline int SignOf(int nNumber)
{
    return (nNumber > 0) - (nNumber < 0);
}
