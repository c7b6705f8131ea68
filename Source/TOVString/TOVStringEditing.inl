// The members of a string that cut, change, convert and format its text, for units of type tUnit. TOVStringA.cpp and
// TOVStringW.cpp include this after TOVStringBody.inl. The contracts are in the two headers.

namespace
{
bool IsElement(const CTOVArray<tString>& oArray, const tString& oString)
{
    if (oArray.IsEmpty())
        return false;
    const std::less<const tString*> oBefore;
    return !oBefore(&oString, &oArray[0]) && !oBefore(&oArray[oArray.GetCount() - 1], &oString);
}

// The check that a text which is replaced fails if its terminator is not where its length says.
constexpr char NO_END_TEXT[] = "GetData()->GetBuffer()[nNewLength] == '\\0'";

struct sReplacement
{
    const tUnit* szOld;
    int nOldLength;
    const tUnit* szNew;
    int nNewLength;

    std::ptrdiff_t GetGrowth() const { return nNewLength - nOldLength; }
};

// Zeros inside the text split it into segments; each is searched.
tUnit* NextSegment(tUnit* szSegment)
{
    return szSegment + TOVText::Length(szSegment) + 1;
}

// The next hit that ends inside the text, null if this segment has none: after it there is nothing to move.
tUnit* NextHit(tUnit* szSegment, const tUnit* pEnd, const tUnit* szOld, int nOldLength)
{
    tUnit* szHit = TOVText::FindString(szSegment, szOld);
    return szHit != nullptr && pEnd - szHit >= nOldLength ? szHit : nullptr;
}

// The first hits of a text, so that they need not be searched for again.
struct sFoundHits
{
    static constexpr int MAX_PLACES = 256;

    int nHits = 0;
    int aPlaces[MAX_PLACES];
    bool bAll = false; // they are all hits, and each of them is replaced

