#include "platform/linux/SettingsWriter.h"

#include "platform/Diagnostics.h"
#include "platform/linux/DurableFile.h"
#include "platform/linux/NamedThread.h"
#include "platform/linux/SettingsDocument.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto longestFinalWrite = 5s;

std::optional<std::string> writeTo(const std::filesystem::path& path, const std::string& content)
{
    if (content.size() > SettingsDocument::sizeLimit)
        return "too large";
    const auto target = SettingsWriter::target(path);
    durableFile::createFolders(target.parent_path());
    return durableFile::write(target, content);
}

} // namespace

// Shared with the thread, which a disk that hangs may hold beyond the writer's end.
class SettingsWriter::Core : public std::enable_shared_from_this<Core> {
public:
    Core(std::filesystem::path path, Diagnostics& diagnostics) : path_(std::move(path)), diagnostics_(&diagnostics) {}

    void write(std::string content)
    {
        std::unique_lock lock(mutex_);
        newest_ = std::move(content);
        due_ = true;
        if (!running_)
            start();
        changed_.notify_all();
    }

    void finish()
    {
        std::unique_lock lock(mutex_);
        stopping_ = true;
        due_ = newest_.has_value(); // what has failed is tried once more
        if (due_ && !running_)
            start();
        changed_.notify_all();
        if (!changed_.wait_for(lock, longestFinalWrite, [this] { return !running_; }))
            report("the disk does not answer");
        diagnostics_ = nullptr;
    }

private:
    void start()
    {
        auto thread = startNamedThread("settings", 0, [core = shared_from_this()] { core->run(); });
        if (thread)
            thread->detach();
        else
            report("there is no thread to write them");
        running_ = thread.has_value();
    }

    void run()
    {
        std::unique_lock lock(mutex_);
        for (;;) {
            changed_.wait(lock, [this] { return due_ || stopping_; });
            if (!due_)
                break;
            due_ = false;
            const auto content = *newest_;
            lock.unlock();
            const auto failure = writeTo(path_, content);
            lock.lock();
            if (failure)
                report(*failure);
            else
                failing_ = false;
            if (!failure && !due_)
                newest_.reset();
        }
        running_ = false;
        changed_.notify_all();
    }

    void report(const std::string& failure)
    {
        if (!std::exchange(failing_, true) && diagnostics_)
            diagnostics_->line("Cannot save the settings in " + path_.string() + ": " + failure +
                               "; changes last until the program ends");
    }

    const std::filesystem::path path_;
    std::mutex mutex_;
    std::condition_variable changed_;
    Diagnostics* diagnostics_;          ///< null once the writer is gone
    std::optional<std::string> newest_; ///< not yet on the disk
    bool due_ = false;                  ///< to be written now, rather than with the next content
    bool running_ = false;
    bool stopping_ = false;
    bool failing_ = false;
};

SettingsWriter::SettingsWriter(std::filesystem::path path, Diagnostics& diagnostics)
    : core_(std::make_shared<Core>(std::move(path), diagnostics))
{}

SettingsWriter::~SettingsWriter()
{
    core_->finish();
}

void SettingsWriter::write(std::string content)
{
    core_->write(std::move(content));
}

std::filesystem::path SettingsWriter::target(const std::filesystem::path& path)
{
    constexpr int linkLimit = 40; // the kernel's own
    auto target = path;
    for (int links = 0; links < linkLimit; ++links) {
        std::error_code error;
        const auto next = std::filesystem::read_symlink(target, error);
        if (error)
            return target;
        target = target.parent_path() / next;
    }
    return path; // a circle: the link itself gives way
}

} // namespace kestrovan
