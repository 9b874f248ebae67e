#include "parts/Theme.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>
#include <array>

namespace kestrovan {

namespace {

// Rounded faces that desktops ship; without any, the desktop's own.
QString roundedFamily()
{
    static const QString family = [] {
        const auto installed = QFontDatabase::families();
        const std::array<QString, 4> known{"Nunito", "Quicksand", "Varela Round", "M PLUS Rounded 1c"};
        const auto* const found =
            std::find_if(known.begin(), known.end(), [&](const QString& name) { return installed.contains(name); });
        return found == known.end() ? QGuiApplication::font().family() : *found;
    }();
    return family;
}

} // namespace

QFont Theme::font(int size, int weight, int design, bool isUnderlined)
{
    auto font = design == Monospaced ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QGuiApplication::font();
    if (design == Rounded)
        font.setFamily(roundedFamily());
    font.setPixelSize(size);
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setUnderline(isUnderlined);
    return font;
}

} // namespace kestrovan
