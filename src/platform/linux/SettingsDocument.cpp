#include "platform/linux/SettingsDocument.h"

#include "platform/linux/Base64.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace kestrovan {

namespace {

using nlohmann::json;

constexpr const char* dataTag = "base64";
constexpr const char* textTag = "textBase64";
constexpr int depthLimit = 64;

// Looked at before parsing: a document that nests without measure would exhaust the stack when it is written again.
bool nestsTooDeeply(std::string_view bytes)
{
    int depth = 0;
    bool inText = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (inText && c == '\\')
            ++i;
        else if (c == '"')
            inText = !inText;
        else if (!inText && (c == '{' || c == '['))
            ++depth;
        else if (!inText && (c == '}' || c == ']'))
            --depth;
        if (depth > depthLimit)
            return true;
    }
    return false;
}

// The parser is the judge, so that what is called UTF-8 here is what it will accept.
bool isUtf8(const std::string& text)
{
    try {
        (void)json(text).dump();
        return true;
    } catch (const json::exception&) {
        return false;
    }
}

json encode(const SettingsValue& value)
{
    if (const auto* data = std::get_if<SettingsData>(&value))
        return json{{dataTag, base64::encode(data->bytes)}};
    if (const auto* text = std::get_if<std::string>(&value))
        return isUtf8(*text) ? json(*text) : json{{textTag, base64::encode(*text)}};
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    return std::get<bool>(value);
}

std::optional<std::string> tagged(const json& object, const char* tag)
{
    if (object.size() != 1)
        return std::nullopt;
    const auto found = object.find(tag);
    return found != object.end() && found->is_string() ? base64::decode(found->get_ref<const std::string&>())
                                                       : std::nullopt;
}

std::optional<SettingsValue> decode(const json& member)
{
    if (member.is_boolean())
        return member.get<bool>();
    if (member.is_number())
        return member.get<double>();
    if (member.is_string())
        return member.get<std::string>();
    if (!member.is_object())
        return std::nullopt;
    if (auto data = tagged(member, dataTag))
        return SettingsData{std::move(*data)};
    return tagged(member, textTag);
}

} // namespace

SettingsDocument::SettingsDocument() : members_(std::make_unique<json>(json::object())) {}

SettingsDocument::SettingsDocument(SettingsDocument&& other) noexcept = default;
SettingsDocument& SettingsDocument::operator=(SettingsDocument&& other) noexcept = default;
SettingsDocument::~SettingsDocument() = default;

std::optional<SettingsValue> SettingsDocument::value(const std::string& key) const
{
    const auto found = members_->find(key);
    return found == members_->end() ? std::nullopt : decode(*found);
}

bool SettingsDocument::set(const std::string& key, const SettingsValue& value)
{
    auto& member = (*members_)[key];
    auto encoded = encode(value);
    if (member == encoded)
        return false;
    member = std::move(encoded);
    return true;
}

bool SettingsDocument::remove(const std::string& key)
{
    return members_->erase(key) > 0;
}

std::string SettingsDocument::serialize() const
{
    // Only a key could still be malformed; a replacement character in it is better than a throw.
    return members_->dump(2, ' ', false, json::error_handler_t::replace) + '\n';
}

std::optional<SettingsDocument> SettingsDocument::parse(std::string_view bytes)
{
    if (nestsTooDeeply(bytes))
        return std::nullopt;
    auto parsed = json::parse(bytes, nullptr, false);
    if (!parsed.is_object())
        return std::nullopt;
    SettingsDocument document;
    *document.members_ = std::move(parsed);
    return document;
}

} // namespace kestrovan
