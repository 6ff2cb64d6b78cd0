// The seed corpus: the export rows' valid calls, encoded as fuzz inputs.
#ifndef ORB_FUZZ_SEEDS_H
#define ORB_FUZZ_SEEDS_H

namespace orbfuzz {

// Writes one file per row and error mode into folder (which must exist);
// returns the number written, or -1 when a row names no target or a file
// cannot be written.
int WriteSeeds(const char *folder);

}  // namespace orbfuzz

#endif
