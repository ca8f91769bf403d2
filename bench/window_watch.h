#pragma once

#include <memory>
#include <optional>

/// Watches the X server for the next window that a program opens. It shares no header with the
/// toolkit, whose names those of the X library would replace.
class WindowWatch {
public:
    /// From now on. Nothing can be watched without a display.
    WindowWatch();
    ~WindowWatch();
    WindowWatch(const WindowWatch&) = delete;
    WindowWatch& operator=(const WindowWatch&) = delete;

    bool works() const;

    /// Waits until a large window shows more than one colour; answers when, in seconds of the
    /// steady clock. Nothing after ten seconds.
    std::optional<double> painted();

private:
    struct Server;
    std::unique_ptr<Server> server_;
};
