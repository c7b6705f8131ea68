#include "Support/TOVTestSupport.h"

#include <TOVDesignPatterns/TOVMemento.h>

#include <memory>
#include <string>
#include <type_traits>

namespace
{
// Both are frames: nothing but a table of virtual operations, and to be derived from.
struct sFrame
{
    virtual ~sFrame() = default;
};

static_assert(sizeof(ITOVMemento) == sizeof(sFrame));
static_assert(std::is_abstract<ITOVMemento>::value);
static_assert(std::has_virtual_destructor<ITOVMemento>::value);
static_assert(sizeof(ITOVMementoCreator) == sizeof(sFrame));
static_assert(std::is_abstract<ITOVMementoCreator>::value);
static_assert(!std::has_virtual_destructor<ITOVMementoCreator>::value);

// An originator as an application would write it.
class CEditor : public ITOVMementoCreator
{
public:
    class CState : public ITOVMemento
    {
    public:
        explicit CState(const std::string& sText, int& nAlive) : m_sText(sText), m_nAlive(nAlive) { ++m_nAlive; }
        CState(const CState& oOther) : ITOVMemento(oOther), m_sText(oOther.m_sText), m_nAlive(oOther.m_nAlive)
        {
            ++m_nAlive;
        }
        CState& operator=(const CState& oOther)
        {
            ITOVMemento::operator=(oOther);
            m_sText = oOther.m_sText;
            return *this;
        }
        ~CState() override { --m_nAlive; }

        std::string m_sText;

    private:
        int& m_nAlive;
    };

    ITOVMemento* CreateMemento() override { return new CState(m_sText, m_nAlive); }
    void RestoreMemento(const ITOVMemento& oMemento) override
    {
        m_sText = static_cast<const CState&>(oMemento).m_sText;
    }
    void DisposeMemento(ITOVMemento* pMemento) override { delete pMemento; }

    std::string m_sText;
    int m_nAlive = 0;
};
} // namespace

TEST(ITOVMementoTest, ASavedStateIsRestored)
{
    CEditor oEditor;
    ITOVMementoCreator& oCreator = oEditor;
    oEditor.m_sText = "before";

    ITOVMemento* const pMemento = oCreator.CreateMemento();
    oEditor.m_sText = "after";
    oCreator.RestoreMemento(*pMemento);

    EXPECT_EQ("before", oEditor.m_sText);
    oCreator.DisposeMemento(pMemento);
    EXPECT_EQ(0, oEditor.m_nAlive);
}

TEST(ITOVMementoTest, OneStateIsRestoredAgainAndAgain)
{
    CEditor oEditor;
    oEditor.m_sText = "first";
    ITOVMemento* const pFirst = oEditor.CreateMemento();
    oEditor.m_sText = "second";
    ITOVMemento* const pSecond = oEditor.CreateMemento();

    for (int nRound = 0; nRound < 2; ++nRound)
    {
        oEditor.RestoreMemento(*pFirst);
        EXPECT_EQ("first", oEditor.m_sText);
        oEditor.RestoreMemento(*pSecond);
        EXPECT_EQ("second", oEditor.m_sText);
    }
    oEditor.DisposeMemento(pFirst);
    oEditor.DisposeMemento(pSecond);
}

TEST(ITOVMementoTest, EndsByItsVirtualDestructor)
{
    int nAlive = 0;
    {
        const std::unique_ptr<ITOVMemento> pMemento = std::make_unique<CEditor::CState>("text", nAlive);
        EXPECT_EQ(1, nAlive);
    }
    EXPECT_EQ(0, nAlive);
}

TEST(ITOVMementoTest, IsCopiedAndAssigned)
{
    int nAlive = 0;
    const CEditor::CState oState("text", nAlive);
    CEditor::CState oCopy(oState);
    CEditor::CState oOther("other", nAlive);

    oOther = oState;

    EXPECT_EQ("text", oCopy.m_sText);
    EXPECT_EQ("text", oOther.m_sText);
}

TEST(ITOVMementoCreatorTest, IsCopiedAndAssigned)
{
    CEditor oEditor;
    oEditor.m_sText = "text";
    CEditor oOther;

    const CEditor oCopy(oEditor);
    oOther = oEditor;

    EXPECT_EQ("text", oCopy.m_sText);
    EXPECT_EQ("text", oOther.m_sText);
}