    void Add(std::ptrdiff_t nPlace)
    {
        if (nHits < MAX_PLACES)
            aPlaces[nHits] = static_cast<int>(nPlace);
        ++nHits;
    }
};

// Settled: where a sharer of the block has written a longer text into it, hits that this string's length does not
// cover are counted too. The check of the new length fails because of them.
void FindHits(tUnit* szText, int nLength, const tUnit* szOld, int nOldLength, sFoundHits& oHits)
{
    const tUnit* const pEnd = szText + nLength;
    int nSegments = 0;
    for (tUnit* szSegment = szText; szSegment < pEnd; szSegment = NextSegment(szSegment), ++nSegments)
    {
        while (tUnit* szHit = TOVText::FindString(szSegment, szOld))
        {
            szSegment = szHit + nOldLength;
            oHits.Add(szHit - szText);
        }
    }
    oHits.bAll = nSegments == 1 && szText[nLength] == 0 && oHits.nHits <= sFoundHits::MAX_PLACES;
}

// Calls fnReplace for each hit that is replaced, front to back, and returns their number. Settled: segments whose
// place in the new text is at nLimit or after it are not looked at.
template<class TFunction>
int SearchHits(tUnit* szText, int nLength, const sReplacement& oReplacement, int nLimit, TFunction fnReplace)
{
    const tUnit* const pEnd = szText + nLength;
    int nHits = 0;
    for (tUnit* szSegment = szText; szSegment < pEnd && szSegment - szText + nHits * oReplacement.GetGrowth() < nLimit;
         szSegment = NextSegment(szSegment))
    {
        while (tUnit* szHit = NextHit(szSegment, pEnd, oReplacement.szOld, oReplacement.nOldLength))
        {
            szSegment = szHit + oReplacement.nOldLength;
            fnReplace(szHit);
            ++nHits;
        }
    }
    return nHits;
}

// Does the same, without a search if the hits are known.
template<class TFunction>
int VisitHits(tUnit* szText, int nLength, const sReplacement& oReplacement, int nLimit, const sFoundHits& oHits,
              TFunction fnReplace)
{
    if (!oHits.bAll)
        return SearchHits(szText, nLength, oReplacement, nLimit, fnReplace);
    for (int nHit = 0; nHit < oHits.nHits; ++nHit)
        fnReplace(szText + oHits.aPlaces[nHit]);
    return oHits.nHits;
}

// The step to the next character, which is short after an ASCII character.
tUnit* NextCharacter(tUnit* pUnit)
{
    return TOVPlatform::TOVAscii::IsAscii(*pUnit) ? pUnit + 1 : TOVText::Inc(pUnit);
}

void Move(tUnit* pDestination, const tUnit* pSource, std::ptrdiff_t nCount)
{
    if (nCount > 0)
        std::memmove(pDestination, pSource, nCount * sizeof(tUnit));
}

// Copies the units and returns the place after the copies.
tUnit* Append(tUnit* pDestination, const tUnit* pBegin, const tUnit* pEnd)
{
    Move(pDestination, pBegin, pEnd - pBegin);
    return pDestination + (pEnd - pBegin);
}

// Settled: each replacement moves the rest of the text and terminates it again, and what it leaves after the text can
// be seen through sharers of the block and by Left: a terminator for each, and between two of them the text's last
// units again.
void EndShrunkText(tUnit* pOldEnd, std::ptrdiff_t nShrinkage, int nReplaced)
{
    for (int nMove = 1; nMove <= nReplaced; ++nMove)
    {
        tUnit* const pEnd = pOldEnd - nMove * nShrinkage;
        *pEnd = 0;
        Move(pEnd + 1, pOldEnd - nShrinkage + 1, nShrinkage - 1);
    }
}

// Replaces the hits by a text of the same length where they are.
int ReplaceInPlace(tUnit* szText, int nLength, const sReplacement& oReplacement)
{
    // Hits that end after the length are counted and not replaced.
    const tUnit* const pEnd = szText + nLength;
    int nHits = 0;
    int nReplaced = 0;
    for (tUnit* szSegment = szText; szSegment < pEnd; szSegment = NextSegment(szSegment))
    {
        for (tUnit* szHit; (szHit = TOVText::FindString(szSegment, oReplacement.szOld)) != nullptr; ++nHits)
        {
            szSegment = szHit + oReplacement.nOldLength;
            if (szSegment <= pEnd)
            {
                Append(szHit, oReplacement.szNew, oReplacement.szNew + oReplacement.nNewLength);
                ++nReplaced;
            }
        }
    }
    if (nReplaced > 0)
        szText[nLength] = 0;
    return nHits;
}

// Replaces the hits in a block that has room for the new text.
void ReplaceHits(tUnit* szText, int nLength, const sReplacement& oReplacement, int nLimit, const sFoundHits& oHits)
{
    // A text that grows is first moved to where it will end, so that what is written never overtakes what is read.
    const std::ptrdiff_t nGrowth = oReplacement.GetGrowth();
    tUnit* szSource = szText;
    if (nGrowth > 0)
    {
        szSource += nGrowth * VisitHits(szText, nLength, oReplacement, nLimit, oHits, [](const tUnit*) {});
        Move(szSource, szText, nLength);
    }

    tUnit* pWritten = szText;
    const tUnit* pRead = szSource;
    const int nReplaced = VisitHits(szSource, nLength, oReplacement, nLimit, oHits, [&](const tUnit* szHit) {
        pWritten = Append(pWritten, pRead, szHit);
        pWritten = Append(pWritten, oReplacement.szNew, oReplacement.szNew + oReplacement.nNewLength);
        pRead = szHit + oReplacement.nOldLength;
    });
    pWritten = Append(pWritten, pRead, szSource + nLength);
    if (nReplaced > 0)
        *pWritten = 0;
    if (nGrowth < 0)
        EndShrunkText(szText + nLength, -nGrowth, nReplaced);
}
} // namespace

// Cutting. Settled: all measure against the capacity, not against the length.

tString tString::Left(int nCount) const
{
    return Mid(0, nCount);
}

tString tString::Right(int nCount) const
{
    return nCount > 0 ? Mid(static_cast<int>(m_oData.GetSize()) - nCount, nCount) : tString();
}

tString tString::Mid(int nFirst, int nCount) const
{
    if (nCount < 1)
        return tString();

    const int nSize = static_cast<int>(m_oData.GetSize());
    nFirst = std::max(nFirst, 0);
    if (nFirst >= nSize)
        nCount = 0;
    else if (nCount >= nSize - nFirst)
        nCount = nSize - nFirst;
    if (nFirst == 0 && nCount == nSize)
        return *this;

    if (nCount > 0)
        return tString(NewText(GetString() + nFirst, nCount));
    // Settled: a start at the capacity or after it is a fault. The new string has no block then, which fails a check.
    tString oPart;
    oPart.m_oData.SetElements(0, nullptr, 0);
    return oPart;
}

