// Calls of the text, path, number and format functions with arguments from a seed. Each makes one line, which is the
// same on every target unless the function behaves differently there: what it was called with, and what came of it.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// The generator and what is made of it do not depend on the standard library: its distributions do.
class CRandomSource
{
public:
    explicit CRandomSource(std::uint32_t uSeed) : m_oEngine(uSeed) {}

    std::uint32_t Bits() { return static_cast<std::uint32_t>(m_oEngine()); }
    int Below(int nLimit) { return static_cast<int>(Bits() % static_cast<std::uint32_t>(nLimit)); }
    int Between(int nFirst, int nLast) { return nFirst + Below(nLast - nFirst + 1); }
    bool Once(int nIn) { return Below(nIn) == 0; }

    template<class T, std::size_t nCount> const T& OneOf(const T (&aValues)[nCount])
    {
        return aValues[Below(static_cast<int>(nCount))];
    }

    // Numbers of all sizes, and those at which something changes.
    std::int32_t Number();
    double Real();

private:
    std::mt19937 m_oEngine;
};

// Text of either width with its terminator, or null.
template<class tUnit> class CSampleText
{
public:
    CSampleText() = default;
    explicit CSampleText(std::vector<tUnit> aUnits) : m_bNull(false), m_aUnits(std::move(aUnits))
    {
        m_aUnits.push_back(0);
    }

    const tUnit* Get() const { return m_bNull ? nullptr : m_aUnits.data(); }
    int GetLength() const { return m_bNull ? 0 : static_cast<int>(m_aUnits.size()) - 1; }

    // A copy to write into, with room for more units, which are '#'.
    std::vector<tUnit> Room(int nMoreUnits = 0) const
    {
        std::vector<tUnit> aRoom = m_aUnits;
        aRoom.resize(m_aUnits.size() + static_cast<std::size_t>(nMoreUnits), static_cast<tUnit>('#'));
        return aRoom;
    }

private:
    bool m_bNull = true;
    std::vector<tUnit> m_aUnits;
};

template<class tUnit> CSampleText<tUnit> MakeText(CRandomSource& oRandom, int nMostUnits = 24);
template<class tUnit> CSampleText<tUnit> MakeNumberText(CRandomSource& oRandom);
// One to three units, often some that occur in the text.
template<class tUnit> CSampleText<tUnit> MakePart(CRandomSource& oRandom, const CSampleText<tUnit>& oText);

// These show a value in printable ASCII without a line's end.
std::string ShowUnits(const char* pUnits, int nCount);
std::string ShowUnits(const wchar_t* pUnits, int nCount);
std::string ShowReal(double fValue);
std::string ShowInteger(long long llValue);

template<class T> std::string Show(const T& oValue)
{
    if constexpr (std::is_same_v<T, bool>)
        return oValue ? "true" : "false";
    else if constexpr (std::is_same_v<T, char> || std::is_same_v<T, wchar_t>)
        return ShowUnits(&oValue, 1);
    else if constexpr (std::is_floating_point_v<T>)
        return ShowReal(oValue);
    else
        return ShowInteger(static_cast<long long>(oValue));
}
template<class tUnit> std::string Show(const CSampleText<tUnit>& oText)
{
    return oText.Get() == nullptr ? "null" : ShowUnits(oText.Get(), oText.GetLength());
}
inline std::string Show(const std::string& sShown)
{
    return sShown;
}

// The values with commas between them.
inline std::string ShowAll()
{
    return "";
}
template<class TFirst, class... TRest> std::string ShowAll(const TFirst& oFirst, const TRest&... oRest)
{
    return Show(oFirst) + (sizeof...(oRest) > 0 ? ", " : "") + ShowAll(oRest...);
}

// The line of a call. fnCall returns the result as it is shown; a failed check shows its text instead.
std::string CallLine(const std::string& sName, const std::string& sArguments,
                     const std::function<std::string()>& fnCall);

// These make one call of the group that each is named after.
std::string CallTextFunction(CRandomSource& oRandom);
std::string CallString(CRandomSource& oRandom);
std::string CallFormat(CRandomSource& oRandom);
std::string CallPath(CRandomSource& oRandom);

// A call of any group.
std::string CallAny(CRandomSource& oRandom);
