// The members of a string that make, share and fill its block, for units of type tUnit. TOVStringA.cpp and
// TOVStringW.cpp include this with their own tString, tOtherString and tUnit. The contracts are in the two headers.

namespace
{
typedef CTOVBuffer<tUnit> tBuffer;
typedef CTOVSharedBlock<tUnit> tBlock;
typedef std::optional<tBuffer> tKeptBlock;

// The one range of lengths. A sum comes in wider, so that it does not wrap on its way here.
int CheckedLength(long long nLength)
{
    TOV_ASSERT(nLength >= 0);
    TOV_ASSERT(nLength <= INT_MAX-1);
    return static_cast<int>(nLength);
}

// Returns a block with the text, or null if the text is empty or not short, or the thread has no free block.
inline tBlock* TakeForShortText(const tUnit* pText, unsigned int nLength)
{
    if (nLength == 0 || nLength >= TOVPlatform::Vector::SHORT_LENGTH)
        return nullptr;
    tBlock* const pNew = tBlock::TakeFreed(nLength + 2);
    if (pNew != nullptr)
        pNew->SetText(0, pText, nLength);
    return pNew;
}

// Returns a block with a short text. All other texts are left to fnLong, as are those for which the thread has no free
// block.
template<class TNewBlock, class TFunction> TOV_NOINLINE TNewBlock NewShortText(const tUnit* szText, TFunction fnLong)
{
    const unsigned int nLength = TOVPlatform::Vector::ShortLength(szText);
    tBlock* const pNew = TakeForShortText(szText, nLength);
    return pNew != nullptr ? TNewBlock{pNew, static_cast<long>(nLength + 1)} : fnLong(szText);
}

// Returns a block with a text of up to 255 bytes that is measured and copied by vectors of 64 bytes. All other texts
// are left to fnOther, as are those for which the thread has no free block.
template<class TNewBlock, class TFunction>
TOV_WIDE_TEXT TNewBlock NewTextInWideVectors(const tUnit* szText, TFunction fnOther)
{
    constexpr std::size_t VECTOR = 64;
    const unsigned int nShort = TOVPlatform::Vector::WideLength<1>(szText);
    if (nShort != 0)
    {
        tBlock* const pNew = tBlock::TakeFreed(nShort + 2);
        if (pNew == nullptr)
            return fnOther(szText);
        pNew->SetText(0, szText, nShort);
        return {pNew, static_cast<long>(nShort + 1)};
    }

    const unsigned int nLength = TOVPlatform::Vector::WideLength<4>(szText);
    tBlock* const pNew = nLength != 0 ? tBlock::TakeFreed(nLength + 2) : nullptr;
    if (pNew == nullptr)
        return fnOther(szText);
    const std::size_t nBytes = nLength * sizeof(tUnit);
    // The last vector may overlap the one before it.
    unsigned char* const pTo = reinterpret_cast<unsigned char*>(pNew->GetElements());
    const unsigned char* const pFrom = reinterpret_cast<const unsigned char*>(szText);
    for (std::size_t nStart = 0; nStart < nBytes - VECTOR; nStart += VECTOR)
        std::memcpy(pTo + nStart, pFrom + nStart, VECTOR);
    std::memcpy(pTo + nBytes - VECTOR, pFrom + nBytes - VECTOR, VECTOR);
    std::memset(pTo + nBytes, 0, 2 * sizeof(tUnit));
    return {pNew, static_cast<long>(nLength + 1)};
}

// Does the same for two texts, one after the other, of which one may be empty.
inline tBlock* TakeForShortTexts(const tUnit* pText1, unsigned int nLength1, const tUnit* pText2, unsigned int nLength2)
{
    if (nLength1 >= TOVPlatform::Vector::SHORT_LENGTH || nLength2 >= TOVPlatform::Vector::SHORT_LENGTH)
        return nullptr;
    tBlock* const pNew = tBlock::TakeFreed(nLength1 + nLength2 + 2);
    if (pNew != nullptr)
    {
        pNew->SetText(0, pText1, nLength1);
        pNew->SetText(nLength1, pText2, nLength2);
    }
    return pNew;
}

// A string without a block has no place for a terminator and needs none.
void Terminate(tBuffer& oBlock, int nLength)
{
    if (tUnit* pBlock = oBlock.GetBuffer())
        pBlock[nLength] = 0;
}

// Makes a new block for nLength units and terminates it there. The old contents are not copied, as they are not kept.
void ReplaceBlock(tBuffer& oBlock, int nLength)
{
    oBlock.Resize(nLength + 1, false);
    Terminate(oBlock, nLength);
}

const tUnit* OrEmpty(const tUnit* szString)
{
    static constexpr tUnit EMPTY_TEXT[] = {0};
    return szString != nullptr ? szString : EMPTY_TEXT;
}

bool IsInBlock(const tBuffer& oBlock, const tUnit* szText)
{
    const tUnit* pBlock = oBlock.GetBuffer();
    const std::less<const tUnit*> oBefore;
    return pBlock != nullptr && !oBefore(szText, pBlock) && !oBefore(pBlock + oBlock.GetSize(), szText);
}

// Keeps the block alive while a text inside it is the source of what replaces it.
tKeptBlock KeepOwnText(const tBuffer& oBlock, const tUnit* szText)
{
    return IsInBlock(oBlock, szText) ? tKeptBlock(oBlock) : std::nullopt;
}

// Copies the text; NULL and an empty text empty the string.
void AssignText(tString& oString, const tUnit* szText)
{
    if (const int nLength = szText != nullptr ? LengthOf(szText) : 0)
        oString.AssignCopy(nLength, szText);
    else
        oString.Empty();
}

// Fills an empty string from one of the other width, without any code page.
void Convert(tString& oString, const tOtherString& oOther)
{
    if (oOther.IsEmpty())
        return;
    const int nLength = static_cast<int>(oOther.GetLength());
    oString.AllocBuffer(nLength);
    for (int i = 0; i < nLength; ++i)
        oString.GetString()[i] = static_cast<tUnit>(oOther.GetAt(i));
}

// Fills an empty string with nCount times cChar.
void Fill(tString& oString, tUnit cChar, int nCount)
{
    if (nCount <= 0)
        return;
    oString.AllocBuffer(nCount);
    // Settled: the count is one of bytes for both widths.
    TOVPlatform::TOVMemory::Set(oString.GetString(), cChar, nCount);
}
} // namespace

