// Internal to the folder: a path that can be appended to without anybody else seeing it.
#pragma once

#include <Path/TOVPath.h>

// The same text in a block of its own. A plain copy shares the block, and where the block has room, what is appended to
// the copy is written behind the text of all sharers.
inline CTOVPath MakeOwnPath(const CTOVStringA& oText)
{
    CTOVStringA oOwnText;
    if (!oText.IsEmpty())
        oOwnText.Copy(oText.GetString(), static_cast<int>(oText.GetLength()));
    return oOwnText;
}
