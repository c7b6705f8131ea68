// What tovcatalog asks of the system, and the processes of the test host.
#include "Faults/Posix/TOVSystemScenarios.h"

#include "Support/TOVChildProcess.h"
#include "Support/TOVTestSupport.h"

#include <CatalogFile.h>
#include <TestHost/TOVTestSystem.h>
#include <TreeWalker.h>
#include <UnfinishedCatalog.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
// A folder with two files and two folders of one file each; the name of one can be mistaken for a pattern. It is made
// once.
const std::string& Tree()
{
    static const std::string s_sTree = [] {
        const std::string sTree = FaultFile("tree");
        for (const char* szFolder : {"", "/below", "/a*b"})
            std::filesystem::create_directory(sTree + szFolder);
        for (const char* szFile : {"/one", "/two", "/below/three", "/a*b/four"})
            WriteWholeFile(sTree + szFile, "text");
        return sTree;
    }();
    return s_sTree;
}

CTOVArray<sFileRecord> FilesOf(sCatalog& oCatalog, tUnreadable& aUnreadable)
{
    const std::atomic<bool> bStop(false);
    CTOVArray<sFileRecord> aFiles;
    CTreeWalker oWalker(oCatalog.aPatterns, aFiles, *oCatalog.pPaths, aUnreadable, bStop);
    oWalker.KeepTimes();
    oWalker.Walk(0, Tree().c_str());
    return aFiles;
}

// Has the folder's files.
sCatalog FullCatalog()
{
    const CFaultPause oPause;
    sCatalog oCatalog;
    tUnreadable aUnreadable;
    oCatalog.aDirectories.Add(Tree());
    oCatalog.aFiles = FilesOf(oCatalog, aUnreadable);
    FAULT_EXPECT(oCatalog.aFiles.GetSize() == 4 && aUnreadable.IsEmpty());
    return oCatalog;
}

// Has the folder, and no files.
sCatalog EmptyCatalog()
{
    sCatalog oCatalog;
    oCatalog.aDirectories.Add(Tree());
    return oCatalog;
}

bool Save(const CTOVStringA& oName, sCatalog& oCatalog)
{
    try
    {
        SaveCatalog(oName, oCatalog);
    }
    catch (const CCatalogError&)
    {
        return false;
    }
    return true;
}

// Whether the folder of files has an unfinished catalogue; removes it.
bool RemoveUnfinished(const CTOVStringA& oCatalog)
{
    const std::filesystem::path oFolder = std::filesystem::path(~oCatalog).parent_path();
    bool bFound = false;
    for (int n = 1; n <= 3; ++n)
        bFound |= std::filesystem::remove(oFolder / ("tovcatalog-" + std::to_string(n) + ".new"));
    return bFound;
}

constexpr char WORKER[] = "TOV_TEST_WORKER";

// Two connected sockets, with which nothing fails. The first is the parent's.
class CSocketPair
{
public:
    CSocketPair()
    {
        const CFaultPause oPause;
        FAULT_EXPECT(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_aSockets) == 0);
    }
    ~CSocketPair()
    {
        Close(m_aSockets[0]);
        Close(m_aSockets[1]);
    }
    CSocketPair(const CSocketPair&) = delete;
    CSocketPair& operator=(const CSocketPair&) = delete;

    // Lets this process seem to be a worker. Returns the number that the link's own socket will have: the next one.
    int OfferToWorker() const
    {
        const CFaultPause oPause;
        const int nInherited = ::dup(m_aSockets[1]);
        ::setenv(WORKER, std::to_string(nInherited).c_str(), 1);
        const int nNext = ::dup(m_aSockets[1]);
        ::close(nNext);
        return nNext;
    }

    bool Hears(const std::string& sText) const
    {
        const CFaultPause oPause;
        std::string sHeard(sText.size(), ' ');
        return ::read(m_aSockets[0], &sHeard[0], sHeard.size()) == static_cast<ssize_t>(sText.size()) &&
               sHeard == sText;
    }

    void Say(const std::string& sText) const
    {
        const CFaultPause oPause;
        FAULT_EXPECT(::write(m_aSockets[0], sText.data(), sText.size()) == static_cast<ssize_t>(sText.size()));
    }

    static void Close(int nSocket)
    {
        const CFaultPause oPause;
        ::close(nSocket);
    }

private:
    int m_aSockets[2];
};

TOV_CHILD(SaysSomething)
{
    std::fputs("output", stdout);
    std::fputs("errors", stderr);
}

