#include "builtins.h"

#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "shell.h"

namespace orbsh {

using orbhost::Host;
using orbhost::Value;

namespace {

constexpr int32_t kFloat8 = 6, kFloat4 = 8, kComplex8 = 7;

[[noreturn]] void fail(const std::string &message) { throw ShellError{message}; }

std::string textArg(Host &host, Value v, const char *what)
{
    const uint32_t kind = Host::kindOf(v);
    if (kind != orbhost::kString) fail(std::string(what) + " must be a string, not " + host.print(v));
    return host.text(v);
}

// The elements of a real rtable as doubles, with its rows and columns (a
// one-dimensional rtable is one column).
struct Table {
    std::vector<double> values;
    int64_t rows = 0, columns = 1;
};

Table realTable(Host &host, Value v, const char *what)
{
    if (!host.isRTable(v)) fail(std::string(what) + " must be an rtable, not " + host.print(v));
    orbhost::RTableInfo info = host.rtableInfo(v);
    if (info.bounds.size() > 2) fail(std::string(what) + " must have one or two dimensions");
    if (info.datatype == kComplex8 || info.datatype <= 1) fail(std::string(what) + " must hold real numbers");
    Table t;
    t.rows = info.bounds[0].second - info.bounds[0].first + 1;
    if (info.bounds.size() == 2) t.columns = info.bounds[1].second - info.bounds[1].first + 1;
    t.values.reserve(size_t(info.count));
    for (int64_t k = 0; k < info.count; ++k) t.values.push_back(host.toFloat(host.element(v, k)));
    return t;
}

Value tableValue(Host &host, const std::vector<double> &values, int64_t rows, int64_t columns, int32_t datatype)
{
    std::vector<std::pair<int64_t, int64_t>> bounds = {{1, rows}};
    if (columns != 1) bounds.emplace_back(1, columns);
    if (datatype == kFloat8) return host.rtable(kFloat8, bounds, values.data());
    std::vector<float> narrow(values.begin(), values.end());
    return host.rtable(kFloat4, bounds, narrow.data());
}

int32_t datatypeArg(Host &host, const std::vector<Value> &args, size_t at)
{
    if (args.size() <= at) return kFloat8;
    std::string dt = textArg(host, args[at], "the datatype");
    if (dt == "float[8]") return kFloat8;
    if (dt == "float[4]") return kFloat4;
    fail("the datatype must be \"float[8]\" or \"float[4]\", not \"" + dt + "\"");
}

void arity(const std::vector<Value> &args, size_t least, size_t most, const char *usage)
{
    if (args.size() < least || args.size() > most) fail(std::string("usage: ") + usage);
}

// ------------------------------------------------------------------ length

Value length(Host &host, const std::vector<Value> &args, std::ostream &, bool &)
{
    arity(args, 1, 1, "length(x)");
    Value v = args[0];
    if (host.isRTable(v)) return host.integer(host.rtableInfo(v).count);
    const uint32_t kind = Host::kindOf(v);
    if (kind == orbhost::kString || kind == orbhost::kName) return host.integer(int64_t(host.text(v).size()));
    return host.integer(int64_t(host.elements(v).size()));
}

// ------------------------------------------------------------------- audio

// Samples of every channel, frame after frame: a one-channel sound is a
// one-dimensional rtable, others have a column per channel.
Value readAudio(Host &host, const std::vector<Value> &args, std::ostream &, bool &)
{
    arity(args, 1, 2, "readaudio(\"file\") or readaudio(\"file\", \"float[4]\")");
    const std::string path = textArg(host, args[0], "the file name");
    const int32_t datatype = datatypeArg(host, args, 1);
    SF_INFO info;
    std::memset(&info, 0, sizeof info);
    SNDFILE *f = sf_open(path.c_str(), SFM_READ, &info);
    if (!f) fail("cannot read audio from " + path + ": " + sf_strerror(nullptr));
    if (info.frames < 0 || info.channels <= 0 || uint64_t(info.frames) * uint64_t(info.channels) > (uint64_t(1) << 27)) {
        sf_close(f);
        fail(path + " is too large for the shell (at most 2^27 samples)");
    }
    std::vector<double> samples(size_t(info.frames) * size_t(info.channels));
    sf_count_t got = sf_readf_double(f, samples.data(), info.frames);
    sf_close(f);
    if (got != info.frames)
        fail(path + " is truncated: " + std::to_string(got) + " of " + std::to_string(info.frames) + " frames could be read");
    Value table = tableValue(host, samples, info.frames, info.channels, datatype);
    return host.list({table, host.integer(info.samplerate)});
}

int formatFor(const std::string &path)
{
    std::string ext = path.substr(path.find_last_of('.') == std::string::npos ? path.size() : path.find_last_of('.'));
    for (char &c : ext) c = char(std::tolower(static_cast<unsigned char>(c)));
    if (ext == ".wav") return SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    if (ext == ".flac") return SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
    if (ext == ".aiff" || ext == ".aif") return SF_FORMAT_AIFF | SF_FORMAT_FLOAT;
    if (ext == ".au") return SF_FORMAT_AU | SF_FORMAT_FLOAT;
    if (ext == ".ogg") return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    fail("the audio file's name must end in .wav, .flac, .aiff, .au or .ogg: " + path);
}

Value writeAudio(Host &host, const std::vector<Value> &args, std::ostream &, bool &)
{
    arity(args, 3, 3, "writeaudio(\"file\", x, rate)");
    const std::string path = textArg(host, args[0], "the file name");
    Table t = realTable(host, args[1], "the sound");
    if (!host.isInteger(args[2]) || host.toInteger(args[2]) <= 0 || host.toInteger(args[2]) > 10000000)
        fail("the sample rate must be a positive integer, not " + host.print(args[2]));
    SF_INFO info;
    std::memset(&info, 0, sizeof info);
    info.samplerate = int(host.toInteger(args[2]));
    info.channels = int(t.columns);
    info.format = formatFor(path);
    if (!sf_format_check(&info)) fail("this format cannot hold " + std::to_string(t.columns) + " channels at this rate");
    SNDFILE *f = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!f) fail("cannot write audio to " + path + ": " + sf_strerror(nullptr));
    sf_count_t put = sf_writef_double(f, t.values.data(), t.rows);
    int closed = sf_close(f);
    if (put != t.rows || closed != 0) fail("writing " + path + " failed: " + sf_strerror(nullptr));
    return host.integer(t.rows);
}

// -------------------------------------------------------------------- text

// Numbers separated by commas, semicolons or blanks, a row a line; a first
// line that is not numeric is taken as a header and skipped.
Value readText(Host &host, const std::vector<Value> &args, std::ostream &, bool &)
{
    arity(args, 1, 2, "readtext(\"file\") or readtext(\"file\", \"float[4]\")");
    const std::string path = textArg(host, args[0], "the file name");
    const int32_t datatype = datatypeArg(host, args, 1);
    std::ifstream in(path);
    struct stat st;
    if (!in || (stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode)))
        fail("cannot read " + path + ": " + (in ? "is a directory" : std::strerror(errno)));
    std::vector<double> values;
    int64_t rows = 0, columns = -1, number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        for (char &c : line)
            if (c == ',' || c == ';' || c == '\t' || c == '\r') c = ' ';
        std::istringstream fields(line);
        std::vector<double> row;
        for (std::string field; fields >> field;) {
            char *end = nullptr;
            double x = std::strtod(field.c_str(), &end);
            if (end != field.c_str() + field.size()) {
                row.clear();
                if (number == 1) break;  // a header
                fail(path + ", line " + std::to_string(number) + ": \"" + field + "\" is not a number");
            }
            row.push_back(x);
        }
        if (row.empty()) continue;
        if (columns >= 0 && int64_t(row.size()) != columns)
            fail(path + ", line " + std::to_string(number) + " has " + std::to_string(row.size()) + " numbers where the first row has " +
                 std::to_string(columns));
        columns = int64_t(row.size());
        values.insert(values.end(), row.begin(), row.end());
        ++rows;
    }
    return tableValue(host, values, rows, columns < 0 ? 1 : columns, datatype);
}

