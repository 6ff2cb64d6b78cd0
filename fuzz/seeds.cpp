// Writing the seed corpus from the export rows.
#include "seeds.h"

#include <cstdio>
#include <string>

#include "export_rows.h"
#include "fuzz_call.h"

namespace orbfuzz {

int WriteSeeds(const char *folder)
{
    int written = 0;
    for (size_t i = 0; i < orbrows::kRowCount; ++i) {
        const orbrows::Row &row = orbrows::kRows[i];
        for (bool returning : {false, true}) {
            orbhost::Host h;
            std::vector<uint8_t> bytes = EncodeCall(h, row.name, orbrows::validArgs(h, row), returning,
                                                  row.forcedCount);
            if (bytes.empty()) {
                std::fprintf(stderr, "orbfuzz: %s is no fuzz target\n", row.name);
                return -1;
            }
            std::string path = std::string(folder) + "/" + row.name + (returning ? "-returning" : "");
            FILE *f = std::fopen(path.c_str(), "wb");
            if (!f || std::fwrite(bytes.data(), 1, bytes.size(), f) != bytes.size() || std::fclose(f) != 0) {
                std::fprintf(stderr, "orbfuzz: cannot write %s\n", path.c_str());
                return -1;
            }
            ++written;
        }
    }
    return written;
}

}  // namespace orbfuzz