tString& tString::Null()
{
    return CTOVDynamicSingleton<tString>::GetInstance();
}

// The usual case makes no call: a text that is not long, for whose block the thread has a free one.
tBuffer::sNewBlock tString::NewText(const tUnit* szText)
{
    const auto fnLong = [](const tUnit* szLong) { return NewText(szLong, NO_LENGTH); };
    const auto fnOther = [=](const tUnit* szOther) { return NewShortText<tNewBlock>(szOther, fnLong); };
    if (TOV_USE_MEMORY_LISTS && IsText(szText) && TOVPlatform::Vector::UsesWideLength())
        return NewTextInWideVectors<tNewBlock>(szText, fnOther);
    return TOV_USE_MEMORY_LISTS && IsText(szText) ? fnOther(szText) : fnLong(szText);
}

tBuffer::sNewBlock tString::NewText(const tUnit* pText, int nLength)
{
    if (nLength == NO_LENGTH)
        nLength = IsText(pText) ? LengthOf(pText) : 0;
    if (nLength == 0)
        return {new CTOVRefCountObject<tUnit>(), 0};
    tBlock* const pNew = tBlock::TakeFreed(nLength + 2L);
    if (pNew == nullptr)
        return {tBuffer::NewText(pText, nLength), nLength + 1L};
    pNew->SetText(0, pText, nLength);
    return {pNew, nLength + 1L};
}

tBuffer::sNewBlock tString::NewText(const tUnit* pText1, int nLength1, const tUnit* pText2, int nLength2, bool bGrows)
{
    const long lSize = static_cast<long>(nLength1) + nLength2 + 1;
    tBlock* const pNew = tBuffer::NewBlock(lSize, bGrows);
    pNew->SetText(0, pText1, nLength1);
    pNew->SetText(nLength1, pText2, nLength2);
    return {pNew, lSize};
}

const tString& tString::operator=(const tString& oOther)
{
    // Settled: lengths that differ on one block survive an assignment.
    if (m_oData.GetBuffer() == oOther.m_oData.GetBuffer())
        return *this;
    m_oData = oOther.m_oData;
    m_nStringLength = oOther.m_nStringLength;
    return *this;
}

const tString& tString::operator=(tUnit cChar)
{
    const tUnit szText[] = {cChar, 0};
    return *this = szText;
}

const tString& tString::operator+=(const tString& oOther)
{
    ConcatInPlace(oOther.m_nStringLength, oOther.GetString());
    return *this;
}

