#include "WindowTest.h"
#include "core/SettingsKeys.h"
#include "rigs/TemporaryFolder.h"

#include <QInputMethodEvent>

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

class SettingsSheetTest : public test::WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        click("settingsButton");
        ASSERT_TRUE(stage.isVisible("settingsSheet"));
    }
    /// Scrolls to the control first, as somebody in front of it would.
    void clickRow(const QString& name)
    {
        stage.picture(); // things find their places on drawing
        auto* area = stage.find("settingsArea");
        const auto* row = stage.find(name);
        ASSERT_TRUE(row) << name.toStdString();
        const auto y = row->mapToItem(area->property("contentItem").value<QQuickItem*>(), {}).y();
        const auto end = area->property("contentHeight").toDouble() - area->height();
        area->setProperty("contentY", std::clamp(y - 300, 0.0, end));
        click(name);
    }
    void typeInto(const QString& field, const QString& characters)
    {
        clickRow(field);
        QInputMethodEvent commit;
        commit.setCommitString(characters);
        QCoreApplication::sendEvent(stage.window().activeFocusItem(), &commit);
        react();
    }
    std::string fieldText(const QString& field) const
    {
        const auto* input = stage.find(field)->findChild<QQuickItem*>("input");
        return input->property("text").toString().toStdString();
    }
    template <class T>
    std::optional<T> stored(const char* key)
    {
        return laptop.settings().read<T>(key);
    }
};

TEST_F(SettingsSheetTest, EverySwitchChangesAndStoresItsSetting)
{
    struct Row {
        const char* toggle;
        const char* key;
        const Published<bool>& field;
    };
    const std::vector<Row> rows{
        {"chargerToggle", settingsKey::chargerAlarm, guard().isChargerAlarmEnabled},
        {"lidToggle", settingsKey::lidAlarm, guard().isLidAlarmEnabled},
        {"captureToggle", settingsKey::cameraCapture, guard().isCameraCaptureEnabled},
        {"armedToggle", settingsKey::fullscreenArmed, guard().showFullscreenWhenArmed},
        {"triggeredToggle", settingsKey::fullscreenTriggered, guard().showFullscreenWhenTriggered},
        {"pinToggle", settingsKey::pinEnabled, guard().isPinEnabled},
        {"automaticToggle", "Kestrovan_AutoCheckUpdates", guard().updateManager.isAutoCheckEnabled},
    };
    for (const auto& [toggle, key, field] : rows) {
        SCOPED_TRACE(toggle);
        const bool before = field;
        EXPECT_EQ(property<bool>(toggle, "isOn"), before);
        clickRow(toggle);
        EXPECT_EQ(field.get(), !before);
        EXPECT_EQ(property<bool>(toggle, "isOn"), !before);
        EXPECT_EQ(stored<bool>(key), !before);
        press(Qt::Key_Space); // it has the keyboard? then this turns it back
        EXPECT_EQ(field.get(), !before) << "a press of the mouse does not move the keyboard";
        clickRow(toggle);
        EXPECT_EQ(field.get(), before);
    }
}

TEST_F(SettingsSheetTest, TheLanguagePickerTurnsEveryTextAtOnce)
{
    EXPECT_EQ(text("sheetTitle"), "Pengaturan Kestrovan");
    clickRow("languagePicker1");
    EXPECT_EQ(stored<std::string>(settingsKey::language), "en");
    EXPECT_EQ(text("sheetTitle"), "Kestrovan Settings");
    EXPECT_EQ(property<QStringList>("armingDelayPicker", "labels"),
              QStringList({"3 Seconds", "5 Seconds", "10 Seconds"}));
}

TEST_F(SettingsSheetTest, DelaysAreChosenByMouseAndArrowKeys)
{
    clickRow("cameraDelayPicker2");
    EXPECT_EQ(guard().cameraDelayDuration.get(), 3.0);
    EXPECT_EQ(stored<double>(settingsKey::cameraDelay), 3.0);
    guard().setCameraDelay(5);
    react();
    EXPECT_EQ(property<int>("cameraDelayPicker", "index"), -1);
    guard().toggleCameraCapture(false);
    react();
    EXPECT_FALSE(stage.isVisible("cameraDelayPicker"));

    while (focused() != "armingDelayPicker")
        press(Qt::Key_Tab);
    for (const auto& [key, delay] :
         {std::pair{Qt::Key_Right, 5}, {Qt::Key_Right, 10}, {Qt::Key_Right, 10}, {Qt::Key_Left, 5}}) {
        press(key);
        EXPECT_EQ(guard().armDelayDuration.get(), delay);
    }
    press(Qt::Key_Escape);
    click("armButton");
    EXPECT_EQ(text("secondsLeft"), "5");
}

