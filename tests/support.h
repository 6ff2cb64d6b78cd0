// Shared helpers for tests that call the library through the stand-in host.
#ifndef ORB_TESTS_SUPPORT_H
#define ORB_TESTS_SUPPORT_H

#include <gtest/gtest.h>

#include <complex>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "host.h"
#include "orb/accessors.h"
#include "orb/exports.h"

namespace orbtest {

using orbhost::CallResult;
using orbhost::ErrorMode;
using orbhost::ExportFn;
using orbhost::Host;
using orbhost::Value;
using D = std::vector<double>;
using Z = std::vector<std::complex<double>>;

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

// An rtable of any datatype with bounds 1..n, from elements of matching width.
template <typename T>
Value table(orbhost::Host &h, int32_t code, const std::vector<T> &v)
{
    return h.rtable1(code, (int64_t)v.size(), v.data());
}

// The texts of a backend error and of an operand of the wrong datatype.
inline std::string ippError(IppStatus s) { return std::string("IPP Error: ") + ippGetStatusString(s); }
inline std::string wrongType(orbhost::Host &h, const char *datatype, Value v)
{
    return std::string("expecting an rtable with datatype = ") + datatype + ", but received " + h.print(v);
}

// The elements of a complex[8] rtable, to compare as a whole.
inline std::vector<std::complex<double>> complexes(orbhost::Host &h, Value rt)
{
    std::vector<std::complex<double>> z;
    for (const Ipp64fc &c : contents<Ipp64fc>(h, rt))
        z.emplace_back(c.re, c.im);
    return z;
}

// Calls an export that must not raise, and gives argument 1's elements after it.
template <typename T>
std::vector<T> written(Host &h, ExportFn fn, const std::vector<Value> &args)
{
    orbhost::CallResult r = h.call(fn, args);
    EXPECT_FALSE(r.raised) << r.error;
    EXPECT_EQ(r.result, args[0]);
    return contents<T>(h, args[0]);
}

// The export list: name -> kind.
inline std::map<std::string, std::string> exportList()
{
    std::map<std::string, std::string> names;
    std::ifstream in(ORB_EXPORT_LIST);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream fields(line);
        std::string name, kind;
        fields >> name >> kind;
        names[name] = kind;
    }
    return names;
}

// The names the shared library defines in its dynamic symbol table.
inline std::set<std::string> definedDynamicSymbols()
{
    std::set<std::string> names;
    FILE *p = popen("nm -D --defined-only " ORB_SHARED_LIBRARY, "r");
    if (!p)
        return names;
    char buf[1024];
    while (fgets(buf, sizeof buf, p)) {
        std::istringstream fields(buf);
        std::string addr, type, name;
        fields >> addr >> type >> name;
        if (!name.empty())
            names.insert(name);
    }
    pclose(p);
    return names;
}

}  // namespace orbtest

#endif
