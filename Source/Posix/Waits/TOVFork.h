// What a fork does with this backend's locks, objects and threads.
#pragma once

namespace TOVPlatform
{
namespace TOVPosix
{
// Makes each fork of this process take all process-wide locks, so that the child finds them free and what they guard
// whole. The locks that handles name are not among them, since a program can hold them without limit: what other
// threads own of these they leave in the child, as if they had ended there (see TOVObjectEnd.h).
// The child calls pfInChild as well.
void NoticeForks(void (*pfInChild)());
} // namespace TOVPosix
} // namespace TOVPlatform
