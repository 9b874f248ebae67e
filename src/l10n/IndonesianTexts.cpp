#include "l10n/L10n.h"
#include "l10n/Vendor.h"

namespace kestrovan {

// One row per text; the length is the table's own. NOLINTNEXTLINE(readability-function-size)
std::string L10n::indonesianText(const L10nKey& key)
{
    switch (key.name()) {
    case L10nKey::pinLockoutMessageName:
        return "Percobaan salah 5 kali. Terkunci selama " + std::to_string(key.number()) + " detik.";
    case L10nKey::currentVersionLabelName:
        return "Versi Saat Ini: v" + key.version();
    case L10nKey::newVersionAvailableName:
        return "Versi Baru Tersedia: v" + key.version();
    case L10nKey::secondsName:
        return std::to_string(key.number()) + " Detik";
    case L10nKey::appName:
        return "Kestrovan";
    case L10nKey::appSubtitle:
        return "Alarm Anti-Maling & Keamanan MacBook";
    case L10nKey::powerConnected:
        return "CHARGER TERHUBUNG";
    case L10nKey::batteryPower:
        return "MENGGUNAKAN BATERAI";
    case L10nKey::triggerCharger:
        return "Charger";
    case L10nKey::triggerLid:
        return "Tutup Layar";
    case L10nKey::triggerCamera:
        return "Foto Kamera (Jeda 2s)";
    case L10nKey::customWallpaperTag:
        return "Gambar Kustom";
    case L10nKey::standardWallpaperTag:
        return "Layar Standar";
    case L10nKey::protectionInactive:
        return "Proteksi Non-Aktif";
    case L10nKey::protectionInactiveDesc:
        return "Klik tombol di bawah untuk mengaktifkan pengamanan, kamera penyusup, dan layar penuh.";
    case L10nKey::protectionActive:
        return "PROTEKSI SEDANG AKTIF";
    case L10nKey::protectionActiveDesc:
        return "MacBook dijaga ketat. Jika charger dicabut atau lid ditutup, alarm berbunyi keras dan kamera otomatis "
               "memotret pelaku.";
    case L10nKey::armingTitle:
        return "Menyiapkan Proteksi & Kamera...";
    case L10nKey::armingDesc:
        return "Layar penuh, sensor, dan kamera akan aktif sebentar lagi.";
    case L10nKey::activateProtection:
        return "AKTIFKAN PROTEKSI";
    case L10nKey::disarmProtection:
        return "Matikan Proteksi";
    case L10nKey::cancel:
        return "Batalkan";
    case L10nKey::alarmTriggeredTitle:
        return "ALARM BERBUNYI";
    case L10nKey::securityWarningActive:
        return "Peringatan keamanan MacBook aktif!";
    case L10nKey::stopAlarmNow:
        return "HENTIKAN ALARM SEKARANG";
    case L10nKey::enterPinToStop:
        return "Masukkan PIN Keamanan:";
    case L10nKey::openUnlock:
        return "Buka Kunci";
    case L10nKey::wrongPin:
        return "PIN Salah! Coba lagi.";
    case L10nKey::testSiren:
        return "Uji Sirine (2s)";
    case L10nKey::previewFullscreen:
        return "Pratinjau Layar Penuh";
    case L10nKey::closePreview:
        return "Tutup Pratinjau";
    case L10nKey::pinActive:
        return "PIN Aktif";
    case L10nKey::pinInactive:
        return "PIN Nonaktif";
    case L10nKey::settingsTitle:
        return "Pengaturan Kestrovan";
    case L10nKey::close:
        return "Tutup";
    case L10nKey::wallpaperSectionTitle:
        return "Gambar Layar Penuh (Wallpaper Kustom)";
    case L10nKey::wallpaperSectionDesc:
        return "Pilih gambar dari MacBook Anda untuk ditampilkan saat layar penuh aktif.";
    case L10nKey::chooseFromMac:
        return "Pilih Gambar dari Mac...";
    case L10nKey::removeCustomImage:
        return "Hapus Gambar Kustom";
    case L10nKey::fullscreenWarningLabel:
        return "Teks Peringatan Layar Penuh:";
    case L10nKey::showFullscreenArmed:
        return "Tampilkan Layar Penuh saat Proteksi Aktif";
    case L10nKey::showFullscreenAlarm:
        return "Tampilkan Layar Penuh saat Alarm Berbunyi";
    case L10nKey::sensorsSectionTitle:
        return "Pemicu Alarm (Sensor)";
    case L10nKey::alarmOnChargerDisconnect:
        return "Alarm saat Kabel Charger Dicabut";
    case L10nKey::alarmOnLidClose:
        return "Alarm saat Layar / Lid Ditutup (Clamshell)";
    case L10nKey::cameraSectionTitle:
        return "Kamera Penyusup (Intruder Snapshot)";
    case L10nKey::cameraCaptureToggle:
        return "Ambil Foto Otomatis saat Alarm Terpicu";
    case L10nKey::cameraCaptureDesc:
        return "Memotret wajah orang di depan MacBook saat kabel dicabut atau lid dibuka/ditutup.";
    case L10nKey::cameraDelayTitle:
        return "Jeda Pemotretan Kamera";
    case L10nKey::cameraDelayDesc:
        return "Waktu jeda setelah kamera aktif (2 detik) agar sensor kamera menyesuaikan cahaya ruangan dan memotret "
               "dengan jelas.";
    case L10nKey::intruderGalleryTitle:
        return "Galeri Foto Penyusup";
    case L10nKey::intruderGalleryDesc:
        return "Daftar foto yang tertangkap kamera saat alarm berbunyi.";
    case L10nKey::intruderLogsEmpty:
        return "Belum ada foto penyusup yang tercatat.";
    case L10nKey::openIntruderFolder:
        return "Buka Folder Foto di Finder";
    case L10nKey::clearIntruderLogs:
        return "Hapus Semua Riwayat Foto";
    case L10nKey::viewIntruderPhotos:
        return "Lihat Foto Penyusup";
    case L10nKey::photoCapturedBadge:
        return "Foto Berhasil Diambil";
    case L10nKey::armingDelayTitle:
        return "Jeda Waktu Aktivasi";
    case L10nKey::pinSectionTitle:
        return "Kunci Keamanan PIN";
    case L10nKey::usePinToggle:
        return "Gunakan PIN Keamanan saat Matikan Alarm";
    case L10nKey::changePinLabel:
        return "Ubah PIN (Minimal 4 Karakter):";
    case L10nKey::newPinPlaceholder:
        return "PIN Baru";
    case L10nKey::savePinButton:
        return "Simpan PIN";
    case L10nKey::pinSavedSuccess:
        return "PIN berhasil diperbarui.";
    case L10nKey::languageSectionTitle:
        return "Bahasa Aplikasi";
    case L10nKey::aboutSectionTitle:
        return "Tentang Aplikasi & Pengembang";
    case L10nKey::developerLabel:
        return std::string("Pengembang: ") + vendor::developerName;
    case L10nKey::companyLabel:
        return vendor::companyName;
    case L10nKey::websiteLabel:
        return std::string("Website: ") + vendor::websiteAddress;
    case L10nKey::copyrightText:
        return std::string("© 2026 Kestrovan. ") + vendor::developerName + ", " + vendor::companyName + ".";
    case L10nKey::aboutAppDesc:
        return std::string("Kestrovan dikembangkan oleh ") + vendor::developerName +
               " untuk memberi pengguna MacBook keamanan fisik dan pencegahan pencurian yang maksimal.";
    case L10nKey::otherPlatformsInDev:
        return "Versi untuk Windows, Android, serta iOS/iPadOS sedang dalam proses pembuatan.";
    case L10nKey::nextGenFeaturesInDev:
        return "Pengembangan Selanjutnya: Live Video Recording, Sound Recording, dan Quick Shortcut Key Disarm.";
    case L10nKey::updateSectionTitle:
        return "Pembaruan Perangkat Lunak";
    case L10nKey::checkForUpdates:
        return "Periksa Pembaruan...";
    case L10nKey::checkingForUpdates:
        return "Memeriksa versi terbaru ke server...";
    case L10nKey::upToDateTitle:
        return "Aplikasi Anda Sudah Versi Terbaru";
    case L10nKey::upToDateDesc:
        return "Kestrovan yang terpasang sudah merupakan versi paling mutakhir.";
    case L10nKey::downloadUpdateNow:
        return "Download & Pasang Pembaruan";
    case L10nKey::updateNotesTitle:
        return "Catatan Rilis:";
    case L10nKey::autoCheckUpdatesToggle:
        return "Periksa Pembaruan Otomatis saat Buka Aplikasi";
    case L10nKey::serverUrlLabel:
        return "URL Server Pembaruan:";
    case L10nKey::simulateUpdateFound:
        return "Simulasi Versi Baru Ditemukan (Uji)";
    case L10nKey::lockdownActiveBanner:
        return "PENGUNCIAN KEAMANAN: FORCE-CLOSE & TOMBOL SISTEM DINONAKTIFKAN";
    case L10nKey::numericOnlyHint:
        return "Hanya tombol angka 0-9 dan PIN yang aktif.";
    case L10nKey::cannotQuitWhileAlarming:
        return "Tidak dapat keluar atau menutup aplikasi saat alarm berbunyi atau terkunci PIN!";
    case L10nKey::reasonChargerDisconnected:
        return "Charger Terputus!";
    case L10nKey::reasonLidClosed:
        return "Layar Ditutup!";
    case L10nKey::reasonSleepAttempted:
        return "Upaya Sleep / Tutup Layar!";
    case L10nKey::reasonTest:
        return "Pengujian Alarm";
    case L10nKey::defaultWarningText:
        return "KESTROVAN: PENGAWASAN AKTIF";
    case L10nKey::dontTouchWarning:
        return "Jangan mencabut charger atau menutup layar laptop. Alarm otomatis akan berbunyi kencang dan memotret "
               "wajah Anda.";
    case L10nKey::menuOpenWindow:
        return "Buka Jendela Kestrovan";
    case L10nKey::menuQuit:
        return "Keluar";
    }
    return {};
}

} // namespace kestrovan
