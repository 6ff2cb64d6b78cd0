// Inputs the fuzzer does not make: calls whose arguments break a
// precondition an export documents and leaves unchecked on purpose. Every
// such precondition is listed in preconditions.cpp with its reason.
#ifndef ORB_FUZZ_PRECONDITIONS_H
#define ORB_FUZZ_PRECONDITIONS_H

#include <vector>

#include "host.h"

namespace orbfuzz {

// Whether a call of the named target with these arguments respects every
// documented precondition of that target.
bool Admissible(const orbhost::Host &h, const char *name, const std::vector<orbhost::Value> &args);

}  // namespace orbfuzz

#endif
