#include "Support/TOVFullDisk.h"

struct CFullDisk::sSystem
{
};

CFullDisk::CFullDisk() = default;
CFullDisk::~CFullDisk() = default;

const char* CFullDisk::Path() const
{
    return "/dev/full";
}
