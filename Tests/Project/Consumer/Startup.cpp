// Uses the library before main begins and after it has ended, and runs a thread in between.
#include <TOVKernel.h>

#include <cstdio>

static void Tell(const char* szWhen)
{
    std::printf("%s: %ld classes, %ld suites, %s\n", szWhen, CTOVClassServer::Instance().GetNumClasses(),
                TOVTest::CTOVTestSuiteFactory::GetNumSuites(),
                CTOVClassServer::Instance().HasClass("CTOVVirtualFileSystem") ? "files" : "no files");
}

struct sWitness
{
    sWitness() { Tell("first"); }
    ~sWitness() { Tell("last"); }
};
static const sWitness s_oWitness;

class CWorker : public CTOVThread
{
public:
    ~CWorker() override { Stop(true, 60000); }

protected:
    unsigned long Run() override
    {
        Tell("thread");
        return 0;
    }
};

int main()
{
    CWorker oWorker;
    oWorker.Start(0, TOVPlatform::TOVThread::eThreadPriorityNormal);
    return 0;
}
