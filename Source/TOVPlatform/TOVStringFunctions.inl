// The bodies of the text functions for units of type T; TOVString.cpp includes this once for each width.

int Compare(const T* szString1, const T* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(TOVStringBackend::Compare(szString1, szString2));
}

int CompareNoCase(const T* szString1, const T* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(TOVStringBackend::CompareNoCase(szString1, szString2));
}

int Collate(const T* szString1, const T* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(TOVStringBackend::Collate(szString1, szString2));
}

int CollateNoCase(const T* szString1, const T* szString2)
{
    TOV_ASSERT(szString1 != NULL);
    TOV_ASSERT(szString2 != NULL);
    return Sign(TOVStringBackend::CollateNoCase(szString1, szString2));
}

int Length(const T* szString)
{
    TOV_ASSERT(szString != NULL);
    return TOVStringBackend::Length(szString);
}

T* ToLower(T* szString)
{
    TOV_ASSERT(szString != NULL);
    TOVStringBackend::ToLower(szString);
    return szString;
}

T* ToUpper(T* szString)
{
    TOV_ASSERT(szString != NULL);
    TOVStringBackend::ToUpper(szString);
    return szString;
}

T* Reverse(T* szString)
{
    TOV_ASSERT(szString != NULL);
    TOVStringBackend::Reverse(szString);
    return szString;
}

const T* FindCharacter(const T* szString, int nCharacter)
{
    TOV_ASSERT(szString != NULL);
    return TOVStringBackend::FindCharacter(szString, nCharacter);
}

const T* FindLastCharacter(const T* szString, int nCharacter)
{
    TOV_ASSERT(szString != NULL);
    return TOVStringBackend::FindLastCharacter(szString, nCharacter);
}

T* FindString(T* szString, const T* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    if (*szCharSet == 0) // runtimes differ on whether an empty text has an empty part
        return szString;
    return TOVStringBackend::FindString(szString, szCharSet);
}

const T* FindOneOf(const T* szString, const T* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    return TOVStringBackend::FindOneOf(szString, szCharSet);
}

const T* FindNotOneOf(const T* szString, const T* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    for (; *szString != 0; szString = TOVStringBackend::Inc(szString))
    {
        if (!IsInSet(*szString, szCharSet))
            return szString;
    }
    return nullptr;
}

const T* ReverseFindOneOf(const T* szString, const T* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    return ReverseFind(szString, szCharSet, true);
}

const T* ReverseFindNotOneOf(const T* szString, const T* szCharSet)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(szCharSet != NULL);
    return ReverseFind(szString, szCharSet, false);
}

int SPrintf(T* szBuffer, const T* szFormat, ...)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(szFormat != NULL);
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = TOVStringBackend::Print(szBuffer, INT_MAX, szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

int SNPrintf(T* szBuffer, int nCount, const T* szFormat, ...)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(nCount > 0);
    TOV_ASSERT(szFormat != NULL);
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = VSNPrintf(szBuffer, nCount, szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

int VSPrintf(T* szBuffer, const T* szFormat, va_list pArguments)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(szFormat != NULL);
    return TOVStringBackend::Print(szBuffer, INT_MAX, szFormat, pArguments);
}

int VSNPrintf(T* szBuffer, int nCount, const T* szFormat, va_list pArguments)
{
    TOV_ASSERT(szBuffer != NULL);
    TOV_ASSERT(nCount > 0);
    TOV_ASSERT(szFormat != NULL);
    return TOVStringBackend::Print(szBuffer, nCount, szFormat, pArguments);
}

int VSCPrintf(const T* szFormat, va_list pArguments)
{
    TOV_ASSERT(szFormat != NULL);
    return MeasureFormat(szFormat, pArguments);
}

T* Copy(T* szStringDest, const T* szStringSrc)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    TOVStringBackend::Copy(szStringDest, szStringSrc);
    return szStringDest;
}

T* NCopy(T* szStringDest, const T* szStringSrc, int nCount)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    TOV_ASSERT(nCount > 0);
    TOVStringBackend::CopyPadded(szStringDest, szStringSrc, nCount);
    return szStringDest;
}

T* Concat(T* szStringDest, const T* szStringSrc)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    TOVStringBackend::Append(szStringDest, szStringSrc);
    return szStringDest;
}

T* NConcat(T* szStringDest, const T* szStringSrc, int nCount)
{
    TOV_ASSERT(szStringDest != NULL);
    TOV_ASSERT(szStringSrc != NULL);
    TOV_ASSERT(nCount > 0);
    TOVStringBackend::AppendAtMost(szStringDest, szStringSrc, nCount);
    return szStringDest;
}

T* Inc(const T* szString)
{
    TOV_ASSERT(szString != NULL);
    return const_cast<T*>(TOVStringBackend::Inc(szString));
}

T* NInc(const T* szString, int nCount)
{
    TOV_ASSERT(szString != NULL);
    TOV_ASSERT(nCount >= 0);
    return const_cast<T*>(TOVStringBackend::NInc(szString, nCount));
}

T* Dec(const T* szStringStart, const T* szStringCurrent)
{
    TOV_ASSERT(szStringStart != NULL);
    TOV_ASSERT(szStringCurrent != NULL);
    if (szStringCurrent <= szStringStart)
        return nullptr;
    return const_cast<T*>(TOVStringBackend::Dec(szStringStart, szStringCurrent));
}

long ToLong(const T* szStart, T** pszEnd, int nBase)
{
    TOV_ASSERT(szStart != NULL);
    T* szEnd = const_cast<T*>(szStart);
    const long lValue = IsNumberBase(nBase) ? TOVStringBackend::ToLong(szStart, &szEnd, nBase) : 0;
    if (pszEnd != nullptr)
        *pszEnd = szEnd;
    return lValue;
}

unsigned long ToUlong(const T* szStart, T** pszEnd, int nBase)
{
    TOV_ASSERT(szStart != NULL);
    T* szEnd = const_cast<T*>(szStart);
    const unsigned long ulValue = IsNumberBase(nBase) ? TOVStringBackend::ToUlong(szStart, &szEnd, nBase) : 0;
    if (pszEnd != nullptr)
        *pszEnd = szEnd;
    return ulValue;
}

double ToDouble(const T* szStart, T** pszEnd)
{
    TOV_ASSERT(szStart != NULL);
    T* szEnd = const_cast<T*>(szStart);
    const double dValue = TOVStringBackend::ToDouble(szStart, &szEnd);
    if (pszEnd != nullptr)
        *pszEnd = szEnd;
    return dValue;
}
