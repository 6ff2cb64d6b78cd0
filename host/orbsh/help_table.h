// What `help NAME` and `help` say about each export of the library: one
// table, in help_table.cpp.
#ifndef ORBSH_HELP_TABLE_H
#define ORBSH_HELP_TABLE_H

#include <string>
#include <vector>

namespace orbsh {

struct ExportHelp {
    const char *name;
    const char *family;     // the heading help groups it under
    const char *counts;     // accepted argument counts, e.g. "2 or 3"
    const char *datatypes;  // what argument 1 takes
    const char *what;       // one sentence
    const char *example;    // one line that runs on a fresh shell
};

// The table, grouped by family in the order help lists the families.
const std::vector<ExportHelp> &exportHelp();
// The line of a name, or null.
const ExportHelp *findExportHelp(const std::string &name);

}  // namespace orbsh

#endif
