// The parts that hold data: texts, paths, containers, files, streams.
#include "LoadParts.h"
#include "Threads/LoadFiles.h"

#include <File/TOVFile.h>
#include <File/TOVFileScanner.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBitArray.h>
#include <TOVContainers/TOVBuffer.h>
#include <TOVContainers/TOVQueue.h>
#include <TOVContainers/TOVRingBuffer.h>
#include <TOVContainers/TOVStack.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>
#include <TOVString/TOVCrc.h>
#include <TOVString/TOVFourCC.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

void RunTexts(CThreadReport& oReport)
{
    for (int nTurn = 0; nTurn < 40; ++nTurn)
    {
        CTOVStringA oText;
        oText.Format("%d of %s with %.3f", nTurn, "the load", nTurn / 8.0);
        for (int nPart = 0; nPart < nTurn; ++nPart)
            oText += " part,";
        const CTOVStringW oWide(oText);
        const CTOVStringA oBack(oWide);
        oReport.ExpectEqual(0, oBack.Compare(oText), "a text that was wide");
        oReport.ExpectEqual(nTurn, oText.AsInt(), "number at the start of a text");

        CTOVArray<CTOVStringA> aoParts;
        oReport.ExpectEqual(nTurn + 1, oText.Split(aoParts, ','), "parts of a text");
        CTOVStringA oChanged(~oText); // not a copy, which would share the text
        oReport.ExpectEqual(nTurn, oChanged.Replace("part", "longer part"), "replaced parts");
        oChanged.MakeUpper();
        oChanged.Reverse();
        oReport.Expect(oText.Find("load") > 0 && oText.Left(3).GetLength() == 3, "parts of a text");
    }
    CTOVFourCC oCode("load");
    oCode.Reverse();
    oReport.Expect(oCode.Compare(CTOVFourCC("daol")), "a code of four characters");
}

void RunPaths(CThreadReport& oReport)
{
    for (int nTurn = 0; nTurn < 40; ++nTurn)
    {
        CTOVPath oPath("some");
        for (int nPart = 0; nPart < nTurn % 10; ++nPart)
            oPath.Append("directory");
        oPath.Append("name.txt");
        oReport.ExpectEqual(2 + nTurn % 10, oPath.GetNumComponents(), "components of a path");
        oReport.ExpectEqual(0, oPath.GetFileName(false).Compare("name"), "name without an extension");
        const CTOVPath oParent = oPath.Parent();
        oReport.Expect(oParent.IsBelow(oPath), "a path is below its parent");
        oPath.RemoveExtension();
        oPath.AddExtension(".bin");
        oPath.MakeForwardslashes();
        oReport.ExpectEqual(0, oPath.GetExtension().Compare(".bin"), "extension of a path");
    }
    oReport.Expect(CTOVPath::GetWorkingDirectory().IsDirectory(), "the working directory exists");
}

void RunContainers(CThreadReport& oReport)
{
    CTOVArray<int> aNumbers;
    CTOVArray<CTOVStringA> aoTexts;
    CTOVStack<int> aStack;
    CTOVQueue<CTOVStringA> aoQueue;
    CTOVRingBuffer<int> oRing(16);
    CTOVBitArray oBits;
    CTOVBuffer<char> oBuffer;
    oBits.SetNumBits(1000);
    for (int nTurn = 0; nTurn < 500; ++nTurn)
    {
        const CTOVStringA oText("some text of an element");
        aNumbers.Add(nTurn * 7919 % 500);
        aoTexts.InsertAt(aoTexts.GetSize() / 2, oText);
        aStack.Push(nTurn);
        aoQueue.Enqueue(oText);
        oRing.Write(nTurn);
        oBits.SetBit(nTurn * 2);
        oBuffer.Append(oText.GetString(), oText.GetLength());
    }
    aNumbers.Sort([](const int& nFirst, const int& nSecond) { return nFirst - nSecond; });
    for (int nTurn = 0; nTurn < 500; ++nTurn)
    {
        oReport.ExpectEqual(nTurn, aNumbers[nTurn], "a sorted number");
        oReport.ExpectEqual(499 - nTurn, aStack.GetTop(), "top of the stack");
        aStack.Pop();
        aoQueue.Dequeue();
    }
    const CTOVBuffer<char> oSame(oBuffer);
    oReport.Expect(oSame == oBuffer && aoQueue.IsEmpty() && oRing.IsFull(), "containers hold what was put in");
    oReport.Expect(CRC32Generate(oBuffer.GetBuffer(), 100, 0) == CRC32Generate(oSame.GetBuffer(), 100, 0), "check");
}

namespace
{
CTOVFileScanner::eScannerControl CountFile(CTOVFileScanner::eScannerMode, CTOVFileScanner::sTOVFileDescriptor*,
                                           unsigned long long ullUserValue)
{
    ++*reinterpret_cast<int*>(static_cast<std::uintptr_t>(ullUserValue));
    return CTOVFileScanner::eScannerContinue;
}
} // namespace

void RunNamedFiles(CThreadReport& oReport)
{
    constexpr int FILES = 5;
    const CLoadFolder oFolder;
    for (int nFile = 0; nFile < FILES; ++nFile)
    {
        CTOVFile oFile;
        oFile.Open(oFolder.GetFile(nFile).c_str(), ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary);
        oReport.ExpectEqual(1, static_cast<long long>(oFile.Write("contents", 8)), "blocks written");
        oFile.Close();
        oFile.Open(oFolder.GetFile(nFile).c_str(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
        oReport.ExpectEqual(8, static_cast<long long>(oFile.GetSize()), "size of a file");
    }
    try
    {
        CTOVFile oFile;
        oFile.Open(oFolder.GetFile(FILES).c_str(), ITOVFile::eFileOpenRead);
        oReport.Expect(false, "a missing file is not opened");
    }
    catch (const CTOVFile::FileException&)
    {
    }

    int nFound = 0;
    CTOVFileScanner oScanner;
    const std::string sFile = oFolder.GetFile(0);
    oScanner.AddScanDirectory(CTOVPath(sFile.substr(0, sFile.size() - 2).c_str()), "*");
    oScanner.Run(&CountFile, reinterpret_cast<std::uintptr_t>(&nFound));
    oReport.ExpectEqual(FILES, nFound, "files found");
}

void RunStreams(CThreadReport& oReport)
{
    const CLoadFolder oFolder;
    const std::string sFile = oFolder.GetFile(0);
    {
        CTOVWriteFileStream oOut(sFile.c_str());
        for (int nTurn = 0; nTurn < 50; ++nTurn)
        {
            oOut.SerializeBegin(nTurn);
            oOut << nTurn;
            oOut.SerializeEnd();
        }
    }
    CTOVReadFileStream oIn(sFile.c_str());
    for (int nTurn = 0; nTurn < 50; ++nTurn)
    {
        int nNumber = -1;
        oIn.SerializeBegin(-1);
        oIn >> nNumber;
        oReport.ExpectEqual(nTurn, oIn.GetVersion(), "version of a section");
        oReport.ExpectEqual(nTurn, nNumber, "number in a section");
        oIn.SerializeEnd();
    }
    try
    {
        oIn.Write("x", 1);
        oReport.Expect(false, "a stream that reads does not write");
    }
    catch (const CTOVReadFileStream::ReadFileStreamException&)
    {
    }
}
