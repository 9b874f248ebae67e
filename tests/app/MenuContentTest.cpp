#include "app/MenuContent.h"

#include "GuardTest.h"

using namespace kestrovan;

namespace {

using testing::ElementsAre;

class MenuContentTest : public test::GuardTest {
protected:
    /// The lines that are shown: separators as "-", greyed buttons in brackets.
    std::vector<std::string> shown()
    {
        std::vector<std::string> lines;
        for (const auto& entry : menuContent(guard(), actions))
            if (entry.isShown)
                lines.push_back(entry.kind == MenuEntry::Kind::separator ? "-"
                                : entry.isEnabled                        ? entry.text
                                                                         : "[" + entry.text + "]");
        return lines;
    }
    void press(const std::string& label)
    {
        for (const auto& entry : menuContent(guard(), actions))
            if (entry.isShown && entry.text == label)
                return entry.press();
        ADD_FAILURE() << "no line " << label;
    }

    std::vector<std::string> done;
    ShellActions actions{.openWindow = [this] { done.emplace_back("window"); },
                         .openWebsite = [this] { done.emplace_back("website"); },
                         .quit = [this] { done.emplace_back("quit"); },
                         .previewDeterrent = [] {}};
};

TEST_F(MenuContentTest, ReadsInTheOrderAndTheTextsOfBothLanguages)
{
    EXPECT_THAT(shown(), ElementsAre("Proteksi Tidak Aktif", "Charger Terhubung (100%)", "-", "Aktifkan Proteksi", "-",
                                     "Periksa Pembaruan...", "-", "Pengembang: The Kestrovan Developers",
                                     "www.kestrovan.example", "-", "Buka Jendela Kestrovan", "Keluar"));
    guard().setLanguage(AppLanguage::english);
    laptop.setBattery(85);
    laptop.unplugCharger();
    EXPECT_THAT(shown(), ElementsAre("Protection Inactive", "Battery (85%)", "-", "Arm Protection", "-",
                                     "Check for Updates...", "-", "Developer: The Kestrovan Developers",
                                     "www.kestrovan.example", "-", "Open Kestrovan Window", "Quit"));
}

TEST_F(MenuContentTest, OffersWhatTheStateAllows)
{
    guard().setLanguage(AppLanguage::english);
    const auto middle = [this] {
        auto lines = shown();
        return std::vector<std::string>(lines.begin() + 3, lines.end() - 7);
    };
    press("Arm Protection");
    EXPECT_THAT(middle(), ElementsAre("-")) << "nothing between the separators";
    laptop.advance(std::chrono::seconds(3));
    EXPECT_THAT(middle(), ElementsAre("Disarm Protection", "-"));
    EXPECT_EQ(shown().back(), "Quit");
    laptop.unplugCharger();
    EXPECT_THAT(middle(), ElementsAre("STOP ALARM", "-"));
    EXPECT_EQ(shown().front(), "ALARM: Charger Disconnected!");
    EXPECT_EQ(shown().back(), "[Quit]");
    press("STOP ALARM");
    EXPECT_THAT(middle(), ElementsAre("Arm Protection", "-"));
}

TEST_F(MenuContentTest, StoppingTheAlarmWithoutThePinCountsAsAWrongOne)
{
    guard().togglePinRequirement(true);
    armAndSound();
    for (int i = 0; i < 5; ++i)
        press("HENTIKAN ALARM");
    EXPECT_TRUE(state().isAlarmTriggered());
    EXPECT_EQ(guard().lockoutSecondsRemaining, 30);
}

TEST_F(MenuContentTest, HandsTheRestToTheProgram)
{
    press("www.kestrovan.example");
    press("Buka Jendela Kestrovan");
    press("Keluar");
    EXPECT_THAT(done, ElementsAre("website", "window", "quit"));
    press("Periksa Pembaruan...");
    EXPECT_TRUE(guard().updateManager.updateStatus->isChecking());
}

} // namespace
