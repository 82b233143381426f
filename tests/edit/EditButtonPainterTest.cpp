#include "EditButtonPainter.h"
#include "GoldenImage.h"
#include "SystemColors.h"
#include "lsEditTypes.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace {

using Paint = bool (*)(QImage &, qint16, OleColor, OleColor, const QRect &);
const Paint Select = [](QImage &s, qint16 state, OleColor b, OleColor f, const QRect &r) {
    return EditButtonPainter::DrawSelectButton(s, state, b, f, r);
};
const Paint Down = [](QImage &s, qint16 state, OleColor b, OleColor f, const QRect &r) {
    return EditButtonPainter::DrawDownButton(s, state, b, f, r);
};
constexpr OleColor Green = 0x0000FF00, Red = 0x000000FF;
constexpr qint16 States[] = {lsBtnDown, lsbtnFlat, lsBtnUp, lsBtnDisabled};

QImage button(Paint paint, qint16 state, OleColor back = Green, OleColor fore = Red) {
    QImage surface(17, 17, QImage::Format_RGB32);
    paint(surface, state, back, fore, {});
    return surface;
}

} // namespace

TEST(EditButtonPainter, BothButtonsInEveryStateMatchTheirReferences) {
    // The four states side by side on the editor's default colours, blue gaps between them.
    for (auto [paint, name] :
         {std::pair{Select, "select-button-states"}, {Down, "down-button-states"}}) {
        QImage strip(4 * 19 - 2, 17, QImage::Format_RGB32);
        strip.fill(Qt::blue);
        for (int i = 0; i < 4; ++i)
            QPainter(&strip).drawImage(i * 19, 0, button(paint, States[i], 0x8000000F, 0x80000012));
        expectMatchesGolden(strip, name);
    }
}

// The frames and the glyphs' shapes are pinned by the references; painted in other colours, a
// button differs from the default one exactly where its face and its glyph lie, and a disabled
// glyph keeps its own colour.
TEST(EditButtonPainter, FaceAndGlyphTakeTheColoursGiven) {
    const QRgb face = oleTranslateColor(0x8000000F), text = oleTranslateColor(0x80000012);
    const QRgb back = oleTranslateColor(Green), fore = oleTranslateColor(Red);
    for (const Paint paint : {Select, Down})
        for (const qint16 state : States) {
            const QImage plain = button(paint, state, 0x8000000F, 0x80000012);
            const QImage coloured = button(paint, state);
            int faces = 0, glyphs = 0;
            for (int y = 0; y < plain.height(); ++y)
                for (int x = 0; x < plain.width(); ++x) {
                    const QRgb p = plain.pixel(x, y), c = coloured.pixel(x, y);
                    faces += c == back, glyphs += c == fore;
                    EXPECT_EQ(p, c == back   ? face
                                 : c == fore ? text
                                             : c)
                        << state << " " << x << "," << y;
                }
            EXPECT_GT(faces, 100) << state;
            EXPECT_EQ(glyphs > 0, state != lsBtnDisabled) << state;
        }
}

// Tiny and empty buttons come from tiny cells: the control fuzz target reaches them and fails on
// the warnings QImage gives for a pixel out of range.
TEST(EditButtonPainter, UnknownStatesDrawNothing) {
    for (qint16 state : {qint16(-2), qint16(3)}) {
        QImage surface = button(Down, state); // cleared all the same: blank, not a stale state
        const QImage blank = surface;
        EXPECT_EQ(blank.pixel(8, 8), oleTranslateColor(Green));
        EXPECT_FALSE(Down(surface, state, Green, Red, {}));
        EXPECT_FALSE(EditButtonPainter::DrawButtonFrame(surface, state));
        EXPECT_FALSE(EditButtonPainter::DrawEllipsisGlyph(surface, state, Red));
        EXPECT_FALSE(EditButtonPainter::DrawArrowGlyph(surface, state, Red));
        EXPECT_EQ(surface, blank);
        EXPECT_EQ(button(Select, state), blank);
    }
}

// A surface that holds only part of a button (one far larger than its window keeps only what can
// show) gets exactly that part of the whole button's pixels.
TEST(EditButtonPainter, PartOfAButtonMatchesTheWhole) {
    const QRect parts[] = {
        {0, 0, 12, 9}, {20, 25, 15, 15}, {31, 0, 9, 40}, {-5, -5, 50, 50}, {38, 38, 10, 10}};
    for (const Paint paint : {Select, Down})
        for (const qint16 state : States) {
            QImage whole(40, 40, QImage::Format_RGB32);
            paint(whole, state, Green, Red, {});
            for (const QRect &part : parts) {
                const QRect shown = part & whole.rect();
                QImage surface(shown.size(), QImage::Format_RGB32);
                paint(surface, state, Green, Red, QRect(-shown.topLeft(), whole.size()));
                EXPECT_EQ(surface, whole.copy(shown))
                    << state << " " << part.x() << "," << part.y();
            }
        }
}
