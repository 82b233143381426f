#include "SystemColors.h"

#include <algorithm>
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

// Where each system colour comes from on Qt: a palette role, or (NoRole) the classic scheme.
// Grey text is what a disabled widget's text looks like; every other role is read from the
// active group, so the look does not change with the window's activation.
struct PaletteSource {
    QPalette::ColorGroup group;
    QPalette::ColorRole role;
};
constexpr QPalette::ColorGroup A = QPalette::Active;
constexpr std::array<PaletteSource, 31> PaletteSources = {{
    {A, QPalette::Button},                // 0 scroll bar
    {A, QPalette::NoRole},                // 1 desktop background
    {A, QPalette::NoRole},                // 2 active caption
    {A, QPalette::NoRole},                // 3 inactive caption
    {A, QPalette::Window},                // 4 menu
    {A, QPalette::Base},                  // 5 window: the rows' background
    {A, QPalette::WindowText},            // 6 window frame
    {A, QPalette::WindowText},            // 7 menu text
    {A, QPalette::Text},                  // 8 window text: the rows' text
    {A, QPalette::NoRole},                // 9 caption text
    {A, QPalette::Window},                // 10 active border
    {A, QPalette::Window},                // 11 inactive border
    {A, QPalette::Dark},                  // 12 application workspace
    {A, QPalette::Highlight},             // 13 highlight
    {A, QPalette::HighlightedText},       // 14 highlight text
    {A, QPalette::Button},                // 15 button face
    {A, QPalette::Dark},                  // 16 button shadow
    {QPalette::Disabled, QPalette::Text}, // 17 grey text
    {A, QPalette::ButtonText},            // 18 button text
    {A, QPalette::NoRole},                // 19 inactive caption text
    {A, QPalette::Light},                 // 20 button highlight
    {A, QPalette::Shadow},                // 21 3-D dark shadow
    {A, QPalette::Midlight},              // 22 3-D light
    {A, QPalette::ToolTipText},           // 23 tooltip text
    {A, QPalette::ToolTipBase},           // 24 tooltip background
    {A, QPalette::NoRole},                // 25 unassigned
    {A, QPalette::Link},                  // 26 hot-tracked item
    {A, QPalette::NoRole},                // 27 active caption gradient
    {A, QPalette::NoRole},                // 28 inactive caption gradient
    {A, QPalette::Highlight},             // 29 menu highlight
    {A, QPalette::Window},                // 30 menu bar
}};

} // namespace

QRgb sysColor(int index, const QPalette &palette) {
    if (index < 0 || index >= static_cast<int>(PaletteSources.size()))
        return qRgb(0, 0, 0);
    const PaletteSource source = PaletteSources[static_cast<size_t>(index)];
    if (source.role == QPalette::NoRole)
        return ClassicScheme[static_cast<size_t>(index)];
    // Opaque, as every translated colour is: the surface has no alpha channel.
    return palette.color(source.group, source.role).rgb() | 0xFF000000u;
}

QPalette classicPalette() {
    QPalette palette;
    for (size_t i = 0; i < PaletteSources.size(); ++i) {
        const PaletteSource source = PaletteSources[i];
        if (source.role == QPalette::NoRole)
            continue;
        const QColor color = QColor::fromRgb(ClassicScheme[i]);
        if (source.group == QPalette::Active)
            palette.setColor(source.role, color); // every group
        else
            palette.setColor(source.group, source.role, color);
    }
    // Roles no system colour reads. Tree lines and box frames are the mid shade, the classic
    // button shadow; the rest is set so that the rest of a classic application matches.
    palette.setColor(QPalette::Mid, QColor(0x80, 0x80, 0x80));
    palette.setColor(QPalette::AlternateBase, QColor(0xF7, 0xF7, 0xF7));
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x80, 0x80, 0x80));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x80, 0x80, 0x80));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x80, 0x80, 0x80));
    return palette;
}

QPalette darkPalette() {
    const QColor window(0x35, 0x35, 0x35), base(0x24, 0x24, 0x24), text(0xE6, 0xE6, 0xE6);
    const QColor grey(0x80, 0x80, 0x80);
    // Mid, the tree lines' shade, stays light enough to read on the base.
    QPalette palette(text, window, window.lighter(150), window.darker(200),
                     QColor(0x70, 0x70, 0x70), text, Qt::white, base, window);
    palette.setColor(QPalette::Midlight, window.lighter(125));
    palette.setColor(QPalette::Shadow, QColor(0x10, 0x10, 0x10));
    palette.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0x2E, 0x2E, 0x2E));
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Link, QColor(0x6C, 0xB4, 0xFF));
    palette.setColor(QPalette::PlaceholderText, grey);
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, grey);
    return palette;
}

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

QRgb oleTranslateColor(OleColor c, const QPalette &palette) {
    if (c & SystemColorFlag)
        return sysColor(static_cast<int>(std::min<OleColor>(c & ~SystemColorFlag, 0x7FFF)),
                        palette);
    return oleTranslateColor(c);
}

OleColor oleFromRgb(QRgb rgb) {
    return static_cast<OleColor>(qRed(rgb)) | (static_cast<OleColor>(qGreen(rgb)) << 8) |
           (static_cast<OleColor>(qBlue(rgb)) << 16);
}
