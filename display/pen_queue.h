// The strokes that the pen has made and what the program has been told of them. A stroke is a press, its moves and its
// release. No stroke is skipped and none is told twice; moves in between are not kept, since a look that comes late
// only wants the newest place.
#ifndef OSTREL_DISPLAY_PEN_QUEUE_H
#define OSTREL_DISPLAY_PEN_QUEUE_H

#include <cstddef>
#include <deque>

namespace ostrel {

struct PenPoint {
    int x;
    int y;
};
constexpr PenPoint PEN_UP = {-1, -1};

// Strokes that may wait to be told. A stroke that finds the queue full is lost as a whole, never its release alone.
constexpr size_t PEN_QUEUE_STROKES = 1024;

class PenQueue {
  public:
    // What the pen does, as it does it. A press without a release before it ends the stroke before.
    void press(PenPoint at);
    void move(PenPoint to);
    void release();

    // Forgets every stroke so far, and the rest of one that has not ended.
    void drop();

    // While disabled no stroke begins: not for the program, which is told of no new press, and not for the pen, whose
    // strokes stay invisible to their ends.
    void disable(bool disabled);

    // Moves on by one look and returns where the pen then is, PEN_UP when it is up: to the newest place, but no
    // further than the next press or release.
    PenPoint look();

    // Where the latest look, press or release that was told left the pen.
    PenPoint latest() const { return told; }

    // Moves on to the next press and returns true with its place; false, with nothing changed, when there is none.
    bool takePress(PenPoint& at);

    // Whether a press waits that nobody has been told of.
    bool hasPress() const;

    // Whether the current stroke still goes on: the one that the program was told of, else one that it was not told of
    // yet.
    bool isHeld() const { return firstIsTold ? !strokes.front().ended : hasPress() && following; }

    // Tells of the end of a stroke that has ended.
    void takeRelease();

  private:
    struct Stroke {
        PenPoint pressedAt;
        PenPoint newest;
        bool ended;
    };

    std::deque<Stroke> strokes;
    bool firstIsTold = false; // the press of the first stroke
    bool following = false;   // the pen is down in the last stroke
    bool disabled = false;
    PenPoint told = PEN_UP;
};

} // namespace ostrel

#endif
