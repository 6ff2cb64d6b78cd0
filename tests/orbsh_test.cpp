// The orbsh binary run on small scripts. Expected printed forms come from a
// host in this process, so the tests check what the shell builds and not how
// the host happens to print it.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "host.h"

namespace {

using orbhost::Host;
using orbhost::Value;

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
    std::vector<std::string> lines;  // out, split
};

std::string slurp(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

std::string tempPath(const char *stem)
{
    static int serial = 0;
    return testing::TempDir() + "orbsh_" + stem + "_" + std::to_string(getpid()) + "_" + std::to_string(serial++);
}

// Runs orbsh with the given arguments; stdin comes from the given text.
Outcome runArgs(const std::string &args, const std::string &input = "")
{
    std::string in = tempPath("in"), out = tempPath("out"), err = tempPath("err");
    std::ofstream(in, std::ios::binary) << input;
    std::string cmd = std::string(ORBSH_PATH) + " " + args + " <" + in + " >" + out + " 2>" + err;
    int raw = std::system(cmd.c_str());
    Outcome r;
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    r.out = slurp(out);
    r.err = slurp(err);
    std::istringstream lines(r.out);
    for (std::string line; std::getline(lines, line);) r.lines.push_back(line);
    std::remove(in.c_str());
    std::remove(out.c_str());
    std::remove(err.c_str());
    return r;
}

// Runs a script file against the built library.
Outcome runScript(const std::string &script)
{
    std::string file = tempPath("script");
    std::ofstream(file, std::ios::binary) << script;
    Outcome r = runArgs(std::string("--lib ") + ORB_SHARED_LIBRARY + " " + file);
    std::remove(file.c_str());
    return r;
}

bool startsWith(const std::string &s, const std::string &prefix) { return s.rfind(prefix, 0) == 0; }

bool libraryHas(const char *name)
{
    void *h = dlopen(ORB_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    if (!h) return false;
    bool found = dlsym(h, name) != nullptr;
    dlclose(h);
    return found;
}

TEST(OrbshLiterals, EachKindPrintsAsTheHostValueItDenotes)
{
    Host h;
    Outcome r = runScript(
        "0\n-7\n9223372036854775807\n-9223372036854775808\n4611686018427387904\n"
        "1.5\n.5\n2.\n-1e-3\n1e999\n"
        "2i\n1+2i\n-1.5-0.5i\n3 - 4i\n"
        "\"say \\\"hi\\\"\\n\\\\ \\t\"\n"
        "foo\ntrue\n[inf, -inf, nan]\n"
        "[]\n[1, [2.5, \"s\"], x]\n");
    ASSERT_EQ(r.status, 0) << r.err;
    std::vector<std::string> want = {
        h.print(h.integer(0)),
        h.print(h.integer(-7)),
        h.print(h.integer(INT64_MAX)),
        h.print(h.integer(INT64_MIN)),
        h.print(h.integer(int64_t(1) << 62)),
        h.print(h.float64(1.5)),
        h.print(h.float64(0.5)),
        h.print(h.float64(2.0)),
        h.print(h.float64(-1e-3)),
        h.print(h.float64(HUGE_VAL)),
        h.print(h.complex(0, 2)),
        h.print(h.complex(1, 2)),
        h.print(h.complex(-1.5, -0.5)),
        h.print(h.complex(3, -4)),
        h.print(h.string("say \"hi\"\n\\ \t")),
        h.print(h.name("foo")),
        h.print(h.name("true")),
        h.print(h.list({h.float64(HUGE_VAL), h.float64(-HUGE_VAL), h.float64(NAN)})),
        h.print(h.list({})),
        h.print(h.list({h.integer(1), h.list({h.float64(2.5), h.string("s")}), h.name("x")})),
    };
    // Compared as a whole: the string's newline may split its printed form.
    EXPECT_EQ(r.out, [&] {
        std::string s;
        for (const std::string &w : want) s += w + "\n";
        return s;
    }());
}

TEST(OrbshLiterals, PrintedNumbersReadBackUnchanged)
{
    const std::string script =
        "0.1\n-2.5e-300\n1.7976931348623157e308\n123456789.125\n0.1-0.2i\n-3i\n[1, -2, 3.25]\n-inf\n1-infi\n";
    Outcome first = runScript(script);
    ASSERT_EQ(first.status, 0);
    ASSERT_EQ(first.lines.size(), 9u) << first.out;
    Outcome second = runScript(first.out);
    EXPECT_EQ(second.out, first.out);
}

TEST(OrbshLiterals, VariablesBindAndUnboundNamesStayNames)
{
    Host h;
    Outcome r = runScript("x = [1, 2]\nx\ny\nx = \"now a string\"\nprint(x, y, 3)\n");
    ASSERT_EQ(r.lines.size(), 3u) << r.out;
    EXPECT_EQ(r.lines[0], h.print(h.list({h.integer(1), h.integer(2)})));
    EXPECT_EQ(r.lines[1], "y");
    EXPECT_EQ(r.lines[2], "now a string y 3");
}

TEST(OrbshRTable, ConstructionInSeveralDatatypesAndShapes)
{
    Host h;
    const double f8[] = {1, -2.5, 3};
    const double c8[8] = {};
    const int32_t i4[] = {1, 2, 3, 4, -5, 6};
    const float f4[6] = {};
    const int8_t i1[] = {-128, 127};
    const int64_t i8[] = {INT64_MIN, 0};
    const int16_t i2[] = {-32768, 32767, 0};
    const double cx[] = {1, 2, -3, 0, 0, 0.5};
    Outcome r = runScript(
        "rtable(float[8], [1, -2.5, 3])\n"
        "rtable(complex[8], 4)\n"
        "rtable(integer[4], [[1, 2, 3], [4, -5, 6]])\n"
        "rtable(float[4], 2, 3)\n"
        "rtable(integer[1], [-128, 127])\n"
        "rtable(integer[8], [-9223372036854775808, 0])\n"
        "rtable(integer[2], [[[-32768], [32767], [0]]])\n"
        "rtable(complex[8], [1+2i, -3, .5i])\n"
        "rtable(float[8], [])\n"
        "l = [[1, 2], [3, 4]]\n"
        "rtable(integer[4], l)\n");
    ASSERT_EQ(r.status, 0);
    std::vector<std::string> want = {
        h.print(h.rtable(6, {{1, 3}}, f8)),
        h.print(h.rtable(7, {{1, 4}}, c8)),
        h.print(h.rtable(4, {{1, 2}, {1, 3}}, i4)),
        h.print(h.rtable(8, {{1, 2}, {1, 3}}, f4)),
        h.print(h.rtable(2, {{1, 2}}, i1)),
        h.print(h.rtable(5, {{1, 2}}, i8)),
        h.print(h.rtable(3, {{1, 1}, {1, 3}, {1, 1}}, i2)),
        h.print(h.rtable(7, {{1, 3}}, cx)),
        h.print(h.rtable(6, {{1, 0}}, nullptr)),
        h.print(h.rtable(4, {{1, 2}, {1, 2}}, i4)),
    };
    ASSERT_EQ(r.lines.size(), want.size()) << r.out;
    for (size_t i = 0; i < want.size(); ++i) EXPECT_EQ(r.lines[i], want[i]) << "line " << i + 1;
}

TEST(OrbshRTable, HostValueRtablesHoldTheValues)
{
    Host h;
    Outcome r = runScript("rtable(anything, [1, \"s\", x])\nrtable(anything, 2)\n");
    Value a[] = {h.integer(1), h.string("s"), h.name("x")};
    Value z[] = {h.integer(0), h.integer(0)};
    ASSERT_EQ(r.lines.size(), 2u) << r.out;
    EXPECT_EQ(r.lines[0], h.print(h.rtable(0, {{1, 3}}, a)));
    EXPECT_EQ(r.lines[1], h.print(h.rtable(0, {{1, 2}}, z)));
}

TEST(OrbshRTable, ElementsThatDoNotFitAreShellErrors)
{
    Outcome r = runScript(
        "rtable(integer[1], [1, 128])\n"
        "rtable(integer[2], [-32769])\n"
        "rtable(integer[4], [1.5])\n"
        "rtable(float[8], [1, 2+1i])\n"
        "rtable(float[4], [\"a\"])\n"
        "rtable(float[8], [[1, 2], [3]])\n"
        "rtable(float[8], [[1, 2], 3])\n"
        "rtable(float[16], 3)\n"
        "rtable(float[8], -1)\n"
        "rtable(float[8], 1000000, 1000000)\n"
        "rtable(float[8])\n"
        "rtable(integer[4], [2147483647])\n");
    ASSERT_EQ(r.status, 0);
    ASSERT_EQ(r.lines.size(), 12u) << r.out;
    for (int i = 0; i < 11; ++i)
        EXPECT_TRUE(startsWith(r.lines[i], "Error, line " + std::to_string(i + 1) + ": ")) << r.lines[i];
    EXPECT_NE(r.lines[0].find("does not fit in integer[1]"), std::string::npos) << r.lines[0];
    EXPECT_NE(r.lines[0].find("element 2"), std::string::npos) << r.lines[0];
    EXPECT_NE(r.lines[2].find("not an integer"), std::string::npos) << r.lines[2];
    EXPECT_NE(r.lines[3].find("complex"), std::string::npos) << r.lines[3];
    EXPECT_NE(r.lines[5].find("rectangular"), std::string::npos) << r.lines[5];
    EXPECT_NE(r.lines[7].find("unknown datatype float[16]"), std::string::npos) << r.lines[7];
    EXPECT_NE(r.lines[9].find("too large"), std::string::npos) << r.lines[9];
    EXPECT_FALSE(startsWith(r.lines[11], "Error")) << r.lines[11];
}

TEST(OrbshCall, ExportRunsInPlaceAndErrorsLetTheScriptGoOn)
{
    if (!libraryHas("orbAbs")) GTEST_SKIP() << "orbAbs is not in the library yet";
    Host h;
    const double in[] = {-1.5, 2, -0.0};
    const double out[] = {1.5, 2, 0};
    Outcome r = runScript(
        "x = rtable(float[8], [-1.5, 2, -0.])\n"
        "y = rtable(float[8], 3)\n"
        "orbAbs(y, x, 1)\n"
        "orbAbs(y, x)\n"
        "y\n"
        "x\n");
    ASSERT_EQ(r.status, 0);
    ASSERT_EQ(r.lines.size(), 4u) << r.out;
    EXPECT_EQ(r.lines[0], "Error, expecting two arguments, but received 3");
    EXPECT_EQ(r.lines[1], h.print(h.rtable1(6, 3, out)));
    EXPECT_EQ(r.lines[2], r.lines[1]) << "the variable holds the rtable written in place";
    EXPECT_EQ(r.lines[3], h.print(h.rtable1(6, 3, in)));
}

TEST(OrbshCall, NamesThatCannotBeCalled)
{
    Outcome r = runScript("GetInt(1)\norbInit()\nnoSuchThing(1)\nprint(1)\nrtable(float[8], [print(1)])\n2\n");
    ASSERT_EQ(r.status, 0);
    ASSERT_EQ(r.lines.size(), 6u) << r.out;
    EXPECT_TRUE(startsWith(r.lines[0], "Error, line 1: GetInt is an accessor")) << r.lines[0];
    EXPECT_TRUE(startsWith(r.lines[1], "Error, line 2: orbInit is a helper")) << r.lines[1];
    EXPECT_TRUE(startsWith(r.lines[2], "Error, line 3: unknown function noSuchThing")) << r.lines[2];
    EXPECT_EQ(r.lines[3], "1");
    EXPECT_TRUE(startsWith(r.lines[4], "Error, line 5:")) << r.lines[4];
    EXPECT_EQ(r.lines[5], "2");
}

TEST(OrbshCall, ListedExportMissingFromTheLibraryIsNotImplementedYet)
{
    // Any export of the list that the library does not define yet.
    std::ifstream list(ORB_EXPORT_LIST);
    std::string name, kind, missing;
    for (std::string line; std::getline(list, line);) {
        std::istringstream f(line);
        if (line.empty() || line[0] == '#' || !(f >> name >> kind) || kind != "export") continue;
        if (!libraryHas(name.c_str())) {
            missing = name;
            break;
        }
    }
    if (missing.empty()) GTEST_SKIP() << "every export is implemented";
    Outcome r = runScript(missing + "(1, 2)\n");
    EXPECT_EQ(r.out, "Error, line 1: " + missing + " is not implemented yet\n");
}

TEST(OrbshScript, SyntaxErrorsNameTheirLineAndTheScriptGoesOn)
{
    const char *bad[] = {
        "[1, 2",          "f(1,",          "1 2",          "\"open",     "\"bad \\q\"",
        "1 + 2",          "- x",           "2x",           "1e",         "99999999999999999999",
        "x = ",           "= 3",           "@",            "rtable(3)",  "[1,,2]",
    };
    std::string script;
    for (const char *b : bad) script += std::string(b) + "\n";
    script += "# a comment\n\n   \nx = 5   # trailing comment\nx\n";
    Outcome r = runScript(script);
    ASSERT_EQ(r.status, 0);
    const size_t n = sizeof bad / sizeof bad[0];
    ASSERT_EQ(r.lines.size(), n + 1) << r.out;
    for (size_t i = 0; i < n; ++i)
        EXPECT_TRUE(startsWith(r.lines[i], "Error, line " + std::to_string(i + 1) + ": ")) << bad[i] << " -> " << r.lines[i];
    EXPECT_EQ(r.lines[n], "5");
}

TEST(OrbshScript, DeepNestingIsRefusedNotFatal)
{
    Outcome r = runScript(std::string(100000, '[') + "\n7\n");
    ASSERT_EQ(r.status, 0);
    ASSERT_EQ(r.lines.size(), 2u);
    EXPECT_TRUE(startsWith(r.lines[0], "Error, line 1:"));
    EXPECT_EQ(r.lines[1], "7");
}

TEST(OrbshScript, QuitEndsTheScript)
{
    Outcome r = runScript("1\nquit\n2\n");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "1\n");
}

TEST(OrbshScript, UnreadableFileExitsWithStatusTwo)
{
    Outcome r = runArgs(std::string("--lib ") + ORB_SHARED_LIBRARY + " /nonexistent/script.orbsh");
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("/nonexistent/script.orbsh"), std::string::npos) << r.err;
    Outcome d = runArgs(std::string("--lib ") + ORB_SHARED_LIBRARY + " " + testing::TempDir());
    EXPECT_EQ(d.status, 2);
    EXPECT_EQ(runArgs("--no-such-option").status, 2);
}

