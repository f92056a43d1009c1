#include "app/memory.h"

#include <malloc.h>

namespace orlune {

void ReturnLargeMemory() {
  // Fixed: by itself, the threshold would grow to the largest page, and freed pages would stay in the heaps.
  constexpr int kLarge = 256 * 1024;
  mallopt(M_MMAP_THRESHOLD, kLarge);
}

}  // namespace orlune
