#include "platform/linux/TrayWatch.h"

#include "platform/linux/Xcb.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>

#include <systemd/sd-bus.h>

namespace kestrovan {

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

} // namespace

/// The host on the bus, from the bus's thread: something that draws the items which the watcher lists.
class TrayWatch::NotifierHost {
public:
    NotifierHost(Bus& bus, std::function<void(bool)> told)
        : bus_(bus), told_(std::move(told)), link_(bus.onLink([this](Bus::Link link) {
              if (link == Bus::Link::down)
                  told_(false);
          })),
          owner_(bus.onName(watcherName,
                            [this](bool isOwned) {
                                if (isOwned)
                                    askForHost();
                                else
                                    told_(false);
                            })),
          hostSignals_(bus.onSignal(std::string("interface='") + watcherName + "',path='" + watcherPath + "'",
                                    [this](sd_bus_message* signal) { receive(signal); }))
    {
        if (bus.link() == Bus::Link::down)
            told_(false);
    }

private:
    void receive(sd_bus_message* signal)
    {
        const std::string member = sd_bus_message_get_member(signal);
        if (member == "StatusNotifierHostRegistered" || member == "StatusNotifierHostUnregistered")
            askForHost();
    }
    void askForHost()
    {
        const auto append = [](sd_bus_message* call) {
            return sd_bus_message_append(call, "ss", watcherName, "IsStatusNotifierHostRegistered");
        };
        bus_.call({watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get", false}, append,
                  lifetime_.guard([this](const BusReply& reply) {
                      int isThere = 0;
                      told_(reply.message && sd_bus_message_read(reply.message, "v", "b", &isThere) > 0 &&
                            isThere != 0);
                  }));
    }

    Bus& bus_;
    const std::function<void(bool)> told_;
    Subscription link_;
    Subscription owner_;
    Subscription hostSignals_;
    Lifetime lifetime_;
};

/// The tray of the X11 display: whoever owns a certain selection. It announces itself to the root window, where Qt has
/// us listening anyway; its end is noticed when somebody looks.
class TrayWatch::X11Tray final : public QAbstractNativeEventFilter {
public:
    X11Tray(xcb_connection_t* connection, Task announced)
        : connection_(connection), announced_(std::move(announced)),
          selection_(xcb::atom(connection, "_NET_SYSTEM_TRAY_S0")), manager_(xcb::atom(connection, "MANAGER"))
    {
        qGuiApp->installNativeEventFilter(this);
    }

    bool isThere() const
    {
        const auto cookie = xcb_get_selection_owner(connection_, selection_);
        const xcb::Reply<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(connection_, cookie, nullptr));
        return reply && reply->owner != XCB_NONE;
    }

    bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override
    {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE)
            return false;
        const auto* announcement = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (announcement->type == manager_ && announcement->data.data32[1] == selection_)
            announced_();
        return false;
    }

private:
    xcb_connection_t* connection_;
    const Task announced_;
    const xcb_atom_t selection_;
    const xcb_atom_t manager_;
};

TrayWatch::TrayWatch(BusConnection& sessionBus, MainQueue& mainQueue, std::function<void(bool)> changed)
    : changed_(std::move(changed))
{
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        x11Tray_ = std::make_unique<X11Tray>(x11->connection(), [this] { consider(); });
    const auto told = lifetime_.guard([this](bool isThere) {
        isHostKnown_ = true;
        isHostThere_ = isThere;
        consider();
    });
    host_ = BusResident<NotifierHost>(sessionBus, [&mainQueue, told](Bus& bus) {
        return std::make_unique<NotifierHost>(
            bus, [&mainQueue, told](bool isThere) { mainQueue.post([told, isThere] { told(isThere); }); });
    });
}

TrayWatch::~TrayWatch() = default;

bool TrayWatch::isThere() const
{
    return isHostThere_ || (isHostKnown_ && x11Tray_ && x11Tray_->isThere());
}

void TrayWatch::consider()
{
    // An icon that is made for the X11 tray stays there: first it must be known that there is no host.
    if (!isHostKnown_)
        return;
    const bool now = isThere();
    if (std::exchange(said_, now) != now)
        changed_(now);
}

} // namespace kestrovan
