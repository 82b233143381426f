// Pixel rules of the off-screen surface.
#include "OffScreenDC.h"
#include "SystemColors.h"
#include "TreeListError.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>
#include <vector>

namespace {

// OLE colours are 0x00BBGGRR.
constexpr OleColor White = 0xFFFFFF, Black = 0, Red = 0x0000FF, Green = 0x00FF00, Yellow = 0x00FFFF,
                   Magenta = 0xFF00FF;
constexpr qint32 Min = std::numeric_limits<qint32>::min(), Max = std::numeric_limits<qint32>::max();

using Px = std::tuple<int, int, OleColor>;

OleColor at(const OffScreenDC &dc, int x, int y) {
    return oleFromRgb(dc.hDC()->pixel(x, y));
}

void expectPixels(const OffScreenDC &dc, const std::vector<Px> &pixels, const char *what) {
    for (const auto &[x, y, color] : pixels)
        EXPECT_EQ(at(dc, x, y), color) << what << " at (" << x << "," << y << ")";
}

// A surface filled with `back`.
void init(OffScreenDC &dc, int w = 40, int h = 30, OleColor back = White) {
    dc.Initialize(nullptr, w, h, back, Black, nullptr);
}

} // namespace

TEST(OffScreenDC, LinesFollowTheEndPixelAndDotRules) {
    // Name, ends, dotted, and the pixels that decide the rule on a yellow surface, drawing red on
    // a green background. Solid and dotted tree lines across and down, with their ends, are
    // pinned by the reference images of the surface and the control.
    // clang-format off
    const std::tuple<const char *, int, int, int, int, bool, std::vector<Px>> cases[] = {
        {"diagonal", 0, 0, 3, 3, false, {{0, 0, Red}, {2, 2, Red}, {3, 3, Yellow}, {1, 0, Yellow}}},
        {"shallow", 0, 0, 4, 2, false, {{1, 0, Red}, {2, 1, Red}, {3, 1, Red}, {4, 2, Yellow}}},
        {"zero length", 7, 7, 7, 7, false, {{7, 7, Yellow}}},
        {"dotted diagonal", 0, 0, 5, 5, true, {{0, 0, Yellow}, {2, 2, Yellow}}},
        // Far-off and extreme endpoints are clipped, not walked or overflowed.
        {"extreme horizontal", Min, 5, Max, 5, false, {{11, 5, Red}}},
        {"extreme diagonal", Min, Min, Max, Max, false, {{4, 4, Red}}},
        {"extreme dotted", 8, Min, 8, Max, true, {{8, 0, Red}, {8, 1, Green}}},
    };
    // clang-format on
    for (const auto &[name, x1, y1, x2, y2, dotted, pixels] : cases) {
        OffScreenDC dc;
        init(dc, 12, 12, Yellow);
        dc.DrawLine(x1, y1, x2, y2, Red, Green, dotted);
        expectPixels(dc, pixels, name);
    }
}

// Borders of every look, caption placement in every alignment, the cut caption and the x-0 offset
// rule are pinned by the "appearances" reference image.
TEST(OffScreenDC, TextFillsItsBoxKeepsGivenColoursButNotAGivenFont) {
    OffScreenDC dc, big;
    init(big);
    const int cy = big.TextHeight();
    big.DrawText(0, 0, "Ab", Red, Green, std::make_shared<StdFont>("DejaVu Sans", 20));
    EXPECT_EQ(big.Font(), nullptr);
    EXPECT_EQ(at(big, 0, cy + 1), Green);
    init(dc, 60, 30, Magenta);
    dc.DrawText(30, 6, "Ab", Red, Green);
    dc.DrawText(5, 6, "Ab");
    const int right = 5 + dc.TextWidth("Ab"), bottom = 6 + cy;
    // clang-format off
    expectPixels(dc, {{5, 6, Green}, {right - 1, bottom - 1, Green}, {4, 6, Magenta}, {5, 5, Magenta},
                      {right, 6, Magenta}, {5, bottom, Magenta}}, "box");
    // clang-format on
    const QImage box = dc.hDC()->copy(5, 6, right - 5, cy);
    const auto *px = reinterpret_cast<const QRgb *>(box.constBits());
    EXPECT_GT(std::count(px, px + box.width() * box.height(), qRgb(255, 0, 0)), 10);
    dc.DrawText(0, 0, "x", 0x80000012, 0x8000000F);
    EXPECT_EQ(dc.BackColor(), oleFromRgb(sysColor(15)));
}

