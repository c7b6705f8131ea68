// Which handler gets what the streams throw.
#include "TOVStream/TOVStreamInstruments.h"

#include <functional>
#include <typeinfo>

namespace
{
typedef ITOVStream::StreamException StreamException;
typedef CTOVFileStream::FileStreamException FileStreamException;

// Which handlers get it, in this order: the interface's, the file stream's, the reader's, the writer's.
std::vector<bool> HandlersOf(const std::function<void()>& fnStatement)
{
    return {IsCaughtAs<StreamException>(fnStatement), IsCaughtAs<FileStreamException>(fnStatement),
            IsCaughtAs<ReadFileStreamException>(fnStatement), IsCaughtAs<WriteFileStreamException>(fnStatement)};
}
} // namespace

TEST(TOVStreamExceptionHandlerTest, GetsAFileStreamsExceptionByItsOwnTypeAlone)
{
    CTempFolder oFolder;
    WriteWholeFile(oFolder.File("stream.bin"), "ab");
    CTOVFile oFile;
    oFile.Open(oFolder.File("stream.bin").c_str(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
    CTOVFileStream oStream(&oFile, MODE_LOADING, 0);
    const auto fnWrite = [&oStream] { oStream.Write("x", 1); };

    EXPECT_EQ((std::vector<bool>{false, true, false, false}), HandlersOf(fnWrite));
    EXPECT_TRUE(IsCaughtAs<CTOVException>(fnWrite));
}

TEST(TOVStreamExceptionHandlerTest, GetsAReadersExceptionByItsOwnTypeAlone)
{
    CTempFolder oFolder;
    const std::string sMissing = oFolder.File("missing");
    const auto fnOpen = [&sMissing] { CTOVReadFileStream oStream(sMissing.c_str(), 0); };

    EXPECT_EQ((std::vector<bool>{false, false, true, false}), HandlersOf(fnOpen));
    EXPECT_FALSE(IsCaughtAs<ITOVFile::Exception>(fnOpen));
    EXPECT_TRUE(IsCaughtAs<CTOVException>(fnOpen));
}

TEST(TOVStreamExceptionHandlerTest, GetsAWritersExceptionByItsOwnTypeAlone)
{
    CTempFolder oFolder;
    CTOVWriteFileStream oStream(oFolder.File("stream.bin").c_str(), false, 0);
    const auto fnSeek = [&oStream] { oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart); };

    EXPECT_EQ((std::vector<bool>{false, false, false, true}), HandlersOf(fnSeek));
    EXPECT_FALSE(IsCaughtAs<ITOVFile::Exception>(fnSeek));
    EXPECT_TRUE(IsCaughtAs<CTOVException>(fnSeek));
}

TEST(TOVStreamExceptionHandlerTest, GetsAnApplicationsStreamException)
{
    const auto fnThrow = [] { throw StreamException(7); };

    EXPECT_EQ((std::vector<bool>{true, false, false, false}), HandlersOf(fnThrow));
    EXPECT_TRUE(IsCaughtAs<CTOVException>(fnThrow));
}

TEST(TOVStreamExceptionHandlerTest, GetsAFailedCheckByItsOwnTypeAndByTheRoot)
{
    const auto fnConstruct = [] { CTOVFileStream oStream(nullptr, MODE_LOADING, 0); };

    EXPECT_EQ((std::vector<bool>{false, false, false, false}), HandlersOf(fnConstruct));
    EXPECT_TRUE(IsCaughtAs<TOVDebug::CTOVAssertException>(fnConstruct));
    EXPECT_TRUE(IsCaughtAs<CTOVException>(fnConstruct));
}

TEST(TOVStreamExceptionHandlerTest, KnowsTheThrownTypeBehindTheRoot)
{
    CTempFolder oFolder;
    bool bCaught = false;
    try
    {
        CTOVReadFileStream oStream(oFolder.File("missing").c_str(), 0);
    }
    catch (CTOVException& oException)
    {
        bCaught = true;
        EXPECT_TRUE(typeid(ReadFileStreamException) == typeid(oException));
        EXPECT_EQ(CTOVException::eClassStream, oException.GetClass());
        EXPECT_EQ(0u, oException.GetCode());
    }
    EXPECT_TRUE(bCaught);
}
