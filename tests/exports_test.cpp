// The shared library's dynamic symbol table against the export list, and a
// call through the loaded library itself.
#include <dlfcn.h>
#include <gtest/gtest.h>


#include "support.h"

namespace {

TEST(Exports, SharedLibraryExportsOnlyListedNames)
{
    std::map<std::string, std::string> listed = orbtest::exportList();
    ASSERT_FALSE(listed.empty()) << "no names read from " ORB_EXPORT_LIST;
    // The shell decides what is callable by these kinds.
    for (const auto &[name, kind] : listed)
        EXPECT_TRUE(kind == "export" || kind == "accessor" || kind == "helper") << name << " " << kind;
    std::set<std::string> defined = orbtest::definedDynamicSymbols();
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
