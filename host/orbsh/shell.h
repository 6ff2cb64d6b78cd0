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
    enum Type { Integer, Float, Complex, String, Ident, List, Call, RTable, Print, Index, Range } type = Integer;
    int64_t integer = 0;
    double re = 0, im = 0;
    std::string text;          // string contents, identifier or function name
    int32_t datatype = 0;      // rtable datatype code
    std::vector<Node> kids;    // list elements, call arguments; for Index the
                               // indexed value then the indices; for Range
                               // the first and last index
};

struct Statement {
    enum Type { Empty, Bind, Store, Show, Help, Quit } type = Empty;
    std::string name;  // bound variable, or the topic of help
    Node expr;         // for Store, the value; target holds the element
    Node target;
    bool timed = false;     // time EXPR: also print the wall time
    bool tolerated = false; // try EXPR: an error does not count as a failure
};

// Thrown for the shell's own errors (syntax, unknown names, bad elements) and
// for errors a library call raised, which are shown without a line number.
struct ShellError {
    std::string message;
    bool fromLibrary = false;
};

// A duration in nanoseconds as text with a unit ("1.234 ms").
std::string durationText(double ns);

// Parses one line; throws ShellError on a syntax error.
Statement parseLine(const std::string &line);

class Shell {
public:
    // Output (results, errors, the library's printed text) goes to out.
    Shell(orbhost::Host &host, const Library &library, std::ostream &out);

    // Runs one line. lineNumber > 0 (script mode) puts the line number into
    // the shell's error messages. Returns false when the line asks to leave.
    bool runLine(const std::string &line, int lineNumber = 0);
    // Lines that ended in an error (not counting those run with try).
    int failures() const { return failures_; }

    std::string helpText() const;
    // Names a line may start with or call: keywords, built-in functions,
    // bound variables and the library's exports (for completion).
    std::vector<std::string> words() const;

private:
    orbhost::Value eval(const Node &n);
    orbhost::Value callExport(const Node &n);
    orbhost::Value makeRTable(const Node &n);
    orbhost::Value index(const Node &n);
    void store(const Node &target, orbhost::Value v);
    std::string suggest(const std::string &name) const;
    std::string helpOn(const std::string &name) const;

    orbhost::Host &host_;
    const Library &library_;
    std::ostream &out_;
    std::map<std::string, orbhost::Value> vars_;
    int failures_ = 0;
    bool quiet_ = false;  // a built-in function printed its own result
};

}  // namespace orbsh

#endif
