// Persistence: a program's files that survive a reboot, on the router's flash partition.
//
// The partition is mounted at /data for the moment of each operation only and unmounted again, also when the copying
// failed. Work is done by shell commands of at most 199 bytes; a longer one is cut there and names another file, so
// keep both texts, the file's name and the other path together below 140. The shell sees them as they are: they must
// not be null, and must not contain blanks or characters that it acts on, such as quotes, $, ;, & and *. No operation
// reports a failure: look for the copied file where it matters. Operations must not run at the same time, in one
// program or in two: one would unmount the other's partition.
#ifndef OSTREL_SETTINGS_PERSISTENCE_H
#define OSTREL_SETTINGS_PERSISTENCE_H

#include "util/api.h"

// Bytes of Persistence::path, its terminator included.
enum : int { PERSISTENCE_PATH_LENGTH = 150 };

class OSTREL_API Persistence {
  public:
    // The directory's name is made of both texts, the second one first: "/apps/<second>-<first>", cut at 149 bytes. The
    // directory is created if it does not exist.
    Persistence(char* first, char* second);
    ~Persistence();

    // Copies the file at `source` into the directory as `name`, in place of an earlier one.
    void persist(char* source, char* name);

    // Deletes `name` from the directory.
    void depersist(char* name);

    // Copies `name` from the directory to `destination`, a path of the router.
    void copyFile(char* name, char* destination);

    // The same for texts that are constant, both of them or one.
    template<typename First, typename Second>
    Persistence(First first, Second second) : Persistence(changeable(first), changeable(second)) {}
    template<typename Source, typename Name>
    void persist(Source source, Name name) {
        persist(changeable(source), changeable(name));
    }
    void depersist(const char* name) { depersist(changeable(name)); }
    template<typename Name, typename Destination>
    void copyFile(Name name, Destination destination) {
        copyFile(changeable(name), changeable(destination));
    }

    // The directory, relative to where the partition is mounted.
    char path[PERSISTENCE_PATH_LENGTH];

  private:
    static char* changeable(const char* text) { return const_cast<char*>(text); }
};

#endif