TEST(OffScreenDC, AdjustTextShortensWithDots) {
    OffScreenDC dc;
    init(dc);
    const QString caption = "Hierarchical list";
    const int full = dc.TextWidth(caption);
    EXPECT_EQ(dc.AdjustText(10, full + 15, caption), caption);
    EXPECT_EQ(dc.AdjustText(500, 20, caption), "...");
    for (int width : {0, -7, 100})
        EXPECT_EQ(dc.AdjustText(0, width, QString()), QString());

    // Against the literal count-down, which measures the caption's first n + 3 characters.
    const auto countDown = [&](int nWidth) {
        QString result = caption;
        for (int n = caption.size(), right = full; right >= nWidth - 4;) {
            if (--n <= 0)
                return QString("...");
            result = caption.left(n) + "...";
            right = dc.TextWidth(caption.left(n + 3));
        }
        return result;
    };
    for (int width = 0; width < full + 8; ++width)
        EXPECT_EQ(dc.AdjustText(0, width, caption), countDown(width)) << "width " << width;
    EXPECT_THROW(dc.AdjustText(0, 10, QString(40000, 'x')), TreeListError);
}

TEST(OffScreenDC, CopyChangeTestsAndInversionsThatUndoThemselves) {
    OffScreenDC dc;
    QImage screen(50, 40, QImage::Format_RGB32);
    screen.fill(Qt::magenta);
    dc.Initialize(&screen, 30, 20, Green, Black, nullptr);
    dc.DrawRect(0, 0, 1, 1, Red, Red);
    dc.BlastToScreen();
    for (const auto &[x, y, rgb] :
         {std::tuple{0, 0, 0xFFFF0000u}, std::tuple{29, 19, 0xFF00FF00u},
          std::tuple{30, 19, 0xFFFF00FFu}, std::tuple{29, 20, 0xFFFF00FFu}})
        EXPECT_EQ(screen.pixel(x, y), rgb) << x << "," << y;
    qint32 left = 35, top = 30, width = -1, height = -1;
    dc.BlastToScreen(left, top, width, height);
    EXPECT_EQ(std::pair(width, height), std::pair(30, 20));
    EXPECT_EQ(screen.pixel(35, 30), qRgb(255, 0, 0));
    EXPECT_EQ(screen.pixel(49, 39), qRgb(0, 255, 0));

    EXPECT_EQ(std::vector<bool>({dc.HasChanged(30, 20), dc.HasChanged(29, 20),
                                 dc.HasChanged(29, 19, false), dc.HasChanged(30, 21, false)}),
              std::vector<bool>({false, true, false, true}));
    dc.Clear(Yellow, Black);
    EXPECT_EQ(dc.TextColor(), Yellow);
    // Inverting twice restores; the focus frame's pattern is pinned by the control's references.
    const QImage before = dc.hDC()->copy();
    dc.InvertRect(1, 1, 2, 2);
    EXPECT_EQ(std::tuple(at(dc, 1, 1), at(dc, 2, 2), at(dc, 3, 3)),
              std::tuple(Yellow ^ 0xFFFFFF, Yellow ^ 0xFFFFFF, Yellow));
    dc.InvertRect(1, 1, 2, 2);
    dc.DrawFocusRect(2, 2, 8, 6);
    dc.DrawFocusRect(2, 2, 8, 6);
    EXPECT_EQ(*dc.hDC(), before);

    // The size comes back crossed over: the first variable receives the width.
    qint32 w = -1, h = -1;
    OffScreenDC::GetPictureSize(std::make_shared<StdPicture>(QImage(7, 3, QImage::Format_RGB32)), w,
                                h);
    EXPECT_EQ(std::pair(w, h), std::pair(7, 3));
}

// Empty and negative surfaces and boxes are reached through the control by the control fuzz
// target, which fails on any Qt drawing warning; these are the extremes it cannot reach.
TEST(OffScreenDC, ExtremeBoxesDrawNothingOrOverflow) {
    OffScreenDC dc;
    init(dc);
    dc.DrawRect(-Max, -Max, Max, Max, Red, Black, "far away", 0, CaptionAlignments(99));
    dc.DrawRect(10, 10, -20, -20, Red, Black, "negative", 0, caCenterCenter, Appearances(42));
    EXPECT_EQ(at(dc, 10, 10), White);
    EXPECT_THROW(dc.DrawRect(Max, 0, 10, 10, Red, Black), TreeListError);
}

TEST(OffScreenDC, OriginShiftsEveryPrimitiveAfterItsRules) {
    // Drawing at x with origin -10 equals drawing at x - 10 without one.
    const auto scene = [](OffScreenDC &dc, int dx) {
        dc.DrawRect(20 + dx, 2, 30, 12, Yellow, Red, "Ab", 0, caCenterLeft, Appearances::Raised3D);
        dc.DrawLine(12 + dx, 16, 40 + dx, 25, Red, Green);
        dc.DrawLine(14 + dx, 16, 14 + dx, 27, Red, Green, true);
        dc.DrawLine(16 + dx, 27, 30 + dx, 27, Red, Green, true);
        QImage dot(5, 5, QImage::Format_RGB32);
        dot.fill(Qt::blue);
        dc.DrawPicture(std::make_shared<StdPicture>(dot), 45 + dx, 18);
        dc.DrawText(10 + dx, 16, "Q", Black, Yellow);
        dc.InvertRect(22 + dx, 4, 5, 5);
        dc.DrawFocusRect(11 + dx, 1, 52 + dx, 29);
    };
    OffScreenDC shifted, plain;
    init(shifted, 50, 30);
    init(plain, 50, 30);
    shifted.setOriginX(-10);
    scene(shifted, 0);
    scene(plain, -10);
    EXPECT_TRUE(*shifted.hDC() == *plain.hDC());

    // The x-0 rule of rectangles looks at the unshifted left edge.
    init(shifted, 50, 10, Magenta);
    shifted.DrawRect(0, 0, 60, 10, Yellow, Red, QString(), 16);
    expectPixels(shifted, {{5, 5, Magenta}, {6, 5, Yellow}}, "x-0 rule");
}