TEST(OrbshScript, PipedInputRunsWithoutLineNumbers)
{
    Outcome r = runArgs(std::string("--lib ") + ORB_SHARED_LIBRARY, "x = 3\nx\n)\nexit\n4\n");
    EXPECT_EQ(r.status, 0);
    ASSERT_EQ(r.lines.size(), 2u) << r.out;
    EXPECT_EQ(r.lines[0], "3");
    EXPECT_TRUE(startsWith(r.lines[1], "Error, syntax error")) << r.lines[1];
}

TEST(OrbshScript, MissingLibraryLeavesTheShellUsable)
{
    std::string file = tempPath("script");
    std::ofstream(file) << "1\norbAbs(1, 2)\n";
    Outcome r = runArgs("--lib /nonexistent/liborb.so " + file);
    std::remove(file.c_str());
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.err.find("no library"), std::string::npos) << r.err;
    ASSERT_EQ(r.lines.size(), 2u) << r.out;
    EXPECT_EQ(r.lines[0], "1");
    EXPECT_TRUE(startsWith(r.lines[1], "Error, line 2: no library is loaded")) << r.lines[1];
}

TEST(OrbshScript, TourRunsWithOnlyItsDeliberateErrors)
{
    std::string tour = slurp(ORB_SOURCE_DIR "/examples/tour.orbsh");
    ASSERT_FALSE(tour.empty());
    Outcome r = runScript(tour);
    EXPECT_EQ(r.status, 0);
    size_t errors = 0;
    for (const std::string &line : r.lines) {
        EXPECT_FALSE(startsWith(line, "Error, line")) << line;  // a shell error: the tour is stale
        errors += startsWith(line, "Error, ");
    }
    EXPECT_EQ(errors, 4u) << r.out;
}

TEST(OrbshScript, HelpListsTheExportsTheLibraryHas)
{
    Outcome r = runScript("help\n");
    EXPECT_NE(r.out.find("rtable(float[8]"), std::string::npos);
    EXPECT_NE(r.out.find("still to come"), std::string::npos);
    if (libraryHas("orbAbs")) {
        EXPECT_NE(r.out.find(" orbAbs"), std::string::npos);
    }
    EXPECT_EQ(r.out.find("GetInt"), std::string::npos) << "accessors are not callable";
}

}  // namespace
