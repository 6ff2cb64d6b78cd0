// Shared helpers for tests that call the library through the stand-in host.
#ifndef ORB_TESTS_SUPPORT_H
#define ORB_TESTS_SUPPORT_H

#include <cstring>
#include <string>
#include <vector>

#include "host.h"
#include "orb/accessors.h"
#include "orb/exports.h"

namespace orbtest {

using orbhost::Value;

// An rtable of doubles / floats / complex values with bounds 1..n.
inline Value float8(orbhost::Host &h, const std::vector<double> &v)
{
    return h.rtable1(DT_FLOAT8, (int64_t)v.size(), v.data());
}
inline Value float4(orbhost::Host &h, const std::vector<float> &v)
{
    return h.rtable1(DT_FLOAT4, (int64_t)v.size(), v.data());
}
inline Value complex8(orbhost::Host &h, const std::vector<Ipp64fc> &v)
{
    return h.rtable1(DT_COMPLEX8, (int64_t)v.size(), v.data());
}

template <typename T>
std::vector<T> contents(orbhost::Host &h, Value rt)
{
    orbhost::RTableInfo info = h.rtableInfo(rt);
    const T *p = static_cast<const T *>(info.data);
    return std::vector<T>(p, p + info.count);
}

// A snapshot of an rtable's bytes, to prove an error left it untouched.
inline std::string bytes(orbhost::Host &h, Value rt)
{
    orbhost::RTableInfo info = h.rtableInfo(rt);
    size_t width = 0;
    switch (info.datatype) {
    case DT_INT1: width = 1; break;
    case DT_INT2: width = 2; break;
    case DT_INT4: case DT_FLOAT4: width = 4; break;
    case DT_COMPLEX8: case DT_PAIR: width = 16; break;
    default: width = 8; break;
    }
    return std::string(static_cast<const char *>(info.data), width * (size_t)info.count);
}

}  // namespace orbtest

#endif
