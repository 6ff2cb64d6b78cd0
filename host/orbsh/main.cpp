// orbsh: a small shell that loads the library into the stand-in host and
// calls its exports, from a script file or interactively.
//
//   orbsh [--lib PATH] [--echo] [--strict] [FILE | -]
//
// With FILE (- for standard input), runs the script: errors are reported and
// the script goes on (with --strict it stops at the first). The exit status
// is 0 when every line succeeded, 1 when a line failed or the output could
// not be written, 2 for a bad command line or an unreadable script, 130 when
// Ctrl-C stopped the script. Without FILE, reads lines with editing, history
// (kept in ~/.orbsh_history) and Tab completion, prompt "> "; Ctrl-C there
// drops the line being typed, never the session.
#include <signal.h>
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

#ifndef ORB_VERSION_TEXT
#define ORB_VERSION_TEXT "unknown"
#endif

namespace {

// Set by Ctrl-C; the script loop stops at the next line, the prompt drops
// the line being typed.
volatile sig_atomic_t interrupted = 0;

void onInterrupt(int) { interrupted = 1; }

// Ctrl-C without SA_RESTART, so that a read waiting at the prompt returns.
void catchInterrupts()
{
    struct sigaction sa;
    std::memset(&sa, 0, sizeof sa);
    sa.sa_handler = onInterrupt;
    sigemptyset(&sa.sa_mask);
    sigaction(SIGINT, &sa, nullptr);
}

void usage(std::ostream &os)
{
    os << "usage: orbsh [--lib PATH] [--echo] [--strict] [FILE | -]\n"
          "  --lib PATH  the library to load (default: liborb.so beside orbsh,\n"
          "              then liborb.so through the dynamic loader)\n"
          "  --echo      show each script line, prefixed by \"> \", before its output\n"
          "  --strict    stop a script at its first error\n"
          "  --version   print the version and leave\n"
          "  FILE        a script to run (- reads it from standard input); without\n"
          "              it, lines are read interactively\n"
          "Exit status: 0 all lines succeeded, 1 a line failed or output could not\n"
          "be written, 2 bad command line or unreadable script, 130 interrupted.\n";
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

int runScript(orbsh::Shell &shell, const std::string &text, bool echo, bool strict)
{
    // A UTF-8 byte-order mark is no part of the first line; CR before LF is
    // blank space to the lexer.
    size_t start = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    int number = 0;
    catchInterrupts();
    while (start < text.size()) {
        if (interrupted) {
            std::cout << "Interrupted at line " << number + 1 << '\n';
            return 130;
        }
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(start, end - start);
        start = end + 1;
        ++number;
        if (echo) std::cout << (line.find_first_not_of(" \t\r") == std::string::npos ? "" : "> ") << line << '\n';
        if (!shell.runLine(line, number)) break;
        if (strict && shell.failures() > 0) break;
    }
    return shell.failures() > 0 ? 1 : 0;
}

// Tab completion: the shell's words that start with what has been typed.
orbsh::Shell *completing = nullptr;

char *nextWord(const char *prefix, int state)
{
    static std::vector<std::string> words;
    static size_t at;
    if (state == 0) {
        words = completing ? completing->words() : std::vector<std::string>{};
        at = 0;
    }
    const size_t n = std::strlen(prefix);
    while (at < words.size()) {
        const std::string &w = words[at++];
        if (w.compare(0, n, prefix) == 0) return strdup(w.c_str());
    }
    return nullptr;
}

char **complete(const char *text, int, int)
{
    rl_attempted_completion_over = 1;  // no file names
    return rl_completion_matches(text, nextWord);
}

std::string historyPath()
{
    const char *home = std::getenv("HOME");
    return home && *home ? std::string(home) + "/.orbsh_history" : std::string();
}

int runInteractive(orbsh::Shell &shell, bool strict)
{
    if (!isatty(STDIN_FILENO)) {
        // Piped input: plain lines, no prompt, no line numbers.
        std::string line;
        while (std::getline(std::cin, line))
            if (!shell.runLine(line) || (strict && shell.failures() > 0)) break;
        return shell.failures() > 0 ? 1 : 0;
    }
    completing = &shell;
    rl_attempted_completion_function = complete;
    const std::string history = historyPath();
    if (!history.empty()) read_history(history.c_str());
    catchInterrupts();
    for (;;) {
        interrupted = 0;
        char *raw = readline("> ");
        if (interrupted) {
            // Ctrl-C: the line typed so far is dropped.
            std::free(raw);
            std::cout << "^C\n";
            continue;
        }
        if (!raw) {
            std::cout << '\n';
            break;
        }
        std::string line(raw);
        std::free(raw);
        if (line.find_first_not_of(" \t\r") != std::string::npos) {
            add_history(line.c_str());
            if (!history.empty()) write_history(history.c_str());
        }
        if (!shell.runLine(line)) break;
    }
    return 0;
}

}  // namespace

int main(int argc, char **argv)
{
    std::string libPath, file;
    bool echo = false, haveFile = false, strict = false;
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
        } else if (a == "--strict") {
            strict = true;
        } else if (a == "--version") {
            std::cout << "orbsh " ORB_VERSION_TEXT "\n";
            return 0;
        } else if (a == "-") {
            if (haveFile) {
                std::cerr << "orbsh: only one script file may be given\n";
                return 2;
            }
            file = a;
            haveFile = true;
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
    if (haveFile && file == "-") {
        std::ostringstream s;
        s << std::cin.rdbuf();
        text = s.str();
    } else if (haveFile) {
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
    int status = haveFile ? runScript(shell, text, echo, strict) : runInteractive(shell, strict);
    std::cout.flush();
    if (!std::cout || std::fflush(stdout) != 0) {
        std::cerr << "orbsh: cannot write the output: " << std::strerror(errno ? errno : EIO) << '\n';
        return 1;
    }
    return status;
}
