#include "rigs/ScreenReader.h"

#include "ProgramTest.h"
#include "core/GuardState.h"
#include "core/IntruderRecord.h"
#include "l10n/L10n.h"
#include "platform/linux/Base64.h"

namespace {

using namespace kestrovan;
using kestrovan::rigs::RunningKestrovan;
using kestrovan::rigs::ScreenReader;
using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;
using Thing = ScreenReader::Thing;

class ScreenReaderTest : public test::ProgramTest, public testing::WithParamInterface<AppLanguage> {
protected:
    static Thing button(const L10nKey& key) { return {"push button", L10n::text(key, GetParam())}; }
    static Thing toggle(const L10nKey& key) { return {"check box", L10n::text(key, GetParam())}; }
    static Thing label(const L10nKey& key) { return {"label", L10n::text(key, GetParam())}; }
    static Thing segment(std::string_view name) { return {"radio button", std::string(name)}; }
    static Thing segment(const L10nKey& key) { return segment(L10n::text(key, GetParam())); }
    static Thing field(const L10nKey& key) { return {"text", L10n::text(key, GetParam())}; }

    static std::string settings()
    {
        const IntruderRecord record{makeRecordId(), {}, KESTROVAN_PROGRAM, "Somebody"};
        return R"({"Kestrovan_Lang": ")" + std::string(rawValue(GetParam())) + R"(", "Kestrovan_PinEnabled": true,
            "Kestrovan_AutoCheckUpdates": false, "Kestrovan_FullscreenArmed": false,
            "Kestrovan_FullscreenTriggered": false, "Kestrovan_IntruderRecords": {"base64": ")" +
               base64::encode(encodeIntruderRecords({record}).value_or("")) + "\"}}";
    }

    ScreenReader reader{desktop->bus};
    RunningKestrovan program{settings()};
};

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, ScreenReaderTest, testing::ValuesIn(allLanguages),
                         [](const auto& info) { return std::string(rawValue(info.param)); });

TEST_P(ScreenReaderTest, FindsEveryControlOfTheWindow)
{
    ASSERT_TRUE(reader.waitFor(button(L10nKey::activateProtection)));
    EXPECT_THAT(reader.things(),
                IsSupersetOf(
                    {Thing{"push button", std::string(shortName(GetParam()))}, Thing{"push button", "Foto (1)"},
                     Thing{"push button", "Update"}, button(L10nKey::aboutSectionTitle), button(L10nKey::settingsTitle),
                     button(L10nKey::previewFullscreen), toggle(L10nKey::triggerCharger), toggle(L10nKey::triggerLid),
                     toggle(L10nKey::triggerCamera), label(L10nKey::powerConnected), Thing{"label", "80%"},
                     label(L10nKey::protectionInactive), label(L10nKey::pinActive)}));
}

TEST_P(ScreenReaderTest, FindsEveryControlOfTheSettingsAndNothingBeneathThem)
{
    ASSERT_TRUE(reader.waitFor(button(L10nKey::settingsTitle)));
    reader.use(button(L10nKey::settingsTitle));
    ASSERT_TRUE(reader.waitFor(button(L10nKey::close)));
    EXPECT_THAT(reader.things(), IsSupersetOf({Thing{"dialog", L10n::text(L10nKey::settingsTitle, GetParam())},
                                               segment("English (EN)"),
                                               segment("Bahasa Indonesia (ID)"),
                                               button(L10nKey::checkForUpdates),
                                               toggle(L10nKey::autoCheckUpdatesToggle),
                                               field(L10nKey::serverUrlLabel),
                                               button(L10nKey::simulateUpdateFound),
                                               toggle(L10nKey::cameraCaptureToggle),
                                               button(L10nKey::openIntruderFolder),
                                               button(L10nKey::chooseFromMac),
                                               field(L10nKey::fullscreenWarningLabel),
                                               toggle(L10nKey::showFullscreenArmed),
                                               toggle(L10nKey::showFullscreenAlarm),
                                               toggle(L10nKey::alarmOnChargerDisconnect),
                                               toggle(L10nKey::alarmOnLidClose),
                                               segment(L10nKey::seconds(3)),
                                               segment(L10nKey::seconds(10)),
                                               toggle(L10nKey::usePinToggle),
                                               field(L10nKey::changePinLabel),
                                               button(L10nKey::savePinButton)}));
    EXPECT_THAT(reader.things(), Not(Contains(button(L10nKey::activateProtection))));

    reader.use(button(L10nKey::close));
    EXPECT_TRUE(reader.waitFor(button(L10nKey::activateProtection)));
}

TEST_P(ScreenReaderTest, FindsThePhotosAndTheEndOfEverySheet)
{
    ASSERT_TRUE(reader.waitFor({"push button", "Foto (1)"}));
    reader.use({"push button", "Foto (1)"});
    EXPECT_TRUE(reader.waitFor({"list item", "Somebody, 01/01 00:00:00"}));
    EXPECT_TRUE(reader.waitFor(button(L10nKey::clearIntruderLogs)));
    reader.use(button(L10nKey::close));
    for (const auto& opener : {button(L10nKey::aboutSectionTitle), Thing{"push button", "Update"}}) {
        ASSERT_TRUE(reader.waitFor(opener));
        reader.use(opener);
        ASSERT_TRUE(reader.waitFor(button(L10nKey::close)));
        reader.use(button(L10nKey::close));
        EXPECT_TRUE(reader.waitForNo(button(L10nKey::close)));
    }
}

TEST_P(ScreenReaderTest, HearsWhatTheGuardDoesAndWhatIsWrongWithThePin)
{
    const auto title = [](const GuardState& state) { return state.localizedTitle(GetParam()); };
    ASSERT_TRUE(reader.waitFor(button(L10nKey::activateProtection)));
    reader.use(button(L10nKey::activateProtection));
    EXPECT_TRUE(reader.hears(title(GuardState::arming(3))));
    EXPECT_TRUE(reader.hears(title(GuardState::armed())));
    unplug();
    EXPECT_TRUE(reader.hears(title(GuardState::alarmTriggered(AlarmReason::chargerDisconnected))));
    ASSERT_TRUE(reader.waitFor(field(L10nKey::enterPinToStop)));
    EXPECT_THAT(reader.things(), IsSupersetOf({button(L10nKey::openUnlock), Thing{"push button", "0"},
                                               Thing{"push button", "⌫"}, label(L10nKey::lockdownActiveBanner)}));

    for (int attempt = 1; attempt <= 4; ++attempt) {
        reader.use(button(L10nKey::openUnlock));
        EXPECT_TRUE(reader.hears(L10n::text(L10nKey::wrongPin, GetParam()))) << "the one numbered " << attempt;
    }
    reader.use(button(L10nKey::openUnlock));
    EXPECT_TRUE(reader.hears(L10n::text(L10nKey::pinLockoutMessage(30), GetParam())));
}

} // namespace
