#include "core/Guard.h"
#include "core/NoDeterrentScreens.h"
#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "rigs/TemporaryFolder.h"
#include "rigs/ViewStage.h"
#include "ui/ContentView.h"

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>

#include <cstdlib>
#include <functional>
#include <iostream>

void qml_register_types_Kestrovan_Parts();
void qml_register_types_Kestrovan_Ui();

namespace {

using namespace kestrovan;
using namespace std::chrono_literals;

constexpr QSize windowSize(530, 690);

/// The window of a guard on a laptop whose clock stands at the same moment at every start.
class Scene {
public:
    explicit Scene(AppLanguage language)
    {
        laptop.setBattery(87);
        appState().setLanguage(language);
        stage.showType("Kestrovan.Ui", "ContentView", {{"view", QVariant::fromValue<QObject*>(&view)}});
        react();
    }
    AppState& appState() { return guard.appState; }
    UpdateManager& updates() { return guard.updateManager; }
    void react()
    {
        laptop.settle();
        QCoreApplication::processEvents();
        laptop.settle();
        stage.picture();
    }
    void press(const QString& button)
    {
        stage.click(button);
        react();
    }
    void arm()
    {
        appState().startArming();
        laptop.advance(3s);
    }
    void soundWithPin()
    {
        appState().togglePinRequirement(true);
        arm();
        laptop.unplugCharger();
        laptop.advance(300ms);
    }
    void showSettings(double scrolledTo)
    {
        appState().togglePinRequirement(true);
        press("settingsButton");
        auto* area = stage.find("settingsArea");
        area->setProperty("contentY",
                          std::min(scrolledTo, area->property("contentHeight").toDouble() - area->height()));
    }
    void takePhotos(int count);

    IcuText text;
    SimulatedLaptop laptop{text};
    NoDeterrentScreens screens;
    Guard guard{laptop.platform(), screens};
    ContentView view{guard.appState, laptop.platform(), {}};
    rigs::ViewStage stage{windowSize};
    TemporaryFolder folder;
};

// Somebody in front of a window, as a laptop's camera sees them.
QImage intruder(int number)
{
    QImage photo(640, 360, QImage::Format_RGB32);
    QPainter painter(&photo);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient room(0, 0, 640, 360);
    room.setColorAt(0, QColor::fromHsv(30 + 45 * number, 90, 200));
    room.setColorAt(1, QColor::fromHsv(30 + 45 * number, 130, 70));
    painter.fillRect(photo.rect(), room);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(35, 32, 38));
    const int x = 250 + 40 * (number % 3);
    painter.drawEllipse(x, 90, 120, 150);
    painter.drawRoundedRect(x - 90, 245, 300, 200, 90, 90);
    return photo;
}

void Scene::takePhotos(int count)
{
    for (int number = 0; number < count; ++number) {
        const auto path = folder.path() / ("photo" + std::to_string(number) + ".jpg");
        intruder(number).save(QString::fromStdString(path.string()));
        laptop.advance(7min + 13s);
        const auto reason = number % 2 == 0 ? AlarmReason::lidClosed : AlarmReason::chargerDisconnected;
        appState().addIntruderRecord(path, localizedDescription(reason, appState().currentLanguage));
    }
}

struct Picture {
    const char* name;
    std::function<void(Scene&)> prepare;
};

void sufferOnBattery(Scene& scene)
{
    scene.laptop.unplugCharger();
    scene.laptop.setBattery(8);
    scene.appState().toggleChargerAlarm(false);
    scene.appState().toggleLidAlarm(false);
    scene.appState().toggleCameraCapture(false);
    scene.appState().togglePinRequirement(true);
    scene.takePhotos(3);
}

void checkForUpdates(Scene& scene, const std::string& answer, std::chrono::milliseconds after = {})
{
    scene.laptop.web().answerWith(answer, after);
    scene.press("updateButton");
}

