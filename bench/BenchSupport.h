#pragma once
// Measuring helpers shared by the benchmarks: heap bytes in use and wall-clock milliseconds.

#include <chrono>
#include <cstddef>
#include <malloc.h>

// Bytes the allocator has handed out and not yet taken back.
inline size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// Milliseconds taken by `work`.
template <class Work> double timed(Work &&work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}
