// The bodies of the text functions for units of type tUnit; TOVString.cpp includes this once for each width.

int Compare(const tUnit* szString1, const tUnit* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(Backend::Compare(szString1, szString2));
}

int CompareNoCase(const tUnit* szString1, const tUnit* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(Backend::CompareNoCase(szString1, szString2));
}

int OrderNoCase(const tUnit* szString1, const tUnit* szString2)
{
    return Backend::CompareNoCase(szString1, szString2);
}

int Collate(const tUnit* szString1, const tUnit* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(Backend::Collate(szString1, szString2));
}

int CollateNoCase(const tUnit* szString1, const tUnit* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(Backend::CollateNoCase(szString1, szString2));
}

int Length(const tUnit* szString)
{
    TOV_ASSERT(szString != NULL);
    return Backend::Length(szString);
}

tUnit* ToLower(tUnit* szString)
{
    TOV_ASSERT(szString != NULL);
    Backend::ToLower(szString);
    return szString;
}

tUnit* ToUpper(tUnit* szString)
{
    TOV_ASSERT(szString != NULL);
    Backend::ToUpper(szString);
    return szString;
}

tUnit* Reverse(tUnit* szString)
{
    TOV_ASSERT(szString != NULL);
    std::reverse(szString, szString + Backend::Length(szString));
    return szString;
}

const tUnit* FindCharacter(const tUnit* szString, int nCharacter)
{
    TOV_ASSERT(szString != NULL);
    return Backend::FindCharacter(szString, nCharacter);
}

const tUnit* FindLastCharacter(const tUnit* szString, int nCharacter)
{
    TOV_ASSERT(szString != NULL);
    return Backend::FindLastCharacter(szString, nCharacter);
}

tUnit* FindString(tUnit* szString, const tUnit* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    if (*szCharSet == 0) // runtimes differ on whether an empty text has an empty part
        return szString;
    return Backend::FindString(szString, szCharSet);
}

const tUnit* FindOneOf(const tUnit* szString, const tUnit* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    return Backend::FindOneOf(szString, szCharSet);
}

const tUnit* FindNotOneOf(const tUnit* szString, const tUnit* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    for (; *szString != 0; szString = NextCharacter(szString))
    {
        if (!IsInSet(*szString, szCharSet))
            return szString;
    }
    return nullptr;
}

const tUnit* ReverseFindOneOf(const tUnit* szString, const tUnit* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    return ReverseFind(szString, szCharSet, true);
}

const tUnit* ReverseFindNotOneOf(const tUnit* szString, const tUnit* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    return ReverseFind(szString, szCharSet, false);
}

int SPrintf(tUnit* szBuffer, const tUnit* szFormat, ...)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(szFormat != NULL);
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = Backend::Print(szBuffer, INT_MAX, szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

int SNPrintf(tUnit* szBuffer, int nCount, const tUnit* szFormat, ...)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(nCount > 0);
    TOV_ASSERT(szFormat != NULL);
    va_list pArguments;
    va_start(pArguments, szFormat);
    int nLength = PrintPlainly(szBuffer, nCount, szFormat, pArguments);
    va_end(pArguments);
    if (nLength >= 0)
        return nLength;

    va_start(pArguments, szFormat);
    nLength = Backend::Print(szBuffer, nCount, szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

int VSPrintf(tUnit* szBuffer, const tUnit* szFormat, va_list pArguments)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(szFormat != NULL);
    return Backend::Print(szBuffer, INT_MAX, szFormat, pArguments);
}

int VSNPrintf(tUnit* szBuffer, int nCount, const tUnit* szFormat, va_list pArguments)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(nCount > 0);
    TOV_ASSERT(szFormat != NULL);
    va_list pCopy;
    va_copy(pCopy, pArguments);
    const int nLength = PrintPlainly(szBuffer, nCount, szFormat, pCopy);
    va_end(pCopy);
    return nLength >= 0 ? nLength : Backend::Print(szBuffer, nCount, szFormat, pArguments);
}

