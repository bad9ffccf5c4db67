// Tells a CI what became of a run.
#ifndef OSTREL_SIMULATOR_RUN_REPORT_H
#define OSTREL_SIMULATOR_RUN_REPORT_H

#include "simulator/junit.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ostrel {

class RunReport {
  public:
    // `file` is empty when nobody wants it. Throws Failure when it cannot be written.
    RunReport(const std::string& file, std::string suite);

    // The script's checks, and one for the end of the run: `failure` is empty when all is well. A run that a check has
    // failed does not fail twice. Only the first call counts. Throws Failure.
    void write(std::vector<Check> checks, const std::string& failure);

  private:
    std::optional<JunitFile> file;
    std::string suite;
    int64_t startedAtMs;
};

} // namespace ostrel

#endif
