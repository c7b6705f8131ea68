#include <File/TOVFileInterface.h>

ITOVFile::Exception::Exception(unsigned short usErrorCode) : CTOVException(eClassFile, usErrorCode)
{
}

ITOVFile::Exception::Exception(const Exception& oOther) = default;

ITOVFile::Exception& ITOVFile::Exception::operator=(const Exception& oOther) = default;

ITOVFile::ITOVFile() = default;

ITOVFile::ITOVFile(const ITOVFile& oOther) = default;

ITOVFile& ITOVFile::operator=(const ITOVFile& oOther) = default;
