// Rows of GLib.

#include <Bench.h>
#include <Contention.h>
#include <Inputs.h>
#include <LockedQueue.h>

#include <cstring>
#include <glib.h>

using namespace Inputs;

namespace
{
void Construct(benchmark::State& oState, const char* szText)
{
    szText = Hide(szText);
    for (auto _ : oState)
    {
        char* const szString = g_strdup(szText);
        Use(szString);
        g_free(szString);
    }
}

GArray* NewNumbers(int nCount)
{
    const std::vector<int> aNumbers = RandomNumbers(nCount);
    GArray* const pArray = g_array_new(FALSE, FALSE, sizeof(int));
    g_array_append_vals(pArray, aNumbers.data(), static_cast<guint>(nCount));
    return pArray;
}

struct sRecursiveLock
{
    sRecursiveLock() { g_rec_mutex_init(&oMutex); }
    ~sRecursiveLock() { g_rec_mutex_clear(&oMutex); }
    void Lock() { g_rec_mutex_lock(&oMutex); }
    void Unlock() { g_rec_mutex_unlock(&oMutex); }

    GRecMutex oMutex;
};

// The numbers themselves are passed in the pointers, which must not be null.
class CAsyncQueue
{
public:
    CAsyncQueue() : m_pQueue(g_async_queue_new()) {}
    ~CAsyncQueue() { g_async_queue_unref(m_pQueue); }
    CAsyncQueue(const CAsyncQueue&) = delete;
    CAsyncQueue& operator=(const CAsyncQueue&) = delete;

    void Enqueue(int nElement) { g_async_queue_push(m_pQueue, GINT_TO_POINTER(nElement)); }
    int Dequeue() { return GPOINTER_TO_INT(g_async_queue_pop(m_pQueue)); }

private:
    GAsyncQueue* m_pQueue;
};

gpointer DoNothing(gpointer)
{
    return nullptr;
}

gint CompareNumbers(gconstpointer pFirst, gconstpointer pSecond)
{
    const int nFirst = *static_cast<const int*>(pFirst);
    const int nSecond = *static_cast<const int*>(pSecond);
    return nFirst < nSecond ? -1 : (nFirst > nSecond ? 1 : 0);
}
} // namespace

BENCH("string/construct3", "g_strdup")
{
    Construct(oState, TEXT3);
}

BENCH("string/construct24", "g_strdup")
{
    Construct(oState, TEXT24);
}

BENCH("string/construct200", "g_strdup")
{
    Construct(oState, Text200().c_str());
}

