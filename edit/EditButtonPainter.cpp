#include "EditButtonPainter.h"

#include "SystemColors.h"
#include "lsEditTypes.h"

namespace {

constexpr OleColor ButtonShadow = 0x80000010u;
constexpr OleColor ButtonHighlight = 0x80000014u;
constexpr OleColor DarkShadow3D = 0x80000015u;
constexpr OleColor Light3D = 0x80000016u;

bool isKnownState(qint16 state) {
    return state == lsBtnDown || state == lsbtnFlat || state == lsBtnUp || state == lsBtnDisabled;
}

// Every line and box is written pixel by pixel and clipped to the surface: the frame is meant
// to reach past the left edge, and a surface smaller than a glyph must stay untouched outside.
void fillBox(QImage &surface, int left, int top, int right, int bottom, QRgb colour) {
    const QRect box = QRect(QPoint(left, top), QPoint(right, bottom)) & surface.rect();
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            surface.setPixel(x, y, colour);
}

// Both ends included.
void hLine(QImage &surface, int x1, int x2, int y, OleColor colour) {
    fillBox(surface, x1, y, x2, y, oleTranslateColor(colour));
}

void vLine(QImage &surface, int x, int y1, int y2, OleColor colour) {
    fillBox(surface, x, y1, x, y2, oleTranslateColor(colour));
}

// The raised frame is two pixels deep on all four sides, so the face it encloses is centred in
// the surface and centring on the surface centres the glyph on the face. Rounding down: with an
// odd spare the raised glyph sits half a pixel before the centre and the pressed one (a pixel
// further on) half a pixel past it, so pressing looks symmetric.
int centred(int extent, int glyph) {
    const int spare = extent - glyph;
    return spare >= 0 ? spare / 2 : (spare - 1) / 2;
}

// Pressed and flat share one glyph position, so a flat button that is pressed does not jump.
int glyphShift(qint16 state) {
    return state == lsBtnDown || state == lsbtnFlat ? 1 : 0;
}

QRgb glyphColour(qint16 state, OleColor foreColor) {
    return oleTranslateColor(state == lsBtnDisabled ? ButtonShadow : foreColor);
}

} // namespace

bool EditButtonPainter::DrawSelectButton(QImage &surface, qint16 state, OleColor backColor,
                                         OleColor foreColor) {
    surface.fill(QColor::fromRgb(oleTranslateColor(backColor)));
    if (!DrawButtonFrame(surface, state))
        return false;
    return DrawEllipsisGlyph(surface, state, foreColor);
}

bool EditButtonPainter::DrawDownButton(QImage &surface, qint16 state, OleColor backColor,
                                       OleColor foreColor) {
    surface.fill(QColor::fromRgb(oleTranslateColor(backColor)));
    if (!DrawButtonFrame(surface, state))
        return false;
    return DrawArrowGlyph(surface, state, foreColor);
}

bool EditButtonPainter::DrawButtonFrame(QImage &surface, qint16 state) {
    if (!isKnownState(state))
        return false;
    const int right = surface.width() - 1;
    const int bottom = surface.height() - 1;

    // The dark outline starts one column left of the surface: the button adjoins the text box
    // there and must not draw a dark edge between them. Visible: top row, right column, bottom row.
    hLine(surface, -1, right, 0, DarkShadow3D);
    hLine(surface, -1, right, bottom, DarkShadow3D);
    vLine(surface, -1, 0, bottom, DarkShadow3D);
    vLine(surface, right, 0, bottom, DarkShadow3D);

    switch (state) {
    case lsBtnDown:
        // Sunken: shadow inside the dark top and along the left; the right column and bottom
        // row turn to highlight, replacing the outline there.
        vLine(surface, 0, 1, bottom - 1, ButtonShadow);
        hLine(surface, 0, right - 1, 1, ButtonShadow);
        vLine(surface, right, 1, bottom, ButtonHighlight);
        hLine(surface, 0, right, bottom, ButtonHighlight);
        break;
    case lsBtnUp:
    case lsBtnDisabled:
        // Raised: the outline's right column and bottom row are the outer dark edges; the outer
        // light edges take the top row and the left column, so the button is lit from the top
        // left. The light lines stop short of the dark ones, which own the two far corners.
        hLine(surface, 0, right - 1, 0, Light3D);
        vLine(surface, 0, 0, bottom - 1, Light3D);
        hLine(surface, 1, right - 2, 1, ButtonHighlight);
        vLine(surface, 1, 1, bottom - 2, ButtonHighlight);
        vLine(surface, right - 1, 1, bottom - 1, ButtonShadow);
        hLine(surface, 1, right - 1, bottom - 1, ButtonShadow);
        break;
    default: // lsbtnFlat: the outline alone
        break;
    }
    return true;
}

bool EditButtonPainter::DrawEllipsisGlyph(QImage &surface, qint16 state, OleColor foreColor) {
    if (!isKnownState(state))
        return false;
    // Dots two pixels square, each starting three pixels after the one before: a one-pixel gap
    // keeps them three dots rather than one bar.
    constexpr int Dot = 2, Pitch = 3, Count = 3;
    constexpr int Width = Pitch * (Count - 1) + Dot;
    const int x = centred(surface.width(), Width) + glyphShift(state);
    const int y = centred(surface.height(), Dot) + glyphShift(state);
    const QRgb colour = glyphColour(state, foreColor);
    for (int i = 0; i < Count; ++i)
        fillBox(surface, x + i * Pitch, y, x + i * Pitch + Dot - 1, y + Dot - 1, colour);
    return true;
}

bool EditButtonPainter::DrawArrowGlyph(QImage &surface, qint16 state, OleColor foreColor) {
    if (!isKnownState(state))
        return false;
    // Rows of 7, 5, 3 and 1 pixels, each one pixel further right: a triangle 7 wide and 4 high.
    constexpr int Width = 7, Rows = 4;
    const int x = centred(surface.width(), Width) + glyphShift(state);
    const int y = centred(surface.height(), Rows) + glyphShift(state);
    const QRgb colour = glyphColour(state, foreColor);
    for (int i = 0; i < Rows; ++i)
        fillBox(surface, x + i, y + i, x + Width - 1 - i, y + i, colour);
    return true;
}
