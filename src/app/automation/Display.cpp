#include "app/automation/Display.h"

#include <cstring>
#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QLibraryInfo>

namespace kavu {

namespace {

/// Through the library that the toolkit itself uses, which knows the access rights as well.
bool takesXClients() {
    void* const library = ::dlopen("libxcb.so.1", RTLD_NOW);
    if (library == nullptr) {
        return false;
    }
    using Connect = void* (*)(const char* display, int* screen);
    using HasError = int (*)(void* connection);
    using Disconnect = void (*)(void* connection);
    const auto connect = reinterpret_cast<Connect>(::dlsym(library, "xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(::dlsym(library, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(::dlsym(library, "xcb_disconnect"));
    bool takes = false;
    if (connect != nullptr && hasError != nullptr && disconnect != nullptr) {
        void* const connection = connect(nullptr, nullptr);
        takes = connection != nullptr && hasError(connection) == 0;
        disconnect(connection);
    }
    return takes;
}

bool takesWaylandClients(const Environment& environment, const std::string& name) {
    const auto plugins =
        QDir(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
    if (plugins.entryList({QStringLiteral("libqwayland*")}, QDir::Files).isEmpty()) {
        return false;
    }
    const auto folder = environment.variable("XDG_RUNTIME_DIR").value_or("");
    const auto path = name.starts_with('/') ? name : folder + "/" + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0) {
        return false;
    }
    const bool takes =
        ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return takes;
}

}  // namespace

bool hasDisplay(const Environment& environment) {
    const auto platform = environment.variable("QT_QPA_PLATFORM").value_or("");
    if (platform.starts_with("offscreen") || platform.starts_with("minimal")) {
        return false;
    }
    const bool wantsX = platform.empty() || platform.starts_with("xcb");
    if (wantsX && environment.variable("DISPLAY") && takesXClients()) {
        return true;
    }
    const auto wayland = environment.variable("WAYLAND_DISPLAY");
    const bool wantsWayland = platform.empty() || platform.starts_with("wayland");
    return wantsWayland && wayland && takesWaylandClients(environment, *wayland);
}

}  // namespace kavu
