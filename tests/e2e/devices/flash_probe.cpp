// A program that keeps a file on the flash partition through the toolkit, as its arguments say, and tells after every
// step whether something is left mounted.
//   persist FILE NAME   depersist NAME   copy NAME FILE   save NAME VALUE
#include <ostrel.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

namespace {

void tellMounts() {
    std::ifstream mounts("/proc/self/mountinfo");
    for (std::string line; std::getline(mounts, line);)
        if (line.find(" /data ") != std::string::npos)
            std::printf("/data is mounted\n");
}

int run(Persistence& persistence, char** words) {
    const std::string command = words[0];
    if (command == "persist") {
        persistence.persist(words[1], words[2]);
        return 3;
    }
    if (command == "depersist") {
        persistence.depersist(words[1]);
        return 2;
    }
    if (command == "copy") {
        persistence.copyFile(words[1], words[2]);
        return 3;
    }
    Memory memory;
    memory.saveSetting(words[1], words[2]);
    memory.commit();
    return 3;
}

} // namespace

int main(int argc, char** argv) {
    Persistence persistence("notes", "shop");
    tellMounts();
    for (int at = 1; at < argc;) {
        at += run(persistence, argv + at);
        tellMounts();
    }
    return 0;
}