Value writeText(Host &host, const std::vector<Value> &args, std::ostream &, bool &)
{
    arity(args, 2, 2, "writetext(\"file\", x)");
    const std::string path = textArg(host, args[0], "the file name");
    Table t = realTable(host, args[1], "the data");
    FILE *f = std::fopen(path.c_str(), "w");
    if (!f) fail("cannot write " + path + ": " + std::strerror(errno));
    for (int64_t r = 0; r < t.rows; ++r)
        for (int64_t c = 0; c < t.columns; ++c)
            std::fprintf(f, "%.17g%c", t.values[size_t(r * t.columns + c)], c + 1 == t.columns ? '\n' : ',');
    const bool bad = std::ferror(f) != 0;
    if (std::fclose(f) != 0 || bad) fail("writing " + path + " failed");
    return host.integer(t.rows);
}

// ------------------------------------------------------------------- plots

bool onPath(const char *program)
{
    const char *path = std::getenv("PATH");
    std::istringstream dirs(path ? path : "");
    for (std::string dir; std::getline(dirs, dir, ':');)
        if (!dir.empty() && access((dir + "/" + program).c_str(), X_OK) == 0) return true;
    return false;
}

// A chart of characters: the points' columns from x, rows from y.
void textPlot(std::ostream &out, const std::vector<double> &x, const std::vector<double> &y)
{
    const int width = 64, height = 16;
    double x0 = INFINITY, x1 = -INFINITY, y0 = INFINITY, y1 = -INFINITY;
    for (size_t i = 0; i < y.size(); ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
        x0 = std::min(x0, x[i]), x1 = std::max(x1, x[i]), y0 = std::min(y0, y[i]), y1 = std::max(y1, y[i]);
    }
    if (x0 > x1) {
        out << "(nothing finite to plot)\n";
        return;
    }
    if (x1 == x0) x1 = x0 + 1;
    if (y1 == y0) y1 = y0 + 1;
    std::vector<std::string> grid(height, std::string(width, ' '));
    for (size_t i = 0; i < y.size(); ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
        int c = int(std::lround((x[i] - x0) / (x1 - x0) * (width - 1)));
        int r = int(std::lround((y1 - y[i]) / (y1 - y0) * (height - 1)));
        grid[size_t(r)][size_t(c)] = '*';
    }
    char label[32];
    for (int r = 0; r < height; ++r) {
        std::snprintf(label, sizeof label, "%10.4g |", r == 0 ? y1 : r == height - 1 ? y0 : 0.0);
        out << (r == 0 || r == height - 1 ? label : "           |") << grid[size_t(r)] << '\n';
    }
    std::snprintf(label, sizeof label, "%-12.4g", x0);
    out << "           +" << std::string(width, '-') << '\n' << "            " << label << std::string(width - 24, ' ');
    std::snprintf(label, sizeof label, "%12.4g", x1);
    out << label << '\n';
}

