// What touches the panel. Windows and viewers have one; where its strokes go is not their business.
#ifndef OSTREL_SIMULATOR_PEN_H
#define OSTREL_SIMULATOR_PEN_H

namespace ostrel {

class Pen {
  public:
    Pen() = default;
    virtual ~Pen() = default;
    Pen(const Pen&) = delete;
    Pen& operator=(const Pen&) = delete;

    // Panel pixels; what lies outside the panel counts as its edge. A press while the pen is down is a move, a move or
    // a release while it is up is nothing.
    virtual void press(int x, int y) = 0;
    virtual void move(int x, int y) = 0;
    virtual void release() = 0;
};

} // namespace ostrel

#endif
