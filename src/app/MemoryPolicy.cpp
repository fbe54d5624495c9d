#include "app/MemoryPolicy.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

void giveLargeBlocksBack()
{
#ifdef __GLIBC__
    // By default the bound rises to the size of the largest block ever freed, up to 32 MiB: after one
    // picture, the next ones stay in the heap for good.
    constexpr int LargeBlock = 256 * 1024;
    mallopt(M_MMAP_THRESHOLD, LargeBlock);
    mallopt(M_TRIM_THRESHOLD, LargeBlock);
#endif
}

void giveFreeMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}