TEST_F(SettingsSheetTest, TheDeterrentTextIsCutAfterOneHundredAndFortyWholeCharacters)
{
    const QString family = "👨‍👩‍👧‍👦";
    typeInto("warningField", family.repeated(139));
    typeInto("warningField", "ab");
    const auto kept = (family.repeated(139) + "a").toStdString();
    EXPECT_EQ(guard().customWarningMessage.get(), kept);
    EXPECT_EQ(fieldText("warningField"), kept);
    EXPECT_EQ(stored<std::string>(settingsKey::warningMessage), kept);
    press(Qt::Key_Backspace);
    typeInto("warningField", "z");
    EXPECT_EQ(fieldText("warningField"), (family.repeated(139) + "z").toStdString());
}

TEST_F(SettingsSheetTest, TheServerAddressIsKeptAsItIsTyped)
{
    typeInto("serverField", "x");
    EXPECT_EQ(guard().updateManager.serverUpdateURLString.get(), fieldText("serverField"));
    EXPECT_EQ(stored<std::string>("Kestrovan_UpdateServerURL"), fieldText("serverField"));
    EXPECT_NE(fieldText("serverField").find('x'), std::string::npos);
}

TEST_F(SettingsSheetTest, ANewPinIsSavedForgottenWithoutAWordOrKeptUntilItIsLongEnough)
{
    clickRow("pinToggle");
    for (const auto* refused : {"12345678901234567", "  1 "}) {
        SCOPED_TRACE(refused);
        typeInto("newPinField", refused);
        clickRow("savePinButton");
        EXPECT_EQ(fieldText("newPinField"), "");
        EXPECT_FALSE(stage.isVisible("pinSaved"));
        EXPECT_EQ(guard().pinCode.get(), "7391");
    }
    typeInto("newPinField", "kun");
    clickRow("savePinButton");
    press(Qt::Key_Escape);
    click("settingsButton");
    EXPECT_EQ(fieldText("newPinField"), "kun") << "too short for the button";
    typeInto("newPinField", "ci ");
    clickRow("savePinButton");
    EXPECT_EQ(guard().pinCode.get(), "kunci");
    EXPECT_EQ(fieldText("newPinField"), "");
    EXPECT_EQ(text("pinSaved"), "PIN berhasil diperbarui.");
}

TEST_F(SettingsSheetTest, ThePictureIsChosenShownAndRemoved)
{
    TemporaryFolder folder;
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(Qt::red);
    const auto path = folder.path() / "beach.png";
    image.save(QString::fromStdString(path.string()));
    EXPECT_FALSE(stage.isVisible("preview"));
    EXPECT_FALSE(stage.isVisible("removeButton"));
    clickRow("chooseButton");
    EXPECT_EQ(laptop.desktop().pickerTexts.title, "Pilih Gambar Layar Penuh");

    guard().customImagePath = path.string();
    react();
    ASSERT_TRUE(stage.isVisible("preview"));
    EXPECT_TRUE(stage.isVisible("removeButton"));
    clickRow("removeButton");
    EXPECT_EQ(guard().customImagePath.get(), std::nullopt);
    EXPECT_FALSE(stage.isVisible("preview"));

    guard().customImagePath = (folder.path() / "gone.png").string();
    react();
    EXPECT_FALSE(stage.isVisible("preview")) << "a file that is gone leaves the logo";
    EXPECT_TRUE(stage.isVisible("removeButton"));
}

TEST_F(SettingsSheetTest, LeadsToGalleryFolderUpdateAndWebsite)
{
    EXPECT_EQ(text("photosButton"), "Lihat Foto Penyusup (0)");
    clickRow("photosButton");
    EXPECT_TRUE(stage.isVisible("intruderGallerySheet"));
    press(Qt::Key_Escape);
    clickRow("folderButton");
    EXPECT_EQ(laptop.desktop().revealedFolders.size(), 1U);
    clickRow("simulateButton");
    EXPECT_TRUE(stage.isVisible("updateModalSheet"));
    EXPECT_EQ(text("newVersion"), "Versi Baru Tersedia: v1.1.0");
    press(Qt::Key_Escape);
    clickRow("checkButton");
    EXPECT_TRUE(stage.isVisible("updateModalSheet"));
    EXPECT_EQ(laptop.web().requests().size(), 1U);
    press(Qt::Key_Escape);
    clickRow("websiteButton");
    EXPECT_EQ(websiteOpenings, 1);
}

TEST_F(SettingsSheetTest, TheKeyboardReachesEveryRowAndBringsItIntoSight)
{
    guard().togglePinRequirement(true);
    react();
    const std::vector<std::string> order{"closeButton",       "languagePicker",  "checkButton",   "automaticToggle",
                                         "serverField",       "simulateButton",  "captureToggle", "cameraDelayPicker",
                                         "photosButton",      "folderButton",    "chooseButton",  "warningField",
                                         "armedToggle",       "triggeredToggle", "chargerToggle", "lidToggle",
                                         "armingDelayPicker", "pinToggle",       "newPinField",   "websiteButton"};
    for (const auto& row : order) {
        press(Qt::Key_Tab);
        EXPECT_EQ(focused(), row);
        const auto* item = stage.window().activeFocusItem();
        const auto top = item->mapToScene({}).y();
        EXPECT_GE(top, 10) << row;
        EXPECT_LE(top + item->height(), 680) << row;
    }
}

} // namespace
