#include <TestSuites/Test_TOVDesignPatterns.h>

#include <Debug/TOVDebug.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>
#include <Test/TOVTestChecks.h>

constexpr char FILE_NAME[] = "TestSuites\\Test_TOVDesignPatterns";

// Settled: the file name and the lines of the table are given; they are not the places in this source.
// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVDesignPatternsTest, "TOVDesignPatterns", FILE_NAME, 31)
    TOV_TEST_CASE_AT("CTOVSmartPointer", TestSmartPointer, FILE_NAME, 39)
    TOV_TEST_CASE_AT("CTOVRef", TestRef, FILE_NAME, 40)
TOV_TEST_CASES_END
// clang-format on

namespace
{
struct sTest
{
    int A;
};
typedef CTOVSmartPointer<sTest> tTestPointer;

void CheckNullPointer()
{
    tTestPointer oPointer;
    const tTestPointer& oConst = oPointer;

    TOV_TEST_EQUALS(oPointer.IsValid(), false);
    TOV_TEST_EQUALS(oPointer.GetRefCount(), 1);
    TOV_TEST_EQUALS(oPointer.Get() == NULL, true);
    TOV_TEST_EQUALS(oConst.Get() == NULL, true);
    TOV_TEST_EQUALS(static_cast<sTest*>(oPointer) == NULL, true);
    TOV_TEST_EQUALS(static_cast<const sTest*>(oConst) == NULL, true);

    TOV_TEST_THROWS(oPointer->A = 1);
    TOV_TEST_THROWS(static_cast<void>(oConst->A));
    TOV_TEST_THROWS((*oPointer).A = 1);
    TOV_TEST_THROWS(static_cast<void>((*oConst).A));
    TOV_TEST_THROWS(oPointer[0].A = 1);
}

void CheckSharedNullPointers()
{
    tTestPointer oPointer1;
    tTestPointer oPointer2;
    oPointer2 = oPointer1;

    TOV_TEST_EQUALS(oPointer1.IsValid(), false);
    TOV_TEST_EQUALS(oPointer1.GetRefCount(), 2);
    TOV_TEST_EQUALS(oPointer2.GetRefCount(), 2);
    TOV_TEST_EQUALS(oPointer1.Get() == oPointer2.Get(), true);
    TOV_TEST_EQUALS(oPointer2.Get() == NULL, true);

    // A raw pointer gets its own control block.
    sTest* const pTest = new sTest;
    oPointer1 = pTest;
    TOV_TEST_EQUALS(oPointer1.GetRefCount(), 1);
    TOV_TEST_EQUALS(oPointer2.GetRefCount(), 1);
    TOV_TEST_EQUALS(oPointer1.Get() == pTest, true);
    TOV_TEST_EQUALS(oPointer2.Get() == NULL, true);
}

void CheckAccess()
{
    tTestPointer oPointer(new sTest{1234});
    const tTestPointer& oConst = oPointer;
    TOV_TEST_EQUALS(oPointer->A, 1234);
    TOV_TEST_EQUALS(oConst->A, 1234);
    TOV_TEST_EQUALS((*oPointer).A, 1234);
    TOV_TEST_EQUALS((*oConst).A, 1234);

    // The pointer frees a single object, so that an array for it must be allocated in the form that it frees.
    sTest* const pTests = static_cast<sTest*>(CTOVOwnedObject<sTest>::Allocate(2 * sizeof(sTest)));
    new (&pTests[0]) sTest{4321};
    new (&pTests[1]) sTest{8765};
    tTestPointer oArray(pTests);
    TOV_TEST_EQUALS(oArray[0].A, 4321);
    TOV_TEST_EQUALS(oArray[1].A, 8765);
}

void CheckSharing()
{
    sTest* const pTest = new sTest{5};
    tTestPointer oPointer3(pTest);
    tTestPointer oPointer4(oPointer3);
    TOV_TEST_EQUALS(oPointer3.IsValid() && oPointer4.IsValid(), true);
    TOV_TEST_EQUALS(oPointer3.GetRefCount(), 2);
    TOV_TEST_EQUALS(oPointer4.GetRefCount(), 2);
    TOV_TEST_EQUALS(oPointer3.Get() == pTest && oPointer4.Get() == pTest, true);

    oPointer3 = 0;
    TOV_TEST_EQUALS(oPointer3.GetRefCount(), 1);
    TOV_TEST_EQUALS(oPointer4.GetRefCount(), 1);
    TOV_TEST_EQUALS(oPointer3.IsValid(), false);
    TOV_TEST_EQUALS(oPointer4->A, 5);

    oPointer3 = oPointer4;
    TOV_TEST_EQUALS(oPointer3.GetRefCount(), 2);
    TOV_TEST_EQUALS(oPointer4.GetRefCount(), 2);
    TOV_TEST_EQUALS(oPointer3.Get() == pTest, true);

    // The other pointer keeps the old object.
    oPointer3 = new sTest{6};
    TOV_TEST_EQUALS(oPointer3.GetRefCount(), 1);
    TOV_TEST_EQUALS(oPointer4.GetRefCount(), 1);
    TOV_TEST_EQUALS(oPointer3->A, 6);
    TOV_TEST_EQUALS(oPointer4->A, 5);
}

void CheckReleaseTooMany()
{
    struct sUnowned : public CTOVRefCount
    {
        sUnowned() { m_lRefCount = 0; }
    };
    sUnowned oUnowned;
    TOV_TEST_THROWS(oUnowned.Release());
    TOV_TEST_EQUALS(oUnowned.GetRefCount(), -1);
}
} // namespace

void CTOVDesignPatternsTest::TestSmartPointer()
{
    CheckNullPointer();
    CheckSharedNullPointers();
    CheckAccess();
    CheckSharing();
    CheckReleaseTooMany();
}

void CTOVDesignPatternsTest::TestRef()
{
}
