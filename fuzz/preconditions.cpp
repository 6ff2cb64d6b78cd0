// The documented preconditions the exports leave unchecked, in one place.
#include "preconditions.h"

#include <cstring>

namespace orbfuzz {
namespace {

struct Precondition {
    const char *name;
    const char *reason;
    bool (*holds)(const orbhost::Host &h, const std::vector<orbhost::Value> &args);
};

const Precondition kPreconditions[] = {
    {nullptr, nullptr, nullptr},
};

}  // namespace

bool Admissible(const orbhost::Host &h, const char *name, const std::vector<orbhost::Value> &args)
{
    for (const Precondition &p : kPreconditions)
        if (p.name && std::strcmp(p.name, name) == 0 && !p.holds(h, args))
            return false;
    return true;
}

}  // namespace orbfuzz
