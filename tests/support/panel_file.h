// A panel for a test: a framebuffer file of its own, which the display library opens afresh. Pixels are read from the
// file, so that a drawing that was never flushed is not seen.
#ifndef OSTREL_TESTS_SUPPORT_PANEL_FILE_H
#define OSTREL_TESTS_SUPPORT_PANEL_FILE_H

#include "tests/support/picture.h"

// Needs the library's objects: link ostrel_display. `before` is what the file shows when the library opens it.
class PanelFile {
  public:
    explicit PanelFile(uint16_t before = 0);
    ~PanelFile();
    PanelFile(const PanelFile&) = delete;
    PanelFile& operator=(const PanelFile&) = delete;

    Picture picture() const;
    Picture picture(const ostrel::Rect& area) const;
    uint16_t at(int x, int y) const;

    // Paints the file as another program would, behind the library's back.
    void overwrite(uint16_t colour) const;

    const std::string& path() const { return filePath; }

  private:
    std::string filePath;
};

#endif
