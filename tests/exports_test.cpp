// The shared library's dynamic symbol table against the export list, and a
// call through the loaded library itself.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "support.h"

namespace {

std::map<std::string, std::string> exportList()
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

std::set<std::string> definedDynamicSymbols()
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

TEST(Exports, SharedLibraryExportsOnlyListedNames)
{
    std::map<std::string, std::string> listed = exportList();
    ASSERT_FALSE(listed.empty()) << "no names read from " ORB_EXPORT_LIST;
    // The shell decides what is callable by these kinds.
    for (const auto &[name, kind] : listed)
        EXPECT_TRUE(kind == "export" || kind == "accessor" || kind == "helper") << name << " " << kind;
    std::set<std::string> defined = definedDynamicSymbols();
    ASSERT_FALSE(defined.empty()) << "nm gave nothing for " ORB_SHARED_LIBRARY;
    for (const std::string &name : defined)
        EXPECT_TRUE(listed.count(name)) << "unlisted symbol exported: " << name;
}

TEST(Exports, CallThroughTheLoadedLibrary)
{
    void *lib = dlopen(ORB_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(lib, nullptr) << dlerror();
    auto abs = reinterpret_cast<orbhost::ExportFn>(dlsym(lib, "orbAbs"));
    ASSERT_NE(abs, nullptr);

    orbhost::Host h;
    orbhost::Value out = h.rtable1(DT_FLOAT8, 3);
    orbhost::CallResult r = h.call(abs, {out, orbtest::float8(h, {-1.5, 2, -0.0})});
    ASSERT_FALSE(r.raised) << r.error;
    EXPECT_EQ(orbtest::contents<double>(h, out), (std::vector<double>{1.5, 2, 0}));
    EXPECT_EQ(h.call(abs, {out}).error, "expecting two arguments, but received 1");
    dlclose(lib);
}

}  // namespace
