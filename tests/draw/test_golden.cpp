// Reference images of the surface's looks (see GoldenImage.h for mismatches and updates).
#include "BuiltinPictures.h"
#include "GoldenImage.h"
#include "OffScreenDC.h"
#include "SurfacePng.h"

#include <QPainter>
#include <gtest/gtest.h>

constexpr OleColor Window = 0x80000005, ButtonFace = 0x8000000F, ButtonText = 0x80000012,
                   ButtonShadow = 0x80000010;

TEST(Golden, AppearancesByAlignment) {
    constexpr int CellW = 72, CellH = 30, LabelW = 64, Gap = 4;
    const char *looks[] = {"Raised", "Flat", "Sunken", "Selected", "Raised3D"};
    const char *aligns[] = {"CenterCenter", "CenterLeft",   "CenterRight", "TopCenter",  "TopLeft",
                            "TopRight",     "BottomCenter", "BottomLeft",  "Bottomright"};
    OffScreenDC dc;
    dc.Initialize(nullptr, LabelW + 9 * (CellW + Gap) + Gap, 20 + 5 * (CellH + Gap) + 40, Window,
                  ButtonText, std::make_shared<StdFont>());
    for (int a = 0; a < 9; ++a)
        dc.DrawRect(LabelW + Gap + a * (CellW + Gap), 2, CellW, 16, Window, ButtonText, aligns[a],
                    0, caCenterCenter);
    for (int l = 0; l < 5; ++l) {
        const int top = 20 + l * (CellH + Gap);
        dc.DrawRect(2, top, LabelW - 2, CellH, Window, ButtonText, looks[l], 0, caCenterLeft);
        for (int a = 0; a < 9; ++a)
            dc.DrawRect(LabelW + Gap + a * (CellW + Gap), top, CellW, CellH, ButtonFace, ButtonText,
                        "Tree", 0, CaptionAlignments(a), Appearances(l));
    }
    // A cut caption, a bold one and a first-column cell that leaves room for the tree part.
    const int top = 20 + 5 * (CellH + Gap) + 8;
    dc.DrawRect(LabelW + CellW / 2 + Gap, top, 2 * CellW, 24, Window, ButtonText,
                "A caption much too long for its cell", 0, caCenterLeft, Appearances::Sunken);
    dc.Font()->setBold(true);
    dc.DrawRect(LabelW + 3 * (CellW + Gap), top, 2 * CellW, 24, ButtonFace, ButtonText,
                "Bold header", 0, caCenterCenter, Appearances::Raised);
    dc.Font()->setBold(false);
    dc.DrawRect(0, top, LabelW + CellW / 2, 24, 0xC0FFFF, ButtonText, "Row", 36, caCenterLeft);
    expectMatchesGolden(*dc.hDC(), "appearances");
}

TEST(Golden, BuiltinPicturesAndTreeLines) {
    OffScreenDC dc;
    dc.Initialize(nullptr, 6 * 72 + 8, 150, Window, ButtonText, nullptr);
    for (int i = 0; i < 6; ++i) {
        const StdPicturePtr p = builtinPicture(101 + i);
        ASSERT_NE(p, nullptr);
        dc.DrawPicture(p, 8 + i * 72, 4);
        QPainter painter(dc.hDC());
        painter.drawImage(QRect(8 + i * 72, 24, p->pixelWidth() * 4, p->pixelHeight() * 4),
                          p->image());
    }
    // A small tree: dotted lines as the tree list draws them, then boxes and pictures on top.
    const int rowH = 19, top = 92;
    dc.DrawLine(12, top + 8, 12, top + 2 * rowH + 8, ButtonShadow, Window, true);
    dc.DrawLine(12, top + 8, 23, top + 8, ButtonShadow, Window, true);
    dc.DrawLine(12, top + 2 * rowH + 8, 23, top + 2 * rowH + 8, ButtonShadow, Window, true);
    dc.DrawLine(31, top + 16, 31, top + rowH + 8, ButtonShadow, Window, true);
    dc.DrawLine(31, top + rowH + 8, 42, top + rowH + 8, ButtonShadow, Window, true);
    dc.DrawPicture(builtinPicture(101), 8, top + 4);
    dc.DrawPicture(builtinPicture(103), 23, top);
    dc.DrawPicture(builtinPicture(105), 42, top + rowH);
    dc.DrawPicture(builtinPicture(102), 8, top + 2 * rowH + 4);
    dc.DrawPicture(builtinPicture(104), 23, top + 2 * rowH);
    dc.DrawText(41, top + 2, "Expanded", ButtonText, Window);
    dc.DrawText(60, top + rowH + 2, "Leaf");
    dc.DrawText(41, top + 2 * rowH + 2, "Collapsed");
    dc.DrawPicture(builtinPicture(106), 150, top);
    dc.DrawText(168, top + 2, "Marked");
    expectMatchesGolden(*dc.hDC(), "pictures");
}
