#include "rigs/FakeNames.h"

#include <dlfcn.h>
#include <netdb.h>

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>

namespace {

struct Book {
    std::mutex mutex;
    std::condition_variable released;
    std::map<std::string, std::vector<std::string>> names; // no addresses: looking it up hangs
    int hanging = 0;
    bool isReleased = false;
};

// Never destroyed: a look-up that was left hanging may still use it when the program ends.
Book& book()
{
    static Book* const theBook = new Book;
    return *theBook;
}

using Lookup = int (*)(const char*, const char*, const addrinfo*, addrinfo**);

int lookUpNumber(Lookup real, const std::string& address, const char* service, const addrinfo* hints, addrinfo** found)
{
    addrinfo numeric{};
    numeric.ai_socktype = hints ? hints->ai_socktype : 0;
    numeric.ai_flags = AI_NUMERICHOST;
    return real(address.c_str(), service, &numeric, found);
}

std::optional<std::vector<std::string>> addressesOf(const char* name)
{
    std::unique_lock lock(book().mutex);
    const auto known = book().names.find(name ? name : "");
    if (known == book().names.end())
        return std::nullopt;
    if (known->second.empty()) {
        ++book().hanging;
        book().released.wait(lock, [] { return book().isReleased; });
        --book().hanging;
    }
    return known->second;
}

} // namespace

extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** found)
{
    static const auto real = reinterpret_cast<Lookup>(dlsym(RTLD_NEXT, "getaddrinfo"));
    const auto addresses = addressesOf(name);
    if (!addresses)
        return real(name, service, hints, found);
    addrinfo** end = found;
    *end = nullptr;
    for (const auto& address : *addresses) {
        if (const int code = lookUpNumber(real, address, service, hints, end); code != 0)
            return code;
        while (*end)
            end = &(*end)->ai_next;
    }
    return *found ? 0 : EAI_NONAME;
}

namespace kestrovan::rigs::fakeNames {

void leadTo(const std::string& name, const std::vector<std::string>& numericAddresses)
{
    const std::lock_guard lock(book().mutex);
    book().names[name] = numericAddresses;
}

void hang(const std::string& name)
{
    leadTo(name, {});
    const std::lock_guard lock(book().mutex);
    book().isReleased = false;
}

int hanging()
{
    const std::lock_guard lock(book().mutex);
    return book().hanging;
}

void release()
{
    const std::lock_guard lock(book().mutex);
    book().isReleased = true;
    book().released.notify_all();
}

} // namespace kestrovan::rigs::fakeNames