// At a pixel ratio a line is a pen thick wherever it lies, dots are evenly spaced, a box's frame
// has one width on its four sides, and a picture with a raster for the ratio lands pixel for pixel.
TEST(OffScreenDC, AtAPixelRatioLinesBoxesAndDotsStayEven) {
    for (const qreal ratio : {1.25, 1.5, 1.75, 2.0}) {
        OffScreenDC dc;
        dc.setPixelRatio(ratio);
        init(dc, 40, 40, White);
        const QImage &image = *dc.hDC();
        const auto reds = [&](int y, int x0, int x1) {
            std::vector<int> xs;
            for (int x = x0; x < x1; ++x)
                if (oleFromRgb(image.pixel(x, y)) == Red)
                    xs.push_back(x);
            return xs;
        };
        const int pen = std::max(1, int(ratio));
        for (int x = 3; x <= 7; ++x) { // every column lands on a pen-wide run of device pixels
            dc.DrawLine(x, 0, x, 10, Red, White);
            const int y = int(5 * ratio);
            EXPECT_EQ(reds(y, 0, image.width()).size(), size_t(pen)) << ratio << " x " << x;
            dc.DrawLine(x, 0, x, 10, White, White);
        }
        dc.DrawLine(0, 20, 30, 20, Red, White, true);
        std::vector<int> dots, starts = reds(int(20 * ratio), 0, int(28 * ratio));
        for (size_t i = 0; i < starts.size(); i += size_t(pen))
            dots.push_back(starts[i]);
        for (size_t i = 2; i < dots.size(); ++i)
            EXPECT_EQ(dots[i] - dots[i - 1], dots[1] - dots[0]) << ratio << " dot " << i;
        dc.DrawExpandBox(11, 25, 9, true, Red, White, Black);
        const int middle = int((25 + 4.5) * ratio);
        const std::vector<int> frame = reds(middle, 0, image.width());
        ASSERT_EQ(frame.size(), size_t(2 * pen)) << ratio;
        EXPECT_EQ(frame[size_t(pen) - 1] - frame[0], frame.back() - frame[size_t(pen)]);
    }
    QImage sharp(8, 8, QImage::Format_RGB32);
    for (int i = 0; i < 64; ++i)
        sharp.setPixel(i % 8, i / 8, (i * 37) % 2 ? 0xFF102030 : 0xFFF0E0D0);
    sharp.setDevicePixelRatio(2);
    OffScreenDC dc;
    dc.setPixelRatio(2);
    init(dc);
    dc.DrawPicture(std::make_shared<StdPicture>(sharp), 3, 4);
    EXPECT_EQ(dc.hDC()->copy(6, 8, 8, 8), sharp.convertToFormat(QImage::Format_RGB32));
}

// A surface initialized again in its colour writes only the columns drawn on since, yet every
// primitive's pixels are gone afterwards, whichever primitive and wherever it drew.
TEST(OffScreenDC, InitializingAgainLeavesNothingOfTheLastFrame) {
    const std::function<void(OffScreenDC &)> draws[] = {
        [](OffScreenDC &dc) { dc.DrawLine(37, 0, 37, 30, Red, Green); },
        [](OffScreenDC &dc) { dc.DrawLine(30, 5, 39, 5, Red, Green, true); },
        [](OffScreenDC &dc) { dc.DrawText(33, 3, "W", Red, Green); },
        [](OffScreenDC &dc) { dc.InvertRect(36, 10, 4, 4); },
        [](OffScreenDC &dc) { dc.DrawExpandBox(30, 20, 9, true, Red, Green, Black); },
        [](OffScreenDC &dc) { dc.hDC()->setPixel(39, 29, 0xFF0000FF); },
    };
    for (const qreal ratio : {1.0, 1.5})
        for (const auto &draw : draws) {
            OffScreenDC dc;
            dc.setPixelRatio(ratio);
            init(dc);
            dc.DrawLine(2, 2, 2, 8, Red, Green); // the last frame reached column 2 only
            init(dc);
            draw(dc);
            init(dc);
            const QImage &image = *dc.hDC();
            for (int i = 0; i < image.width() * image.height(); ++i)
                ASSERT_EQ(image.pixel(i % image.width(), i / image.width()), 0xFFFFFFFFu)
                    << ratio << " pixel " << i;
        }
}
