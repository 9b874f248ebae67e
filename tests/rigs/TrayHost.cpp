#include "rigs/TrayHost.h"

#include <algorithm>

namespace kestrovan::rigs {
namespace {

constexpr const char* menuPath = "/MenuBar";
constexpr const char* menuInterface = "com.canonical.dbusmenu";
constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";

// Without it Qt believes in no property.
constexpr const char* watcherDescription =
    "<node><interface name='org.kde.StatusNotifierWatcher'>"
    "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>"
    "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/></interface></node>";

struct Message {
    Message() = default;
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;
    ~Message() { sd_bus_message_unref(it); }

    sd_bus_message* it = nullptr;
};

/// The properties of one line, a{sv}.
void readProperties(sd_bus_message* message, TrayHost::Line& line, bool& isVisible)
{
    sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const char* key = "";
        sd_bus_message_read(message, "s", &key);
        const std::string name(key);
        int flag = 1;
        const char* text = "";
        if (name == "label" && sd_bus_message_read(message, "v", "s", &text) > 0)
            line.label = text;
        else if (name == "enabled" && sd_bus_message_read(message, "v", "b", &flag) > 0)
            line.isEnabled = flag != 0;
        else if (name == "visible" && sd_bus_message_read(message, "v", "b", &flag) > 0)
            isVisible = flag != 0;
        else
            sd_bus_message_skip(message, "v");
        sd_bus_message_exit_container(message);
    }
    sd_bus_message_exit_container(message);
}

/// The lines below the root, av of (ia{sv}av).
std::vector<TrayHost::Line> readLines(sd_bus_message* message)
{
    std::vector<TrayHost::Line> lines;
    sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "v");
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, "(ia{sv}av)") > 0) {
        TrayHost::Line line;
        bool isVisible = true;
        sd_bus_message_enter_container(message, SD_BUS_TYPE_STRUCT, "ia{sv}av");
        sd_bus_message_read(message, "i", &line.id);
        readProperties(message, line, isVisible);
        sd_bus_message_skip(message, "av");
        sd_bus_message_exit_container(message);
        sd_bus_message_exit_container(message);
        if (isVisible)
            lines.push_back(line);
    }
    return lines;
}

} // namespace

TrayHost::TrayHost(const PrivateBus& bus)
    : client_(bus.open()),
      watcher_(bus, "org.kde.StatusNotifierWatcher", [this](sd_bus_message* call) { return answer(call); })
{
    watcher_.perform([this](sd_bus* connection) {
        const auto count = [](sd_bus_message*, void* self, sd_bus_error*) {
            ++static_cast<TrayHost*>(self)->iconChanges_;
            return 0;
        };
        sd_bus_add_match(connection, nullptr, "type='signal',interface='org.kde.StatusNotifierItem',member='NewIcon'",
                         count, this);
    });
}

TrayHost::~TrayHost()
{
    sd_bus_flush_close_unref(client_);
}

int TrayHost::answer(sd_bus_message* call)
{
    const std::string member = sd_bus_message_get_member(call);
    const char* service = "";
    if (member == "RegisterStatusNotifierItem" && sd_bus_message_read(call, "s", &service) > 0) {
        const std::scoped_lock lock(mutex_);
        item_ = service;
    }
    if (member == "Introspect")
        return sd_bus_reply_method_return(call, "s", watcherDescription);
    if (member == "Get")
        return sd_bus_reply_method_return(call, "v", "b", 1); // IsStatusNotifierHostRegistered
    return sd_bus_reply_method_return(call, "");
}

std::string TrayHost::item() const
{
    const std::scoped_lock lock(mutex_);
    return item_;
}

bool TrayHost::waitForItem() const
{
    return waitUntil([this] { return !item().empty(); });
}

std::vector<TrayHost::Line> TrayHost::menu() const
{
    const auto service = item();
    Message reply;
    if (service.empty() || sd_bus_call_method(client_, service.c_str(), menuPath, menuInterface, "GetLayout", nullptr,
                                              &reply.it, "iias", 0, -1, 0) < 0)
        return {};
    std::uint32_t revision = 0;
    std::int32_t root = 0;
    sd_bus_message_read(reply.it, "u", &revision);
    sd_bus_message_enter_container(reply.it, SD_BUS_TYPE_STRUCT, "ia{sv}av");
    sd_bus_message_read(reply.it, "i", &root);
    sd_bus_message_skip(reply.it, "a{sv}");
    return readLines(reply.it);
}

bool TrayHost::shows(const std::string& label) const
{
    const auto lines = menu();
    return std::ranges::any_of(lines, [&](const Line& line) { return line.label == label; });
}

bool TrayHost::waitFor(const std::string& label) const
{
    return waitForItem() && waitUntil([&] { return shows(label); });
}

bool TrayHost::press(const std::string& label) const
{
    const auto lines = menu();
    const auto line = std::ranges::find(lines, label, &Line::label);
    return line != lines.end() && sd_bus_call_method(client_, item().c_str(), menuPath, menuInterface, "Event", nullptr,
                                                     nullptr, "isvu", line->id, "clicked", "i", 0, 0) >= 0;
}

void TrayHost::pressIcon() const
{
    sd_bus_call_method(client_, item().c_str(), itemPath, itemInterface, "Activate", nullptr, nullptr, "ii", 0, 0);
}

} // namespace kestrovan::rigs