const std::vector<Picture> pictures{
    {"disarmed", [](Scene&) {}},
    {"battery", sufferOnBattery},
    {"arming",
     [](Scene& scene) {
         scene.appState().startArming();
         scene.laptop.advance(1s);
     }},
    {"armed",
     [](Scene& scene) {
         scene.arm();
         scene.react();
         scene.laptop.advance(1500ms);
     }},
    {"alarm",
     [](Scene& scene) {
         scene.arm();
         scene.laptop.closeLid();
         scene.laptop.advance(300ms);
     }},
    {"alarm-pin", [](Scene& scene) { scene.soundWithPin(); }},
    {"alarm-wrong-pin",
     [](Scene& scene) {
         scene.soundWithPin();
         scene.appState().enteredPin = "1234";
         scene.appState().disarm("1234");
     }},
    {"alarm-locked",
     [](Scene& scene) {
         scene.soundWithPin();
         for (int attempt = 0; attempt < 5; ++attempt)
             scene.appState().disarm("1234");
     }},
    {"settings-1", [](Scene& scene) { scene.showSettings(0); }},
    {"settings-2", [](Scene& scene) { scene.showSettings(500); }},
    {"settings-3", [](Scene& scene) { scene.showSettings(10'000); }},
    {"gallery-empty", [](Scene& scene) { scene.press("galleryButton"); }},
    {"gallery",
     [](Scene& scene) {
         scene.takePhotos(5);
         scene.press("galleryButton");
         scene.react();
     }},
    {"about", [](Scene& scene) { scene.press("aboutButton"); }},
    {"update-idle", [](Scene& scene) { scene.updates().showUpdateModal = true; }},
    {"update-checking", [](Scene& scene) { checkForUpdates(scene, "{}", 3s); }},
    {"update-current",
     [](Scene& scene) {
         checkForUpdates(scene, R"({"latestVersion":"1.1.83","downloadUrl":"https://a.example/","releaseNotes":""})");
     }},
    {"update-available", [](Scene& scene) { scene.updates().simulateUpdateFound(); }},
    {"update-failed", [](Scene& scene) { checkForUpdates(scene, "not a manifest"); }},
};

QImage take(const Picture& picture, AppLanguage language)
{
    Scene scene(language);
    picture.prepare(scene);
    scene.react();
    if (!scene.stage.complaints().isEmpty())
        std::cerr << scene.stage.complaints().join('\n').toStdString() << '\n';
    return scene.stage.picture();
}

bool isShownInFull(const Picture& picture)
{
    const std::string_view name(picture.name);
    return name == "disarmed" || name == "armed" || name == "alarm-pin";
}

/// Every view in one language, on one sheet; on a screen that is not scaled, some also in full.
bool takeAll(AppLanguage language, const QDir& folder)
{
    constexpr int columns = 5;
    constexpr int gap = 8;
    const auto scale = qGuiApp->devicePixelRatio();
    const QSize cell = windowSize * 0.6 * scale;
    const auto rows = (static_cast<int>(pictures.size()) + columns - 1) / columns;
    QImage sheet(columns * (cell.width() + gap) + gap, rows * (cell.height() + gap) + gap, QImage::Format_RGB32);
    sheet.fill(QColor(60, 63, 70));
    QPainter painter(&sheet);
    const auto name = QString("-%1.png").arg(QString::fromUtf8(rawValue(language).data()));
    const auto suffix = scale == 1 ? name : QString("-%1x").arg(scale) + name;
    int place = 0;
    bool isSaved = true;
    for (const auto& picture : pictures) {
        auto image = take(picture, language);
        image.setDevicePixelRatio(1);
        const QPoint corner(gap + place % columns * (cell.width() + gap),
                            gap + place / columns * (cell.height() + gap));
        painter.drawImage(corner, image.scaled(cell, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        if (scale == 1 && isShownInFull(picture))
            isSaved = image.save(folder.filePath("window-" + QString(picture.name) + suffix)) && isSaved;
        ++place;
    }
    painter.end();
    return sheet.save(folder.filePath("window-sheet" + suffix)) && isSaved;
}

} // namespace

/// kestrovan-screenshots FOLDER: pictures of the main window in every state, both languages, on a screen that
/// QT_SCALE_FACTOR scales.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: kestrovan-screenshots FOLDER\n";
        return 2;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("TZ", "UTC", 1);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication::setDesktopSettingsAware(false);
    const QGuiApplication application(argc, argv);
    QGuiApplication::setFont(QFont("DejaVu Sans"));
    qml_register_types_Kestrovan_Parts();
    qml_register_types_Kestrovan_Ui();
    const QDir folder(argv[1]);
    folder.mkpath(".");
    const bool isDone = takeAll(AppLanguage::english, folder) && takeAll(AppLanguage::indonesian, folder);
    return isDone ? EXIT_SUCCESS : EXIT_FAILURE;
}
