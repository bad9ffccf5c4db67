#include "simulator/run_report.h"

#include "simulator/clock.h"

#include <algorithm>
#include <utility>

namespace ostrel {

RunReport::RunReport(const std::string& file, std::string suite) : suite(std::move(suite)), startedAtMs(nowMs()) {
    if (!file.empty())
        this->file.emplace(file);
}

void RunReport::write(std::vector<Check> checks, const std::string& failure) {
    if (!file)
        return;
    std::optional<JunitFile> once;
    once.swap(file);
    const bool isExplained =
        std::any_of(checks.begin(), checks.end(), [](const Check& check) { return check.outcome == Outcome::Failed; });
    const Outcome end = failure.empty() ? Outcome::Passed : isExplained ? Outcome::NotReached : Outcome::Failed;
    const double seconds = static_cast<double>(nowMs() - startedAtMs) / 1000;
    checks.push_back({"end of the run", seconds, end, failure});
    once->write(junitText(suite, seconds, checks));
}

} // namespace ostrel
