// What every benchmark program shares: inputs, byte accounting, and the
// memcpy yardstick.
#ifndef ORB_BENCH_COMMON_H
#define ORB_BENCH_COMMON_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <type_traits>
#include <vector>

namespace bench {

// n values uniform in [lo, hi); integer types get raw random bits.
template <typename T>
std::vector<T> inputs(size_t n, double lo, double hi, uint64_t seed = 42)
{
    std::vector<T> v(n);
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> d(lo, hi);
    for (T &x : v)
        x = std::is_integral_v<T> ? T(rng()) : T(d(rng));
    return v;
}

// Throughput counts every byte read and written per element.
inline void account(benchmark::State &state, int64_t bytesPerElement)
{
    state.SetBytesProcessed(state.iterations() * state.range(0) * bytesPerElement);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Copying the same number of doubles: the bandwidth the kernels are held to.
inline void Memcpy64(benchmark::State &state)
{
    std::vector<double> src = inputs<double>(state.range(0), -1, 1), dst(state.range(0));
    for (auto _ : state) {
        std::memcpy(dst.data(), src.data(), src.size() * sizeof(double));
        benchmark::ClobberMemory();
    }
    account(state, 2 * sizeof(double));
}

}  // namespace bench

#endif
