#include <TOVPlatform/Backend/TOVSystem.h>

#include <Posix/Base/TOVClock.h>
#include <Posix/Diagnostics/TOVTextOutput.h>
#include <Posix/Diagnostics/TOVUnheardCheck.h>
#include <Posix/Waits/TOVFork.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <unistd.h>

namespace TOVPlatform
{
using namespace TOVPosix;

namespace Backend
{
namespace
{
// A file descriptor, or -1, that is closed at the end of its scope.
class CDescriptor
{
public:
    explicit CDescriptor(int nDescriptor) : m_nDescriptor(nDescriptor) {}

    ~CDescriptor()
    {
        if (m_nDescriptor >= 0)
            ::close(m_nDescriptor);
    }

    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    operator int() const { return m_nDescriptor; }

private:
    const int m_nDescriptor;
};

// Returns the next character, 0 at the end of the input.
char ReadCharacter(int nDescriptor)
{
    char cRead = '\0';
    ssize_t nRead = 0;
    do
        nRead = ::read(nDescriptor, &cRead, 1);
    while (nRead < 0 && errno == EINTR);
    return nRead == 1 ? cRead : '\0';
}

// Reads one line and returns its first character, which is a line end for an empty line and 0 at the end of the input.
char ReadAnswer(int nDescriptor)
{
    const char cFirst = ReadCharacter(nDescriptor);
    for (char cLast = cFirst; cLast != '\n' && cLast != '\0';)
        cLast = ReadCharacter(nDescriptor);
    return cFirst;
}

// The main program, of which the loader reports first.
class CMainProgram
{
public:
    CMainProgram() : m_oInfo()
    {
        ::dl_iterate_phdr(
            [](dl_phdr_info* pProgram, std::size_t, void* pInfo) {
                *static_cast<dl_phdr_info*>(pInfo) = *pProgram;
                return 1;
            },
            &m_oInfo);
    }

    bool Holds(const void* pAddress) const
    {
        const ElfW(Addr) nAddress = reinterpret_cast<ElfW(Addr)>(pAddress) - m_oInfo.dlpi_addr;
        return std::any_of(begin(), end(), [nAddress](const tSegment& oSegment) {
            return oSegment.p_type == PT_LOAD && nAddress - oSegment.p_vaddr < oSegment.p_memsz;
        });
    }

    // False if the program certainly exports no function of this name. Reads the filter in front of the program's own
    // hash table, the GNU form of which sets two bits for each name. (Bloom, "Space/Time Trade-offs in Hash Coding",
    // 1970.)
    bool MayExport(const char* szFunction) const
    {
        const sHashTable* const pTable = FindHashTable();
        if (pTable == nullptr)
            return true;

        std::uint32_t nHash = 5381;
        for (; *szFunction != '\0'; ++szFunction)
            nHash = nHash * 33 + static_cast<unsigned char>(*szFunction);

        constexpr std::uint32_t WORD_BITS = 8 * sizeof(ElfW(Addr));
        const auto* const pFilter = reinterpret_cast<const ElfW(Addr)*>(pTable + 1);
        const ElfW(Addr) nWord = pFilter[nHash / WORD_BITS & (pTable->nFilterWords - 1)];
        return (nWord >> nHash % WORD_BITS & nWord >> (nHash >> pTable->nShift) % WORD_BITS & 1) != 0;
    }

private:
    using tSegment = ElfW(Phdr);

    struct sHashTable
    {
        std::uint32_t nBuckets;
        std::uint32_t nFirstName;
        std::uint32_t nFilterWords; // a power of 2
        std::uint32_t nShift;
    };

    const tSegment* begin() const { return m_oInfo.dlpi_phdr; }
    const tSegment* end() const { return m_oInfo.dlpi_phdr + m_oInfo.dlpi_phnum; }

    // Returns null if the program has another kind of table.
    const sHashTable* FindHashTable() const
    {
        const auto* const pDynamic =
            std::find_if(begin(), end(), [](const tSegment& oSegment) { return oSegment.p_type == PT_DYNAMIC; });
        if (pDynamic == end())
            return nullptr;

        const auto* pEntry = reinterpret_cast<const ElfW(Dyn)*>(m_oInfo.dlpi_addr + pDynamic->p_vaddr);
        while (pEntry->d_tag != DT_NULL && pEntry->d_tag != DT_GNU_HASH)
            ++pEntry;
        if (pEntry->d_tag == DT_NULL)
            return nullptr;

        // Some loaders have added the base already.
        const ElfW(Addr) nTable = pEntry->d_un.d_ptr;
        return reinterpret_cast<const sHashTable*>(nTable < m_oInfo.dlpi_addr ? m_oInfo.dlpi_addr + nTable : nTable);
    }

