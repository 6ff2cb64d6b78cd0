// Runs fuzz inputs without the fuzzer: every file named, and every file in
// every folder named. The test suite replays the seed corpus and the inputs
// that once found a fault (regressions/) this way in every build.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz_call.h"
#include "seeds.h"

namespace fs = std::filesystem;

static bool replay(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return false;
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (std::getenv("ORB_FUZZ_TRACE"))
        std::fprintf(stderr, "%s\n", file.c_str());
    orbfuzz::RunInput(bytes.data(), bytes.size());
    return true;
}

int main(int argc, char **argv)
{
    size_t files = 0;
    for (int i = 1; i < argc; ++i) {
        fs::path p = argv[i];
        if (p == "--seeds") {
            // Writes the seeds into a fresh temporary folder and replays them.
            fs::path dir = fs::temp_directory_path() / ("orbfuzz-seeds-" + std::to_string(::getpid()));
            fs::create_directories(dir);
            int n = orbfuzz::WriteSeeds(dir.c_str());
            for (const auto &e : fs::directory_iterator(dir))
                files += replay(e.path());
            fs::remove_all(dir);
            if (n <= 0)
                return 1;
        } else if (fs::is_directory(p)) {
            for (const auto &e : fs::directory_iterator(p))
                if (e.is_regular_file())
                    files += replay(e.path());
        } else if (replay(p)) {
            ++files;
        } else {
            std::fprintf(stderr, "orbfuzz: cannot read %s\n", argv[i]);
            return 1;
        }
    }
    std::printf("orbfuzz: %zu inputs, %llu calls replayed\n", files, (unsigned long long)orbfuzz::CallsMade());
    return files > 0 ? 0 : 1;
}
