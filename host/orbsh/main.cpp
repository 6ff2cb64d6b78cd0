// orbsh: a small shell that loads the library into the stand-in host and
// calls its exports, from a script file or interactively.
//
//   orbsh [--lib PATH] [--echo] [FILE]
//
// With FILE, runs the script and exits 0 (2 when the file cannot be read);
// errors in the script are reported and the script goes on. Without FILE,
// reads lines with editing and history, prompt "> ".
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include <editline/readline.h>

#include "host.h"
#include "library.h"
#include "shell.h"

namespace {

void usage(std::ostream &os)
{
    os << "usage: orbsh [--lib PATH] [--echo] [FILE]\n"
          "  --lib PATH  the library to load (default: liborb.so beside orbsh,\n"
          "              then liborb.so through the dynamic loader)\n"
          "  --echo      show each script line, prefixed by \"> \", before its output\n"
          "  FILE        a script to run; without it, lines are read interactively\n";
}

bool readFile(const std::string &path, std::string &text, std::string &why)
{
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) {
        why = "is a directory";
        return false;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        why = std::strerror(errno);
        return false;
    }
    std::ostringstream s;
    s << in.rdbuf();
    if (in.bad()) {
        why = "read error";
        return false;
    }
    text = s.str();
    return true;
}

int runScript(orbsh::Shell &shell, const std::string &text, bool echo)
{
    size_t start = 0;
    int number = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(start, end - start);
        start = end + 1;
        ++number;
        if (echo) std::cout << (line.find_first_not_of(" \t\r") == std::string::npos ? "" : "> ") << line << '\n';
        if (!shell.runLine(line, number)) break;
    }
    return 0;
}

void runInteractive(orbsh::Shell &shell)
{
    if (!isatty(STDIN_FILENO)) {
        // Piped input: plain lines, no prompt.
        std::string line;
        while (std::getline(std::cin, line))
            if (!shell.runLine(line)) return;
        return;
    }
    for (;;) {
        char *raw = readline("> ");
        if (!raw) {
            std::cout << '\n';
            return;
        }
        std::string line(raw);
        std::free(raw);
        if (line.find_first_not_of(" \t\r") != std::string::npos) add_history(line.c_str());
        if (!shell.runLine(line)) return;
    }
}

}  // namespace

int main(int argc, char **argv)
{
    std::string libPath, file;
    bool echo = false, haveFile = false;
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        if (a == "--lib" || a == "-l") {
            if (i + 1 >= argc) {
                std::cerr << "orbsh: --lib needs a path\n";
                usage(std::cerr);
                return 2;
            }
            libPath = argv[++i];
            if (libPath.empty()) {
                std::cerr << "orbsh: --lib needs a path\n";
                return 2;
            }
        } else if (a.rfind("--lib=", 0) == 0 && a.size() > 6) {
            libPath = a.substr(6);
        } else if (a == "--echo" || a == "-e") {
            echo = true;
        } else if (a == "--help" || a == "-h") {
            usage(std::cout);
            return 0;
        } else if (a.size() > 1 && a[0] == '-') {
            std::cerr << "orbsh: unknown option " << a << '\n';
            usage(std::cerr);
            return 2;
        } else if (haveFile) {
            std::cerr << "orbsh: only one script file may be given\n";
            return 2;
        } else {
            file = a;
            haveFile = true;
        }
    }

    std::string text;
    if (haveFile) {
        std::string why;
        if (!readFile(file, text, why)) {
            std::cerr << "orbsh: cannot read " << file << ": " << why << '\n';
            return 2;
        }
    }

    orbsh::Library library;
    std::string why;
    if (!library.load(libPath, why))
        std::cerr << "orbsh: no library loaded (" << why << "); only the shell's own statements work\n";

    orbhost::Host host;
    orbsh::Shell shell(host, library, std::cout);
    if (haveFile) return runScript(shell, text, echo);
    runInteractive(shell);
    return 0;
}