int VSCPrintf(const tUnit* szFormat, va_list pArguments)
{
    TOV_ASSERT(szFormat != NULL);
    return MeasureFormat(szFormat, pArguments);
}

tUnit* Copy(tUnit* szStringDest, const tUnit* szStringSrc)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    Backend::Copy(szStringDest, szStringSrc);
    return szStringDest;
}

tUnit* NCopy(tUnit* szStringDest, const tUnit* szStringSrc, int nCount)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    TOV_ASSERT(nCount > 0);
    Backend::CopyPadded(szStringDest, szStringSrc, nCount);
    return szStringDest;
}

tUnit* Concat(tUnit* szStringDest, const tUnit* szStringSrc)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    Backend::Append(szStringDest, szStringSrc);
    return szStringDest;
}

tUnit* NConcat(tUnit* szStringDest, const tUnit* szStringSrc, int nCount)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    TOV_ASSERT(nCount > 0);
    Backend::AppendAtMost(szStringDest, szStringSrc, nCount);
    return szStringDest;
}

tUnit* Inc(const tUnit* szString)
{
    TOV_ASSERT(szString != NULL);
    return const_cast<tUnit*>(Backend::Inc(szString));
}

tUnit* NInc(const tUnit* szString, int nCount)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(nCount >= 0);
    return const_cast<tUnit*>(Backend::NInc(szString, nCount));
}

tUnit* Dec(const tUnit* szStringStart, const tUnit* szStringCurrent)
{
    TOV_ASSERT(szStringStart != NULL);
    TOV_ASSERT(szStringCurrent != NULL);
    if (szStringCurrent <= szStringStart)
        return nullptr;
    return const_cast<tUnit*>(Backend::Dec(szStringStart, szStringCurrent));
}

namespace
{
// Reads a number of any form. Kept out of the functions below, which mostly answer by themselves.
TOV_NOINLINE long ToAnyLong(const tUnit* szStart, tUnit** pszEnd, int nBase)
{
    tUnit* szEnd = const_cast<tUnit*>(szStart);
    const long lValue = IsNumberBase(nBase) ? Backend::ToLong(szStart, &szEnd, nBase) : 0;
    if (pszEnd != nullptr)
        *pszEnd = szEnd;
    return lValue;
}

TOV_NOINLINE unsigned long ToAnyUlong(const tUnit* szStart, tUnit** pszEnd, int nBase)
{
    tUnit* szEnd = const_cast<tUnit*>(szStart);
    const unsigned long ulValue = IsNumberBase(nBase) ? Backend::ToUlong(szStart, &szEnd, nBase) : 0;
    if (pszEnd != nullptr)
        *pszEnd = szEnd;
    return ulValue;
}
} // namespace

long ToLong(const tUnit* szStart, tUnit** pszEnd, int nBase)
{
    TOV_ASSERT(szStart != NULL);
    int nValue = 0;
    const tUnit* const szEnd = nBase == 10 ? ReadShortDecimal(szStart, nValue) : nullptr;
    if (szEnd == nullptr)
        return ToAnyLong(szStart, pszEnd, nBase);
    if (pszEnd != nullptr)
        *pszEnd = const_cast<tUnit*>(szEnd);
    return nValue;
}

unsigned long ToUlong(const tUnit* szStart, tUnit** pszEnd, int nBase)
{
    TOV_ASSERT(szStart != NULL);
    int nValue = 0;
    const tUnit* const szEnd = nBase == 10 ? ReadShortDecimal(szStart, nValue) : nullptr;
    if (szEnd == nullptr)
        return ToAnyUlong(szStart, pszEnd, nBase);
    if (pszEnd != nullptr)
        *pszEnd = const_cast<tUnit*>(szEnd);
    return static_cast<unsigned int>(nValue);
}

double ToDouble(const tUnit* szStart, tUnit** pszEnd)
{
    TOV_ASSERT(szStart != NULL);
    tUnit* szEnd = const_cast<tUnit*>(szStart);
    const double dValue = Backend::ToDouble(szStart, &szEnd);
    if (pszEnd != nullptr)
        *pszEnd = szEnd;
    return dValue;
}
