// Formats that are built of items, with the arguments that they take, for both widths and for the C library.
#pragma once

#include "Fuzz.h"

#include <string>
#include <vector>

namespace Fuzz
{
// An argument as it is passed: numbers by value, texts by their address, which differs with the width.
struct sArgument
{
    enum eKind
    {
        eInt,
        eLong,
        eDouble,
        eText,  // of the format's own width
        eOther, // of the other width
        ePlace  // where %n stores
    };

    eKind nKind;
    long long llValue;
    double dValue;
    std::string sText;
    bool bNull;
};

struct sFormat
{
    std::string sText;      // as the library takes it
    std::string sOfLibrary; // as the C library takes it, if it can do the same
    bool bComparable;       // whether it can
    bool bRefused;          // whether the estimate fails a check
    bool bRounds;           // whether a number in it may be rounded
    bool bExponent;         // whether one may have an exponent
    std::vector<sArgument> aArguments;
};

constexpr std::size_t MAX_ARGUMENTS = 3;

// Reads a format of a few items, with up to MAX_ARGUMENTS arguments.
sFormat ReadFormat(CInput& oInput);

// Calls a function with the arguments from nNext on, each with its own type. fnAddress gives the address of a text.
template<class TFunction, class TAddress, class... TArguments>
auto Apply(const sFormat& oFormat, TFunction fnFunction, TAddress fnAddress, TArguments... nArguments)
    -> decltype(fnFunction())
{
    if constexpr (sizeof...(TArguments) < MAX_ARGUMENTS)
    {
        if (sizeof...(TArguments) < oFormat.aArguments.size())
        {
            const sArgument& oArgument = oFormat.aArguments[sizeof...(TArguments)];
            switch (oArgument.nKind)
            {
            case sArgument::eInt:
                return Apply(oFormat, fnFunction, fnAddress, nArguments..., static_cast<int>(oArgument.llValue));
            case sArgument::eLong:
                return Apply(oFormat, fnFunction, fnAddress, nArguments..., oArgument.llValue);
            case sArgument::eDouble:
                return Apply(oFormat, fnFunction, fnAddress, nArguments..., oArgument.dValue);
            default:
                return Apply(oFormat, fnFunction, fnAddress, nArguments..., fnAddress(sizeof...(TArguments)));
            }
        }
    }
    return fnFunction(nArguments...);
}
} // namespace Fuzz
