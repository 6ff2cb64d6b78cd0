// The orbsh binary run on small scripts. Expected printed forms come from a
// host in this process, so the tests check what the shell builds and not how
// the host happens to print it.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "host.h"

namespace {

using orbhost::Host;
using orbhost::Value;

const std::string kLib = std::string("--lib ") + ORB_SHARED_LIBRARY + " ";

struct Outcome {
    int status;
    std::string out, err;
};

std::string slurp(const std::string &path) { return (std::ostringstream() << std::ifstream(path).rdbuf()).str(); }

// Runs orbsh with the given arguments, stdin from input; with a script,
// writes it to a file and passes that last.
Outcome run(std::string args, const std::string &input = "", const std::string *script = nullptr)
{
    static int serial = 0;
    const std::string base = testing::TempDir() + "orbsh_" + std::to_string(getpid()) + "_" + std::to_string(serial++);
    std::ofstream(base + ".in", std::ios::binary) << input;
    if (script) std::ofstream(base + ".orbsh", std::ios::binary) << *script, args += " " + base + ".orbsh";
    const int raw = std::system((ORBSH_PATH " " + args + " <" + base + ".in >" + base + ".out 2>" + base + ".err").c_str());
    Outcome r{WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, slurp(base + ".out"), slurp(base + ".err")};
    for (const char *ext : {".in", ".out", ".err", ".orbsh"}) std::remove((base + ext).c_str());
    return r;
}

Outcome runScript(const std::string &script) { return run(kLib, "", &script); }

// What a row of a script prints: a value's printed form, exactly that text,
// or, for "Error: text", a shell error that names the row's line and
// contains text.
struct Want {
    std::string text;
    Want(Value v) : text(orbhost::current()->print(v)) {}
    Want(const char *s) : text(s) {}
    Want(std::string s) : text(std::move(s)) {}
};

// The next n lines of out from at, without the last newline.
std::string nextLines(const std::string &out, size_t &at, size_t n)
{
    const size_t start = at;
    for (; n > 0 && at < out.size(); --n) at = std::min(out.find('\n', at), out.size() - 1) + 1;
    return out.substr(start, at - start - (at > start && out[at - 1] == '\n'));
}

// Runs the rows as one script, then tail; each row's last line prints.
void expectTranscript(const std::vector<std::pair<std::string, Want>> &rows, const std::string &tail = "")
{
    std::string script;
    for (const auto &row : rows) script += row.first + "\n";
    Outcome r = runScript(script + tail);
    const bool fails = std::any_of(rows.begin(), rows.end(), [](const auto &row) { return row.second.text.starts_with("Error"); });
    EXPECT_EQ(r.status, fails ? 1 : 0) << r.err;
    size_t at = 0, line = 0;
    for (const auto &[lines, want] : rows) {
        line += 1 + std::count(lines.begin(), lines.end(), '\n');
        const std::string &w = want.text, error = "Error, line " + std::to_string(line) + ": ";
        std::string got = nextLines(r.out, at, 1 + std::count(w.begin(), w.end(), '\n'));
        if (w.starts_with("Error: "))
            EXPECT_TRUE(got.starts_with(error) && got.find(w.substr(7)) != std::string::npos) << lines << "\n -> " << got;
        else
            EXPECT_EQ(got, w) << "line " << line << ": " << lines;
    }
    EXPECT_EQ(r.out.substr(at), "") << "printed beyond the rows";
}

TEST(OrbshScript, LiteralsAndRTablesPrintAsTheHostValuesTheyDenoteAndReadBack)
{
    Host h;
    const double f8[] = {1, -2.5, 3}, c8[8] = {}, cx[] = {1, 2, -3, 0, 0, 0.5};
    const int32_t i4[] = {1, 2, 3, 4, -5, 6};
    const float f4[6] = {};
    const int8_t i1[] = {-128, 127};
    const int64_t i8[] = {INT64_MIN, 0};
    const int16_t i2[] = {-32768, 32767, 0};
    Value any[] = {h.integer(1), h.string("s"), h.name("z")}, zeros[] = {h.integer(0), h.integer(0)};
    expectTranscript({
        {"-7", h.integer(-7)}, {"9223372036854775807", h.integer(INT64_MAX)},
        {"-9223372036854775808", h.integer(INT64_MIN)}, {"4611686018427387904", h.integer(int64_t(1) << 62)},
        {".5", h.float64(0.5)}, {"2.", h.float64(2.0)}, {"-1e-3", h.float64(-1e-3)}, {"1e999", h.float64(HUGE_VAL)},
        {"2i", h.complex(0, 2)}, {"-1.5-0.5i", h.complex(-1.5, -0.5)}, {"3 - 4i", h.complex(3, -4)},
        {"\"say \\\"hi\\\"\\n\\\\ \\t\"", h.string("say \"hi\"\n\\ \t")}, {"foo", h.name("foo")},
        {"[inf, -inf, nan]", h.list({h.float64(HUGE_VAL), h.float64(-HUGE_VAL), h.float64(NAN)})}, {"[]", h.list({})},
        {"[1, [2.5, \"s\"], x]", h.list({h.integer(1), h.list({h.float64(2.5), h.string("s")}), h.name("x")})},
        // Variables bind; unbound names stay names; print joins bare texts.
        {"x = [1, 2]\nx", h.list({h.integer(1), h.integer(2)})}, {"y", h.name("y")},
        {"x = \"now a string\"\nprint(x, y, 3)", "now a string y 3"},
        {"rtable(float[8], [1, -2.5, 3])", h.rtable(6, {{1, 3}}, f8)}, {"rtable(complex[8], 4)", h.rtable(7, {{1, 4}}, c8)},
        {"rtable(integer[4], [[1, 2, 3], [4, -5, 6]])", h.rtable(4, {{1, 2}, {1, 3}}, i4)},
        {"rtable(float[4], 2, 3)", h.rtable(8, {{1, 2}, {1, 3}}, f4)},
        {"rtable(integer[1], [-128, 127])", h.rtable(2, {{1, 2}}, i1)},
        {"rtable(integer[8], [-9223372036854775808, 0])", h.rtable(5, {{1, 2}}, i8)},
        {"rtable(integer[2], [[[-32768], [32767], [0]]])", h.rtable(3, {{1, 1}, {1, 3}, {1, 1}}, i2)},
        {"rtable(complex[8], [1+2i, -3, .5i])", h.rtable(7, {{1, 3}}, cx)}, {"rtable(float[8], [])", h.rtable(6, {{1, 0}})},
        {"l = [[1, 2], [3, 4]]\nrtable(integer[4], l)", h.rtable(4, {{1, 2}, {1, 2}}, i4)},
        {"rtable(anything, [1, \"s\", z])", h.rtable(0, {{1, 3}}, any)}, {"rtable(anything, 2)", h.rtable(0, {{1, 2}}, zeros)},
    });
    // Printed numbers read back unchanged.
    Outcome first = runScript("0.1\n-2.5e-300\n1.7976931348623157e308\n123456789.125\n0.1-0.2i\n-3i\n[1, -2, 3.25]\n"
                              "-inf\n1-infi\n");
    EXPECT_EQ(std::count(first.out.begin(), first.out.end(), '\n'), 9) << first.out;
    EXPECT_EQ(runScript(first.out).out, first.out);
}

// A listed export the library does not define yet, or "".
std::string missingExport()
{
    void *lib = dlopen(ORB_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    std::ifstream list(ORB_EXPORT_LIST);
    std::string name, kind, missing;
    for (std::string line; lib && missing.empty() && std::getline(list, line);)
        if (!line.starts_with("#") && std::istringstream(line) >> name >> kind && kind == "export" && !dlsym(lib, name.c_str()))
            missing = name;
    if (lib) dlclose(lib);
    return missing;
}

// The library's errors show as raised, without a line; the shell's own name
// their line; either way the script goes on, until quit.
TEST(OrbshScript, ErrorsNameTheirLineAndTheScriptGoesOnUntilQuit)
{
    Host h;
    const double in[] = {-1.5, 2, -0.0}, out[] = {1.5, 2, 0};
    std::vector<std::pair<std::string, Want>> rows = {
        {"x = rtable(float[8], [-1.5, 2, -0.])\ny = rtable(float[8], 3)\norbAbs(y, x, 1)",
         "Error, expecting two arguments, but received 3"},
        // The variable holds the rtable written in place; the source is as it was.
        {"orbAbs(y, x)", h.rtable1(6, 3, out)}, {"y", h.rtable1(6, 3, out)}, {"x", h.rtable1(6, 3, in)},
        // Rtables whose elements do not fit, or that cannot be made.
        {"rtable(integer[1], [1, 128])", "Error: element 2 (128) does not fit in integer[1]"},
        {"rtable(integer[2], [-32769])", "Error: "}, {"rtable(integer[4], [1.5])", "Error: not an integer"},
        {"rtable(float[8], [1, 2+1i])", "Error: complex"}, {"rtable(float[4], [\"a\"])", "Error: "},
        {"rtable(float[8], [[1, 2], [3]])", "Error: rectangular"}, {"rtable(float[8], [[1, 2], 3])", "Error: "},
        {"rtable(float[16], 3)", "Error: unknown datatype float[16]"}, {"rtable(float[8], -1)", "Error: "},
        {"rtable(float[8], 1000000, 1000000)", "Error: too large"}, {"rtable(float[8])", "Error: "},
        {"rtable(integer[4], [2147483647])", "rtable(integer[4], 1..1, [2147483647])"},
        // Names that cannot be called.
        {"GetInt(1)", "Error: GetInt is an accessor"}, {"orbInit()", "Error: orbInit is a helper"},
        {"noSuchThing(1)", "Error: unknown function noSuchThing"}, {"print(1)", "1"},
        {"rtable(float[8], [print(1)])", "Error: "}, {"2", "2"},
        {std::string(100000, '['), "Error: "},  // too deep: refused, not fatal
        {"# a comment\n\n   \nx = 5   # trailing comment\nx", "5"},
    };
    for (const char *bad : {"[1, 2", "f(1,", "1 2", "\"open", "\"bad \\q\"", "1 + 2", "- x", "2x", "1e",
                            "99999999999999999999", "x = ", "= 3", "@", "rtable(3)", "[1,,2]"})
        rows.push_back({bad, "Error: "});
    if (std::string name = missingExport(); !name.empty())
        rows.push_back({name + "(1, 2)", "Error: " + name + " is not implemented yet"});
    expectTranscript(rows, "quit\n2\n");
}

TEST(OrbshScript, InvocationsBadFilesPipesAndAMissingLibrary)
{
    // Unreadable scripts and unknown options exit with status 2, a script
    // with a failed line with 1; piped input runs without line numbers, up to
    // exit; without a library the shell still runs and calls are errors.
    const std::string script = "1\norbAbs(1, 2)\n";
    const struct { const char *what; Outcome r; int status; std::string out, err; } cases[] = {
        {"no such file", run(kLib + "/nonexistent/script.orbsh"), 2, "", "/nonexistent/script.orbsh"},
        {"a directory", run(kLib + testing::TempDir()), 2, "", ""},
        {"unknown option", run("--no-such-option"), 2, "", ""},
        {"piped", run(kLib, "x = 3\nx\n)\nexit\n4\n"), 1, "3\nError, syntax error", ""},
        {"no library", run("--lib /nonexistent/liborb.so", "", &script), 1, "1\nError, line 2: no library is loaded",
         "no library"},
        {"standard input, strict", run(kLib + "--strict -", "x = 2\nx\norbAbs(1)\nx\n"), 1,
         "2\nError, expecting two arguments", ""},
        {"byte-order mark, CRLF, try", run(kLib + "-", "\xEF\xBB\xBFx = 2\r\nx\r\ntry orbAbs(1)\r\n"), 0,
         "2\nError, expecting two arguments", ""},
        {"version", run("--version"), 0, "orbsh ", ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(c.r.status, c.status) << c.r.err;
        // As many lines as out has, the last one starting as out ends.
        EXPECT_TRUE(c.r.out.starts_with(c.out) && std::count(c.r.out.begin(), c.r.out.end(), '\n') ==
                    std::count(c.out.begin(), c.out.end(), '\n') + !c.out.empty()) << c.r.out;
        EXPECT_NE(c.r.err.find(c.err), std::string::npos) << c.r.err;
    }
}

// Elements and parts of rtables and lists, lengths, full printing, timing,
// suggestions for misspelt names.
TEST(OrbshScript, ElementsLengthsTimingAndSuggestions)
{
    Host h;
    const double part[] = {3, 4, 5};
    std::vector<std::pair<std::string, Want>> rows = {
        {"x = rtable(float[8], [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15])\nx[12]", "12.0"},
        {"x[3..5]", h.rtable1(6, 3, part)}, {"length(x)", "15"}, {"x[2] = -7\nx[2]", "-7.0"},
        {"x", "rtable(float[8], 1..15, [1.0, -7.0, 3.0, 4.0, 5.0, ... 5 more ..., 11.0, 12.0, 13.0, 14.0, 15.0])"},
        {"full(x[10..15])", "rtable(float[8], 1..6, [10.0, 11.0, 12.0, 13.0, 14.0, 15.0])"},
        {"m = rtable(integer[2], [[1, 2], [3, 4]])\nm[2, 1]", "3"}, {"m[2, 1] = 9\nm[2, 1]", "9"},
        {"l = [10, \"a\", z]\nl[2]", "\"a\""}, {"l[2..3]", "[\"a\", z]"}, {"length(l)", "3"},
        {"x[0]", "Error: index 0 is outside 1..15"}, {"x[16] = 1", "Error: outside 1..15"}, {"m[1]", "Error: 2 dimensions"},
        {"m[1..2, 1]", "Error: one-dimensional"}, {"x[1.5]", "Error: must be an integer"}, {"x[4..2]", "Error: "},
        {"m[1, 1] = 40000", "Error: does not fit in integer[2]"}, {"q[1] = 2", "Error: q is not a bound rtable"},
        {"x[1..2] = 3", "Error: range"}, {"orbAbss(x, x)", "Error: unknown function orbAbss (did you mean orbAbs?)"},
        {"orbabs(x, x)", "Error: did you mean orbAbs?"},
        {"help orbAb", "No export or statement is called orbAb; did you mean orbAbs?"},
    };
    expectTranscript(rows);
    Outcome r = runScript("x = rtable(float[8], 3)\ntime orbAbs(x, x)\n");
    EXPECT_NE(r.out.find("\ntime: "), std::string::npos) << r.out;
    // Output that cannot be written is a failure.
    EXPECT_EQ(WEXITSTATUS(std::system("echo 1 | " ORBSH_PATH " - >/dev/full 2>/dev/null")), 1);
}

// Every export the library defines has a help line whose example runs on a
// fresh shell without an error; help groups the exports by family.
TEST(OrbshScript, EveryDefinedExportHasHelpWhoseExampleRuns)
{
    void *lib = dlopen(ORB_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(lib, nullptr);
    std::ifstream list(ORB_EXPORT_LIST);
    std::string name, kind, helps;
    std::vector<std::string> names;
    for (std::string line; std::getline(list, line);)
        if (!line.starts_with("#") && std::istringstream(line) >> name >> kind && kind == "export" && dlsym(lib, name.c_str()))
            names.push_back(name), helps += "help " + name + "\n";
    dlclose(lib);
    // Each help on an export with a table line ends in its example.
    std::istringstream out(runScript(helps).out);
    std::set<std::string> documented;
    std::string examples;
    for (std::string line; std::getline(out, line);) {
        if (!line.starts_with("  Example:    ")) continue;
        const std::string example = line.substr(14), callee = example.substr(0, example.find('('));
        documented.insert(callee);
        // No call of these can succeed: the count test of the first is
        // inverted, the second reads a seventh of six arguments, the third
        // raises on a successful initialisation.
        if (!std::set<std::string>{"orbConvertScaled", "orbFIRLMS", "orbHilbert"}.contains(callee))
            examples += "print(\"" + callee + ":\")\n" + example + "\n";
    }
    for (const std::string &n : names) EXPECT_TRUE(documented.contains(n)) << n << " has no help line";
    Outcome r = runScript(examples);
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out.find("Error"), std::string::npos) << r.out;
    EXPECT_NE(runScript("help\n").out.find("\nUnary math:\n    orbAbs"), std::string::npos);
}

// Sounds, numbers as text and plots in and out of files; bad files are
// errors that leave the shell running.
TEST(OrbshScript, AudioTextAndPlotFiles)
{
    const std::string dir = testing::TempDir() + "orbsh_files_" + std::to_string(getpid()) + "/";
    ASSERT_EQ(std::system(("mkdir -p " + dir).c_str()), 0);
    std::ofstream(dir + "notes.csv") << "time,level\n1, 2.5\n3;-4\n";
    std::ofstream(dir + "ragged.csv") << "1,2\n3\n";
    std::ofstream(dir + "junk.wav") << "RIFF but not really a sound";
    const std::string script = "st = rtable(float[8], [[0.25, -0.5], [0.5, 1], [-1, 0]])\n"
                               "writeaudio(\"" + dir + "st.wav\", st, 44100)\n"
                               "readaudio(\"" + dir + "st.wav\")\n"
                               "writeaudio(\"" + dir + "st.flac\", st, 8000)\n"
                               "readaudio(\"" + dir + "st.flac\", \"float[4]\")\n"
                               "readtext(\"" + dir + "notes.csv\")\n"
                               "writetext(\"" + dir + "back.csv\", st)\n"
                               "readtext(\"" + dir + "back.csv\")\n"
                               "plot(st[1..3, 1])\n"
                               "y = rtable(float[8], [1, 4, 9, 16])\n"
                               "plot(y, \"" + dir + "p.png\", 320, 200)\n"
                               "plot(y, y, \"" + dir + "p.svg\")\n"
                               "readaudio(\"" + dir + "junk.wav\")\n"
                               "readaudio(\"" + dir + "missing.wav\")\n"
                               "readtext(\"" + dir + "ragged.csv\")\n"
                               "writeaudio(\"" + dir + "x.mp9\", y, 8000)\n"
                               "length(y)\n";
    Outcome r = runScript(script);
    EXPECT_EQ(r.status, 1);
    const std::string want[] = {
        "3", "[rtable(float[8], 1..3, 1..2, [0.25, -0.5, 0.5, 1.0, -1.0, 0.0]), 44100]", "3",
        "[rtable(float[4], 1..3, 1..2, [0.25, -0.5, 0.5, 0.9999999, -0.9999999, 0.0]), 8000]" /* 24-bit FLAC */, "rtable(float[8], 1..2, 1..2, [1.0, 2.5, 3.0, -4.0])",
        "3", "rtable(float[8], 1..3, 1..2, [0.25, -0.5, 0.5, 1.0, -1.0, 0.0])", "Error, line 9: ranges index one-dimensional",
        "plotted to " + dir + "p.png", "plotted to " + dir + "p.svg", "Error, line 13: cannot read audio from " + dir + "junk.wav",
        "Error, line 14: cannot read audio from " + dir + "missing.wav", "Error, line 15: " + dir + "ragged.csv, line 2 has 1 numbers",
        "Error, line 16: the audio file's name must end in", "4"};
    size_t at = 0;
    for (const std::string &w : want) {
        at = r.out.find(w, at);
        EXPECT_NE(at, std::string::npos) << w << "\n" << r.out;
        if (at == std::string::npos) break;
    }
    // A PNG of the size asked for: the IHDR chunk's width and height.
    std::string png = slurp(dir + "p.png");
    ASSERT_GT(png.size(), 24u);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
    auto be32 = [&](size_t k) { return (uint8_t(png[k]) << 24) | (uint8_t(png[k + 1]) << 16) | (uint8_t(png[k + 2]) << 8) | uint8_t(png[k + 3]); };
    EXPECT_EQ(be32(16), 320);
    EXPECT_EQ(be32(20), 200);
    EXPECT_NE(slurp(dir + "p.svg").find("<svg"), std::string::npos);
    // Without gnuplot on the path, a plot to a file is a clear error; the
    // text plot still works.
    std::ofstream(dir + "q.orbsh") << "y = rtable(float[8], [1, 2])\nplot(y, \"" + dir + "q.png\")\nplot(y)\n";
    r.status = std::system(("PATH=/nonexistent " ORBSH_PATH " --lib " ORB_SHARED_LIBRARY " " + dir + "q.orbsh > " + dir + "q.out").c_str());
    r.out = slurp(dir + "q.out");
    EXPECT_NE(r.out.find("needs gnuplot"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("+----"), std::string::npos) << r.out;
    EXPECT_EQ(std::system(("rm -rf " + dir).c_str()), 0);
}

// Each example script prints what its expected file holds, run from a copy
// of the examples folder.
TEST(OrbshScript, ExamplesPrintTheirExpectedOutput)
{
    const std::string dir = testing::TempDir() + "orbsh_examples_" + std::to_string(getpid());
    ASSERT_EQ(std::system(("rm -rf " + dir + " && cp -r " ORB_SOURCE_DIR "/examples " + dir).c_str()), 0);
    int checked = 0;
    for (const auto &entry : std::filesystem::directory_iterator(dir + "/expected")) {
        const std::string name = entry.path().stem().string();
        const std::string out = dir + "/" + name + ".got";
        const int raw = std::system(("cd " + dir + " && " ORBSH_PATH " --lib " ORB_SHARED_LIBRARY " " + name + ".orbsh > " + out).c_str());
        EXPECT_EQ(WEXITSTATUS(raw), 0) << name;
        EXPECT_EQ(slurp(out), slurp(entry.path().string())) << name;
        ++checked;
    }
    EXPECT_GT(checked, 0);
    EXPECT_EQ(std::system(("rm -rf " + dir).c_str()), 0);
}

TEST(OrbshScript, TourRunsWithOnlyItsDeliberateErrorsAndHelpListsExports)
{
    Outcome r = runScript(slurp(ORB_SOURCE_DIR "/examples/tour.orbsh"));
    EXPECT_EQ(r.status, 0);
    ASSERT_GT(std::count(r.out.begin(), r.out.end(), '\n'), 10);
    EXPECT_EQ(r.out.find("Error, line"), std::string::npos) << "a shell error: the tour is stale\n" << r.out;
    size_t errors = 0;
    for (size_t at = 0; (at = r.out.find("Error, ", at)) != std::string::npos; ++at) errors += at == 0 || r.out[at - 1] == '\n';
    EXPECT_EQ(errors, 4u) << r.out;

    r = runScript("help\n");
    for (const char *text : {"rtable(float[8]", "still to come", " orbAbs"}) EXPECT_NE(r.out.find(text), std::string::npos) << text;
    EXPECT_EQ(r.out.find("GetInt"), std::string::npos) << "accessors are not callable";
}

}  // namespace
