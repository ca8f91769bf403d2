#include "window_watch.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <chrono>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int kSmallest = 100;  // pixels
constexpr int kStrip = 32;
/// What the window manager draws around a window.
constexpr int kFrame = 40;

double now() {
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

/// A window may close while it is looked at.
int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

/// Whether a strip down the window has more than one colour.
bool showsSomething(Display* display, Window window, int width, int height) {
    XImage* image = XGetImage(display, window, width / 3, kFrame, kStrip,
                              static_cast<unsigned>(height - 2 * kFrame), AllPlanes, ZPixmap);
    if (!image)
        return false;
    const unsigned long first = XGetPixel(image, 0, 0);
    bool different = false;
    for (int y = 0; y < image->height && !different; y += 2)
        for (int x = 0; x < image->width && !different; ++x)
            different = XGetPixel(image, x, y) != first;
    XDestroyImage(image);
    return different;
}

}  // namespace

struct WindowWatch::Server {
    Display* display = XOpenDisplay(nullptr);
    ~Server() {
        if (display)
            XCloseDisplay(display);
    }
};

WindowWatch::WindowWatch() : server_(std::make_unique<Server>()) {
    if (!works())
        return;
    XSetErrorHandler(ignoreError);
    XSelectInput(server_->display, DefaultRootWindow(server_->display), SubstructureNotifyMask);
    XSync(server_->display, True);
}

WindowWatch::~WindowWatch() = default;

bool WindowWatch::works() const {
    return server_->display != nullptr;
}

std::optional<double> WindowWatch::painted() {
    std::vector<Window> mapped;
    for (const double limit = now() + 10; now() < limit; std::this_thread::sleep_for(1ms)) {
        while (XPending(server_->display) > 0) {
            XEvent event;
            XNextEvent(server_->display, &event);
            if (event.type == MapNotify)
                mapped.push_back(event.xmap.window);
        }
        for (const Window window : mapped) {
            XWindowAttributes attributes;
            if (XGetWindowAttributes(server_->display, window, &attributes) != 0 &&
                attributes.map_state == IsViewable && attributes.width > kSmallest &&
                attributes.height > kSmallest &&
                showsSomething(server_->display, window, attributes.width, attributes.height))
                return now();
        }
    }
    return std::nullopt;
}
