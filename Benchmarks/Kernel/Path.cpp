// Rows of paths.

#include <Bench.h>
#include <Inputs.h>

#include <Path/TOVPath.h>

using namespace Inputs;

namespace
{
long CountComponents(const CTOVPath& oPath)
{
    CTOVStringA oComponent;
    long lPosition = 0;
    long lTotal = 0;
    for (bool bFound = oPath.GetFirstComponent(oComponent, lPosition); bFound;
         bFound = oPath.GetNextComponent(oComponent, lPosition))
    {
        lTotal += oComponent.GetLength();
    }
    return lTotal;
}

// Two paths with the same text in blocks of their own.
struct sEqualPaths
{
    CTOVPath oFirst = CTOVPath(PATH6);
    CTOVPath oSecond = CTOVPath(PATH6);
};
} // namespace

BENCH("path/append", KERNEL)
{
    const CTOVPath oFolder(FOLDER);
    const char* const szName = Hide(FILE_NAME);
    for (auto _ : oState)
    {
        CTOVPath oPath(oFolder);
        oPath += szName;
        Touch(oPath);
    }
}

BENCH("path/append (Concat)", KERNEL)
{
    const CTOVPath oFolder(FOLDER);
    const CTOVPath oName(FILE_NAME);
    for (auto _ : oState)
    {
        CTOVPath oPath(oFolder.Concat(oName));
        Touch(oPath);
    }
}

BENCH("path/parent", KERNEL)
{
    CTOVPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        CTOVPath oParent(oPath.Parent());
        Touch(oParent);
    }
}

BENCH("path/extension", KERNEL)
{
    CTOVPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        CTOVStringA oExtension(oPath.GetExtension());
        Touch(oExtension);
    }
}

BENCH("path/iterate6", KERNEL)
{
    CTOVPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        Use(CountComponents(oPath));
    }
}

BENCH("path/parse+iterate6", KERNEL)
{
    const char* const szPath = Hide(PATH6);
    for (auto _ : oState)
    {
        const CTOVPath oPath(szPath);
        Use(CountComponents(oPath));
    }
}

BENCH("path/parse", KERNEL)
{
    CTOVStringA oText(PATH6);
    for (auto _ : oState)
    {
        Touch(oText);
        CTOVPath oPath(oText);
        Touch(oPath);
    }
}

BENCH("path/parse (from char*)", KERNEL)
{
    const char* const szPath = Hide(PATH6);
    for (auto _ : oState)
    {
        CTOVPath oPath(szPath);
        Touch(oPath);
    }
}

BENCH("path/compare", KERNEL)
{
    sEqualPaths oPaths;
    for (auto _ : oState)
    {
        Touch(oPaths);
        Use(oPaths.oFirst.AsString() == oPaths.oSecond.AsString());
    }
}

BENCH("path/compare (Compare)", KERNEL)
{
    sEqualPaths oPaths;
    for (auto _ : oState)
    {
        Touch(oPaths);
        Use(oPaths.oFirst.Compare(oPaths.oSecond));
    }
}

BENCH("path/compare (IsSame)", KERNEL)
{
    sEqualPaths oPaths;
    for (auto _ : oState)
    {
        Touch(oPaths);
        Use(oPaths.oFirst.IsSame(oPaths.oSecond, 0, false, false));
    }
}
