#include "app/PictureDialog.h"

#include "platform/linux/LinuxWorkspace.h"

#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QWindow>

namespace kestrovan {

namespace {

// By ending, as dialogs of every desktop understand it; both cases, for not all of them ignore it.
QString pictureFilter()
{
    QStringList patterns;
    for (const auto* ending : {"png", "jpg", "jpeg", "webp", "heic", "heif", "bmp", "gif", "tif", "tiff", "ico"}) {
        patterns << QStringLiteral("*.") + QLatin1String(ending);
        patterns << QStringLiteral("*.") + QString::fromLatin1(ending).toUpper();
    }
    return QStringLiteral("PNG, JPEG, WebP, HEIC, … (%1)").arg(patterns.join(QLatin1Char(' ')));
}

// For a folder that is not there, the dialog would offer its name as a file's.
QString firstFolder()
{
    const auto pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(pictures).isDir() ? pictures : QDir::homePath();
}

// Other windows stay in use: the alarm may sound while it is open, and the deterrent screens take the PIN then.
void blockOnlyTheMainWindow(QFileDialog& dialog)
{
    dialog.setWindowModality(Qt::WindowModal);
    dialog.winId(); // makes its window
    for (auto* window : QGuiApplication::topLevelWindows())
        if (window->objectName() == LinuxWorkspace::mainWindowName)
            dialog.windowHandle()->setTransientParent(window);
}

} // namespace

std::optional<std::filesystem::path> PictureDialog::choose(const Texts& texts)
{
    QFileDialog dialog(nullptr, QString::fromStdString(texts.title), firstFolder(), pictureFilter());
    dialog.setObjectName("pictureDialog");
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::ReadOnly); // no new folders
    dialog.setLabelText(QFileDialog::Accept, QString::fromStdString(texts.confirmButton));
    blockOnlyTheMainWindow(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().first().toStdString();
}

} // namespace kestrovan
