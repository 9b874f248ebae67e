#pragma once

/// The keys under which the guard keeps its settings; users' files depend on every letter.
namespace kestrovan::settingsKey {

inline constexpr const char* pin = "Kestrovan_PIN";                                 ///< string
inline constexpr const char* pinEnabled = "Kestrovan_PinEnabled";                   ///< bool
inline constexpr const char* lidAlarm = "Kestrovan_LidAlarm";                       ///< bool
inline constexpr const char* chargerAlarm = "Kestrovan_ChargerAlarm";               ///< bool
inline constexpr const char* cameraCapture = "Kestrovan_CameraCapture";             ///< bool
inline constexpr const char* cameraDelay = "Kestrovan_CameraDelay";                 ///< number, seconds
inline constexpr const char* language = "Kestrovan_Lang";                           ///< string, "en" or "id"
inline constexpr const char* customImagePath = "Kestrovan_CustomImagePath";         ///< string, absolute path
inline constexpr const char* warningMessage = "Kestrovan_WarningMessage";           ///< string
inline constexpr const char* fullscreenArmed = "Kestrovan_FullscreenArmed";         ///< bool
inline constexpr const char* fullscreenTriggered = "Kestrovan_FullscreenTriggered"; ///< bool
inline constexpr const char* intruderRecords = "Kestrovan_IntruderRecords";         ///< data, UTF-8 JSON

} // namespace kestrovan::settingsKey
