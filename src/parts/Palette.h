#pragma once

#include <QColor>

/// The colours of the program, which is dark whatever the desktop is.
namespace kestrovan::palette {

inline constexpr QColor white{0xff, 0xff, 0xff};
inline constexpr QColor black{0x00, 0x00, 0x00};
inline constexpr QColor gray{0x98, 0x98, 0x9f};
inline constexpr QColor red{0xff, 0x42, 0x3a};
inline constexpr QColor orange{0xff, 0x9f, 0x0a};
inline constexpr QColor yellow{0xff, 0xd6, 0x0a};
inline constexpr QColor green{0x32, 0xd7, 0x4b};
inline constexpr QColor mint{0x66, 0xe3, 0xd4};
inline constexpr QColor cyan{0x5a, 0xd0, 0xf8};
inline constexpr QColor blue{0x0a, 0x84, 0xff};

/// The colour, let through as much of it as `opacity` says: 0 to 1.
inline QColor at(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

} // namespace kestrovan::palette
