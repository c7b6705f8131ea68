// The contract of anything that data can be serialised into or out of, and the operators that do it value by value.
#pragma once

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVFile.h>

// Block transfer, position, a mode word, a capability query for each optional operation, and a bracket for versioned
// sections. A class that serialises itself runs the same code in both directions:
//
//    oStream.SerializeBegin(oStream.IsSaving() ? nMyVersion : -1);
//    if (oStream.IsSaving()) oStream << m_nValue; else oStream >> m_nValue;    // GetVersion() tells how to read
//    oStream.SerializeEnd();
//
// The mode word:  0xF00 format | 0x0FC free for the implementation | 0x002 saving | 0x001 loading
//
// A stream has no header and no marks between values: a reader makes the same sequence of calls as the writer did.
// Nothing locks: one thread at a time. There is no virtual destructor, so never delete through this class.
class TOV_EXPORT ITOVStream
{
public:
    // How operator << and operator >> render a value. Further values of the field are logged, then count as binary.
    enum eStreamFormat
    {
        eStreamFormatBinary = 0x000,  // the memory image
        eStreamFormatASCII = 0x100,   // text, for writing only
        eStreamFormatBinary2 = 0x200, // as binary
        eStreamFormatBinary3 = 0x300  // as binary
    };

    // Bits of the mode word. Loading and saving are independent: a word may set both or neither.
    enum eStreamMode
    {
        eStreamModeLoading = 0x001,
        eStreamModeSaving = 0x002,
        eStreamModeFormat = 0xF00
    };

    // Error class eClassStream, for an application's streams; those of this library have exceptions of their own.
    class TOV_EXPORT StreamException : public CTOVException
    {
    public:
        explicit StreamException(unsigned short usErrorCode);
        StreamException(const StreamException& oOther);
        StreamException& operator=(const StreamException& oOther);
    };

    // Virtual operations; their order is part of the exported design.

    // Transfer ullSize bytes. A short transfer is not reported.
    virtual void Read(void* pBuffer, unsigned long long ullSize) = 0;
    virtual void Write(const void* pBuffer, unsigned long long ullSize) = 0;
    virtual void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) = 0;

    // Open and close a section. A writer names the section's version, a reader passes -1 and asks GetVersion.
    virtual void SerializeBegin(int nDataFormatVersion) = 0;
    virtual void SerializeEnd() = 0;

    virtual int GetMode() const = 0;

    // Implemented here, from GetMode() through its slot. IsStoring is another word for IsSaving.
    virtual int GetFormat() const;
    virtual bool IsLoading() const;
    virtual bool IsSaving() const;
    virtual bool IsStoring() const;

    virtual unsigned long long Tell() const = 0;
    virtual bool SupportsRead() const = 0;
    virtual bool SupportsWrite() const = 0;
    virtual bool SupportsSeek() const = 0;
    virtual bool SupportsVersioning() const = 0;
    virtual unsigned long long GetSize() const = 0;

    // Version of the section being read, -1 where there is none.
    virtual int GetVersion() const = 0;

    ITOVStream();
    ITOVStream(const ITOVStream& oOther);
    ITOVStream& operator=(const ITOVStream& oOther);
};

// Renderings of a type, in TOVStream/TOVStreamTraits.h.
template<class T> class TOVStreamTraitsASCII;
template<class T> class TOVStreamTraitsBinary;

// Write a value in the stream's format. Exist for int, and for each type that an application gives renderings.
template<class T> ITOVStream& operator<<(ITOVStream& oStream, const T& oValue)
{
    switch (oStream.GetFormat())
    {
    case ITOVStream::eStreamFormatASCII:
        TOVStreamTraitsASCII<T>::Write(oStream, oValue);
        return oStream;
    case ITOVStream::eStreamFormatBinary:
    case ITOVStream::eStreamFormatBinary2:
    case ITOVStream::eStreamFormatBinary3:
        break;
    default:
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning,
                       "operator <<: Unknown stream format '%d'. Using binary format.", oStream.GetFormat());
    }
    TOVStreamTraitsBinary<T>::Write(oStream, oValue);
    return oStream;
}

// Read a value in the stream's format. Throws for ASCII, unless the type has a text reader of its own.
template<class T> ITOVStream& operator>>(ITOVStream& oStream, T& oValue)
{
    switch (oStream.GetFormat())
    {
    case ITOVStream::eStreamFormatASCII:
        TOVStreamTraitsASCII<T>::Read(oStream, oValue);
        return oStream;
    case ITOVStream::eStreamFormatBinary:
    case ITOVStream::eStreamFormatBinary2:
    case ITOVStream::eStreamFormatBinary3:
        break;
    default:
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning,
                       "operator >>: Unknown stream format '%d'. Using binary format.", oStream.GetFormat());
    }
    TOVStreamTraitsBinary<T>::Read(oStream, oValue);
    return oStream;
}

// The operators need the renderings, which need the class above.
#include <TOVStream/TOVStreamTraits.h>
