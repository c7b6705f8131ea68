// Internal to the folder. Declares MakeOwnPath, which makes a path that shares its text with no other object.
#pragma once

#include <Path/TOVPath.h>

// Returns a path with the same text in its own block. A plain copy shares the block; if the block has room, appending
// to the copy writes after the text of every object that shares it.
inline CTOVPath MakeOwnPath(const CTOVStringA& oText)
{
    CTOVStringA oOwnText;
    if (!oText.IsEmpty())
        oOwnText.Copy(oText.GetString(), static_cast<int>(oText.GetLength()));
    return oOwnText;
}
