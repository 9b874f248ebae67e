#include "platform/linux/CameraPermission.h"

#include "platform/Diagnostics.h"
#include "platform/Files.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

namespace kestrovan {

namespace {

constexpr const char* key = "isGranted";

CameraAuthorization read(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    const auto stored = nlohmann::json::parse(stream, nullptr, false);
    const auto granted = stored.is_object() ? stored.find(key) : stored.end();
    if (granted == stored.end() || !granted->is_boolean())
        return CameraAuthorization::notDetermined;
    return granted->get<bool>() ? CameraAuthorization::authorized : CameraAuthorization::denied;
}

} // namespace

struct CameraPermission::State {
    void keep(bool granted)
    {
        authorization = granted ? CameraAuthorization::authorized : CameraAuthorization::denied;
        files.createFolders(file.parent_path());
        if (const auto error = files.writeAtomically(file, nlohmann::json{{key, granted}}.dump()))
            diagnostics.line("Failed to save the answer about the camera: " + *error);
    }

    const std::filesystem::path file;
    Files& files;
    Diagnostics& diagnostics;
    CameraAuthorization authorization;
    bool isQuestionOpen = false;
};

/// Open as long as somebody holds it.
class CameraPermission::Question {
public:
    Question(std::shared_ptr<State> state, std::function<void(bool)> answered)
        : state_(std::move(state)), answered_(std::move(answered))
    {
        state_->isQuestionOpen = true;
    }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;
    ~Question()
    {
        if (answered_)
            state_->isQuestionOpen = false;
    }

    void answer(bool granted)
    {
        const auto answered = std::exchange(answered_, nullptr);
        if (!answered)
            return;
        state_->isQuestionOpen = false;
        state_->keep(granted);
        answered(granted);
    }

private:
    std::shared_ptr<State> state_;
    std::function<void(bool)> answered_;
};

CameraPermission::CameraPermission(const std::filesystem::path& answerFile, Ask ask, Files& files,
                                   Diagnostics& diagnostics)
    : ask_(std::move(ask)), state_(std::make_shared<State>(State{answerFile, files, diagnostics, read(answerFile)}))
{}

CameraAuthorization CameraPermission::authorization() const
{
    return state_->authorization;
}

void CameraPermission::request(std::function<void(bool granted)> answered)
{
    const bool isSettled = authorization() != CameraAuthorization::notDetermined;
    if (isSettled || state_->isQuestionOpen || !ask_) {
        answered(authorization() == CameraAuthorization::authorized);
        return;
    }
    ask_([question = std::make_shared<Question>(state_, std::move(answered))](bool granted) {
        question->answer(granted);
    });
}

} // namespace kestrovan
