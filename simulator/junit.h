// What a run has shown, as a JUnit file for the eyes of a CI.
#ifndef OSTREL_SIMULATOR_JUNIT_H
#define OSTREL_SIMULATOR_JUNIT_H

#include "simulator/descriptor.h"

#include <string>
#include <vector>

namespace ostrel {

enum class Outcome { Passed, Failed, NotReached };

struct Check {
    std::string name;
    double seconds = 0;
    Outcome outcome = Outcome::Passed;
    std::string message; // of one that failed
};

// The whole file: one test suite, one test case a check. Any bytes are fit for a name: what is no UTF-8 or may not
// stand in XML becomes U+FFFD.
std::string junitText(const std::string& suite, double seconds, const std::vector<Check>& checks);

class JunitFile {
  public:
    // Replaces `file` by an empty one. Throws Failure when it cannot be written.
    explicit JunitFile(const std::string& file);

    // Throws Failure.
    void write(const std::string& text);

  private:
    std::string name;
    Descriptor file;
};

} // namespace ostrel

#endif