    dl_phdr_info m_oInfo;
};

void Show(int nDescriptor, const char* szText, const char* szCaption)
{
    WriteText(nDescriptor, "\n");
    WriteText(nDescriptor, szCaption);
    WriteText(nDescriptor, "\n");
    WriteText(nDescriptor, szText);
    WriteText(nDescriptor, "\n");
}
} // namespace

void PrepareProcess()
{
    NoticeForks(&AskForDebuggerAgain);
}

// The system has no channel of its own for debugger text.
void OutputDebugText(const char* szText)
{
    if (ShowsDebugText())
        WriteText(STDERR_FILENO, szText);
}

bool HasDebugOutput()
{
    return ShowsDebugText();
}

void ThrowUnheardCheck(const char* szExpression, const char* szFile, tDword dwLine)
{
    ThrowUnheard(szExpression, szFile, dwLine);
}

bool IsDebuggerAttached()
{
    if (!CanHaveDebugger())
        return false;

    const CDescriptor oStatus(::open("/proc/self/status", O_RDONLY | O_CLOEXEC));
    if (oStatus < 0)
        return false;

    char szStatus[2048];
    const ssize_t nRead = ::read(oStatus, szStatus, sizeof(szStatus) - 1);
    szStatus[nRead > 0 ? nRead : 0] = '\0';
    const char szKey[] = "TracerPid:\t";
    const char* szTracer = std::strstr(szStatus, szKey);
    return szTracer != nullptr && szTracer[sizeof(szKey) - 1] != '0';
}

eAnswer AskYesNoCancel(const char* szText, const char* szCaption)
{
    const CDescriptor oTerminal(::open("/dev/tty", O_RDWR | O_CLOEXEC));
    if (oTerminal < 0)
        return eAnswerNone;

    Show(oTerminal, szText, szCaption);
    for (;;)
    {
        WriteText(oTerminal, "[y]es, [n]o, [c]ancel? ");
        switch (ReadAnswer(oTerminal))
        {
        case 'y':
        case 'Y':
            return eAnswerYes;
        case 'n':
        case 'N':
            return eAnswerNo;
        case 'c':
        case 'C':
            return eAnswerCancel;
        case '\0':
            return eAnswerNone;
        default:
            break;
        }
    }
}

// Without a terminal the text goes to standard error, and the function returns at once.
void ShowError(const char* szText, const char* szCaption)
{
    const CDescriptor oTerminal(::open("/dev/tty", O_RDWR | O_CLOEXEC));
    if (oTerminal < 0)
    {
        Show(STDERR_FILENO, szText, szCaption);
        return;
    }

    Show(oTerminal, szText, szCaption);
    WriteText(oTerminal, "[Enter] ");
    ReadAnswer(oTerminal);
}

void EndProcess(int nExitCode)
{
    ::_exit(nExitCode);
}

void* FindInMainProgram(const char* szFunction)
{
    // The loader looks through all modules, which takes several microseconds at the start of each program.
    const CMainProgram oProgram;
    if (!oProgram.MayExport(szFunction))
        return nullptr;

    // The program comes first in the global scope, so that its own function hides all others of the name.
    void* const pFunction = ::dlsym(RTLD_DEFAULT, szFunction);
    if (pFunction == nullptr || !oProgram.Holds(pFunction))
        return nullptr;

    // A program that only takes the address of a library's function can have an entry without a definition for it. This
    // is asked last, since the loader reads all names of the module for it.
    Dl_info oInfo;
    void* pSymbol = nullptr;
    if (::dladdr1(pFunction, &oInfo, &pSymbol, RTLD_DL_SYMENT) == 0 || pSymbol == nullptr)
        return nullptr;
    return static_cast<const ElfW(Sym)*>(pSymbol)->st_shndx != SHN_UNDEF ? pFunction : nullptr;
}

sReading ReadPerformanceCounter()
{
    const long long nNow = Now();
    return {nNow >= 0, nNow};
}

// The clock counts nanoseconds, however coarse it is. That there is no such clock shows here, too.
sReading ReadPerformanceFrequency()
{
    timespec oResolution;
    return {::clock_getres(CLOCK_MONOTONIC, &oResolution) == 0, NANOSECONDS_PER_SECOND};
}

tDword ReadMilliseconds()
{
    return static_cast<tDword>(Now() / NANOSECONDS_PER_MILLISECOND);
}
} // namespace Backend
} // namespace TOVPlatform
