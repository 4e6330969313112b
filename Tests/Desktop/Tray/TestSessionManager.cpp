// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Tray/TestSessionManager.h"

#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace velmora::test {

struct TestSessionManager::Parts {
    std::vector<IceListenObj> listeners;
    std::vector<IceConn> connections;
    std::vector<SmsConn> clients;
    std::string address;
    int saved = 0;
    int restartStyle = -1;
    std::mutex mutex;  ///< Of all the above, and of every call of the libraries.
    std::jthread thread;

    void handle();
    void awaitNews();
};

namespace {

Bool everybodyMayCome(char* /*host*/) {
    return True;
}

// A connection that a program broke off is looked after by the next read of it.
void ignoreIoError(IceConn /*connection*/) {}

}  // namespace

namespace sessionmanager {

template <typename State>
State& of(SmPointer data) {
    return *static_cast<State*>(data);
}

template <typename State>
Status registerClient(SmsConn client, SmPointer /*data*/, char* /*previousId*/) {
    char* const id = SmsGenerateClientID(client);
    SmsRegisterClientReply(client, id);
    std::free(id);
    // As managers do: the first save tells them how the program looks.
    SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
    return True;
}

template <typename State>
void saved(SmsConn /*client*/, SmPointer data, Bool /*success*/) {
    ++of<State>(data).saved;
}

template <typename State>
void closed(SmsConn client, SmPointer data, int count, char** reasons) {
    SmFreeReasons(count, reasons);
    std::erase(of<State>(data).clients, client);
    IceConn const connection = SmsGetIceConnection(client);
    std::erase(of<State>(data).connections, connection);
    SmsCleanUp(client);
    IceSetShutdownNegotiation(connection, False);
    IceCloseConnection(connection);
}

template <typename State>
void setProperties(SmsConn /*client*/, SmPointer data, int count, SmProp** properties) {
    for (int i = 0; i < count; ++i) {
        SmProp& property = *properties[i];
        if (std::strcmp(property.name, SmRestartStyleHint) == 0 && property.num_vals == 1) {
            of<State>(data).restartStyle = *static_cast<unsigned char*>(property.vals[0].value);
        }
        SmFreeProperty(&property);
    }
    std::free(properties);
}

template <typename State>
Status welcome(SmsConn client, SmPointer data, unsigned long* mask, SmsCallbacks* callbacks,
               char** /*reason*/) {
    of<State>(data).clients.push_back(client);
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
            SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask |
            SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
    *callbacks = {};
    callbacks->register_client = {registerClient<State>, data};
    callbacks->interact_request = {[](SmsConn, SmPointer, int) {}, data};
    callbacks->interact_done = {[](SmsConn, SmPointer, Bool) {}, data};
    callbacks->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {},
                                        data};
    callbacks->save_yourself_phase2_request = {
        [](SmsConn asking, SmPointer) { SmsSaveYourselfPhase2(asking); }, data};
    callbacks->save_yourself_done = {saved<State>, data};
    callbacks->close_connection = {closed<State>, data};
    callbacks->set_properties = {setProperties<State>, data};
    callbacks->delete_properties = {[](SmsConn, SmPointer, int, char**) {}, data};
    callbacks->get_properties = {[](SmsConn, SmPointer) {}, data};
    return True;
}

}  // namespace sessionmanager

TestSessionManager::TestSessionManager() : parts_(std::make_unique<Parts>()) {
    std::array<char, 256> error{};
    char vendor[] = "velmora tests";
    char release[] = "1";
    IceInitThreads();
    IceSetIOErrorHandler(ignoreIoError);
    if (SmsInitialize(vendor, release, sessionmanager::welcome<Parts>, parts_.get(),
                      everybodyMayCome, static_cast<int>(error.size()), error.data()) == 0) {
        throw std::runtime_error(error.data());
    }
    int count = 0;
    IceListenObj* listeners = nullptr;
    if (IceListenForConnections(&count, &listeners, static_cast<int>(error.size()), error.data()) ==
        0) {
        throw std::runtime_error(error.data());
    }
    parts_->listeners.assign(listeners, listeners + count);
    for (IceListenObj listener : parts_->listeners) {
        IceSetHostBasedAuthProc(listener, everybodyMayCome);
    }
    char* const addresses = IceComposeNetworkIdList(count, listeners);
    parts_->address = addresses;
    std::free(addresses);
    std::free(listeners);
    parts_->thread = std::jthread([parts = parts_.get()](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            parts->awaitNews();
            const std::lock_guard lock(parts->mutex);
            parts->handle();
        }
    });
}

void TestSessionManager::Parts::awaitNews() {
    constexpr int glance = 50;  // Milliseconds, after which the end of the test is seen.
    std::vector<pollfd> waited;
    {
        const std::lock_guard lock(mutex);
        for (IceListenObj listener : listeners) {
            waited.push_back({IceGetListenConnectionNumber(listener), POLLIN, 0});
        }
        for (IceConn connection : connections) {
            waited.push_back({IceConnectionNumber(connection), POLLIN, 0});
        }
    }
    ::poll(waited.data(), waited.size(), glance);
}

TestSessionManager::~TestSessionManager() {
    parts_->thread.request_stop();
    parts_->thread.join();
    for (IceConn connection : parts_->connections) {
        IceSetShutdownNegotiation(connection, False);
        IceCloseConnection(connection);
    }
    std::vector<IceListenObj> listeners = parts_->listeners;
    auto* const list =
        static_cast<IceListenObj*>(std::malloc(listeners.size() * sizeof(IceListenObj)));
    std::ranges::copy(listeners, list);
    IceFreeListenObjs(static_cast<int>(listeners.size()), list);
}

void TestSessionManager::Parts::handle() {
    const auto isReadable = [](int handle) {
        pollfd waited{handle, POLLIN, 0};
        return ::poll(&waited, 1, 0) > 0;
    };
    for (IceListenObj listener : listeners) {
        if (isReadable(IceGetListenConnectionNumber(listener))) {
            IceAcceptStatus status{};
            if (IceConn connection = IceAcceptConnection(listener, &status)) {
                connections.push_back(connection);
            }
        }
    }
    const std::vector<IceConn> all = connections;
    for (IceConn connection : all) {
        while (std::ranges::find(connections, connection) != connections.end() &&
               isReadable(IceConnectionNumber(connection))) {
            if (IceProcessMessages(connection, nullptr, nullptr) == IceProcessMessagesIOError) {
                std::erase(connections, connection);
                std::erase_if(clients, [&](SmsConn client) {
                    return SmsGetIceConnection(client) == connection;
                });
            }
        }
    }
}

const std::string& TestSessionManager::address() const {
    return parts_->address;
}

int TestSessionManager::clients() {
    const std::lock_guard lock(parts_->mutex);
    return static_cast<int>(parts_->clients.size());
}

int TestSessionManager::restartStyle() {
    const std::lock_guard lock(parts_->mutex);
    return parts_->restartStyle;
}

void TestSessionManager::logOut() {
    const std::lock_guard lock(parts_->mutex);
    parts_->saved = 0;
    for (SmsConn client : parts_->clients) {
        SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleAny, False);
    }
}

bool TestSessionManager::everybodySaved() {
    const std::lock_guard lock(parts_->mutex);
    if (parts_->saved < static_cast<int>(parts_->clients.size())) {
        return false;
    }
    for (SmsConn client : std::vector<SmsConn>(parts_->clients)) {
        SmsDie(client);
    }
    return true;
}

}  // namespace velmora::test
