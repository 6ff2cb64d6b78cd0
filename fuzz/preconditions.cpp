// The documented preconditions the exports leave unchecked, in one place.
#include "preconditions.h"

#include <cstring>

#include "orb/host.h"

namespace orbfuzz {
namespace {

using orbhost::Host;
using orbhost::Value;

// A filter bank of at most 256 taps with its anchor within them: 0 <= anchor
// < taps (any anchor below 64 when the taps are no rtable, which the export
// refuses first).
bool bankWithinBounds(const Host &h, const std::vector<Value> &args, size_t taps, size_t anchor)
{
    int64_t len = taps < args.size() && h.isRTable(args[taps]) ? h.rtableInfo(args[taps]).count : 64;
    if (len > 256)
        return false;
    if (anchor >= args.size() || !h.isInteger(args[anchor]))
        return true;
    int64_t a = h.toInteger(args[anchor]);
    return a >= 0 && a < (len > 0 ? len : 1);
}

bool waveletBanks(const Host &h, const std::vector<Value> &args)
{
    return bankWithinBounds(h, args, 5, 6) && bankWithinBounds(h, args, 7, 8);
}

// Terms of a symbolic sliding sum (rtables of host values, or of two
// different datatypes) at most 2^16.
bool smallSymbolicSlide(const Host &h, const std::vector<Value> &args)
{
    if (args.size() < 2 || !h.isRTable(args[0]) || !h.isRTable(args[1]))
        return true;
    orbhost::RTableInfo a = h.rtableInfo(args[0]), b = h.rtableInfo(args[1]);
    bool symbolic = a.datatype != b.datatype || a.datatype < DT_INT1;
    return !symbolic || a.count * b.count <= (1 << 16);
}

// A median mask (position 3) of at most 2^16 samples, also as the 32 bits
// the accessor hands on after a raise that returns.
bool moderateMask(const Host &h, const std::vector<Value> &args)
{
    if (args.size() < 3 || !h.isInteger(args[2]))
        return true;
    const int64_t mask = h.toInteger(args[2]);
    return mask <= (1 << 16) && int32_t(uint32_t(uint64_t(mask))) <= (1 << 16);
}

struct Precondition {
    const char *name;
    const char *reason;
    bool (*holds)(const orbhost::Host &h, const std::vector<orbhost::Value> &args);
};

const Precondition kPreconditions[] = {
    // The bordered copy of the image is sized from the taps and anchors
    // before the backend's initialiser checks them: an anchor far outside
    // its taps asks for an image of any size (and sums of such anchors
    // overflow), and a bank of n taps borders the image by about n on each
    // side, so its copy costs (image + 2n)^2 pixels.
    {"orbFwdDWT", "banks of at most 256 taps, anchors (positions 7, 9) within them", waveletBanks},
    {"orbInvDWT", "banks of at most 256 taps, anchors (positions 7, 9) within them", waveletBanks},
    // Not a guard the exports lack: a sliding sum of host values builds every
    // term through the host's arithmetic, so its time is the host's and
    // grows with the product of the lengths. Kept small so that one call
    // stays well inside the fuzzer's time limit.
    {"orbConv", "symbolic sums of at most 2^16 terms", smallSymbolicSlide},
    {"orbCorr", "symbolic sums of at most 2^16 terms", smallSymbolicSlide},
    // Not a guard the export lacks either: the first window of a mask of m
    // samples is sorted whatever the signal's length, m log m steps over m
    // elements of scratch memory, so a mask in the millions takes seconds.
    {"orbMedianFilter", "masks of at most 2^16 samples", moderateMask},
};

}  // namespace

bool Admissible(const orbhost::Host &h, const char *name, const std::vector<orbhost::Value> &args)
{
    for (const Precondition &p : kPreconditions)
        if (std::strcmp(p.name, name) == 0 && !p.holds(h, args))
            return false;
    return true;
}

}  // namespace orbfuzz