// plot(y), plot(x, y), then optionally a file name ending in .png or .svg,
// then optionally its width and height in pixels.
Value plot(Host &host, const std::vector<Value> &args, std::ostream &out, bool &quiet)
{
    const char *usage = "plot(y), plot(x, y), plot(..., \"file.png\" or \"file.svg\"[, width, height])";
    size_t at = 0;
    std::vector<Table> series;
    while (at < args.size() && at < 2 && host.isRTable(args[at])) series.push_back(realTable(host, args[at++], "what is plotted"));
    if (series.empty()) fail(std::string("usage: ") + usage);
    std::vector<double> x, y = series.back().values;
    if (series.size() == 2) {
        x = series[0].values;
        if (x.size() != y.size()) fail("x and y must have the same number of elements");
    } else {
        for (size_t i = 0; i < y.size(); ++i) x.push_back(double(i + 1));
    }
    quiet = true;
    if (at == args.size()) {
        textPlot(out, x, y);
        return host.null();
    }
    const std::string file = textArg(host, args[at++], "the file name");
    int width = 640, height = 480;
    if (at < args.size()) {
        if (args.size() != at + 2 || !host.isInteger(args[at]) || !host.isInteger(args[at + 1])) fail(std::string("usage: ") + usage);
        int64_t w = host.toInteger(args[at]), h = host.toInteger(args[at + 1]);
        if (w < 16 || h < 16 || w > 10000 || h > 10000) fail("the width and height must be from 16 to 10000 pixels");
        width = int(w), height = int(h);
    }
    std::string terminal;
    if (file.size() > 4 && file.compare(file.size() - 4, 4, ".png") == 0) terminal = "pngcairo";
    else if (file.size() > 4 && file.compare(file.size() - 4, 4, ".svg") == 0) terminal = "svg";
    else fail("the plot's file name must end in .png or .svg: " + file);
    if (file.find_first_of("'\n") != std::string::npos) fail("the plot's file name may not contain ' or a line break");
    if (!onPath("gnuplot"))
        fail("plotting to a file needs gnuplot, which is not installed (on Debian: apt-get install gnuplot-nox)");
    std::remove(file.c_str());
    FILE *g = popen("gnuplot 2>/dev/null", "w");
    if (!g) fail("cannot start gnuplot");
    std::fprintf(g, "set terminal %s size %d,%d\nset output '%s'\nplot '-' with lines notitle\n", terminal.c_str(), width, height,
                 file.c_str());
    for (size_t i = 0; i < y.size(); ++i) std::fprintf(g, "%.17g %.17g\n", x[i], y[i]);
    std::fprintf(g, "e\n");
    const int status = pclose(g);
    struct stat st;
    if (status != 0 || stat(file.c_str(), &st) != 0 || st.st_size == 0) fail("gnuplot could not write " + file);
    out << "plotted to " << file << '\n';
    return host.null();
}

}  // namespace

const std::vector<Builtin> &builtins()
{
    static const std::vector<Builtin> all = {
        {"length", "length(x): the number of elements of an rtable or list", length},
        {"readaudio", "readaudio(\"file\"[, \"float[4]\"]): [samples, sample rate] of a sound file", readAudio},
        {"writeaudio", "writeaudio(\"file.wav\", x, rate): writes a sound (.wav .flac .aiff .au .ogg)", writeAudio},
        {"readtext", "readtext(\"file\"[, \"float[4]\"]): numbers from a text or CSV file", readText},
        {"writetext", "writetext(\"file\", x): numbers to a text file, a row a line", writeText},
        {"plot", "plot(y), plot(x, y)[, \"file.png\"/\"file.svg\"[, width, height]]: a chart", plot},
    };
    return all;
}

const Builtin *findBuiltin(const std::string &name)
{
    for (const Builtin &b : builtins())
        if (name == b.name) return &b;
    return nullptr;
}

}  // namespace orbsh
