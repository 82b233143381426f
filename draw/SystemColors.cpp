#include "SystemColors.h"

#include <array>

namespace {

constexpr OleColor SystemColorFlag = 0x80000000u;

// The classic light desktop scheme, indexed by system colour number. 25 is not assigned by the
// platform and reads as black, like any index past the table.
constexpr std::array<QRgb, 31> ClassicScheme = {
    0xFFD4D0C8, // 0 scroll bar
    0xFF3A6EA5, // 1 desktop background
    0xFF0A246A, // 2 active caption
    0xFF808080, // 3 inactive caption
    0xFFD4D0C8, // 4 menu
    0xFFFFFFFF, // 5 window
    0xFF000000, // 6 window frame
    0xFF000000, // 7 menu text
    0xFF000000, // 8 window text
    0xFFFFFFFF, // 9 caption text
    0xFFD4D0C8, // 10 active border
    0xFFD4D0C8, // 11 inactive border
    0xFF808080, // 12 application workspace
    0xFF0A246A, // 13 highlight
    0xFFFFFFFF, // 14 highlight text
    0xFFD4D0C8, // 15 button face
    0xFF808080, // 16 button shadow
    0xFF808080, // 17 grey text
    0xFF000000, // 18 button text
    0xFFD4D0C8, // 19 inactive caption text
    0xFFFFFFFF, // 20 button highlight
    0xFF404040, // 21 3-D dark shadow
    0xFFD4D0C8, // 22 3-D light
    0xFF000000, // 23 tooltip text
    0xFFFFFFE1, // 24 tooltip background
    0xFF000000, // 25 unassigned
    0xFF000080, // 26 hot-tracked item
    0xFFA6CAF0, // 27 active caption gradient
    0xFFC0C0C0, // 28 inactive caption gradient
    0xFF0A246A, // 29 menu highlight
    0xFFD4D0C8, // 30 menu bar
};

} // namespace

QRgb sysColor(int index) {
    if (index < 0 || index >= static_cast<int>(ClassicScheme.size()))
        return qRgb(0, 0, 0);
    return ClassicScheme[static_cast<size_t>(index)];
}

QRgb oleTranslateColor(OleColor c) {
    if (c & SystemColorFlag) {
        const OleColor index = c & ~SystemColorFlag;
        return index < ClassicScheme.size() ? ClassicScheme[index] : qRgb(0, 0, 0);
    }
    return qRgb(static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF),
                static_cast<int>((c >> 16) & 0xFF));
}

OleColor oleFromRgb(QRgb rgb) {
    return static_cast<OleColor>(qRed(rgb)) | (static_cast<OleColor>(qGreen(rgb)) << 8) |
           (static_cast<OleColor>(qBlue(rgb)) << 16);
}
