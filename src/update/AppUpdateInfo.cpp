#include "update/AppUpdateInfo.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>

namespace kestrovan {

namespace {

using Json = nlohmann::json;

bool isOurs(const std::string& key)
{
    constexpr std::array<std::string_view, 7> keys{"latestVersion", "buildNumber", "releaseDate", "downloadUrl",
                                                   "releaseNotes",  "mandatory",   "sha256"};
    return std::ranges::find(keys, key) != keys.end();
}

// Of two values under one key, two readers may believe different ones: then the link that one of them checks is not
// the link that the other opens.
std::optional<Json> parseWithoutDuplicates(const std::string& text)
{
    std::set<std::string> keys;
    bool isAmbiguous = false;
    const auto watchKeys = [&](int depth, Json::parse_event_t event, const Json& parsed) {
        if (event == Json::parse_event_t::key && depth == 1 && isOurs(parsed.get_ref<const std::string&>()))
            isAmbiguous |= !keys.insert(parsed.get<std::string>()).second;
        return true;
    };
    auto document = Json::parse(text, watchKeys, false);
    if (isAmbiguous || !document.is_object())
        return std::nullopt;
    return document;
}

// The whole numbers of JSON, 2.0 and 2e0 among them, as far as they fit.
std::optional<std::int64_t> wholeNumber(const Json& value)
{
    if (value.is_number_unsigned()) {
        const auto number = value.get<std::uint64_t>();
        return number <= std::uint64_t{INT64_MAX} ? std::optional(static_cast<std::int64_t>(number)) : std::nullopt;
    }
    if (value.is_number_integer())
        return value.get<std::int64_t>();
    if (!value.is_number_float())
        return std::nullopt;
    const auto number = value.get<double>();
    // 2 to the 63rd, the first that is too large; its negative may stand for any number a little too small.
    constexpr double limit = 9223372036854775808.0;
    if (std::trunc(number) != number || std::abs(number) >= limit)
        return std::nullopt;
    return static_cast<std::int64_t>(number);
}

bool read(const Json& value, std::string& field)
{
    if (const auto* text = value.get_ptr<const std::string*>())
        field = *text;
    return value.is_string();
}

bool read(const Json& value, bool& field)
{
    if (const auto* flag = value.get_ptr<const bool*>())
        field = *flag;
    return value.is_boolean();
}

bool read(const Json& value, std::int64_t& field)
{
    const auto number = wholeNumber(value);
    field = number.value_or(0);
    return number.has_value();
}

bool readRequired(const Json& object, const char* key, std::string& field)
{
    const auto found = object.find(key);
    return found != object.end() && read(*found, field);
}

template <class T>
bool readOptional(const Json& object, const char* key, std::optional<T>& field)
{
    const auto found = object.find(key);
    if (found == object.end() || found->is_null())
        return true;
    return read(*found, field.emplace());
}

template <class T>
void write(Json& object, const char* key, const std::optional<T>& field)
{
    if (field)
        object[key] = *field;
}

} // namespace

std::optional<AppUpdateInfo> AppUpdateInfo::fromJson(const std::string& json)
{
    const auto object = parseWithoutDuplicates(json);
    if (!object)
        return std::nullopt;
    AppUpdateInfo info;
    const bool isComplete = readRequired(*object, "latestVersion", info.latestVersion) &&
                            readOptional(*object, "buildNumber", info.buildNumber) &&
                            readOptional(*object, "releaseDate", info.releaseDate) &&
                            readRequired(*object, "downloadUrl", info.downloadUrl) &&
                            readRequired(*object, "releaseNotes", info.releaseNotes) &&
                            readOptional(*object, "mandatory", info.mandatory) &&
                            readOptional(*object, "sha256", info.sha256);
    return isComplete ? std::optional(std::move(info)) : std::nullopt;
}

std::string AppUpdateInfo::toJson() const
{
    Json object = {{"latestVersion", latestVersion}, {"downloadUrl", downloadUrl}, {"releaseNotes", releaseNotes}};
    write(object, "buildNumber", buildNumber);
    write(object, "releaseDate", releaseDate);
    write(object, "mandatory", mandatory);
    write(object, "sha256", sha256);
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace kestrovan
