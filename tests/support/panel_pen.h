// A pen that tests hold: the touch stream that the display library reads in this process.
#ifndef OSTREL_TESTS_SUPPORT_PANEL_PEN_H
#define OSTREL_TESTS_SUPPORT_PANEL_PEN_H

class PanelPen {
  public:
    // Opens the display library's pen on the stream. Once a process: the library opens its pen only once.
    PanelPen();

    // What a touch screen reports: the point, and whether the pen is down.
    void send(int down, int x, int y) const;

  private:
    int stream = -1;
};

#endif
