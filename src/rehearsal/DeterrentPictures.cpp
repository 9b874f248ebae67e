#include "rehearsal/DeterrentPictures.h"

#include "core/Guard.h"
#include "overlay/FullscreenOverlayManager.h"
#include "overlay/HostingView.h"
#include "platform/simulated/SimulatedLaptop.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>

#include <iostream>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// A sky over hills, as somebody might have it on their desktop.
QImage landscape()
{
    QImage image(1600, 1000, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, 700);
    sky.setColorAt(0, QColor(40, 90, 180));
    sky.setColorAt(1, QColor(250, 190, 120));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(30, 80, 70));
    painter.drawEllipse(QRect(-300, 560, 1400, 900));
    painter.setBrush(QColor(20, 60, 55));
    painter.drawEllipse(QRect(600, 640, 1500, 900));
    return image;
}

/// A guard whose deterrent is drawn, but on no screen that anybody sees.
class Studio {
public:
    Studio(Text& text, std::filesystem::path folder, AppLanguage language)
        : laptop_(text), folder_(std::move(folder)), language_(language), hosting_(laptop_.platform()),
          manager_(laptop_.platform(), [this](auto& guard, auto& screens) { return hosting_.make(guard, screens); }),
          guard_(laptop_.platform(), manager_)
    {
        laptop_.screens().attached = {{"eDP-1", {0, 0, 1920, 1080}}, {"DP-2", {1920, 0, 1280, 1024}}};
        state().setLanguage(language);
        state().togglePinRequirement(true);
    }

    bool takeAll()
    {
        manager_.showOverlay(state());
        take("preview");
        state().startArming();
        laptop_.advance(4s);
        take("armed");
        laptop_.unplugCharger();
        laptop_.advance(240ms); // into the strobe
        take("alarm");
        type("1234");
        take("wrong-pin");
        for (int attempt = 0; attempt < 4; ++attempt)
            laptop_.press(KeyEvent::returnKey);
        laptop_.advance(3s);
        take("lockout");
        takeCustomPicture();
        return isComplete_;
    }

private:
    void takeCustomPicture()
    {
        laptop_.advance(30s);
        laptop_.press(KeyEvent::escape);
        type("7391");
        const auto picture = folder_ / "landscape.png";
        isComplete_ = landscape().save(QString::fromStdString(picture.string())) && isComplete_;
        state().customImagePath = picture.string();
        state().updateWarningMessage(language_ == AppLanguage::english
                                         ? "I will be back in a minute. It will scream."
                                         : "Saya segera kembali. Laptop ini akan menjerit.");
        laptop_.plugCharger();
        state().startArming();
        laptop_.advance(5s);
        take("custom-picture");
        std::filesystem::remove(picture);
    }

    void type(const std::string& digits)
    {
        for (const char digit : digits)
            laptop_.type(std::string(1, digit));
        laptop_.press(KeyEvent::returnKey);
    }

    void take(const std::string& name)
    {
        laptop_.settle();
        int number = 0;
        for (const auto& window : laptop_.screens().windows()) {
            auto* drawn = qobject_cast<QQuickWindow*>(window.contentView->nativeWindow());
            drawn->resize(window.traits.screen.frame.width, window.traits.screen.frame.height);
            laptop_.settle();
            const auto file =
                "deterrent-" + name + "-" + std::string(rawValue(language_)) + "-" + std::to_string(++number) + ".png";
            const bool isTaken = drawn->grabWindow().save(QString::fromStdString((folder_ / file).string()));
            isComplete_ = isComplete_ && isTaken;
        }
        isComplete_ = isComplete_ && number == 2;
    }

    AppState& state() { return guard_.appState; }

    SimulatedLaptop laptop_;
    const std::filesystem::path folder_;
    const AppLanguage language_;
    HostingViews hosting_;
    FullscreenOverlayManager manager_;
    Guard guard_;
    bool isComplete_ = true;
};

} // namespace

bool takeDeterrentPictures(Text& text, const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    bool isComplete = true;
    for (const auto language : allLanguages)
        isComplete = Studio(text, folder, language).takeAll() && isComplete;
    std::cout << (isComplete ? "Pictures of the deterrent are in " : "Failed to take the pictures of the deterrent in ")
              << folder.string() << std::endl;
    return isComplete;
}

} // namespace kestrovan
