#include "FormatItems.h"

#include <cmath>

namespace Fuzz
{
namespace
{
constexpr char CONVERSIONS[] = "diouxXcsSCegGfnpE";
constexpr int MAX_WIDTH = 200;

bool IsIn(char cChar, const char* szSet)
{
    return cChar != '\0' && std::strchr(szSet, cChar) != nullptr;
}

void AddInt(sFormat& oFormat, int nValue)
{
    oFormat.aArguments.push_back({sArgument::eInt, nValue, 0, "", false});
}

// A width or a precision: nothing, digits, or a star with its argument.
std::string ReadNumber(CInput& oInput, sFormat& oFormat, bool& bGiven)
{
    const int nKind = oInput.Below(8);
    bGiven = nKind < 4;
    if (nKind > 3)
        return "";
    const int nValue = oInput.Below(2) == 0 ? oInput.Below(12) : oInput.Below(MAX_WIDTH);
    if (nKind > 0 || oFormat.aArguments.size() + 2 > MAX_ARGUMENTS)
        return std::to_string(nValue);
    const bool bNegative = oInput.Below(16) == 0 && nValue > 0;
    oFormat.bRefused = oFormat.bRefused || bNegative;
    oFormat.bComparable = oFormat.bComparable && !bNegative;
    AddInt(oFormat, bNegative ? -nValue : nValue);
    return "*";
}

std::string AsciiOf(std::string sText)
{
    for (char& cChar : sText)
        cChar = static_cast<char>(cChar & 0x7F);
    return sText.substr(0, sText.find('\0'));
}

// Adds a text of either width. Only ASCII has a form in the other one.
void AddText(CInput& oInput, sFormat& oFormat, bool bOther)
{
    const std::string sText = oInput.Text(20);
    const bool bNull = sText == "\x7f";
    oFormat.aArguments.push_back(
        {bOther ? sArgument::eOther : sArgument::eText, 0, 0, bNull ? "(null)" : AsciiOf(sText), bNull});
}

// Adds the argument of a conversion. sPrefix gets what the library takes before it, and cOfLibrary what the C library
// takes for it.
void AddArgument(CInput& oInput, sFormat& oFormat, char cConversion, std::string& sPrefix, std::string& sOfLibrary)
{
    sOfLibrary = std::string(1, cConversion);
    const int nModifier = oInput.Below(4);
    if (IsIn(cConversion, "diouxX"))
    {
        if (nModifier == 1)
        {
            sPrefix = "I64";
            sOfLibrary.insert(0, "ll");
            oFormat.aArguments.push_back({sArgument::eLong, oInput.Value<long long>(), 0, "", false});
            return;
        }
        // An integer of a long has 32 bits.
        sPrefix = nModifier == 2 ? "h" : nModifier == 3 ? "l" : "";
        sOfLibrary.insert(0, nModifier == 2 ? "h" : "");
        AddInt(oFormat, oInput.Below(2) == 0 ? oInput.Number() : oInput.Value<int>());
    }
    else if (IsIn(cConversion, "egGf"))
    {
        const double dValue = oInput.Below(2) == 0 ? oInput.Number() / 8.0 : oInput.Value<double>();
        oFormat.bComparable = oFormat.bComparable && std::isfinite(dValue);
        oFormat.bRounds = true;
        oFormat.bExponent = oFormat.bExponent || cConversion != 'f';
        oFormat.aArguments.push_back({sArgument::eDouble, 0, dValue, "", false});
    }
    else if (IsIn(cConversion, "cC"))
    {
        AddInt(oFormat, oInput.Byte() & 0x7F);
        sOfLibrary = "c";
    }
    else if (IsIn(cConversion, "sS"))
    {
        sPrefix = "";
        AddText(oInput, oFormat, cConversion == 'S');
        sOfLibrary = "s";
    }
    else if (cConversion == 'n')
    {
        oFormat.bComparable = false;
        oFormat.aArguments.push_back({sArgument::ePlace, 0, 0, "", false});
    }
    else
    {
        oFormat.bComparable = false;
        oFormat.bRefused = oFormat.bRefused || cConversion == 'E';
        AddInt(oFormat, oInput.Value<int>());
        // A pointer is passed as one.
        if (cConversion == 'p')
            oFormat.aArguments.back().nKind = sArgument::ePlace;
        else
            oFormat.aArguments.back() = {sArgument::eDouble, 0, 1.5, "", false};
    }
}

void ReadItem(CInput& oInput, sFormat& oFormat)
{
    const char cConversion = CONVERSIONS[oInput.Below(static_cast<int>(sizeof(CONVERSIONS)) - 1)];
    std::string sFlags;
    const int nFlags = oInput.Byte();
    for (int n = 0; n < 5; ++n)
        if ((nFlags >> n & 1) != 0 && nFlags < 128)
            sFlags += "-+0# "[n];
    bool bWidth = false;
    bool bPrecision = false;
    const std::string sWidth = ReadNumber(oInput, oFormat, bWidth);
    std::string sPrecision = ReadNumber(oInput, oFormat, bPrecision);
    // A precision before the conversion without a width is a full stop and digits all the same.
    sPrecision = bPrecision ? "." + sPrecision : oInput.Below(8) == 0 ? "." : "";

    // What the standard leaves open is not compared.
    const bool bNumber = IsIn(cConversion, "diouxXegGf");
    if ((!bNumber && sFlags.find_first_of("0+ #") != std::string::npos) ||
        (IsIn(cConversion, "diu") && sFlags.find('#') != std::string::npos) ||
        (IsIn(cConversion, "ouxX") && sFlags.find_first_of("+ ") != std::string::npos) ||
        (IsIn(cConversion, "cC") && !sPrecision.empty()))
        oFormat.bComparable = false;

    std::string sPrefix;
    std::string sOfLibrary;
    AddArgument(oInput, oFormat, cConversion, sPrefix, sOfLibrary);
    oFormat.sText += '%' + sFlags + sWidth + sPrecision + sPrefix + cConversion;
    oFormat.sOfLibrary += '%' + sFlags + sWidth + sPrecision + sOfLibrary;
}
} // namespace

sFormat ReadFormat(CInput& oInput)
{
    sFormat oFormat = {"", "", true, false, false, false, {}};
    for (int nItems = oInput.Below(4); nItems >= 0; --nItems)
    {
        for (const char cChar : AsciiOf(oInput.Text(8)))
        {
            const std::string sLiteral = cChar == '%' ? "%%" : std::string(1, cChar);
            oFormat.sText += sLiteral;
            oFormat.sOfLibrary += sLiteral;
        }
        if (nItems > 0 && oFormat.aArguments.size() < MAX_ARGUMENTS)
            ReadItem(oInput, oFormat);
    }
    return oFormat;
}
} // namespace Fuzz
