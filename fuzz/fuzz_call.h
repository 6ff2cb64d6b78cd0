// Fuzzing the exports: bytes decode into calls of any export or accessor
// with host values of every kind, made through the stand-in host. After every
// call the backend's live allocation count must be back where it was and
// every rtable's guard bytes intact; anything else aborts, which the fuzzer
// reports as a crash with the input that caused it.
//
// An input is a run of up to kMaxCalls calls, all in one host:
//   call   := target:u16 flags:u8 [forced:u8] value*
//   flags  := bits 0-3 the argument count, bit 4 the returning error mode,
//             bits 5-7 how the count reaches the export (0-4 as given, 5 the
//             count `forced` (at most four past the arguments), 6 a negative
//             count chosen by `forced`, 7 a count of zero)
//   value  := kind:u8 payload (see Kind in fuzz_call.cpp)
// Bytes that run out read as zeros, so every input decodes.
#ifndef ORB_FUZZ_CALL_H
#define ORB_FUZZ_CALL_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host.h"

namespace orbfuzz {

constexpr int kMaxCalls = 4;

// Decodes and makes the calls of one input. Aborts on a leak or a write
// outside an rtable's storage.
void RunInput(const uint8_t *data, size_t size);

// The bytes of one call of the named export with the given arguments (made
// in h): the fuzzer's seeds are the export rows' valid calls encoded so.
// A forcedCount of 0 or more is the count the export is told instead of the
// arguments'. Empty if name is no target.
std::vector<uint8_t> EncodeCall(const orbhost::Host &h, const std::string &name,
                                const std::vector<orbhost::Value> &args, bool returning, int64_t forcedCount);

// Calls made so far by this process, and the number of targets (exports and
// accessors) an input can choose from.
uint64_t CallsMade();
size_t TargetCount();

}  // namespace orbfuzz

#endif
