#include "core/NoDeterrentScreens.h"
#include "platform/linux/IcuText.h"
#include "rehearsal/DeterrentPictures.h"
#include "rehearsal/Rehearsal.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QStyleHints>

#include <cstdlib>
#include <iostream>
#include <optional>
#include <span>
#include <string_view>

namespace {

using namespace kestrovan;

constexpr const char* usage = "usage: kestrovan-rehearsal [--real-time] [--language en|id] [--out FOLDER]";

std::optional<RehearsalOptions> parse(std::span<char*> arguments)
{
    RehearsalOptions options{.folder = "build/rehearsal"};
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string_view argument(arguments[i]);
        const std::string_view next(i + 1 < arguments.size() ? arguments[i + 1] : "");
        if (argument == "--real-time") {
            options.realTime = true;
        } else if (argument == "--out" && !next.empty()) {
            options.folder = next;
            ++i;
        } else if (argument == "--language" && languageFromRawValue(next)) {
            options.language = *languageFromRawValue(next);
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    const auto options = parse({argv, static_cast<std::size_t>(argc)});
    if (!options) {
        std::cerr << usage << '\n';
        return 2;
    }
    // Nothing is to be seen of it, and the pictures are the same everywhere and every time.
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("TZ", "UTC0", 1);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    IcuText text;
    NoDeterrentScreens screens;
    const bool wentWell = Rehearsal(text, screens, *options).run();
    return takeDeterrentPictures(text, options->folder) && wentWell ? 0 : 1;
}
