#include "simulator/panel.h"

#include "simulator/failure.h"

#include <algorithm>
#include <fcntl.h>

namespace ostrel {

Panel::Panel(const std::string& file, const SharedPage& page)
    : framebuffer(open(file.c_str(), O_RDWR | O_CLOEXEC)), page(page), seen(PANEL_PIXELS), next(PANEL_PIXELS) {
    if (!framebuffer.isOpen())
        throw systemFailure("cannot open " + file);
}

bool Panel::isDark() const {
    return page.backlightOff != 0 || page.blanked != 0;
}

bool Panel::look() {
    if (isDark())
        std::fill(next.begin(), next.end(), uint16_t{0});
    else
        readFramebuffer(next);
    if (next == seen)
        return false;
    seen.swap(next);
    ++changeCount;
    return true;
}

bool Panel::isBlank() {
    readFramebuffer(next);
    return std::all_of(next.begin(), next.end(), [](uint16_t pixel) { return pixel == 0; });
}

// Read and not mapped: a program may truncate its /dev/fb0, which a real one shrugs off; this one is made whole again.
void Panel::readFramebuffer(Picture& picture) const {
    size_t done = 0;
    auto* bytes = reinterpret_cast<char*>(picture.data());
    while (done < PANEL_BYTES) {
        const ssize_t count = pread(framebuffer.get(), bytes + done, PANEL_BYTES - done, static_cast<off_t>(done));
        if (count <= 0)
            break;
        done += static_cast<size_t>(count);
    }
    if (done == PANEL_BYTES)
        return;
    std::fill(bytes + done, bytes + PANEL_BYTES, '\0');
    if (ftruncate(framebuffer.get(), PANEL_BYTES) != 0)
        return; // looked at again soon
}

} // namespace ostrel
