#include <TestSuites/Test_TOVStringChecks.h>

#include <Test/TOVTestChecks.h>
#include <TestSuites/TOVTestLiteral.h>

#define TEXT(szText) TOV_LITERAL(T, szText)

// The checks pass in every locale: they do not use the letter i where case is changed or ignored, and read a number
// with a decimal point only if the same locale has printed it.

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckAll()
{
    CheckNewString();
    CheckAccess();
    CheckSharing();
    CheckRawBuffer();
    CheckSearch();
    CheckReverseSearch();
    CheckReplace();
    CheckCutting();
    CheckPrefixes();
    CheckSuffixes();
    CheckComparison();
    CheckCase();
    CheckSplit();
    CheckNumbers();
    CheckFormat();
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckNewString()
{
    TString oTest;
    TOV_TEST_EQUALS(oTest.IsEmpty(), true);
    TOV_TEST_EQUALS(oTest.GetLength(), 0);
    TOV_TEST_EQUALS(oTest.GetString() == NULL, true);

    // Two strings without a block are unchanged by an assignment.
    const TString oOther;
    TOV_TEST_THROWS_NOT(oTest = oOther);
    TOV_TEST_EQUALS(oTest.GetString() == NULL, true);

    oTest = TEXT("");
    TOV_TEST_EQUALS(oTest.GetString() == NULL, true);
    oTest = static_cast<T>('x');
    TOV_TEST_EQUALS(oTest == TEXT("x"), true);
    oTest = static_cast<T>(0);
    TOV_TEST_EQUALS(oTest.IsEmpty(), true);
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckAccess()
{
    TString oTest;
    oTest = TEXT("BCD");
    TOV_TEST_EQUALS(oTest.GetLength(), 3);
    TOV_TEST_EQUALS(oTest.GetAt(2), 'D');
    TOV_TEST_EQUALS(oTest[0], 'B');

    TOV_TEST_THROWS(oTest.GetAt(3));
    TOV_TEST_THROWS(oTest.GetAt(6));
    TOV_TEST_THROWS(oTest.GetAt(-1));
    TOV_TEST_THROWS(oTest.SetAt(6, '3'));
    TOV_TEST_THROWS(oTest.SetAt(-1, 'w'));
    TOV_TEST_EQUALS(oTest == TEXT("BCD"), true);

    oTest += TEXT("EF");
    oTest += static_cast<T>('G');
    oTest += TString(TEXT("H"));
    TOV_TEST_EQUALS(oTest == TEXT("BCDEFGH"), true);
    TOV_TEST_THROWS(oTest += static_cast<const T*>(NULL));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckSharing()
{
    const TString oA(TEXT("Haus"));
    TString oB;
    oB = oA;
    TOV_TEST_EQUALS(oB.GetString() == oA.GetString(), true);
    oB = TEXT("x");
    TOV_TEST_EQUALS(oA == TEXT("Haus"), true);

    // Settled: every string that shares the block sees a change in place.
    oB = oA;
    oB.MakeUpper();
    TOV_TEST_EQUALS(oA == TEXT("HAUS"), true);
    oB.SetAt(0, 'M');
    TOV_TEST_EQUALS(oA == TEXT("MAUS"), true);

    // Settled: an assignment between two strings that share a block does nothing, and each keeps its length.
    oB.ReleaseBuffer(2);
    oB = oA;
    TOV_TEST_EQUALS(oB.GetLength(), 2);
    TOV_TEST_EQUALS(oA.GetLength(), 4);
    oB.ReleaseBuffer(4);
    oB.SetAt(2, 'U');

    // Empty gives the string its own block, which has the old size and is all zeros. It does nothing to an empty
    // string.
    oB.Empty();
    TOV_TEST_EQUALS(oA == TEXT("MAUS"), true);
    TOV_TEST_EQUALS(oB.GetLength(), 0);
    TOV_TEST_EQUALS(oB.GetData()->GetSize(), 5);
    for (long lIndex = 0; lIndex < 5; ++lIndex)
        TOV_TEST_EQUALS(oB.GetString()[lIndex] == 0, true);
    const T* const szBlock = oB.GetString();
    oB.Empty();
    TOV_TEST_EQUALS(oB.GetString() == szBlock, true);
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckRawBuffer()
{
    TString oTest;
    T* const szBuffer = oTest.GetBuffer(10);
    szBuffer[0] = 'a';
    szBuffer[1] = 'b';
    szBuffer[2] = 0;
    oTest.ReleaseBuffer(-1);
    TOV_TEST_EQUALS(oTest.GetLength(), 2);
    TOV_TEST_EQUALS(oTest.GetData()->GetSize(), 11);
    TOV_TEST_THROWS(oTest.ReleaseBuffer(12));

    // A block that is large enough keeps its text; growing loses it.
    oTest = TEXT("abcde");
    TOV_TEST_EQUALS(TString(oTest.GetBuffer(3)) == TEXT("abcde"), true);
    const T* const szGrown = oTest.GetBuffer(7);
    TOV_TEST_EQUALS(szGrown[7] == 0, true);
    oTest.ReleaseBuffer(0);

    // Settled: the terminator that is copied counts as text.
    oTest.Copy(TEXT("CopyData"), 9);
    TOV_TEST_EQUALS(oTest.GetLength(), 9);
    TOV_TEST_EQUALS(oTest == TEXT("CopyData"), true);
    TOV_TEST_THROWS(oTest.Copy(NULL, 9));
    TOV_TEST_THROWS(oTest.Copy(TEXT("CopyData"), 0));
    TOV_TEST_THROWS(oTest.AllocBuffer(-1));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckSearch()
{
    const TString oTest(TEXT("Das ist ein test"));
    TOV_TEST_EQUALS(oTest.Find(static_cast<T>('i')), 4);
    TOV_TEST_EQUALS(oTest.Find(static_cast<T>('z')), -1);
    TOV_TEST_EQUALS(oTest.Find(static_cast<T>('i'), 5), 9);
    TOV_TEST_EQUALS(oTest.Find(TEXT("ein")), 8);
    TOV_TEST_EQUALS(oTest.Find(TEXT("aber")), -1);
    TOV_TEST_THROWS(oTest.Find(static_cast<T>(0)));
    TOV_TEST_THROWS(oTest.Find(static_cast<T>('i'), -1));
    TOV_TEST_THROWS(oTest.Find(static_cast<const T*>(NULL)));
    TOV_TEST_THROWS(oTest.Find(TEXT("ein"), -1));

    TOV_TEST_EQUALS(oTest.FindOneOf(TEXT("abe")), 1);
    TOV_TEST_EQUALS(oTest.FindOneOf(TEXT("zyw")), -1);
    TOV_TEST_EQUALS(oTest.FindNotOneOf(TEXT("aAbBcCdDeE")), 2);
    TOV_TEST_EQUALS(oTest.FindNotOneOf(TEXT("Das ist ein test")), -1);
    TOV_TEST_THROWS(oTest.FindOneOf(NULL));
    TOV_TEST_THROWS(oTest.FindNotOneOf(NULL));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckReverseSearch()
{
    const TString oTest(TEXT("Das ist ein test"));
    TOV_TEST_EQUALS(oTest.ReverseFind(static_cast<T>('e')), 13);
    TOV_TEST_EQUALS(oTest.ReverseFind(static_cast<T>('z')), -1);
    TOV_TEST_EQUALS(oTest.ReverseFindOneOf(TEXT("abe")), 13);
    TOV_TEST_EQUALS(oTest.ReverseFindOneOf(TEXT("zyw")), -1);
    TOV_TEST_EQUALS(oTest.ReverseFindNotOneOf(TEXT("abcde")), 15);
    TOV_TEST_EQUALS(oTest.ReverseFindNotOneOf(TEXT("Das ist ein test")), -1);
    TOV_TEST_THROWS(oTest.ReverseFindOneOf(NULL));
    TOV_TEST_THROWS(oTest.ReverseFindOneOf(TEXT("abe"), 1));
    TOV_TEST_THROWS(oTest.ReverseFindNotOneOf(NULL));
    TOV_TEST_THROWS(oTest.ReverseFindNotOneOf(TEXT("abe"), 1));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckReplace()
{
    const T* const szText = TEXT("Das ist ein test");
    TString oTest(szText);
    int nCount = oTest.Replace(static_cast<T>(' '), static_cast<T>('_'));
    TOV_TEST_EQUALS(nCount, 3);
    TOV_TEST_EQUALS(oTest == TEXT("Das_ist_ein_test"), true);

    oTest = szText;
    nCount = oTest.Replace(TEXT("ein"), TEXT("der"));
    TOV_TEST_EQUALS(nCount, 1);
    TOV_TEST_EQUALS(oTest == TEXT("Das ist der test"), true);
    nCount = oTest.Replace(TEXT("s"), TEXT("sss"));
    TOV_TEST_EQUALS(nCount, 3);
    TOV_TEST_EQUALS(oTest == TEXT("Dasss issst der tessst"), true);
    nCount = oTest.Replace(TEXT("ss"), nullptr);
    TOV_TEST_EQUALS(nCount, 3);
    TOV_TEST_EQUALS(oTest == TEXT("Das ist der test"), true);
    TOV_TEST_EQUALS(oTest.Replace(TEXT(""), TEXT("x")), 0);
    TOV_TEST_THROWS(oTest.Replace(static_cast<T>('s'), static_cast<T>(0)));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckCutting()
{
    const TString oTest(TEXT("Das ist ein test"));
    TOV_TEST_EQUALS(oTest.Left(3) == TEXT("Das"), true);
    TOV_TEST_EQUALS(oTest.Left(16).GetString() == oTest.GetString(), false);
    TOV_TEST_EQUALS(oTest.Left(17).GetString() == oTest.GetString(), true);
    TOV_TEST_EQUALS(oTest.Mid(4, 7) == TEXT("ist ein"), true);
    TOV_TEST_EQUALS(oTest.Left(0).IsEmpty() && oTest.Right(0).IsEmpty() && oTest.Mid(4, 0).IsEmpty(), true);

    // Settled: a cut that reaches the end includes the terminator.
    const TString oRight(oTest.Right(5));
    TOV_TEST_EQUALS(oRight == TEXT("test"), true);
    TOV_TEST_EQUALS(oRight.GetLength(), 5);
    const TString oMid(oTest.Mid(4));
    TOV_TEST_EQUALS(oMid == TEXT("ist ein test"), true);
    TOV_TEST_EQUALS(oMid.GetLength(), 13);
    TOV_TEST_EQUALS(oTest.Mid(17).IsEmpty(), true);
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckPrefixes()
{
    const TString oTest(TEXT("Das war der Test"));
    for (const T* const szPrefix : {TEXT("D"), TEXT("d"), TEXT("Das"), TEXT("DAS")})
        TOV_TEST_EQUALS(oTest.BeginsWithNoCase(szPrefix), true);
    TOV_TEST_EQUALS(oTest.BeginsWithNoCase(TEXT("Das Haus")), false);

    for (const T* const szPrefix : {TEXT("D"), TEXT("Das")})
        TOV_TEST_EQUALS(oTest.BeginsWith(szPrefix), true);
    for (const T* const szOther : {TEXT("d"), TEXT("DAS"), TEXT("Das Haus"), TEXT("war")})
        TOV_TEST_EQUALS(oTest.BeginsWith(szOther), false);

    // A new string is refused; BeginsWith accepts one that was emptied, which has a block.
    TString oEmptied(TEXT("x"));
    oEmptied.Empty();
    TOV_TEST_THROWS(oTest.BeginsWith(TString()));
    TOV_TEST_THROWS(oTest.BeginsWithNoCase(TString()));
    TOV_TEST_EQUALS(oTest.BeginsWith(oEmptied), false);
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckSuffixes()
{
    const TString oTest(TEXT("Das war der Test"));
    for (const T* const szSuffix : {TEXT("t"), TEXT("T"), TEXT("Test"), TEXT("TESt"), TEXT(" der Test")})
        TOV_TEST_EQUALS(oTest.EndsWithNoCase(szSuffix), true);
    for (const T* const szOther : {TEXT(" der  Test"), TEXT("Das Haus")})
        TOV_TEST_EQUALS(oTest.EndsWithNoCase(szOther), false);

    for (const T* const szSuffix : {TEXT("t"), TEXT("Test"), TEXT(" der Test")})
        TOV_TEST_EQUALS(oTest.EndsWith(szSuffix), true);
    for (const T* const szOther : {TEXT("T"), TEXT("TESt"), TEXT(" der  Test"), TEXT("Das Haus")})
        TOV_TEST_EQUALS(oTest.EndsWith(szOther), false);

    // Settled: a text that is one character longer than the string counts as found.
    const TString oShort(TEXT("abc"));
    TOV_TEST_EQUALS(oShort.EndsWith(TEXT("abcd")), true);
    TOV_TEST_EQUALS(oShort.EndsWith(TEXT("wxyz")), true);
    TOV_TEST_EQUALS(oShort.EndsWith(TEXT("abcde")), false);
    TOV_TEST_THROWS(oShort.EndsWith(TString()));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckComparison()
{
    const TString oTest(TEXT("BCD"));
    TOV_TEST_EQUALS(oTest.Compare(TEXT("BCD")), 0);
    TOV_TEST_EQUALS(oTest.Compare(TEXT("CCD")), -1);
    TOV_TEST_EQUALS(oTest.Compare(TEXT("ACD")), 1);
    TOV_TEST_DIFFERS(oTest.Compare(TEXT("bcD")), 0);
    TOV_TEST_EQUALS(oTest.CompareNoCase(TEXT("bcD")), 0);
    TOV_TEST_EQUALS(oTest.Collate(TEXT("BCD")), 0);
    TOV_TEST_EQUALS(oTest.CollateNoCase(TEXT("bcD")), 0);
    TOV_TEST_THROWS(oTest.Collate(NULL));
    TOV_TEST_THROWS(oTest.CollateNoCase(NULL));

    TString oEmptied(TEXT("BCD"));
    oEmptied.Empty();
    TOV_TEST_EQUALS(oEmptied.Compare(TEXT("")), 0);
    TOV_TEST_EQUALS(oEmptied.Compare(NULL), 0);
    TOV_TEST_EQUALS(TString().Compare(NULL), 0);
    TOV_TEST_THROWS(TString().Collate(TEXT("")));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckCase()
{
    TString oTest(TEXT("UPPPERLETTERS"));
    oTest.MakeLower();
    TOV_TEST_EQUALS(oTest == TEXT("uppperletters"), true);
    oTest.MakeUpper();
    TOV_TEST_EQUALS(oTest == TEXT("UPPPERLETTERS"), true);
    oTest.Reverse();
    TOV_TEST_EQUALS(oTest == TEXT("SRETTELREPPPU"), true);

    TString oNew;
    TOV_TEST_THROWS_NOT(oNew.MakeLower());
    TOV_TEST_THROWS_NOT(oNew.MakeUpper());
    TOV_TEST_THROWS_NOT(oNew.Reverse());
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckSplit()
{
    CTOVArray<TString> aParts;
    int nCount = TString(TEXT("one;two;")).Split(aParts, ';');
    TOV_TEST_EQUALS(nCount, 3);
    TOV_TEST_EQUALS(aParts.GetSize(), 3);
    if (aParts.GetSize() == 3)
        TOV_TEST_EQUALS(aParts[0] == TEXT("one") && aParts[1] == TEXT("two") && aParts[2].IsEmpty(), true);

    nCount = TString().Split(aParts, ';');
    TOV_TEST_EQUALS(nCount, 0);
    TOV_TEST_EQUALS(aParts.GetSize(), 0);
    TOV_TEST_THROWS(TString(TEXT("one")).Split(aParts, '\0'));
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckNumbers()
{
    const TString oWhole(TEXT("12345"));
    TOV_TEST_EQUALS(oWhole.AsLong(), 12345);
    TOV_TEST_EQUALS(oWhole.AsInt(), 12345);
    TOV_TEST_EQUALS(oWhole.AsUint(), 12345u);
    TOV_TEST_EQUALS(oWhole.AsUlong(), 12345u);
    TOV_TEST_EQUALS(TString(TEXT("-1")).AsUint(), 0xFFFFFFFFu);
    TOV_TEST_EQUALS(TString(TEXT("text")).AsLong(), 0);
    TOV_TEST_EQUALS(TString().AsLong(), 0);

    TString oFraction;
    oFraction.Format(TEXT("%.2f"), 34.56);
    TOV_TEST_EQUALS(oFraction.AsDouble(), 34.56);
    TOV_TEST_EQUALS(oFraction.AsFloat() == 34.56f, true);

    TOV_TEST_EQUALS(TString(TEXT("1")).AsBool() && TString(TEXT("true")).AsBool(), true);
    for (const T* const szNotTrue : {TEXT("0"), TEXT("FALSE"), TEXT("T"), TEXT("")})
        TOV_TEST_EQUALS(TString(szNotTrue).AsBool(), false);
}

template<class TString, class T> void CTOVStringChecks<TString, T>::CheckFormat()
{
    TString oTest;
    const int nLength = oTest.Format(TEXT("%s: %d"), TEXT("text"), -12);
    TOV_TEST_EQUALS(nLength, 9);
    TOV_TEST_EQUALS(oTest == TEXT("text: -12"), true);
    TOV_TEST_THROWS(oTest.Format(TEXT("")));
}

template class CTOVStringChecks<CTOVStringA, char>;
template class CTOVStringChecks<CTOVStringW, wchar_t>;