void tString::Copy(const tUnit* szSrcString, int nStringLength)
{
    TOV_ASSERT(szSrcString != NULL);
    TOV_ASSERT(nStringLength > 0);
    // The usual case needs no further call. The text may lie in the old block, which goes last.
    if (tBlock* const pShort = TakeForShortText(szSrcString, nStringLength))
    {
        m_nStringLength = nStringLength;
        m_oData.Take({pShort, nStringLength + 1L});
        return;
    }
    AssignCopy(nStringLength, szSrcString);
}

void tString::Empty()
{
    if (m_nStringLength == 0)
        return;
    m_oData.Zero();
    Init();
}

void tString::AllocBuffer(int nLength)
{
    if (CheckedLength(nLength) > 0)
        ReplaceBlock(m_oData, nLength);
    m_nStringLength = nLength;
}

void tString::AssignCopy(int nLength, const tUnit* szString)
{
    if (CheckedLength(nLength) > 0 && szString != nullptr)
    {
        // The text may lie in the old block, which goes last.
        const tNewBlock oNew = NewText(szString, nLength);
        m_nStringLength = nLength;
        m_oData.Take(oNew);
        return;
    }
    if (nLength > 0)
    {
        // The text is empty, as the source is refused.
        m_oData.Resize(nLength + 1L, false);
        Init();
        Terminate(m_oData, 0);
        m_oData.SetElements(0, szString, nLength);
    }
    m_nStringLength = nLength;
    Terminate(m_oData, nLength);
}

void tString::ConcatCopy(int nLength1, const tUnit* sz1, int nLength2, const tUnit* sz2)
{
    const long long llSum = static_cast<long long>(nLength1) + nLength2;
    if (llSum == 0)
        return;
    if (nLength1 >= 0 && nLength2 >= 0 && sz1 != nullptr && sz2 != nullptr)
    {
        const int nLength = CheckedLength(llSum);
        tBlock* const pShort = TakeForShortTexts(sz1, nLength1, sz2, nLength2);
        const tNewBlock oNew =
            pShort != nullptr ? tNewBlock{pShort, nLength + 1L} : NewText(sz1, nLength1, sz2, nLength2, false);
        m_nStringLength = nLength;
        m_oData.Take(oNew);
        return;
    }

    // A part of these is empty, or is refused in the middle of the steps.
    const tKeptBlock oKept1 = KeepOwnText(m_oData, sz1);
    const tKeptBlock oKept2 = KeepOwnText(m_oData, sz2);
    AllocBuffer(CheckedLength(llSum));
    if (nLength1 > 0)
        m_oData.SetElements(0, sz1, nLength1);
    if (CheckedLength(nLength2) > 0)
        m_oData.SetElements(nLength1, sz2, nLength2);
}

void tString::ConcatInPlace(int nLength, const tUnit* szString)
{
    if (CheckedLength(nLength) == 0)
        return;
    const int nOldLength = m_nStringLength;
    const int nNewLength = CheckedLength(static_cast<long long>(nOldLength) + nLength);
    if (m_oData.GetSize() < nNewLength + 1)
    {
        if (szString != nullptr && m_oData.GrowInPlace(nNewLength + 1) == nullptr)
        {
            // The text may lie in the old block, which goes last.
            tBlock* const pShort = TakeForShortTexts(GetString(), nOldLength, szString, nLength);
            const tNewBlock oNew = pShort != nullptr
                                       ? tNewBlock{pShort, nNewLength + 1L}
                                       : NewText(GetString(), nOldLength, szString, nLength, m_oData.m_lSize > 0);
            m_nStringLength = nNewLength;
            m_oData.Take(oNew);
            return;
        }
        if (szString == nullptr)
            m_oData.Grow(nNewLength + 1);
    }
    m_oData.SetElements(nOldLength, szString, nLength);
    m_nStringLength = nNewLength;
    TOV_ASSERT(m_nStringLength <= m_oData.GetSize());
    Terminate(m_oData, nNewLength);
}

tUnit* tString::GetBuffer(int nLength)
{
    // Settled: growing loses the text, and the length keeps its old value until ReleaseBuffer.
    if (m_oData.GetSize() <= nLength)
        ReplaceBlock(m_oData, CheckedLength(nLength));
    return GetString();
}

void tString::ReleaseBuffer(int nNewLength)
{
    if (nNewLength == -1)
        nNewLength = TOVText::Length(GetString());
    // Settled: a length equal to the size passes; its terminator goes into the hidden element after the block.
    TOV_ASSERT(nNewLength <= m_oData.GetSize());
    m_nStringLength = CheckedLength(nNewLength);
    Terminate(m_oData, nNewLength);
}

int tString::GetSafeStringLength(const tUnit* szString)
{
    return szString != nullptr ? LengthOf(szString) : 0;
}
