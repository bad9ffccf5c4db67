// What is going on, told in one line when it takes longer than a second.
#ifndef OSTREL_SIMULATOR_PROGRESS_H
#define OSTREL_SIMULATOR_PROGRESS_H

#include "simulator/event_loop.h"

#include <functional>
#include <string>

namespace ostrel {

class Progress {
  public:
    // Names what is being waited for now; empty when nothing is. Asked several times a second.
    using Stage = std::function<std::string()>;
    using Tell = std::function<void(const std::string& stage)>;

    Progress(EventLoop& loop, Stage stage, Tell tell);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Tells each stage that lasts a second, once. Goes on until nothing is waited for; calling it again begins again.
    void watch();

  private:
    void look();

    EventLoop& loop;
    Stage stage;
    Tell tell;
    EventLoop::Timer timer = 0;
    std::string current;
    int64_t sinceMs = 0;
    bool told = false;
};

} // namespace ostrel

#endif
