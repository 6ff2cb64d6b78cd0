// The shell's own functions, called like exports: lengths, data in and out
// of files (audio through libsndfile, numbers as text), and plots (in the
// terminal, or to PNG and SVG files through gnuplot run as a subprocess).
#ifndef ORBSH_BUILTINS_H
#define ORBSH_BUILTINS_H

#include <ostream>
#include <string>
#include <vector>

#include "host.h"

namespace orbsh {

struct Builtin {
    const char *name;
    const char *usage;  // one line for help
    // Returns the result; sets quiet when there is nothing to print. Throws
    // ShellError.
    orbhost::Value (*run)(orbhost::Host &host, const std::vector<orbhost::Value> &args, std::ostream &out, bool &quiet);
};

const Builtin *findBuiltin(const std::string &name);
const std::vector<Builtin> &builtins();

}  // namespace orbsh

#endif
