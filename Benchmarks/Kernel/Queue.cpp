// Rows of the queue between threads.

#include <Bench.h>
#include <Contention.h>
#include <Inputs.h>

#include <TOVContainers/TOVSafeQueue.h>
#include <TOVString/TOVStringA.h>

namespace
{
// What the strings of a peer do: each passes a text of its own. Copies of one CTOVStringA must not be used by two
// threads.
using tText = std::string;
} // namespace

BENCH("queue/1thread int", KERNEL)
{
    MeasureQueueAlone<CTOVSafeQueue<int>>(oState, 1);
}

BENCH("queue/1thread string", KERNEL)
{
    MeasureQueueAlone<CTOVSafeQueue<tText>>(oState, tText(Inputs::TEXT24));
}

BENCH_ONCE("queue/1P1C int", KERNEL)
{
    MeasureQueue<CTOVSafeQueue<int>>(oState, 1, 1);
}

BENCH_ONCE("queue/1P1C string", KERNEL)
{
    MeasureQueue<CTOVSafeQueue<tText>>(oState, 1, tText(Inputs::TEXT24));
}

BENCH_ONCE("queue/2P2C int", KERNEL)
{
    MeasureQueue<CTOVSafeQueue<int>>(oState, 2, 1);
}
