// Which of their virtual operations buffers go through.
#include "Support/TOVAllocationCounter.h"
#include "TOVContainers/TOVBufferInstruments.h"

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace
{
// Notes the virtual operations as they are called.
class CNotingBuffer : public CTOVBuffer<char>
{
public:
    using CTOVBuffer<char>::operator=;

    void SetElements(long lIndex, const char* pElements, long lSize) override
    {
        m_oCalls << "SetElements " << lIndex << ' ' << lSize << '\n';
        CTOVBuffer<char>::SetElements(lIndex, pElements, lSize);
    }
    using CTOVBuffer<char>::Append;
    void Append(const char* pElements, long lSize) override
    {
        m_oCalls << "Append " << lSize << '\n';
        CTOVBuffer<char>::Append(pElements, lSize);
    }
    void Resize(long lNumElements, bool bKeepData) override
    {
        m_oCalls << "Resize " << lNumElements << ' ' << bKeepData << '\n';
        CTOVBuffer<char>::Resize(lNumElements, bKeepData);
    }
    void SetSize(long lNumElements, bool bKeepData) override
    {
        m_oCalls << "SetSize " << lNumElements << ' ' << bKeepData << '\n';
        CTOVBuffer<char>::SetSize(lNumElements, bKeepData);
    }

    std::string Calls() const { return m_oCalls.str(); }

private:
    std::ostringstream m_oCalls;
};

// Shows less than it has.
class CShortBuffer : public CTOVBuffer<char>
{
public:
    CShortBuffer(const char* szText, long lShown)
        : CTOVBuffer<char>(szText, static_cast<long>(std::strlen(szText))), m_lShown(lShown)
    {
    }

    using CTOVBuffer<char>::operator=;
    long GetSize() const override { return m_lShown; }

private:
    const long m_lShown;
};

// Keeps its elements elsewhere.
class CElsewhereBuffer : public CTOVBuffer<char>
{
public:
    CElsewhereBuffer() { Resize(2); }

    using CTOVBuffer<char>::operator=;
    char* GetBuffer() override { return m_acWritten; }
    const char* GetBuffer() const override { return m_acRead; }

    char m_acWritten[2] = {'a', 'b'};
    const char m_acRead[2] = {'c', 'd'};
};
} // namespace

TEST(CTOVBufferDispatchTest, AssignGoesThroughSetSizeAndSetElements)
{
    CNotingBuffer oBuffer;
    oBuffer.Assign("abc", 3);

    EXPECT_EQ("SetSize 3 0\nResize 3 0\nSetElements 0 3\n", oBuffer.Calls());
}

TEST(CTOVBufferDispatchTest, AppendGoesThroughSetSizeAndSetElements)
{
    CNotingBuffer oBuffer;
    oBuffer.Append("abc", 3);
    oBuffer.Append("de", 2);

    EXPECT_EQ("Append 3\nSetSize 3 1\nResize 3 1\nSetElements 0 3\n"
              "Append 2\nSetSize 5 1\nResize 5 1\nSetElements 3 2\n",
              oBuffer.Calls());
}

TEST(CTOVBufferDispatchTest, AppendOfABufferGoesThroughAppendOfElements)
{
    CNotingBuffer oBuffer;
    const CShortBuffer oOther("xyz", 2);

    oBuffer.Append(oOther);

    EXPECT_EQ("Append 2\nSetSize 2 1\nResize 2 1\nSetElements 0 2\n", oBuffer.Calls());
    EXPECT_EQ((std::vector<char>{'x', 'y'}), Elements(oBuffer));
}

TEST(CTOVBufferDispatchTest, ChecksAskForTheSize)
{
    CShortBuffer oBuffer("xyz", 1);
    char cRead = 0;

    EXPECT_CHECK(RANGE_CHECK, oBuffer.SetElements(1, "a", 1));
    EXPECT_CHECK(RANGE_CHECK, oBuffer.GetElements(1, &cRead, 1));
    EXPECT_CHECK(FIRST_INDEX_CHECK, oBuffer.Swap(1, 0));
    EXPECT_CHECK(SECOND_INDEX_CHECK, oBuffer.Swap(0, 1));
}

TEST(CTOVBufferDispatchTest, ZeroAsksForTheSize)
{
    CShortBuffer oBuffer("xyz", 0);
    oBuffer.Zero();

    EXPECT_EQ('x', oBuffer.GetBuffer()[0]);
}

TEST(CTOVBufferDispatchTest, SwapReadsAndWritesThroughGetBuffer)
{
    CElsewhereBuffer oBuffer;
    oBuffer.Swap(0, 1);

    // The second element is read for keeping through the form for reading, the rest goes through the writing one.
    EXPECT_EQ('d', oBuffer.m_acWritten[0]);
    EXPECT_TRUE(oBuffer.m_acWritten[1] == 'a' || oBuffer.m_acWritten[1] == 'c');
}

TEST(CTOVBufferDispatchTest, EndsThroughItsBase)
{
    CAllocationCounter oCounter;
    CTOVBuffer<char>* pBuffer = new CShortBuffer("xyz", 1);
    delete pBuffer;

    EXPECT_EQ(0, oCounter.Kept());
}
