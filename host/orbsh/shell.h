// The shell's language: parsing one line into a statement and running it
// against a host and the loaded library. The syntax is described at the top
// of shell.cpp and in the help text.
#ifndef ORBSH_SHELL_H
#define ORBSH_SHELL_H

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "host.h"
#include "library.h"

namespace orbsh {

// A parsed expression.
struct Node {
    enum Type { Integer, Float, Complex, String, Ident, List, Call, RTable, Print } type = Integer;
    int64_t integer = 0;
    double re = 0, im = 0;
    std::string text;          // string contents, identifier or function name
    int32_t datatype = 0;      // rtable datatype code
    std::vector<Node> kids;    // list elements or call arguments
};

struct Statement {
    enum Type { Empty, Bind, Show, Help, Quit } type = Empty;
    std::string name;  // bound variable
    Node expr;
};

// Thrown for the shell's own errors (syntax, unknown names, bad elements) and
// for errors a library call raised, which are shown without a line number.
struct ShellError {
    std::string message;
    bool fromLibrary = false;
};

// Parses one line; throws ShellError on a syntax error.
Statement parseLine(const std::string &line);

class Shell {
public:
    // Output (results, errors, the library's printed text) goes to out.
    Shell(orbhost::Host &host, const Library &library, std::ostream &out);

    // Runs one line. lineNumber > 0 (script mode) puts the line number into
    // the shell's error messages. Returns false when the line asks to leave.
    bool runLine(const std::string &line, int lineNumber = 0);

    std::string helpText() const;

private:
    orbhost::Value eval(const Node &n);
    orbhost::Value callExport(const Node &n);
    orbhost::Value makeRTable(const Node &n);

    orbhost::Host &host_;
    const Library &library_;
    std::ostream &out_;
    std::map<std::string, orbhost::Value> vars_;
};

}  // namespace orbsh

#endif
