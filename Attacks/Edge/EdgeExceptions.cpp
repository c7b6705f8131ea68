#include "EdgeKinds.h"

#include <TOVKernel.h>

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <typeinfo>

namespace
{
// Whether the function throws an exception of exactly this type and these values, also for a handler of its base.
template<class T> bool CatchesOwn(void (*fnCall)(), unsigned long ulCode, CTOVException::eErrorClass eClass)
{
    bool bByBase = false;
    try
    {
        fnCall();
    }
    catch (CTOVException& oException)
    {
        bByBase = oException.GetCode() == ulCode && oException.GetClass() == eClass && typeid(oException) == typeid(T);
    }
    try
    {
        fnCall();
    }
    catch (T& oException)
    {
        return bByBase && oException.GetCode() == ulCode && oException.GetClass() == eClass;
    }
    catch (...)
    {
    }
    return false;
}

// The same for an exception of the standard library; szWhat may be null.
template<class T> bool CatchesStandard(void (*fnCall)(), const char* szWhat)
{
    try
    {
        fnCall();
    }
    catch (const T& oException)
    {
        return typeid(oException) == typeid(T) && (szWhat == nullptr || std::strcmp(oException.what(), szWhat) == 0);
    }
    catch (...)
    {
    }
    return false;
}

template<class T> void Throw()
{
    throw T(static_cast<unsigned short>(77));
}

constexpr char MISSING_FILE[] = "no such directory/no such file";

// A stream that only reads or only writes, whatever the file.
void UseInnerStream(bool bReads)
{
    const std::string sName = std::filesystem::temp_directory_path().string() + "/tov-edge-inner";
    CTOVFile oFile;
    oFile.Open(sName.c_str(), ITOVFile::eFileOpenWrite);
    CTOVFileStream oStream(&oFile, bReads ? ITOVStream::eStreamModeSaving : ITOVStream::eStreamModeLoading);
    char cByte = 0;
    if (bReads)
        oStream.Read(&cByte, 1);
    else
        oStream.Write(&cByte, 1);
}
} // namespace

const sEdgeException EDGE_EXCEPTIONS[] = {
    {"TOVDebug::CTOVAssertException", true, [] { CTOVStringA("text").SetAt(100, 'x'); },
     [](void (*fnCall)()) {
         return CatchesOwn<TOVDebug::CTOVAssertException>(fnCall, 0xffff, CTOVException::eClassSystem);
     }},
    {"CTOVFile::FileException", true, [] { CTOVFile().Open(MISSING_FILE, ITOVFile::eFileOpenRead); },
     [](void (*fnCall)()) {
         try
         {
             fnCall();
         }
         catch (const ITOVFile::Exception& oException)
         {
             return typeid(oException) == typeid(CTOVFile::FileException) &&
                    CatchesOwn<CTOVFile::FileException>(fnCall, 0, CTOVException::eClassFile);
         }
         return false;
     }},
    {"CTOVFileStream::FileStreamException", true, [] { UseInnerStream(true); },
     [](void (*fnCall)()) {
         const auto pfOther = [] { UseInnerStream(false); };
         return CatchesOwn<CTOVFileStream::FileStreamException>(fnCall, 4, CTOVException::eClassStream) &&
                CatchesOwn<CTOVFileStream::FileStreamException>(pfOther, 5, CTOVException::eClassStream);
     }},
    {"CTOVReadFileStream::ReadFileStreamException", true, [] { CTOVReadFileStream oStream(MISSING_FILE); },
     [](void (*fnCall)()) {
         return CatchesOwn<CTOVReadFileStream::ReadFileStreamException>(fnCall, 0, CTOVException::eClassStream);
     }},
    {"CTOVWriteFileStream::WriteFileStreamException", true, [] { CTOVWriteFileStream oStream(MISSING_FILE); },
     [](void (*fnCall)()) {
         return CatchesOwn<CTOVWriteFileStream::WriteFileStreamException>(fnCall, 0, CTOVException::eClassStream);
     }},
    {"std::bad_alloc", true, [] { CTOVStringW().AllocBuffer(0x7FFFFFF0); },
     [](void (*fnCall)()) { return CatchesStandard<std::bad_alloc>(fnCall, nullptr); }},
    {"std::length_error", true, [] { CTOVArray<CTOVStringA>().Resize(0x7FFFFFFF); },
     [](void (*fnCall)()) { return CatchesStandard<std::length_error>(fnCall, "vector<T> too long"); }},
    {"std::out_of_range", true, [] { CTOVArray<CTOVStringA>().InsertAt(1, CTOVStringA("text")); },
     [](void (*fnCall)()) {
         return CatchesStandard<std::out_of_range>(fnCall, "CTOVArray<T>::InsertAt: index beyond the size");
     }},
    {"CTOVException", false, [] { throw CTOVException(CTOVException::eClassStream, 77); },
     [](void (*fnCall)()) { return CatchesOwn<CTOVException>(fnCall, 77, CTOVException::eClassStream); }},
    {"CTOVMemoryException", false, &Throw<CTOVMemoryException>,
     [](void (*fnCall)()) { return CatchesOwn<CTOVMemoryException>(fnCall, 77, CTOVException::eClassSystem); }},
    {"ITOVFile::Exception", false, &Throw<ITOVFile::Exception>,
     [](void (*fnCall)()) { return CatchesOwn<ITOVFile::Exception>(fnCall, 77, CTOVException::eClassFile); }},
    {"CTOVVirtualFileSystem::Exception", false, &Throw<CTOVVirtualFileSystem::Exception>,
     [](void (*fnCall)()) {
         return CatchesOwn<CTOVVirtualFileSystem::Exception>(fnCall, 77, CTOVException::eClassFile);
     }},
    {"ITOVStream::StreamException", false, &Throw<ITOVStream::StreamException>,
     [](void (*fnCall)()) { return CatchesOwn<ITOVStream::StreamException>(fnCall, 77, CTOVException::eClassStream); }},
    {nullptr, false, nullptr, nullptr},
};
