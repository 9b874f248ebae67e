#include "rigs/ScreenReader.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace kestrovan::rigs {
namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";
constexpr const char* rootPath = "/org/a11y/atspi/accessible/root";
constexpr const char* registry = "org.a11y.atspi.Registry";

// Bits of AtspiStateType.
constexpr unsigned enabledBit = 8;

struct Unref {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using BusReply = std::unique_ptr<sd_bus_message, Unref>;

template <class... Arguments>
BusReply call(sd_bus* bus, const std::string& program, const std::string& path, const char* interface,
              const char* member, const char* types = nullptr, Arguments... arguments)
{
    sd_bus_message* reply = nullptr;
    sd_bus_call_method(bus, program.c_str(), path.c_str(), interface, member, nullptr, &reply, types, arguments...);
    return BusReply(reply);
}

std::string readText(const BusReply& reply)
{
    const char* text = nullptr;
    return reply && sd_bus_message_read(reply.get(), "s", &text) > 0 ? text : "";
}

std::uint32_t readStates(const BusReply& reply)
{
    std::uint32_t states = 0;
    if (reply && sd_bus_message_enter_container(reply.get(), 'a', "u") > 0)
        sd_bus_message_read(reply.get(), "u", &states);
    return states;
}

bool has(std::uint32_t states, unsigned bit)
{
    return ((states >> bit) & 1U) != 0;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const ScreenReader::Thing& thing)
{
    return stream << thing.role << " \"" << thing.name << '"';
}

ScreenReader::ScreenReader(const PrivateBus& sessionBus)
{
    launcher_.start();
    openBus(sessionBus);
    listen();
}

ScreenReader::~ScreenReader()
{
    sd_bus_flush_close_unref(bus_);
    launcher_.end(SIGTERM); // and with it the accessibility bus
}

void ScreenReader::openBus(const PrivateBus& sessionBus)
{
    sessionBus.waitForName("org.a11y.Bus");
    sd_bus* session = sessionBus.open();
    call(session, "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", "ssv", "org.a11y.Status",
         "ScreenReaderEnabled", "b", 1);
    const auto address = readText(call(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"));
    sd_bus_flush_close_unref(session);
    sd_bus_new(&bus_);
    sd_bus_set_address(bus_, address.c_str());
    sd_bus_set_bus_client(bus_, 1);
    sd_bus_start(bus_);
}

// Programs keep silent about what nobody has asked to hear.
void ScreenReader::listen()
{
    sd_bus_match_signal(bus_, nullptr, nullptr, nullptr, "org.a11y.atspi.Event.Object", nullptr, receive, this);
    call(bus_, registry, "/org/a11y/atspi/registry", registry, "RegisterEvent", "s", "object:state-changed:showing");
}

int ScreenReader::receive(sd_bus_message* signal, void* self, sd_bus_error* /*error*/)
{
    auto& reader = *static_cast<ScreenReader*>(self);
    const char* detail = nullptr;
    int isTrue = 0;
    if (sd_bus_message_read(signal, "si", &detail, &isTrue) <= 0 || std::string(detail) != "showing" || isTrue == 0)
        return 0;
    const auto found = reader.describe({sd_bus_message_get_sender(signal), sd_bus_message_get_path(signal)});
    if (found && (found->thing.role == "notification" || found->thing.role == "alert"))
        reader.heard_.push_back(found->thing.name);
    return 0;
}

std::vector<ScreenReader::Place> ScreenReader::children(const Place& place) const
{
    std::vector<Place> all;
    const auto reply = call(bus_, place.program, place.path, accessible, "GetChildren");
    if (!reply || sd_bus_message_enter_container(reply.get(), 'a', "(so)") <= 0)
        return all;
    const char* program = nullptr;
    const char* path = nullptr;
    while (sd_bus_message_read(reply.get(), "(so)", &program, &path) > 0)
        all.push_back({program, path});
    return all;
}

std::string ScreenReader::property(const Place& place, const char* name) const
{
    char* text = nullptr;
    sd_bus_get_property_string(bus_, place.program.c_str(), place.path.c_str(), accessible, name, nullptr, &text);
    const std::unique_ptr<char, decltype([](char* owned) { std::free(owned); })> owned(text);
    return text ? text : "";
}

std::optional<ScreenReader::Found> ScreenReader::describe(const Place& place) const
{
    const auto states = readStates(call(bus_, place.program, place.path, accessible, "GetState"));
    if (!has(states, enabledBit))
        return std::nullopt;
    const auto role = readText(call(bus_, place.program, place.path, accessible, "GetRoleName"));
    auto name = property(place, "Name");
    if (name.empty())
        name = property(place, "Description");
    return Found{place, {role, std::move(name)}};
}

void ScreenReader::collect(const Place& place, std::vector<Found>& found) const
{
    if (auto described = describe(place))
        found.push_back(std::move(*described));
    for (const auto& child : children(place))
        collect(child, found);
}

std::vector<ScreenReader::Found> ScreenReader::everything() const
{
    std::vector<Found> found;
    collect({registry, rootPath}, found);
    return found;
}

std::set<ScreenReader::Thing> ScreenReader::things()
{
    std::set<Thing> all;
    for (auto& found : everything())
        all.insert(std::move(found.thing));
    return all;
}

std::optional<ScreenReader::Found> ScreenReader::find(const Thing& thing) const
{
    auto all = everything();
    const auto found = std::ranges::find(all, thing, &Found::thing);
    return found == all.end() ? std::nullopt : std::optional(std::move(*found));
}

bool ScreenReader::waitFor(const Thing& thing)
{
    return waitUntil([&] { return find(thing).has_value(); });
}

bool ScreenReader::waitForNo(const Thing& thing)
{
    return waitUntil([&] { return !find(thing); });
}

bool ScreenReader::use(const Thing& thing)
{
    const auto found = find(thing);
    return found && call(bus_, found->place.program, found->place.path, "org.a11y.atspi.Action", "DoAction", "i", 0);
}

bool ScreenReader::hears(const std::string& text)
{
    return waitUntil([&] {
        while (sd_bus_process(bus_, nullptr) > 0) {
        }
        const auto found = std::ranges::find(heard_, text);
        if (found == heard_.end())
            return false;
        heard_.erase(heard_.begin(), found + 1);
        return true;
    });
}

} // namespace kestrovan::rigs
