// A session manager of X11 (XSMP over ICE) for one client at a time, driven over its standard streams. It says where it
// listens, then obeys one word a line:
//   logout   asks the client to save itself because the session ends, and says what came of it:
//            "cancelled" if the client refuses, "agreed" if not
// It says "registered" when a client has come. As the protocol demands, it asks for nothing before the client is done
// with what it was asked before; whoever drives it waits for what it says.
#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

/// What is asked of the client, or came of it.
enum class Saving { nothing, first, logout, refusedLogout };

SmsConn client = nullptr;
Saving saving = Saving::nothing;

void say(const std::string& text)
{
    std::cout << text << std::endl;
}

Status registerClient(SmsConn connection, SmPointer /*data*/, char* previousId)
{
    std::free(previousId);
    char* id = SmsGenerateClientID(connection);
    SmsRegisterClientReply(connection, id);
    std::free(id);
    saving = Saving::first;
    SmsSaveYourself(connection, SmSaveLocal, False, SmInteractStyleNone, False);
    return 1;
}

void interactRequest(SmsConn connection, SmPointer /*data*/, int /*dialogType*/)
{
    SmsInteract(connection);
}

void interactDone(SmsConn connection, SmPointer /*data*/, Bool cancels)
{
    if (saving != Saving::logout || !cancels)
        return;
    saving = Saving::refusedLogout;
    SmsShutdownCancelled(connection);
}

void saveYourselfDone(SmsConn connection, SmPointer /*data*/, Bool /*success*/)
{
    constexpr std::array outcomes{"", "registered", "agreed", "cancelled"};
    const auto done = std::exchange(saving, Saving::nothing);
    if (done != Saving::refusedLogout)
        SmsSaveComplete(connection);
    say(outcomes.at(static_cast<std::size_t>(done)));
}

void closeConnection(SmsConn connection, SmPointer /*data*/, int count, char** reasons)
{
    SmFreeReasons(count, reasons);
    auto* ice = SmsGetIceConnection(connection);
    SmsCleanUp(connection);
    IceSetShutdownNegotiation(ice, False);
    IceCloseConnection(ice);
    client = nullptr;
}

void setProperties(SmsConn /*connection*/, SmPointer /*data*/, int count, SmProp** properties)
{
    for (int i = 0; i < count; ++i)
        SmFreeProperty(properties[i]);
    std::free(properties);
}

Status acceptClient(SmsConn connection, SmPointer /*data*/, unsigned long* mask, SmsCallbacks* callbacks,
                    char** /*why*/)
{
    client = connection;
    std::memset(callbacks, 0, sizeof *callbacks);
    callbacks->register_client.callback = registerClient;
    callbacks->interact_request.callback = interactRequest;
    callbacks->interact_done.callback = interactDone;
    callbacks->save_yourself_request.callback = [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {};
    callbacks->save_yourself_phase2_request.callback = [](SmsConn connection2, SmPointer) {
        SmsSaveYourselfPhase2(connection2);
    };
    callbacks->save_yourself_done.callback = saveYourselfDone;
    callbacks->close_connection.callback = closeConnection;
    callbacks->set_properties.callback = setProperties;
    callbacks->delete_properties.callback = [](SmsConn, SmPointer, int, char**) {};
    callbacks->get_properties.callback = [](SmsConn connection2, SmPointer) {
        SmsReturnProperties(connection2, 0, nullptr);
    };
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
            SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
            SmsGetPropertiesProcMask;
    return 1;
}

void obey()
{
    std::string word;
    if (!std::getline(std::cin, word))
        std::exit(0);
    if (word != "logout" || !client)
        return;
    saving = Saving::logout;
    SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleAny, False);
}

void serve(IceListenObj listener)
{
    IceConn current = nullptr;
    for (;;) {
        std::array<pollfd, 3> waits{{{STDIN_FILENO, POLLIN, 0},
                                     {IceGetListenConnectionNumber(listener), POLLIN, 0},
                                     {current ? IceConnectionNumber(current) : -1, POLLIN, 0}}};
        poll(waits.data(), waits.size(), -1);
        if (waits[0].revents != 0)
            obey();
        if (waits[1].revents != 0) {
            IceAcceptStatus status{};
            current = IceAcceptConnection(listener, &status);
            while (current && IceConnectionStatus(current) == IceConnectPending)
                IceProcessMessages(current, nullptr, nullptr);
        }
        if (waits[2].revents != 0 && IceProcessMessages(current, nullptr, nullptr) != IceProcessMessagesSuccess)
            current = nullptr;
    }
}

} // namespace

int main()
{
    constexpr int longest = 256;
    std::array<char, longest> error{};
    const auto anybody = [](char*) -> Bool { return True; };
    int count = 0;
    IceListenObj* listeners = nullptr;
    IceSetIOErrorHandler([](IceConn) { client = nullptr; });
    if (!SmsInitialize("test", "1", acceptClient, nullptr, anybody, longest, error.data()) ||
        !IceListenForConnections(&count, &listeners, longest, error.data())) {
        std::cerr << error.data() << '\n';
        return 1;
    }
    for (int i = 0; i < count; ++i) {
        IceSetHostBasedAuthProc(listeners[i], anybody);
        const std::string address = IceComposeNetworkIdList(1, &listeners[i]);
        if (address.starts_with("local/")) {
            say(address);
            serve(listeners[i]);
        }
    }
    return 1;
}
