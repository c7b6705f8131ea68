// The members of a string that search and compare its text, for units of type tUnit. TOVStringA.cpp and TOVStringW.cpp
// include this after TOVStringBody.inl. The contracts are in the two headers.

namespace
{
// The check that a search refuses a text with.
constexpr char NO_TEXT_TO_FIND[] = "(0 <= nStartPos) && (szSubStringToSearch != NULL)";

int IndexOf(const tString& oString, const tUnit* szHit)
{
    return szHit != nullptr ? static_cast<int>(szHit - oString.GetString()) : -1;
}

// After the block there is nothing that a search could look at. A string without a block is left for NInc to refuse.
bool IsAfterBlock(const tBuffer& oBlock, int nStartPos)
{
    return oBlock.IsValid() && nStartPos >= oBlock.GetSize();
}

// A copy made through the text, so that making it lower-case does not reach the sharers of the original.
tString LoweredCopy(const tString& oString)
{
    tString oCopy;
    oCopy = oString.GetString();
    oCopy.MakeLower();
    return oCopy;
}

// The last position of szOther that a walk from hit to hit reaches, -1 if there is none. A hit cannot come after nLast.
// The units before nStart are characters of one unit. Settled: each search starts as many characters from the start of
// the text as the hit before it has units before it, plus 1. After characters of more than one unit this leaves out
// hits.
int LastPosition(const tString& oString, const tUnit* szOther, int nStart, int nLast)
{
    tUnit* const szText = const_cast<tUnit*>(oString.GetString());
    tUnit* szStart = szText + nStart;
    int nPosition = -1;
    while (nStart <= oString.GetLength() && szStart - szText <= nLast)
    {
        const int nHit = IndexOf(oString, TOVText::FindString(szStart, szOther));
        if (nHit <= nPosition) // also where a step does not pass a character that the terminator cuts off
            break;
        nPosition = nHit;
        szStart = TOVText::NInc(szStart, nHit + 1 - nStart);
        nStart = nHit + 1;
    }
    return nPosition;
}

bool AreEqual(const tUnit* pFirst, const tUnit* pSecond, std::size_t nCount)
{
    return std::memcmp(pFirst, pSecond, nCount * sizeof(tUnit)) == 0;
}

// Whether the text begins with the other one.
bool IsAt(const tUnit* szText, const tUnit* szOther)
{
    while (*szOther != 0 && *szText == *szOther)
    {
        ++szText;
        ++szOther;
    }
    return *szOther == 0;
}

// Whether the last position of oOther's text is nPosition. Hits may overlap; the position is -1 if there is none. Kept
// out of the function below, which mostly answers by itself.
TOV_NOINLINE bool IsLastOfAllPositions(const tString& oString, const tString& oOther, int nPosition)
{
    const tUnit* const szOther = oOther.GetString();
    const int nFirst = oString.Find(szOther);
    // Settled: a suffix one character longer than the string makes -1 on both sides, which counts as found.
    if (nFirst == -1 || nPosition < nFirst)
        return nFirst == nPosition;

    // Where units are characters, every hit is reached, and the walk can begin at the position itself.
    const tUnit* const szText = oString.GetString();
    const int nLast = TOVText::Length(szText) - TOVText::Length(szOther);
    const bool bUnits = nPosition <= nLast && TOVText::NInc(szText, nPosition) == szText + nPosition;
    return LastPosition(oString, szOther, bUnits ? nPosition : 0, nLast) == nPosition;
}

// Does the same with a look at this position only, where that is enough.
bool IsLastPosition(const tString& oString, const tString& oOther, int nPosition)
{
    const tUnit* const szOther = oOther.GetString();
    TOV_ASSERT_TEXT(szOther != nullptr, NO_TEXT_TO_FIND);
    const int nLength = static_cast<int>(oString.GetLength());
    const int nOtherLength = static_cast<int>(oOther.GetLength());
    if (nOtherLength > 0 && nPosition >= 0 && nPosition + nOtherLength == nLength)
    {
        const tUnit* const szText = oString.GetString();
        const tUnit* const szPlace = szText + nPosition;
        if (!AreEqual(szPlace, szOther, nOtherLength))
        {
            if (!IsAt(szPlace, szOther))
                return false;
        }
        else if (szPlace[nOtherLength] == 0 && szOther[nOtherLength] == 0 &&
                 TOVPlatform::Vector::AreSingleUnits(szText, nLength))
        {
            // The whole text is characters of one unit, so that a walk over all hits would come to this one.
            return true;
        }
    }
    return IsLastOfAllPositions(oString, oOther, nPosition);
}
} // namespace