// Starts this program as a worker that says something, and follows it to its end.
void FollowWorker()
{
    std::string aArguments[] = {PathOfThisProgram(), "--tov-child", "SaysSomething"};
    char* aszArguments[] = {&aArguments[0][0], &aArguments[1][0], &aArguments[2][0], nullptr};
    const CStrikes oStrikes;
    const std::unique_ptr<TOVTestHost::ITOVWorkerLink> pLink = TOVTestHost::StartWorker(aszArguments);
    char cRead = 0;
    FAULT_EXPECT(!pLink->Read(&cRead, 1)); // it has written nothing to the link, which ends with it
    const TOVTestHost::sWorkerEnd oEnd = pLink->WaitForEnd();
    const std::string sOutput = pLink->TakeOutput(TOVTestHost::eStreamOutput);
    const std::string sErrors = pLink->TakeOutput(TOVTestHost::eStreamErrors);
    FAULT_EXPECT(oEnd.sHow.empty() && !oEnd.bByUser);
    FAULT_EXPECT((sOutput == "output" && sErrors == "errors") || oStrikes.Of({"pread", "fcntl"}));
}
} // namespace

tFaultScenarios SystemProgramScenarios()
{
    return {
        {"CatalogIsWrittenWhole",
         [] {
             const CTOVStringA oName = FaultFile("files.cat");
             sCatalog oEmpty = EmptyCatalog();
             sCatalog oFull = FullCatalog();
             {
                 const CFaultPause oPause;
                 FAULT_EXPECT(Save(oName, oEmpty));
             }
             const CStrikes oStrikes;
             const bool bSaved = Save(oName, oFull);
             FAULT_EXPECT(bSaved || oStrikes.Any());
             const CFaultPause oPause;
             FAULT_EXPECT(LoadCatalog(oName).aFiles.GetSize() == (bSaved ? 4 : 0));
             // What cannot be removed, or is not known to be this run's own, remains for the next run.
             FAULT_EXPECT(!RemoveUnfinished(oName) || oStrikes.Of({"unlink", "fstat", "lstat", "flock (EWOULDBLOCK)"}));
         }},
        {"CatalogFindsAnUnfinishedOne",
         [] {
             const CTOVStringA oName = FaultFile("beside.cat");
             sCatalog oFull = FullCatalog();
             {
                 const CFaultPause oPause;
                 WriteWholeFile(FaultFile("tovcatalog-1.new"), "TOVCATLG and more");
             }
             const CStrikes oStrikes;
             FAULT_EXPECT(Save(oName, oFull) || oStrikes.Any());
             const CFaultPause oPause;
             FAULT_EXPECT(!RemoveUnfinished(oName) || oStrikes.Any());
         }},
        {"CatalogIsRead",
         [] {
             const CTOVStringA oName = FaultFile("read.cat");
             {
                 const CFaultPause oPause;
                 sCatalog oFull = FullCatalog();
                 FAULT_EXPECT(Save(oName, oFull));
             }
             const CStrikes oStrikes;
             try
             {
                 FAULT_EXPECT(LoadCatalog(oName).aFiles.GetSize() == 4);
             }
             catch (const CCatalogError&)
             {
                 FAULT_EXPECT(oStrikes.Any());
             }
         }},
        {"CatalogFindsFiles",
         [] {
             sCatalog oCatalog = EmptyCatalog();
             tUnreadable aUnreadable;
             const CStrikes oStrikes;
             const long lFound = FilesOf(oCatalog, aUnreadable).GetSize();
             FAULT_EXPECT(lFound == 4 || !aUnreadable.IsEmpty());
             FAULT_EXPECT(aUnreadable.IsEmpty() || oStrikes.Any());
         }},
        {"CatalogReadsAFile",
         [] {
             const std::string sFile = Tree() + "/one";
             const CStrikes oStrikes;
             CInputFile oFile(sFile.c_str());
             FAULT_EXPECT(oFile.IsOpen() == !oStrikes.Of({"open", "fstat"}));
             char acBytes[8] = "";
             const unsigned long ulRead = oFile.IsOpen() ? oFile.Read(acBytes, sizeof acBytes) : 4;
             FAULT_EXPECT(ulRead == (oStrikes.Of({"read"}) ? 0 : 4) && oFile.HasFailed() == oStrikes.Of({"read"}));
         }},
        {"WorkerIsFollowed",
         [] {
             const CStrikes oStrikes;
             try
             {
                 FollowWorker();
             }
             catch (const std::runtime_error&)
             {
                 FAULT_EXPECT(oStrikes.Of({"socketpair", "memfd_create", "fcntl", "fork"}));
             }
         }},
        {"WorkerHasItsParent",
         [] {
             CSocketPair oSockets;
             const int nOfLink = oSockets.OfferToWorker();
             const CStrikes oStrikes;
             const std::unique_ptr<TOVTestHost::ITOVProcessLink> pLink = TOVTestHost::FindParent();
             FAULT_EXPECT((pLink != nullptr) == !oStrikes.Of({"fcntl"}) && std::getenv(WORKER) == nullptr);
             if (pLink == nullptr)
                 return;
             const bool bWritten = pLink->Write("text", 4);
             FAULT_EXPECT(bWritten == !oStrikes.Of({"send"}) && (!bWritten || oSockets.Hears("text")));
             oSockets.Say("back");
             char acBytes[4] = "";
             FAULT_EXPECT(pLink->Read(acBytes, 4) == !oStrikes.Of({"recv"}));
             oSockets.Close(nOfLink); // the link leaves it open
         }},
    };
}
