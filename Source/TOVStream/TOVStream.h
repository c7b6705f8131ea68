// Declares ITOVStream, the interface of streams that objects are written to and read from, and the operators << and >>,
// which write and read a value.
#pragma once

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVFile.h>

// A stream transfers blocks, has a position and a mode word, says which of the optional operations it supports, and
// marks versioned sections. A class that serialises itself uses the same code in both directions:
//
//    oStream.SerializeBegin(oStream.IsSaving() ? nMyVersion : -1);
//    if (oStream.IsSaving()) oStream << m_nValue; else oStream >> m_nValue;    // GetVersion() says how to read
//    oStream.SerializeEnd();
//
// The mode word:  0xF00 format | 0x0FC free for the implementation | 0x002 saving | 0x001 loading
//
// A stream has no header and no marks between values: a reader must make the same sequence of calls as the writer.
// Nothing is locked: use a stream from one thread at a time. There is no virtual destructor: never delete a stream
// through this class.
class TOV_EXPORT ITOVStream
{
public:
    // The representation of a value by operator << and operator >>. Any other value of the field is logged, then
    // treated as binary.
    enum eStreamFormat
    {
        eStreamFormatBinary = 0x000,  // the memory image
        eStreamFormatASCII = 0x100,   // text, for writing only
        eStreamFormatBinary2 = 0x200, // same as binary
        eStreamFormatBinary3 = 0x300  // same as binary
    };

    // The bits of the mode word. Loading and saving are independent: a word may set both or neither.
    enum eStreamMode
    {
        eStreamModeLoading = 0x001,
        eStreamModeSaving = 0x002,
        eStreamModeFormat = 0xF00
    };

    // Its error class is eClassStream. Streams of an application throw it; those of this library have their own
    // exceptions.
    class TOV_EXPORT StreamException : public CTOVException
    {
    public:
        explicit StreamException(unsigned short usErrorCode);
        StreamException(const StreamException& oOther);
        StreamException& operator=(const StreamException& oOther);
    };

    // Virtual operations; their order is part of the exported design.

    // These transfer ullSize bytes. A short transfer is not reported.
    virtual void Read(void* pBuffer, unsigned long long ullSize) = 0;
    virtual void Write(const void* pBuffer, unsigned long long ullSize) = 0;
    virtual void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) = 0;

    // These begin and end a section. A writer passes the section's version; a reader passes -1 and calls GetVersion.
    virtual void SerializeBegin(int nDataFormatVersion) = 0;
    virtual void SerializeEnd() = 0;

    // Returns the mode word.
    virtual int GetMode() const = 0;

    // These are implemented here, by the virtual GetMode(). IsStoring does the same as IsSaving.
    virtual int GetFormat() const;
    virtual bool IsLoading() const;
    virtual bool IsSaving() const;
    virtual bool IsStoring() const;

    // Returns the position in bytes.
    virtual unsigned long long Tell() const = 0;
    // These say which of the optional operations the stream has.
    virtual bool SupportsRead() const = 0;
    virtual bool SupportsWrite() const = 0;
    virtual bool SupportsSeek() const = 0;
    virtual bool SupportsVersioning() const = 0;
    // Returns a size in bytes; each implementation says of what.
    virtual unsigned long long GetSize() const = 0;

    // Returns the version of the section that is being read, or -1 if there is none.
    virtual int GetVersion() const = 0;

    ITOVStream();
    ITOVStream(const ITOVStream& oOther);
    ITOVStream& operator=(const ITOVStream& oOther);
};

TOV_EXPORT_INLINE int ITOVStream::GetFormat() const
{
    return GetMode() & eStreamModeFormat;
}

// TOVStream/TOVStreamTraits.h defines the representations of a type.
template<class T> class TOVStreamTraitsASCII;
template<class T> class TOVStreamTraitsBinary;

// Writes a value in the stream's format. T is int, or a type for which the application specialises the traits.
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

// Reads a value in the stream's format. Throws for ASCII, unless the traits of the type can read text.
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

// The operators need the traits, which need the class above.
#include <TOVStream/TOVStreamTraits.h>