// Searching

int tString::Find(tUnit cCharToSearch, int nStartPos) const
{
    TOV_ASSERT((0 <= nStartPos) && (cCharToSearch != '\0'));
    if (nStartPos >= m_nStringLength)
        return -1;
    // Settled: where a sharer of the block has written a longer text into it, the search goes on after the length.
    const std::size_t nLength = static_cast<std::size_t>(m_nStringLength - nStartPos);
    return IndexOf(*this, TOVPlatform::Vector::FindUnit(GetString() + nStartPos, nLength, cCharToSearch));
}

int tString::Find(const tUnit* szSubStringToSearch, int nStartPos) const
{
    TOV_ASSERT((0 <= nStartPos) && (szSubStringToSearch != NULL));
    if (m_nStringLength == 0 || *szSubStringToSearch == 0 || nStartPos > m_nStringLength)
        return -1;
    return IndexOf(*this, TOVText::FindString(TOVText::NInc(GetString(), nStartPos), szSubStringToSearch));
}

int tString::ReverseFind(tUnit cCharToSearch) const
{
    if (GetString() == nullptr)
        return -1;
    return IndexOf(*this, TOVText::FindLastCharacter(GetString(), cCharToSearch));
}

int tString::FindOneOf(const tUnit* szCharSet, int nStartPos) const
{
    TOV_ASSERT(szCharSet != NULL);
    if (IsAfterBlock(m_oData, nStartPos))
        return -1;
    return IndexOf(*this, TOVText::FindOneOf(TOVText::NInc(GetString(), nStartPos), szCharSet));
}

int tString::FindNotOneOf(const tUnit* szCharSet, int nStartPos) const
{
    TOV_ASSERT(szCharSet != NULL);
    if (IsAfterBlock(m_oData, nStartPos))
        return -1;
    return IndexOf(*this, TOVText::FindNotOneOf(TOVText::NInc(GetString(), nStartPos), szCharSet));
}

int tString::ReverseFindOneOf(const tUnit* szCharSet, int nStartPos) const
{
    TOV_ASSERT(szCharSet != NULL);
    TOV_ASSERT(nStartPos == 0);
    if (GetString() == nullptr)
        return -1;
    return IndexOf(*this, TOVText::ReverseFindOneOf(GetString(), szCharSet));
}

int tString::ReverseFindNotOneOf(const tUnit* szCharSet, int nStartPos) const
{
    TOV_ASSERT(szCharSet != NULL);
    TOV_ASSERT(nStartPos == 0);
    if (GetString() == nullptr)
        return -1;
    return IndexOf(*this, TOVText::ReverseFindNotOneOf(GetString(), szCharSet));
}

// Prefix and suffix

bool tString::HasPrefix(const tString& oOther) const
{
    const tUnit* const szText = GetString();
    const tUnit* const szOther = oOther.GetString();
    TOV_ASSERT_TEXT(szOther != nullptr, NO_TEXT_TO_FIND);
    if (IsEmpty() || *szOther == 0)
        return false;
    const int nOtherLength = oOther.m_nStringLength;
    const bool bEqual = nOtherLength <= m_nStringLength && AreEqual(szText, szOther, nOtherLength);
    return (bEqual && szOther[nOtherLength] == 0) || IsAt(szText, szOther);
}

bool tString::BeginsWithNoCase(const tString& oOther) const
{
    return LoweredCopy(*this).BeginsWith(LoweredCopy(oOther));
}

bool tString::HasSuffix(const tString& oOther) const
{
    return IsLastPosition(*this, oOther, m_nStringLength - oOther.m_nStringLength);
}

bool tString::AreSingleUnits(const tUnit* pUnits, int nCount)
{
    return TOVPlatform::Vector::AreSingleUnits(pUnits, nCount);
}

bool tString::EndsWithNoCase(const tString& oOther) const
{
    return IsLastPosition(LoweredCopy(*this), LoweredCopy(oOther), m_nStringLength - oOther.m_nStringLength);
}

// Comparing

int tString::Compare(const tUnit* szString) const
{
    return TOVText::Compare(OrEmpty(GetString()), OrEmpty(szString));
}

int tString::Collate(const tUnit* szString) const
{
    return TOVText::Collate(GetString(), szString);
}

int tString::CollateNoCase(const tUnit* szString) const
{
    return TOVText::CollateNoCase(GetString(), szString);
}
