#include "EditButtonPainter.h"

#include "Bevel.h"
#include "SystemColors.h"
#include "lsEditTypes.h"

#include <array>

namespace {

// A flat button is the outline alone.
constexpr std::array Outline = {BevelRing{Sys3DDarkShadow, Sys3DDarkShadow}};
// The raised button is lit from the top left: 3-D light outside, button highlight inside.
constexpr std::array RaisedEdge = {BevelRing{Sys3DLight, Sys3DDarkShadow},
                                   BevelRing{SysButtonHighlight, SysButtonShadow}};
constexpr std::array PressedEdge = {BevelRing{SysButtonShadow, SysButtonHighlight}};

bool isKnownState(qint16 state) {
    return state == lsBtnDown || state == lsbtnFlat || state == lsBtnUp || state == lsBtnDisabled;
}

// The whole button on the surface: the surface itself unless told otherwise.
QRect buttonOn(const QImage &surface, const QRect &button) {
    return button.isNull() ? surface.rect() : button;
}

// A drawing in the button's own pixels, placed where the button lies on the surface.
struct Canvas {
    QImage &surface;
    QRect button;
    int right() const { return button.width() - 1; }
    int bottom() const { return button.height() - 1; }
};

// Every line and box is written pixel by pixel and clipped to the surface: the frame is meant
// to reach past the left edge, and a surface smaller than a glyph must stay untouched outside.
void fillBox(const Canvas &canvas, int left, int top, int right, int bottom, QRgb colour) {
    QImage &surface = canvas.surface;
    const QRect box =
        QRect(QPoint(left, top), QPoint(right, bottom)).translated(canvas.button.topLeft()) &
        surface.rect();
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            surface.setPixel(x, y, colour);
}

// The raised frame is two pixels deep on all four sides, so the face it encloses is centred in
// the button and centring on the button centres the glyph on the face. Rounding down: with an
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

QRgb glyphColour(qint16 state, OleColor foreColor, const QPalette &palette) {
    return oleTranslateColor(state == lsBtnDisabled ? SysButtonShadow : foreColor, palette);
}

} // namespace

bool EditButtonPainter::DrawSelectButton(QImage &surface, qint16 state, OleColor backColor,
                                         OleColor foreColor, const QRect &button,
                                         const QPalette &palette) {
    surface.fill(QColor::fromRgb(oleTranslateColor(backColor, palette)));
    if (!DrawButtonFrame(surface, state, button, palette))
        return false;
    return DrawEllipsisGlyph(surface, state, foreColor, button, palette);
}

bool EditButtonPainter::DrawDownButton(QImage &surface, qint16 state, OleColor backColor,
                                       OleColor foreColor, const QRect &button,
                                       const QPalette &palette) {
    surface.fill(QColor::fromRgb(oleTranslateColor(backColor, palette)));
    if (!DrawButtonFrame(surface, state, button, palette))
        return false;
    return DrawArrowGlyph(surface, state, foreColor, button, palette);
}

bool EditButtonPainter::DrawButtonFrame(QImage &surface, qint16 state, const QRect &button,
                                        const QPalette &palette) {
    if (!isKnownState(state))
        return false;
    const Canvas canvas{surface, buttonOn(surface, button)};
    const auto edge = [&](int left, int top, std::span<const BevelRing> rings) {
        drawBevelRuns(left, top, canvas.right(), canvas.bottom(), rings,
                      [&](const QRect &run, OleColor color) {
                          fillBox(canvas, run.left(), run.top(), run.right(), run.bottom(),
                                  oleTranslateColor(color, palette));
                      });
    };
    // The dark outline starts one column left of the button: the button adjoins the text box
    // there and must not draw a dark edge between them.
    edge(-1, 0, Outline);
    // Pressed, the edge sits one pixel down and right of the raised one, so the face and the
    // glyph seem to move in.
    if (state == lsBtnDown)
        edge(0, 1, PressedEdge);
    else if (state == lsBtnUp || state == lsBtnDisabled)
        edge(0, 0, RaisedEdge);
    return true;
}

bool EditButtonPainter::DrawEllipsisGlyph(QImage &surface, qint16 state, OleColor foreColor,
                                          const QRect &button, const QPalette &palette) {
    if (!isKnownState(state))
        return false;
    const Canvas canvas{surface, buttonOn(surface, button)};
    // Dots two pixels square, each starting three pixels after the one before: a one-pixel gap
    // keeps them three dots rather than one bar.
    constexpr int Dot = 2, Pitch = 3, Count = 3;
    constexpr int Width = Pitch * (Count - 1) + Dot;
    const int x = centred(canvas.button.width(), Width) + glyphShift(state);
    const int y = centred(canvas.button.height(), Dot) + glyphShift(state);
    const QRgb colour = glyphColour(state, foreColor, palette);
    for (int i = 0; i < Count; ++i)
        fillBox(canvas, x + i * Pitch, y, x + i * Pitch + Dot - 1, y + Dot - 1, colour);
    return true;
}

bool EditButtonPainter::DrawArrowGlyph(QImage &surface, qint16 state, OleColor foreColor,
                                       const QRect &button, const QPalette &palette) {
    if (!isKnownState(state))
        return false;
    const Canvas canvas{surface, buttonOn(surface, button)};
    // Rows of 7, 5, 3 and 1 pixels, each one pixel further right: a triangle 7 wide and 4 high.
    constexpr int Width = 7, Rows = 4;
    const int x = centred(canvas.button.width(), Width) + glyphShift(state);
    const int y = centred(canvas.button.height(), Rows) + glyphShift(state);
    const QRgb colour = glyphColour(state, foreColor, palette);
    for (int i = 0; i < Rows; ++i)
        fillBox(canvas, x + i, y + i, x + Width - 1 - i, y + i, colour);
    return true;
}
