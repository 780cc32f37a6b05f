#include "bench/Heap.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

struct Heap {
  bool counted = false;
  long long calls = 0;
  long long total = 0;
  long long live = 0;
  long long highest = 0;
};

Heap heap;

long long bytesOf(void* memory) { return static_cast<long long>(malloc_usable_size(memory)); }

}  // namespace

void* operator new(std::size_t size) {
  void* memory = std::malloc(size);
  if (!memory) throw std::bad_alloc();
  if (heap.counted) {
    const long long bytes = bytesOf(memory);
    ++heap.calls;
    heap.total += bytes;
    heap.live += bytes;
    heap.highest = std::max(heap.highest, heap.live);
  }
  return memory;
}

void operator delete(void* memory) noexcept {
  if (heap.counted && memory) heap.live -= bytesOf(memory);
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace bench {

void HeapManager::Start() { count(); }

void HeapManager::count() {
  heap = {};
  heap.counted = true;
}

long long HeapManager::inUse() { return heap.live; }

void HeapManager::Stop(Result* result) {
  heap.counted = false;
  result->num_allocs = heap.calls;
  result->max_bytes_used = heap.highest;
  result->total_allocated_bytes = heap.total;
  result->net_heap_growth = heap.live;
}

}  // namespace bench
