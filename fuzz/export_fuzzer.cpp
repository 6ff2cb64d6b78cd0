// The libFuzzer entry: each input is a few calls (see fuzz_call.h). Set
// ORB_FUZZ_SEEDS=<folder> to write the seed corpus (every export row's valid
// call, in both error modes) there and exit.
#include <cstdio>
#include <cstdlib>

#include "fuzz_call.h"
#include "seeds.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    if (const char *folder = std::getenv("ORB_FUZZ_SEEDS"))
        std::exit(orbfuzz::WriteSeeds(folder) > 0 ? 0 : 1);
    std::atexit([] {
        std::fprintf(stderr, "orbfuzz: %llu calls over %zu targets\n", (unsigned long long)orbfuzz::CallsMade(),
                     orbfuzz::TargetCount());
    });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    orbfuzz::RunInput(data, size);
    return 0;
}
