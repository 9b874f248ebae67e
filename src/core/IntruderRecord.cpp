#include "core/IntruderRecord.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <random>

namespace kestrovan {

namespace {

using nlohmann::json;
constexpr std::chrono::sys_days referenceDate = std::chrono::year{2001} / std::chrono::January / 1;

double toReferenceSeconds(IntruderRecord::Moment moment)
{
    return std::chrono::duration<double>(moment - referenceDate).count();
}

// Any number is a moment to the log; those that system_clock cannot express become the furthest that it can.
IntruderRecord::Moment fromReferenceSeconds(double seconds)
{
    constexpr double limit = 8e9;
    const std::chrono::duration<double> clamped(std::clamp(seconds, -limit, limit));
    return referenceDate + std::chrono::round<std::chrono::microseconds>(clamped);
}

// The four hyphenated groups in hexadecimal, either case as other writers may have it.
bool isUuid(const std::string& text)
{
    if (text.size() != 36)
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        const bool hexadecimal = std::string_view("0123456789abcdefABCDEF").find(text[i]) != std::string_view::npos;
        if (hyphen ? text[i] != '-' : !hexadecimal)
            return false;
    }
    return true;
}

std::string upperCase(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'a' && c <= 'f' ? static_cast<char>(c - 32) : c; });
    return text;
}

const json* member(const json& object, const char* key)
{
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

std::optional<IntruderRecord> decodeRecord(const json& object)
{
    if (!object.is_object())
        return std::nullopt;
    const auto* id = member(object, "id");
    const auto* timestamp = member(object, "timestamp");
    const auto* imagePath = member(object, "imagePath");
    const auto* reason = member(object, "triggerReason");
    if (!id || !id->is_string() || !timestamp || !timestamp->is_number() || !imagePath || !imagePath->is_string() ||
        !reason || !reason->is_string())
        return std::nullopt;
    if (!isUuid(id->get<std::string>()))
        return std::nullopt;
    return IntruderRecord{upperCase(id->get<std::string>()), fromReferenceSeconds(timestamp->get<double>()),
                          imagePath->get<std::string>(), reason->get<std::string>()};
}

} // namespace

std::string makeRecordId()
{
    std::random_device device;
    std::array<std::uint32_t, 4> words{device(), device(), device(), device()};
    words[1] = (words[1] & 0xFFFF0FFFU) | 0x4000U;
    words[2] = (words[2] & 0x3FFFFFFFU) | 0x80000000U;
    std::string id;
    for (unsigned nibble = 0; nibble < 32; ++nibble) {
        if (nibble == 8 || nibble == 12 || nibble == 16 || nibble == 20)
            id += '-';
        id += "0123456789ABCDEF"[(words[nibble / 8] >> (28 - 4 * (nibble % 8))) & 0xFU];
    }
    return id;
}

std::optional<std::string> encodeIntruderRecords(const std::vector<IntruderRecord>& records)
{
    // One record at a time: a tree of them all takes twice as long, on the main thread in an alarm.
    std::string text;
    json object;
    try {
        for (const auto& record : records) {
            object["id"] = record.id;
            object["timestamp"] = toReferenceSeconds(record.timestamp);
            object["imagePath"] = record.imagePath;
            object["triggerReason"] = record.triggerReason;
            text += (text.empty() ? '[' : ',') + object.dump();
        }
    } catch (const json::exception&) {
        return std::nullopt;
    }
    return text.empty() ? "[]" : text + ']';
}

std::optional<std::vector<IntruderRecord>> decodeIntruderRecords(std::string_view text)
{
    const auto array = json::parse(text, nullptr, false);
    if (!array.is_array())
        return std::nullopt;
    std::vector<IntruderRecord> records;
    for (const auto& object : array) {
        auto record = decodeRecord(object);
        if (!record)
            return std::nullopt;
        records.push_back(std::move(*record));
    }
    return records;
}

} // namespace kestrovan
