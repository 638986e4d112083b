#include "app/desktop/Memory.h"

#include <cstdlib> // tells which C library it is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tarnwick {

void giveFreedPicturesBack() {
#ifdef __GLIBC__
    constexpr int smallestPicture = 256 * 1024; // bytes
    mallopt(M_MMAP_THRESHOLD, smallestPicture);
#endif
}

void giveFreedMemoryBack() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace tarnwick
