#include "platform/linux/PowerSupplies.h"

#include "platform/linux/SmallFile.h"

#include <dirent.h>

#include <algorithm>
#include <charconv>
#include <memory>

namespace kestrovan {

namespace {

// A thousand kilowatt hours: no battery of a laptop holds that, and no sum of such numbers overflows.
constexpr std::int64_t largestLevel = 1'000'000'000'000;

/// Reads the attributes of one supply.
class Attributes {
public:
    Attributes(int folder, const std::string& supply) : folder_(folder), prefix_(supply + "/") {}

    std::string text(const char* name) const { return readSmallFile(folder_, prefix_ + name).value_or(""); }

    std::optional<std::int64_t> number(const char* name) const
    {
        const auto digits = text(name);
        std::int64_t value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        const bool isNumber = error == std::errc{} && end == digits.data() + digits.size() && !digits.empty();
        return isNumber && value >= 0 && value <= largestLevel ? std::optional(value) : std::nullopt;
    }

    std::optional<BatterySupply::Level> level(const char* now, const char* full) const
    {
        const auto have = number(now);
        const auto most = have ? number(full) : std::nullopt;
        if (!most || *most < 1)
            return std::nullopt;
        return BatterySupply::Level{*have, *most};
    }

private:
    int folder_;
    std::string prefix_;
};

// Chargers at a USB port had a type for each way of charging before the kernel joined them under "USB".
bool isMainsType(const std::string& type)
{
    return type == "Mains" || type == "Wireless" || type == "BrickID" || type.starts_with("USB");
}

MainsSupply readMains(const std::string& name, const Attributes& attributes)
{
    MainsSupply supply{.name = name, .isOnline = std::nullopt};
    const auto online = attributes.text("online");
    // 2 is online with a voltage that the machine has programmed (USB-C power delivery).
    if (online == "0" || online == "1" || online == "2")
        supply.isOnline = online != "0";
    return supply;
}

BatterySupply readBattery(const std::string& name, const Attributes& attributes)
{
    BatterySupply supply{.name = name,
                         .status = attributes.text("status"),
                         .energy = attributes.level("energy_now", "energy_full"),
                         .charge = std::nullopt,
                         .percent = std::nullopt};
    // The kinds are alternatives: a battery that tells of its energy need not be asked further.
    if (!supply.energy)
        supply.charge = attributes.level("charge_now", "charge_full");
    if (const auto percent = attributes.number("capacity"); percent && *percent <= 100)
        supply.percent = BatterySupply::Level{*percent, 100};
    return supply;
}

std::optional<std::vector<std::string>> supplyNames(const std::string& folder)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(folder.c_str()), ::closedir);
    if (!directory)
        return std::nullopt;
    std::vector<std::string> names;
    while (const auto* entry = ::readdir(directory.get())) // NOLINT(concurrency-mt-unsafe): a stream of our own
        if (entry->d_name[0] != '.')
            names.emplace_back(entry->d_name);
    std::ranges::sort(names);
    return names;
}

bool saysSo(const BatterySupply& battery, const char* status)
{
    return battery.status == status;
}

std::optional<bool> isOnMains(const PowerSupplies& supplies)
{
    std::optional<bool> answer;
    for (const auto& supply : supplies.mains)
        if (supply.isOnline)
            answer = answer.value_or(false) || *supply.isOnline;
    if (answer)
        return answer;

    // With two batteries one discharges while the other waits its turn.
    for (const auto& battery : supplies.batteries) {
        if (saysSo(battery, "Discharging"))
            return false;
        if (saysSo(battery, "Charging") || saysSo(battery, "Not charging") || saysSo(battery, "Full"))
            answer = true;
    }
    return answer;
}

std::optional<bool> isAnyCharging(const std::vector<BatterySupply>& batteries)
{
    std::optional<bool> answer;
    for (const auto& battery : batteries) {
        if (saysSo(battery, "Charging"))
            return true;
        if (saysSo(battery, "Discharging") || saysSo(battery, "Not charging") || saysSo(battery, "Full"))
            answer = false;
    }
    return answer;
}

using LevelField = std::optional<BatterySupply::Level> BatterySupply::*;

std::optional<BatterySupply::Level> sumOf(const std::vector<BatterySupply>& batteries, LevelField field)
{
    BatterySupply::Level sum;
    for (const auto& battery : batteries) {
        const auto& level = battery.*field;
        if (!level)
            return std::nullopt;
        sum.now += level->now;
        sum.full += level->full;
    }
    return batteries.empty() ? std::nullopt : std::optional(sum);
}

/// Batteries of different kinds have only their percentage in common; those that do not tell it are left out.
std::optional<BatterySupply::Level> meanPercentage(const std::vector<BatterySupply>& batteries)
{
    std::vector<BatterySupply> telling;
    std::ranges::copy_if(batteries, std::back_inserter(telling), [](const auto& b) { return b.percent.has_value(); });
    return sumOf(telling, &BatterySupply::percent);
}

void describeLevel(const std::vector<BatterySupply>& batteries, PowerSourceDescription& description)
{
    auto level = sumOf(batteries, &BatterySupply::energy);
    if (!level)
        level = sumOf(batteries, &BatterySupply::charge);
    if (!level)
        level = meanPercentage(batteries);
    if (!level)
        return;
    description.currentCapacity = level->now;
    description.maxCapacity = level->full;
}

template <class Supply>
std::string joinedNames(const std::vector<Supply>& supplies)
{
    std::string names;
    for (const auto& supply : supplies)
        names += (names.empty() ? "" : "+") + supply.name;
    return names;
}

} // namespace

std::optional<PowerSupplies> readPowerSupplies(const std::string& folder)
{
    const Descriptor open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto names = open ? supplyNames(folder) : std::nullopt;
    if (!names)
        return std::nullopt;

    PowerSupplies supplies;
    for (const auto& name : *names) {
        const Attributes attributes(open.get(), name);
        const auto type = attributes.text("type");
        if (type.empty() || attributes.text("scope") == "Device")
            continue;
        if (isMainsType(type))
            supplies.mains.push_back(readMains(name, attributes));
        else if (type == "Battery" && attributes.text("present") != "0") // an empty bay has a supply, too
            supplies.batteries.push_back(readBattery(name, attributes));
    }
    return supplies;
}

std::optional<PowerSourceDescription> describeTogether(const PowerSupplies& supplies)
{
    if (supplies.mains.empty() && supplies.batteries.empty())
        return std::nullopt;

    PowerSourceDescription description;
    if (const auto onMains = isOnMains(supplies))
        description.state = *onMains ? PowerSourceDescription::acPower : PowerSourceDescription::batteryPower;
    description.name = supplies.batteries.empty() ? joinedNames(supplies.mains) : joinedNames(supplies.batteries);
    description.isCharging = isAnyCharging(supplies.batteries);
    describeLevel(supplies.batteries, description);
    return description;
}

} // namespace kestrovan
