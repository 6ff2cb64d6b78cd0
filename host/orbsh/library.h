// The library the shell calls into: loading it with dlopen and finding its
// exports by the names and kinds of the build's export table.
#ifndef ORBSH_LIBRARY_H
#define ORBSH_LIBRARY_H

#include <string>
#include <vector>

namespace orbsh {

enum class EntryKind { Export, Accessor, Helper };

struct Entry {
    std::string name;
    EntryKind kind;
    void *symbol = nullptr;  // null when the loaded library lacks it
};

class Library {
public:
    Library();
    ~Library();
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;

    // Loads the named file, or with an empty path liborb.so beside the
    // running executable and then liborb.so through the dynamic loader's
    // search. On failure returns false with the loader's messages in why.
    bool load(const std::string &path, std::string &why);

    bool loaded() const { return handle_ != nullptr; }
    const std::string &path() const { return path_; }

    // The table entry of a name, or null if the name is not in the table.
    const Entry *find(const std::string &name) const;
    const std::vector<Entry> &entries() const { return entries_; }

private:
    void *handle_ = nullptr;
    std::string path_;
    std::vector<Entry> entries_;
};

}  // namespace orbsh

#endif
