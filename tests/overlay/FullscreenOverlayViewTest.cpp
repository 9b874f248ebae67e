#include "OverlayViewTest.h"

using namespace kestrovan;
using namespace std::chrono_literals;

using FullscreenOverlayViewTest = test::OverlayViewTest;

TEST_F(FullscreenOverlayViewTest, APreviewHasAWayOutAndLeavesTheGuardAlone)
{
    show();
    EXPECT_EQ(shown("status"), "PROTECTION INACTIVE");
    EXPECT_EQ(stage.color("statusDot"), palette::yellow);
    EXPECT_EQ(shown("closePreview"), "Close Preview");
    screens.showOverlay(guard());
    click("closePreview");
    EXPECT_FALSE(screens.isShown);
    EXPECT_TRUE(state().isDisarmed());

    armAndWait();
    EXPECT_FALSE(stage.isVisible("closePreview"));
    laptop.unplugCharger();
    laptop.settle();
    EXPECT_FALSE(stage.isVisible("closePreview"));
}

TEST_F(FullscreenOverlayViewTest, ArmedItWarns)
{
    show();
    armAndWait();
    EXPECT_EQ(shown("status"), "PROTECTION ACTIVE (GUARDED)");
    EXPECT_EQ(stage.color("statusDot"), palette::green);
    EXPECT_EQ(shown("headline"), "KESTROVAN: ACTIVE SURVEILLANCE");
    EXPECT_EQ(shown("power"), "100%");
    EXPECT_FALSE(stage.isVisible("strobe"));
    EXPECT_FALSE(stage.isVisible("alarmTitle"));

    guard().updateWarningMessage("  ");
    laptop.settle();
    EXPECT_EQ(shown("headline"), "  ");
    guard().updateWarningMessage("<b>&amp;");
    laptop.settle();
    EXPECT_EQ(shown("headline"), "<b>&amp;");
    EXPECT_EQ(stage.find("headline")->property("lineCount").toInt(), 1);
}

TEST_F(FullscreenOverlayViewTest, AlarmingItSaysWhyWithTheSymbolOfTheReason)
{
    show();
    guard().triggerAlarm(AlarmReason::lidClosed);
    laptop.settle();
    EXPECT_EQ(shown("alarmCause"), "Trigger: Lid Closed!");
    EXPECT_EQ(stage.find("alarmSymbol")->property("name").toString(), "laptopcomputer.slash");
    EXPECT_EQ(shown("alarmTitle"), "ALARM TRIGGERED");
    EXPECT_FALSE(stage.isVisible("headline"));
    EXPECT_TRUE(stage.isVisible("strobe"));
    EXPECT_EQ(stage.color("statusDot"), palette::red);
}

TEST_F(FullscreenOverlayViewTest, ALanguageChangesEveryTextAtOnce)
{
    show();
    EXPECT_EQ(shown("time"), "14:05:09");
    EXPECT_EQ(shown("date"), "Sunday, March 1, 2026");
    guard().setLanguage(AppLanguage::indonesian);
    laptop.settle();
    EXPECT_EQ(shown("date"), "Minggu, 1 Maret 2026");
    EXPECT_EQ(shown("status"), "PROTEKSI TIDAK AKTIF");
    EXPECT_EQ(shown("headline"), "KESTROVAN: PENGAWASAN AKTIF");
    EXPECT_EQ(shown("unlock"), "Buka Kunci");
    guard().triggerAlarm(AlarmReason::lidClosed);
    laptop.advance(1s);
    EXPECT_EQ(shown("time"), "14:05:10");
    EXPECT_EQ(shown("alarmTitle"), "ALARM BERBUNYI");
    EXPECT_EQ(shown("alarmCause"), "Pemicu: Layar Ditutup!");
}

TEST_F(FullscreenOverlayViewTest, TheFieldHasTheKeyboardAndReturnSubmits)
{
    show();
    armAndWait();
    EXPECT_EQ(stage.find("pinField")->property("border").value<QObject*>()->property("color").value<QColor>(),
              palette::cyan);
    stage.type("12ab");
    EXPECT_EQ(guard().enteredPin.get(), "12ab");
    screens.showOverlay(guard());
    stage.press(Qt::Key_Return);
    EXPECT_TRUE(state().isDisarmed()) << "no PIN is asked before the alarm";
    EXPECT_FALSE(screens.isShown);
}

