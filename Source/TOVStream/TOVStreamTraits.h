// How operator << and operator >> of a stream render the values of a type.
#pragma once

#include <TOVStream/TOVStream.h>
#include <TOVString/TOVStringA.h>

#include <type_traits>

// The library renders int. A further type is a matter of two specialisations, after the model of int: binary is the
// memory image, ASCII goes through a format, with no separator and no terminator.
//
//    template<> class TOVStreamTraitsBinary<double> : public TOVStreamTraitsMemoryImage<double> {};
//    template<> inline void TOVStreamTraitsASCII<double>::Write(ITOVStream& oStream, const double& fValue)
//    {
//        CTOVStringA oText;
//        oText.Format("%f", fValue);
//        WriteText(oStream, oText);
//    }
//
// ASCII reading takes a specialisation of TOVStreamTraitsASCII<T>::Read as well. A type that is more than a block of
// memory brings its own Read and Write in TOVStreamTraitsBinary<T>. A type without renderings does not compile.

// Block transfer of a value as it lies in memory, in the host's byte order.
template<class T> class TOVStreamTraitsMemoryImage
{
public:
    static_assert(std::is_trivially_copyable<T>::value, "only a trivially copyable type is its own memory image");

    static void Write(ITOVStream& oStream, const T& oValue) { oStream.Write(&oValue, sizeof oValue); }

    static void Read(ITOVStream& oStream, T& oValue) { oStream.Read(&oValue, sizeof oValue); }
};

// Binary rendering. Raw bytes of an arbitrary type would tie a file to one compiler, so there is none by default.
template<class T> class TOVStreamTraitsBinary
{
    static_assert(sizeof(T) == 0, "no stream rendering for this type: specialise TOVStreamTraitsBinary for it");
};

template<> class TOVStreamTraitsBinary<int> : public TOVStreamTraitsMemoryImage<int>
{
};

// Text rendering.
template<class T> class TOVStreamTraitsASCII
{
public:
    // Specialised for each type that can be written as text.
    static void Write(ITOVStream& /*oStream*/, const T& /*oValue*/)
    {
        static_assert(sizeof(T) == 0, "no text rendering for this type: specialise TOVStreamTraitsASCII<T>::Write");
    }

    // There is no parser: logs an error and throws, with the value unchanged.
    static void Read(ITOVStream& /*oStream*/, T& /*oValue*/)
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x11, eSeverityError, "%s",
                       "TOVStreamTraitsASCII::Read() Unsupported type.");
        TOV_ASSERT(false);
    }

    // The characters of a text, if it has any. A tool for Write.
    static void WriteText(ITOVStream& oStream, const CTOVStringA& oText)
    {
        if (oText.GetLength() > 0)
            oStream.Write(oText.GetString(), static_cast<unsigned long long>(oText.GetLength()));
    }
};

template<> inline void TOVStreamTraitsASCII<int>::Write(ITOVStream& oStream, const int& nValue)
{
    CTOVStringA oText;
    oText.Format("%d", nValue);
    WriteText(oStream, oText);
}
