#pragma once

#include <umockdev.h>

#include <map>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// The power supplies of a laptop in a mock /sys, with real udev events. The program must run under umockdev-wrapper.
class MockPowerSupplies {
public:
    using Attributes = std::vector<std::pair<std::string, std::string>>;

    MockPowerSupplies() : testbed_(umockdev_testbed_new()) {}
    /// In a mock /sys that has other devices: a program sees one of them only.
    explicit MockPowerSupplies(UMockdevTestbed* testbed) : testbed_(UMOCKDEV_TESTBED(g_object_ref(testbed))) {}
    MockPowerSupplies(const MockPowerSupplies&) = delete;
    MockPowerSupplies& operator=(const MockPowerSupplies&) = delete;
    ~MockPowerSupplies() { g_object_unref(testbed_); }

    void add(const std::string& name, const Attributes& attributes)
    {
        std::vector<char*> pairs;
        for (const auto& [key, value] : attributes) {
            pairs.push_back(const_cast<char*>(key.c_str()));   // NOLINT(cppcoreguidelines-pro-type-const-cast)
            pairs.push_back(const_cast<char*>(value.c_str())); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        }
        pairs.push_back(nullptr);
        char* none = nullptr;
        char* path = umockdev_testbed_add_devicev(testbed_, "power_supply", name.c_str(), nullptr, pairs.data(), &none);
        paths_[name] = path;
        g_free(path);
    }
    /// What a usual laptop has: a charger in its socket, and one battery.
    void addLaptop()
    {
        add("AC", {{"type", "Mains"}, {"online", "1"}});
        add("BAT0", {{"type", "Battery"},
                     {"scope", "System"},
                     {"present", "1"},
                     {"status", "Charging"},
                     {"capacity", "80"},
                     {"energy_now", "48000000"},
                     {"energy_full", "60000000"}});
    }
    void set(const std::string& name, const std::string& attribute, const std::string& value)
    {
        umockdev_testbed_set_attribute(testbed_, paths_.at(name).c_str(), attribute.c_str(), value.c_str());
    }
    void sendEvent(const std::string& name) { umockdev_testbed_uevent(testbed_, paths_.at(name).c_str(), "change"); }
    void remove(const std::string& name) { umockdev_testbed_remove_device(testbed_, paths_.at(name).c_str()); }

private:
    UMockdevTestbed* testbed_;
    std::map<std::string, std::string> paths_;
};

} // namespace kestrovan::rigs
