// Looks at the panel as often as it takes: a framebuffer tells nobody that it has changed.
#ifndef OSTREL_SIMULATOR_PANEL_WATCH_H
#define OSTREL_SIMULATOR_PANEL_WATCH_H

#include "simulator/event_loop.h"
#include "simulator/panel.h"

#include <functional>

namespace ostrel {

class PanelWatch {
  public:
    // Called after each look; `changed` tells of what others have seen first, too, and of what was there at first.
    using Looked = std::function<void(bool changed)>;

    PanelWatch(EventLoop& loop, Panel& panel, Looked looked);
    ~PanelWatch();
    PanelWatch(const PanelWatch&) = delete;
    PanelWatch& operator=(const PanelWatch&) = delete;

    // Something is about to change: the pen was moved. Looks every millisecond for a while.
    void lookClosely();

    // Whether anybody sees the panel; at first, nobody.
    void setSeen(bool isSeen);

  private:
    void look();
    void lookIn(int64_t delayMs);

    EventLoop& loop;
    Panel& panel;
    Looked looked;
    EventLoop::Timer timer = 0;
    uint64_t toldChanges = 0;
    int64_t lookAtMs = 0;
    int64_t changedAtMs = 0;
    int64_t closelyUntilMs = 0;
    bool seen = false;
};

} // namespace ostrel

#endif