tString tString::Mid(int nFirst) const
{
    const long long llCount = static_cast<long long>(m_oData.GetSize()) - nFirst;
    return Mid(nFirst, static_cast<int>(std::min<long long>(llCount, INT_MAX)));
}

// Changing in place

void tString::MakeLower()
{
    if (tUnit* szString = GetString())
        TOVText::ToLower(szString);
}

void tString::MakeUpper()
{
    if (tUnit* szString = GetString())
        TOVText::ToUpper(szString);
}

void tString::Reverse()
{
    if (tUnit* szString = GetString())
        TOVText::Reverse(szString);
}

int tString::Replace(tUnit cOldChar, tUnit cNewChar)
{
    // A char from 0x80 up is negative and refused like 0; of the unsigned wchar_t only 0 is.
    TOV_ASSERT(cNewChar > 0);
    if (cOldChar == cNewChar)
        return 0;

    int nCount = 0;
    const tUnit* const pEnd = GetString() + m_nStringLength;
    for (tUnit* pUnit = GetString(); pUnit < pEnd; pUnit = NextCharacter(pUnit))
    {
        if (*pUnit == cOldChar)
        {
            *pUnit = cNewChar;
            ++nCount;
        }
    }
    return nCount;
}

int tString::Replace(const tUnit* szOld, const tUnit* szNew)
{
    if (szOld == nullptr || *szOld == 0)
        return 0;
    if (IsInBlock(m_oData, szOld) || IsInBlock(m_oData, szNew))
    {
        // Neither what is replaced nor what replaces it may change under the replacement's own writes.
        tString oOld;
        tString oNew;
        oOld = szOld;
        oNew = szNew;
        return Replace(oOld.GetString(), oNew.GetString());
    }

    const sReplacement oReplacement = {szOld, TOVText::Length(szOld), OrEmpty(szNew), TOVText::Length(OrEmpty(szNew))};
    if (oReplacement.GetGrowth() == 0 && m_nStringLength < m_oData.GetSize())
    {
        const int nHits = ReplaceInPlace(GetString(), m_nStringLength, oReplacement);
        TOV_ASSERT_TEXT(nHits == 0 || GetString()[m_nStringLength] == 0, NO_END_TEXT);
        return nHits;
    }

    sFoundHits oHits;
    FindHits(GetString(), m_nStringLength, szOld, oReplacement.nOldLength, oHits);
    const int nHits = oHits.nHits;
    if (nHits == 0)
        return 0;

    const int nLength = m_nStringLength;
    const int nNewLength = CheckedLength(static_cast<long long>(oReplacement.GetGrowth()) * nHits + nLength);
    if (m_oData.GetSize() < nNewLength + 1)
    {
        m_oData.Resize(nNewLength + 1, true);
        Terminate(m_oData, nNewLength);
        m_nStringLength = nNewLength;
    }
    // Settled: in a block that did not grow, segments are looked for up to the old length only.
    ReplaceHits(GetString(), nLength, oReplacement, m_nStringLength, oHits);
    TOV_ASSERT_TEXT(GetString()[nNewLength] == 0, NO_END_TEXT);
    m_nStringLength = nNewLength;
    return nHits;
}

// Parts and numbers

int tString::Split(CTOVArray<tString>& oResult, char cSeparator) const
{
    if (IsElement(oResult, *this))
        return tString(*this).Split(oResult, cSeparator);

    oResult.RemoveAll();
    if (m_nStringLength == 0)
        return 0;

    // In the usual case, the parts are counted first, so that the array grows once. The text must end where its length
    // says, as each search would go on to the next zero, and nobody must have overridden the array's operations.
    int nPosition = 0;
    if (cSeparator != 0 && m_nStringLength < m_oData.m_lSize && GetString()[m_nStringLength] == 0 &&
        TOVIsExactly(oResult))
    {
        const tUnit* const szText = GetString();
        const int nSearched = LengthOf(szText);
        std::size_t nParts = 1;
        const auto fnAdd = [&](int nEnd) {
            const int nLength = nEnd - nPosition;
            tBlock* const pShort = TakeForShortText(szText + nPosition, nLength);
            const tNewBlock oNew =
                pShort != nullptr ? tNewBlock{pShort, nLength + 1L} : NewText(szText + nPosition, nLength);
            oResult.m_aArray.emplace_back(oNew);
            nPosition = nEnd + 1;
        };
        TOVPlatform::Vector::ForEachHit(szText, nSearched, static_cast<tUnit>(cSeparator), [&](int) { ++nParts; });
        oResult.m_aArray.reserve(oResult.GetCapacityFor(nParts));
        TOVPlatform::Vector::ForEachHit(szText, nSearched, static_cast<tUnit>(cSeparator), fnAdd);
        const tNewBlock oLast = NewText(szText + nPosition, m_nStringLength - nPosition);
        oResult.m_aArray.emplace_back(oLast);
        return static_cast<int>(nParts);
    }

    for (int nHit; (nHit = Find(static_cast<tUnit>(cSeparator), nPosition)) != -1; nPosition = nHit + 1)
        oResult.Add(Mid(nPosition, nHit - nPosition));
    oResult.Add(Mid(nPosition, m_nStringLength - nPosition));
    return static_cast<int>(oResult.GetCount());
}

