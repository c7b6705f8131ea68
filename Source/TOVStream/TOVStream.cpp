#include <TOVStream/TOVStream.h>

ITOVStream::StreamException::StreamException(unsigned short usErrorCode) : CTOVException(eClassStream, usErrorCode)
{
}

ITOVStream::StreamException::StreamException(const StreamException& oOther) = default;
ITOVStream::StreamException& ITOVStream::StreamException::operator=(const StreamException& oOther) = default;

ITOVStream::ITOVStream() = default;
ITOVStream::ITOVStream(const ITOVStream& oOther) = default;
ITOVStream& ITOVStream::operator=(const ITOVStream& oOther) = default;

bool ITOVStream::IsLoading() const
{
    return (GetMode() & eStreamModeLoading) != 0;
}

bool ITOVStream::IsSaving() const
{
    return (GetMode() & eStreamModeSaving) != 0;
}

bool ITOVStream::IsStoring() const
{
    return IsSaving();
}
