#include "simulator/web/vnc_server.h"

#include "simulator/failure.h"

#include <atomic>
#include <mutex>
#include <poll.h>
#include <rfb/rfb.h>
#include <sys/eventfd.h>
#include <thread>
#include <utility>

namespace ostrel {
namespace {

void raise(const Descriptor& event) {
    const uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(event.get(), &one, sizeof one); // full: it is raised already
}

void lower(const Descriptor& event) {
    uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = read(event.get(), &count, sizeof count);
}

void sayNothing(const char* /*format*/, ...) {}

} // namespace

struct VncServer::Worker {
    explicit Worker(std::string name);
    ~Worker();

    void run();
    void adoptViewers();
    void drawPicture();
    void waitForWork() const;

    static Worker& of(rfbClientPtr client) { return *static_cast<Worker*>(client->screen->screenData); }
    static void point(int buttons, int x, int y, rfbClientPtr client);
    static void leave(rfbClientPtr client);
    static rfbNewClientAction welcome(rfbClientPtr client);
    void tell(const PointerEvent& event);

    // Between the threads.
    std::mutex mutex;
    std::vector<Descriptor> newViewers;
    Picture picture;
    bool pictureIsNew = false;
    std::vector<PointerEvent> pointerEvents;
    std::atomic<bool> stopping = false;
    Descriptor work;
    Descriptor pointed;

    // The worker's own.
    std::string title;
    rfbScreenInfoPtr screen = nullptr;
    std::vector<uint32_t> pixels;
    std::thread thread;
};

VncServer::Worker::Worker(std::string name)
    : work(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), pointed(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      title(std::move(name)), pixels(PANEL_PIXELS) {
    constexpr int BITS_PER_CHANNEL = 8;
    constexpr int CHANNELS = 3;
    constexpr int BYTES_PER_PIXEL = 4;
    rfbLog = sayNothing;
    rfbErr = sayNothing;
    screen = rfbGetScreen(nullptr, nullptr, PANEL_WIDTH, PANEL_HEIGHT, BITS_PER_CHANNEL, CHANNELS, BYTES_PER_PIXEL);
    if (screen == nullptr)
        throw Failure("cannot start the VNC server: not enough memory");
    screen->serverFormat.redShift = 16;
    screen->serverFormat.greenShift = 8;
    screen->serverFormat.blueShift = 0;
    screen->frameBuffer = reinterpret_cast<char*>(pixels.data());
    screen->desktopName = title.c_str();
    screen->screenData = this;
    screen->ptrAddEvent = point;
    screen->newClientHook = welcome;
    screen->alwaysShared = TRUE;
    screen->deferUpdateTime = 0;
    screen->deferPtrUpdateTime = 0;
    screen->cursor = nullptr;
    // No listening of its own, for VNC or for HTTP.
    screen->port = 0;
    screen->ipv6port = 0;
    screen->autoPort = FALSE;
    screen->httpPort = 0;
    screen->http6Port = 0;
    screen->httpDir = nullptr;
    rfbInitServer(screen);
    thread = std::thread([this] { run(); });
}

VncServer::Worker::~Worker() {
    stopping = true;
    raise(work);
    thread.join();
    rfbShutdownServer(screen, TRUE);
    screen->frameBuffer = nullptr;
    rfbScreenCleanup(screen);
}

void VncServer::Worker::run() {
    while (!stopping) {
        waitForWork();
        adoptViewers();
        drawPicture();
        rfbProcessEvents(screen, 0);
    }
}

void VncServer::Worker::waitForWork() const {
    std::vector<pollfd> fds = {{work.get(), POLLIN, 0}};
    rfbClientIteratorPtr clients = rfbGetClientIterator(screen);
    while (rfbClientPtr client = rfbClientIteratorNext(clients))
        fds.push_back({client->sock, POLLIN, 0});
    rfbReleaseClientIterator(clients);
    poll(fds.data(), fds.size(), -1);
    lower(work);
}

void VncServer::Worker::adoptViewers() {
    std::vector<Descriptor> viewers;
    {
        const std::lock_guard lock(mutex);
        viewers.swap(newViewers);
    }
    for (Descriptor& viewer : viewers)
        rfbNewClientConnection(screen, viewer.release());
}

// Bands of rows that hold a change are sent as one rectangle, as wide as the change.
void VncServer::Worker::drawPicture() {
    constexpr int BAND_ROWS = 16;
    Picture next;
    {
        const std::lock_guard lock(mutex);
        if (!std::exchange(pictureIsNew, false))
            return;
        next = picture;
    }
    for (int top = 0; top < PANEL_HEIGHT; top += BAND_ROWS) {
        int left = PANEL_WIDTH;
        int right = 0;
        for (int i = top * PANEL_WIDTH; i < (top + BAND_ROWS) * PANEL_WIDTH; ++i) {
            const auto index = static_cast<size_t>(i);
            const uint32_t colour = toRgb888(next[index]);
            if (pixels[index] == colour)
                continue;
            pixels[index] = colour;
            left = std::min(left, i % PANEL_WIDTH);
            right = std::max(right, i % PANEL_WIDTH + 1);
        }
        if (left < right)
            rfbMarkRectAsModified(screen, left, top, right, top + BAND_ROWS);
    }
}

rfbNewClientAction VncServer::Worker::welcome(rfbClientPtr client) {
    client->clientGoneHook = leave;
    return RFB_CLIENT_ACCEPT;
}

// Any button is the pen: touch screens send the right one for a long press.
void VncServer::Worker::point(int buttons, int x, int y, rfbClientPtr client) {
    constexpr int BUTTONS = 7;
    of(client).tell({reinterpret_cast<uintptr_t>(client), (buttons & BUTTONS) != 0, x, y});
}

void VncServer::Worker::leave(rfbClientPtr client) {
    of(client).tell({reinterpret_cast<uintptr_t>(client), false, 0, 0});
}

void VncServer::Worker::tell(const PointerEvent& event) {
    const std::lock_guard lock(mutex);
    pointerEvents.push_back(event);
    raise(pointed);
}

VncServer::VncServer(const std::string& name) : worker(std::make_unique<Worker>(name)) {}

VncServer::~VncServer() = default;

void VncServer::show(const Picture& picture) {
    {
        const std::lock_guard lock(worker->mutex);
        worker->picture = picture;
        worker->pictureIsNew = true;
    }
    raise(worker->work);
}

void VncServer::addViewer(Descriptor socket) {
    {
        const std::lock_guard lock(worker->mutex);
        worker->newViewers.push_back(std::move(socket));
    }
    raise(worker->work);
}

int VncServer::pointerDescriptor() const {
    return worker->pointed.get();
}

std::vector<PointerEvent> VncServer::takePointerEvents() {
    const std::lock_guard lock(worker->mutex);
    lower(worker->pointed);
    return std::exchange(worker->pointerEvents, {});
}

} // namespace ostrel