BENCH("string/append1x1000", "GString")
{
    for (auto _ : oState)
    {
        GString* const pString = g_string_new(nullptr);
        for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
            g_string_append_c(pString, 'x');
        Use(pString);
        g_string_free(pString, TRUE);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

BENCH("string/concat24+24", "g_strconcat")
{
    const char* const szFirst = Hide(TEXT24);
    const char* const szSecond = Hide(OTHER24);
    for (auto _ : oState)
    {
        char* const szString = g_strconcat(szFirst, szSecond, nullptr);
        Use(szString);
        g_free(szString);
    }
}

BENCH("string/split1K", "g_strsplit")
{
    const std::string sText = TextToSplit(1024);
    const char szSeparator[] = {SEPARATOR, '\0'};
    for (auto _ : oState)
    {
        char** const pParts = g_strsplit(sText.c_str(), szSeparator, -1);
        Use(pParts);
        g_strfreev(pParts);
    }
}

BENCH("string/icompare24", "g_ascii_strcasecmp")
{
    const char* const szFirst = Hide(TEXT24);
    const char* const szSecond = Hide(UPPER24);
    for (auto _ : oState)
        Use(g_ascii_strcasecmp(szFirst, szSecond));
}

BENCH("string/doubleparse", "g_ascii_strtod")
{
    const char* const szNumber = Hide(NUMBER_DOUBLE);
    for (auto _ : oState)
        Use(g_ascii_strtod(szNumber, nullptr));
}

BENCH("string/format_sds", "g_strdup_printf")
{
    for (auto _ : oState)
    {
        char* const szString =
            g_strdup_printf("%s has %d parts of %s", Hide("catalogue"), Hide(4711), Hide("the library"));
        Use(szString);
        g_free(szString);
    }
}

BENCH("string/begins+ends", "g_str_has_prefix")
{
    const std::string sText = TextWithEnds();
    const char* const szText = Hide(sText.c_str());
    for (auto _ : oState)
    {
        Use(g_str_has_prefix(szText, PREFIX8));
        Use(g_str_has_suffix(szText, SUFFIX8));
    }
}

BENCH("path/append", "g_build_filename")
{
    for (auto _ : oState)
    {
        char* const szPath = g_build_filename(Hide(FOLDER), Hide(FILE_NAME), nullptr);
        Use(szPath);
        g_free(szPath);
    }
}

BENCH("path/parent", "g_path_get_dirname")
{
    const char* const szPath = Hide(PATH6);
    for (auto _ : oState)
    {
        char* const szParent = g_path_get_dirname(szPath);
        Use(szParent);
        g_free(szParent);
    }
}

BENCH("array/push1M", "GArray")
{
    for (auto _ : oState)
    {
        GArray* const pArray = g_array_new(FALSE, FALSE, sizeof(int));
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            g_array_append_val(pArray, nNumber);
        Use(pArray);
        g_array_free(pArray, TRUE);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/randsum1M", "GArray")
{
    GArray* const pArray = NewNumbers(MILLION);
    const std::vector<int> aIndexes = RandomIndexes(MILLION);
    for (auto _ : oState)
    {
        Touch(*pArray);
        unsigned int uSum = 0;
        for (const int nIndex : aIndexes)
            uSum += static_cast<unsigned int>(g_array_index(pArray, int, nIndex));
        Use(uSum);
    }
    g_array_free(pArray, TRUE);
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/sort100K", "g_array_sort")
{
    const std::vector<int> aNumbers = RandomNumbers(HUNDRED_THOUSAND);
    GArray* const pArray = g_array_new(FALSE, FALSE, sizeof(int));
    for (auto _ : oState)
    {
        g_array_set_size(pArray, 0);
        g_array_append_vals(pArray, aNumbers.data(), HUNDRED_THOUSAND);
        g_array_sort(pArray, &CompareNumbers);
    }
    g_array_free(pArray, TRUE);
    oState.SetItemsProcessed(oState.iterations() * HUNDRED_THOUSAND);
}

BENCH("queue/1thread int", "GAsyncQueue")
{
    MeasureQueueAlone<CAsyncQueue>(oState, 1);
}

BENCH_ONCE("queue/1P1C int", "GAsyncQueue")
{
    MeasureQueue<CAsyncQueue>(oState, 1, 1);
}

BENCH_ONCE("queue/2P2C int", "GAsyncQueue")
{
    MeasureQueue<CAsyncQueue>(oState, 2, 1);
}

BENCH("sync/lock+unlock", "GRecMutex")
{
    sRecursiveLock oLock;
    for (auto _ : oState)
    {
        oLock.Lock();
        oLock.Unlock();
    }
}

BENCH_ONCE("sync/contended lock, 4 threads", "GRecMutex")
{
    MeasureContendedLock<sRecursiveLock>(oState);
}

BENCH_WALL("sync/thread create+join", "GThread")
{
    for (auto _ : oState)
        g_thread_join(g_thread_new("benchmark", &DoNothing, nullptr));
}

BENCH("timer/read", "g_get_monotonic_time")
{
    for (auto _ : oState)
        Use(static_cast<double>(g_get_monotonic_time()) * 1e-6);
}

BENCH("memory/malloc+free 32B", "g_malloc")
{
    for (auto _ : oState)
    {
        void* const pMemory = g_malloc(Hide(32));
        Use(pMemory);
        g_free(pMemory);
    }
}

BENCH("registry/lookup200", "GHashTable")
{
    const std::vector<std::string> aNames = ClassNames(NUM_CLASSES);
    GHashTable* const pTable = g_hash_table_new(&g_str_hash, &g_str_equal);
    for (const std::string& sName : aNames)
        g_hash_table_insert(pTable, const_cast<char*>(sName.c_str()), const_cast<std::string*>(&sName));
    std::size_t nName = 0;
    for (auto _ : oState)
    {
        Use(g_hash_table_lookup(pTable, aNames[nName].c_str()));
        nName = (nName + 1) % NUM_CLASSES;
    }
    g_hash_table_destroy(pTable);
}
