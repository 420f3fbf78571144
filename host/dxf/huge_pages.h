// Large buffers a file is read into or written from: asked to live in huge
// pages where the system offers them, so that filling them takes a few
// hundred page faults rather than one for every 4 KB.
#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>

namespace kelhost::dxf {

// Advises the whole huge pages inside [data, data + bytes); a hint only,
// harmless where huge pages are off.
inline void AdviseHugePages(const void* data, std::size_t bytes) {
  constexpr std::uintptr_t kHuge = 2 << 20;
  const auto begin = reinterpret_cast<std::uintptr_t>(data);
  const std::uintptr_t first = (begin + kHuge - 1) & ~(kHuge - 1), last = (begin + bytes) & ~(kHuge - 1);
  if (last > first) madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

}  // namespace kelhost::dxf
