// Declares the traits by which operator << and operator >> of a stream represent the values of a type.
#pragma once

#include <TOVStream/TOVStream.h>
#include <TOVString/TOVStringA.h>

#include <type_traits>

// The library has traits for int. For another type, write two specialisations like those for int: the binary one is the
// memory image, and the ASCII one formats a text, without a separator or a terminator.
//
//    template<> class TOVStreamTraitsBinary<double> : public TOVStreamTraitsMemoryImage<double> {};
//    template<> inline void TOVStreamTraitsASCII<double>::Write(ITOVStream& oStream, const double& fValue)
//    {
//        CTOVStringA oText;
//        oText.Format("%f", fValue);
//        WriteText(oStream, oText);
//    }
//
// To read ASCII, specialise TOVStreamTraitsASCII<T>::Read as well. A type that is more than a block of memory needs its
// own Read and Write in TOVStreamTraitsBinary<T>. A type without these traits does not compile.

// Transfers a value as a block of memory, in the host's byte order.
template<class T> class TOVStreamTraitsMemoryImage
{
public:
    static_assert(std::is_trivially_copyable<T>::value, "only a trivially copyable type is its own memory image");

    // These transfer the bytes of the value. A short transfer is not reported.
    static void Write(ITOVStream& oStream, const T& oValue) { oStream.Write(&oValue, sizeof oValue); }
    static void Read(ITOVStream& oStream, T& oValue) { oStream.Read(&oValue, sizeof oValue); }
};

// Represents a value in binary. There is no default, as the raw bytes of an arbitrary type depend on the compiler.
template<class T> class TOVStreamTraitsBinary
{
    static_assert(sizeof(T) == 0, "no stream rendering for this type: specialise TOVStreamTraitsBinary for it");
};

template<> class TOVStreamTraitsBinary<int> : public TOVStreamTraitsMemoryImage<int>
{
};

// Represents a value as text.
template<class T> class TOVStreamTraitsASCII
{
public:
    // Each type that can be written as text has a specialisation of this function.
    static void Write(ITOVStream& /*oStream*/, const T& /*oValue*/)
    {
        static_assert(sizeof(T) == 0, "no text rendering for this type: specialise TOVStreamTraitsASCII<T>::Write");
    }

    // Logs an error and throws, with the value unchanged, as there is no parser.
    static void Read(ITOVStream& /*oStream*/, T& /*oValue*/)
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x11, eSeverityError, "%s",
                       "TOVStreamTraitsASCII::Read() Unsupported type.");
        TOV_ASSERT(false);
    }

    // Writes the characters of a text, if it has any. Specialisations of Write call it.
    static void WriteText(ITOVStream& oStream, const CTOVStringA& oText)
    {
        if (oText.GetLength() > 0)
            oStream.Write(oText.GetString(), static_cast<unsigned long long>(oText.GetLength()));
    }
};

// Writes the decimal digits.
template<> inline void TOVStreamTraitsASCII<int>::Write(ITOVStream& oStream, const int& nValue)
{
    CTOVStringA oText;
    oText.Format("%d", nValue);
    WriteText(oStream, oText);
}