TEST_F(FullscreenOverlayViewTest, WhatTheKeyFilterOrAnotherScreenEntersIsShown)
{
    show();
    armAndSound();
    laptop.settle();
    laptop.type("7");
    laptop.settle();
    EXPECT_EQ(stage.find("input")->property("displayText").toString(), QString(QChar(0x2022)));
    FullscreenOverlayView other(guard(), platform, screens, backdrops);
    other.handleKeypadPress("3");
    laptop.settle();
    EXPECT_EQ(stage.find("input")->property("text").toString(), "73");
}

TEST_F(FullscreenOverlayViewTest, TheKeypadTakesTwelveDigitsBackOneAndClears)
{
    show();
    armAndSound();
    laptop.settle();
    click("key⌫");
    EXPECT_EQ(guard().enteredPin.get(), "");
    for (int press = 0; press < 13; ++press)
        click(press < 12 ? "key4" : "key5");
    EXPECT_EQ(guard().enteredPin.get(), std::string(12, '4'));
    click("key⌫");
    EXPECT_EQ(guard().enteredPin.get(), std::string(11, '4'));
    click("keyC");
    EXPECT_EQ(guard().enteredPin.get(), "");
    EXPECT_TRUE(state().isAlarmTriggered());
}

TEST_F(FullscreenOverlayViewTest, AWrongPinIsSaidUntilTheNextKeyAndTheRightOneEndsIt)
{
    show();
    armAndSound();
    laptop.settle();
    EXPECT_FALSE(stage.isVisible("statusLine"));
    click("key1");
    click("unlock");
    EXPECT_EQ(shown("statusLine"), "Incorrect PIN! Try again.");
    EXPECT_EQ(stage.color("statusLine"), palette::yellow);
    click("keyC");
    EXPECT_FALSE(stage.isVisible("statusLine"));

    for (const auto* key : {"key7", "key3", "key9", "key1", "unlock"})
        click(key);
    EXPECT_TRUE(state().isDisarmed());
    EXPECT_FALSE(screens.isShown);
}

TEST_F(FullscreenOverlayViewTest, ALockoutDimsTheKeypadAndCountsDown)
{
    show();
    armAndSound();
    laptop.settle();
    for (int attempt = 0; attempt < 5; ++attempt)
        click("unlock");
    EXPECT_EQ(shown("statusLine"), "5 failed attempts. Locked for 30 seconds.");
    EXPECT_EQ(stage.color("statusLine"), palette::orange);
    click("key1");
    EXPECT_EQ(guard().enteredPin.get(), "");
    laptop.advance(29s);
    EXPECT_EQ(shown("statusLine"), "5 failed attempts. Locked for 1 seconds.");
    laptop.advance(1s);
    EXPECT_FALSE(stage.isVisible("statusLine"));
    click("key1");
    EXPECT_EQ(guard().enteredPin.get(), "1");
}

TEST_F(FullscreenOverlayViewTest, WithoutPinProtectionThereIsOneButton)
{
    guard().togglePinRequirement(false);
    show();
    armAndWait();
    EXPECT_FALSE(stage.isVisible("pinField"));
    EXPECT_FALSE(stage.isVisible("keypad"));
    EXPECT_EQ(shown("disarm"), "Disarm Protection");
    laptop.unplugCharger();
    laptop.settle();
    EXPECT_EQ(shown("disarm"), "STOP ALARM NOW");
    ASSERT_TRUE(screens.isShown);
    click("disarm");
    EXPECT_TRUE(state().isDisarmed());
    EXPECT_FALSE(screens.isShown);
}

TEST_F(FullscreenOverlayViewTest, OneTurnOfTheQueueIsOneAnnouncement)
{
    show();
    int announcements = 0;
    QObject::connect(view.get(), &GuardView::changed, [&] { ++announcements; });
    guard().triggerAlarm(AlarmReason::test);
    guard().enteredPin = "1";
    laptop.settle();
    EXPECT_EQ(announcements, 1);
}