TOV_NOINLINE int tString::AsInt(int nBase) const
{
    if (IsEmpty())
        return 0;
    int nValue = 0;
    if (nBase == 10 && TOVPlatform::ReadShortDecimal(GetString(), nValue) != nullptr)
        return nValue;
    return static_cast<int>(TOVText::ToLong(GetString(), nullptr, nBase));
}

// A number has 32 bits on every target.
long tString::AsLong(int nBase) const
{
    return AsInt(nBase);
}

// Settled: parsed with a sign, so that "-1" has all bits set and larger values saturate at the signed range.
unsigned int tString::AsUint(int nBase) const
{
    return static_cast<unsigned int>(AsInt(nBase));
}

unsigned long tString::AsUlong(int nBase) const
{
    return IsEmpty() ? 0 : TOVText::ToUlong(GetString(), nullptr, nBase);
}

float tString::AsFloat() const
{
    return static_cast<float>(AsDouble());
}

double tString::AsDouble() const
{
    return IsEmpty() ? 0.0 : TOVText::ToDouble(GetString(), nullptr);
}

bool tString::AsBool() const
{
    static constexpr tUnit TRUE_TEXT[] = {'T', 'R', 'U', 'E', 0};
    switch (m_nStringLength)
    {
    case 1:
        return *GetString() == '1';
    case 4:
        return TOVText::CompareNoCase(GetString(), TRUE_TEXT) == 0;
    default:
        return false;
    }
}

// Formatting

int tString::Format(const tUnit* szFormat, ...)
{
    TOVPlatform::CTOVPlainFormat<tUnit> oPlainFormat;
    va_list pArguments;
    va_start(pArguments, szFormat);
    const bool bPlain = oPlainFormat.Print(szFormat, pArguments);
    va_end(pArguments);
    if (bPlain)
    {
        // The arguments are read already, so that they may lie in the old block.
        const int nBound = oPlainFormat.GetBound();
        if (m_oData.m_lSize <= nBound)
        {
            m_oData.Take({tBuffer::NewBlock(nBound + 1, false), nBound + 1L});
            Terminate(m_oData, nBound);
        }
        m_nStringLength = oPlainFormat.GetLength();
        tBuffer::CopyText(m_oData.GetBuffer(), oPlainFormat.GetText(), m_nStringLength);
        Terminate(m_oData, m_nStringLength);
        return m_nStringLength;
    }

    va_start(pArguments, szFormat);
    const int nNumCharacters = FormatV(szFormat, pArguments);
    va_end(pArguments);
    return nNumCharacters;
}

int tString::FormatV(const tUnit* szFormat, va_list pArguments)
{
    const int nNumExpectedCharacters = TOVText::VSCPrintf(szFormat, pArguments);
    TOV_ASSERT(nNumExpectedCharacters != -1);

    tKeptBlock oOldText; // arguments may point into it until the print is done
    if (m_oData.GetSize() <= nNumExpectedCharacters)
    {
        if (m_oData.IsValid())
            oOldText.emplace(m_oData);
        ReplaceBlock(m_oData, CheckedLength(nNumExpectedCharacters));
    }

    // The limit leaves out the terminator, which ReleaseBuffer writes.
    const int nNumCharacters = TOVText::VSNPrintf(GetString(), nNumExpectedCharacters, szFormat, pArguments);
    TOV_ASSERT(nNumExpectedCharacters != -1);
    TOV_ASSERT(nNumCharacters != -1);
    TOV_ASSERT(nNumCharacters <= nNumExpectedCharacters);
    ReleaseBuffer(nNumCharacters);
    return nNumCharacters;
}
