// Classes that are made to be derived from: a derived class may hold a lock or a shared pointer, whose destructors
// check and so may throw. That this file compiles is half of the test.
#include "Support/TOVTestSupport.h"

#include <TOVKernel.h>

#include <type_traits>

namespace
{
struct sShared
{
};

// What a derived class may hold, on top of what its base asks for.
template<class TBase> class CDerived : public TBase
{
public:
    CTOVMutex m_oMutex;
    CTOVCriticalSection m_oCriticalSection;
    CTOVSmartPointer<sShared> m_pShared;
};

template<> class CDerived<CTOVThread> : public CTOVThread
{
public:
    unsigned long Run() override { return 0; }

    CTOVMutex m_oMutex;
};

template<class TBase> class CTOVDerivationTest : public testing::Test
{
};

typedef testing::Types<CTOVCriticalSection, CTOVEventCondition, CTOVHandle, CTOVMutex, CTOVRefCount,
                       CTOVRefCountObject<int>, CTOVThread, ITOVMemento, TOVDebug::CTOVDebugServer,
                       TOVDebug::CTOVMSDevLogger, TOVTest::CTOVCountingTracker, TOVTest::CTOVSimpleTestRunner,
                       TOVTest::CTOVTestListener, TOVTest::CTOVTestRouter, TOVTest::CTOVTestSuite,
                       TOVTest::CTOVTestTracker>
    tBases;
TYPED_TEST_SUITE(CTOVDerivationTest, tBases);

// Classes that never throw at their end, so that they can be members of any other. One that is derived from them and
// holds a lock says so itself.
template<class T> class CTOVQuietEndTest : public testing::Test
{
};

typedef testing::Types<CTOVArray<int>, CTOVBitArray, CTOVBuffer<char>, CTOVBuffer<CTOVStringA>, CTOVClass, CTOVEvent,
                       CTOVFile, CTOVFileScanner, CTOVFileStream, CTOVFourCC, CTOVPath, CTOVQueue<int>,
                       CTOVReadFileStream, CTOVRingBuffer<int>, CTOVSemaphore, CTOVStack<int>, CTOVStringA, CTOVStringW,
                       CTOVTimer, CTOVVirtualFileSystem, CTOVWriteFileStream>
    tQuiet;
TYPED_TEST_SUITE(CTOVQuietEndTest, tQuiet);
} // namespace

TYPED_TEST(CTOVDerivationTest, HoldsALockAndASharedPointer)
{
    EXPECT_TRUE((std::is_base_of_v<TypeParam, CDerived<TypeParam>>));
    EXPECT_TRUE(std::is_destructible_v<CDerived<TypeParam>>);
    EXPECT_FALSE(std::is_nothrow_destructible_v<CDerived<TypeParam>>);
}

TYPED_TEST(CTOVQuietEndTest, NeverThrows)
{
    EXPECT_TRUE(std::is_nothrow_destructible_v<TypeParam>);
}

namespace
{
class CLockedArray : public CTOVArray<int>
{
public:
    ~CLockedArray() noexcept override {}

    CTOVMutex m_oMutex;
};
} // namespace

TEST(CTOVDerivedClassTest, HoldsALockAlsoBehindAQuietBase)
{
    EXPECT_TRUE(std::is_nothrow_destructible_v<CLockedArray>);
}

TEST(CTOVDerivedClassTest, TakesItsLockAndItsSharedPointerAlong)
{
    CTOVSmartPointer<sShared> pShared(new sShared);
    CDerived<CTOVRefCount>* const pDerived = new CDerived<CTOVRefCount>;
    pDerived->m_pShared = pShared;
    ASSERT_EQ(2, pShared.GetRefCount());

    EXPECT_EQ(0, pDerived->Release());

    EXPECT_EQ(1, pShared.GetRefCount());
}
