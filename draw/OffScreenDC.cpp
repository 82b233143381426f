#include "OffScreenDC.h"

#include "SystemColors.h"
#include "TextCache.h"
#include "TreeListError.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace {

// The largest surface made, in pixels (512 MB of raster); a larger one behaves like a surface the
// platform failed to allocate: it exists and ignores drawing.
constexpr qint64 MaxSurfacePixels = qint64(1) << 27;

// Text further than this from the surface cannot reach it and is not handed to the painter,
// whose coordinates are plain ints.
constexpr qint64 TextReach = qint64(1) << 30;

// System colour numbers of the 3-D border colours.
constexpr int ColorBtnFace = 15;
constexpr int ColorBtnHighlight = 20;
constexpr int Color3DLight = 22;
constexpr int ColorBtnShadow = 16;
constexpr int Color3DDarkShadow = 21;

OleColor translated(OleColor c) {
    return oleFromRgb(oleTranslateColor(c));
}

// A half-open span [lo, hi) clipped to [0, size).
struct Span {
    qint64 lo;
    qint64 hi;
    bool empty() const { return hi <= lo; }
};

Span clipSpan(qint64 lo, qint64 hi, qint64 size) {
    return {std::max<qint64>(lo, 0), std::min(hi, size)};
}

// The pixel rows of [lo, hi) on a surface of `height` rows that lie inside the clip.
Span clipRows(qint64 lo, qint64 hi, qint64 height, qint64 clipTop, qint64 clipBottom) {
    const Span rows = clipSpan(lo, hi, height);
    return {std::max(rows.lo, clipTop), std::min(rows.hi, clipBottom)};
}

// Copies src (from its origin) to dst at (x, y), only where both images have pixels and only
// into the pixel rows [rowsLo, rowsHi).
void blit(QImage &dst, qint64 x, qint64 y, const QImage &src, qint64 width, qint64 height,
          qint64 rowsLo = 0, qint64 rowsHi = std::numeric_limits<qint64>::max()) {
    const Span cols = clipSpan(x, x + std::min<qint64>(width, src.width()), dst.width());
    Span rows = clipSpan(y, y + std::min<qint64>(height, src.height()), dst.height());
    rows = {std::max(rows.lo, rowsLo), std::min(rows.hi, rowsHi)};
    if (cols.empty() || rows.empty() || src.isNull())
        return;
    // The whole of a same-sized image: the target shares the raster instead of copying it (the
    // one that is drawn on next makes its own copy first).
    if (x == 0 && y == 0 && dst.size() == src.size() && width >= src.width() &&
        height >= src.height() && rows.hi - rows.lo == dst.height() &&
        dst.format() == src.format()) {
        dst = src;
        return;
    }
    QPainter p(&dst);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    const auto w = static_cast<int>(cols.hi - cols.lo);
    const auto h = static_cast<int>(rows.hi - rows.lo);
    p.drawImage(QRect(static_cast<int>(cols.lo), static_cast<int>(rows.lo), w, h), src,
                QRect(static_cast<int>(cols.lo - x), static_cast<int>(rows.lo - y), w, h));
}

} // namespace

OffScreenDC::OffScreenDC() : m_defaultFont(StdFont().qfont()) {}

void OffScreenDC::Initialize(QImage *CtlHdc, qint32 CtlWidth, qint32 CtlHeight,
                             OleColor NewBackColor, OleColor NewForeColor, StdFontPtr NewFont) {
    m_target = CtlHdc;
    ClearClip();
    m_width = CtlWidth;
    m_height = CtlHeight;
    // A raster of the right size that nobody else shares is painted over, not made anew: it is
    // cleared below all the same.
    const bool fits =
        CtlWidth > 0 && CtlHeight > 0 && qint64(CtlWidth) * CtlHeight <= MaxSurfacePixels;
    if (!fits)
        m_surface = QImage();
    else if (m_surface.size() != QSize(CtlWidth, CtlHeight) || !m_surface.isDetached())
        m_surface = QImage(CtlWidth, CtlHeight, QImage::Format_RGB32);
    // Read once per object: a face colour of 0 means "not read yet".
    if (m_faceColor == 0) {
        m_faceColor = oleFromRgb(sysColor(ColorBtnFace));
        m_highlightColor = oleFromRgb(sysColor(ColorBtnHighlight));
        m_lightColor = oleFromRgb(sysColor(Color3DLight));
        m_shadowColor = oleFromRgb(sysColor(ColorBtnShadow));
        m_darkShadowColor = oleFromRgb(sysColor(Color3DDarkShadow));
    }
    m_backColor = NewBackColor;
    m_textColor = NewForeColor;
    DrawRect(0, 0, m_width, m_height, NewBackColor, NewForeColor, QString(), 0, caCenterCenter,
             Appearances::Flat);
    setFont(NewFont);
}

void OffScreenDC::Clear(OleColor NewBackColor, OleColor NewForeColor) {
    m_backColor = NewBackColor;
    m_textColor = NewForeColor;
    // The background doubles as text colour: later drawing must set the text colour it needs.
    DrawRect(0, 0, m_width, m_height, NewBackColor, NewBackColor, QString(), 0, caCenterCenter,
             Appearances::Flat);
}

void OffScreenDC::SetClipRows(qint32 Top, qint32 Bottom) {
    m_clipTop = Top;
    m_clipBottom = Bottom;
}

void OffScreenDC::ClearClip() {
    m_clipTop = 0;
    m_clipBottom = std::numeric_limits<qint32>::max();
}

bool OffScreenDC::HasChanged(qint32 CtlWidth, qint32 CtlHeight, bool Equal) const {
    if (Equal)
        return m_width != CtlWidth || m_height != CtlHeight;
    return m_width < CtlWidth || m_height < CtlHeight;
}

void OffScreenDC::DrawRect(qint32 nLeft, qint32 nTop, qint32 nWidth, qint32 nHeight,
                           OleColor NewBackColor, OleColor NewTextColor, const QString &sCaption,
                           qint32 nLeftOffset, CaptionAlignments CaptionAlign,
                           Appearances Appearance) {
    // The caption is fitted from the left offset, not from nLeft: cells are measured from their
    // own text start.
    const QString text = AdjustText(nLeftOffset, nWidth, sCaption, Appearance);
    DrawFrame(nLeft, nTop, nWidth, nHeight, NewBackColor, NewTextColor, text, nLeftOffset,
              CaptionAlign, Appearance);
}

void OffScreenDC::DrawFrame(qint32 nLeft, qint32 nTop, qint32 nWidth, qint32 nHeight,
                            OleColor NewBackColor, OleColor NewTextColor, const QString &sCaption,
                            qint32 nLeftOffset, CaptionAlignments CaptionAlign,
                            Appearances Appearance) {
    const qint64 L = nLeft;
    const qint64 T = nTop;
    const qint64 R = L + nWidth - 1;
    const qint64 B = T + nHeight - 1;
    // Each line stops one pixel short of its end, so the corners below belong to exactly one
    // line: bottom-left and top-right go to the dark side.
    const auto line = [this](qint64 x1, qint64 y1, qint64 x2, qint64 y2, OleColor color) {
        DrawLine(toInt32(x1), toInt32(y1), toInt32(x2), toInt32(y2), color, m_backColor);
    };
    qint64 inset = 0;
    switch (Appearance) {
    case Appearances::Raised:
    case Appearances::Sunken:
    case Appearances::Selected: {
        // Sunken is Raised with the light and dark sides swapped.
        const bool raised = Appearance == Appearances::Raised;
        const OleColor topLeft = raised ? m_highlightColor : m_shadowColor;
        const OleColor bottomRight = raised ? m_shadowColor : m_highlightColor;
        line(L, T, L, B, topLeft);
        line(L, T, R, T, topLeft);
        line(R, T, R, B, bottomRight);
        line(L, B, R + 1, B, bottomRight);
        inset = 1;
        break;
    }
    case Appearances::Raised3D:
        line(L, T, L, B, m_highlightColor);
        line(L + 1, T + 1, L + 1, B - 1, m_lightColor);
        line(L, T, R, T, m_highlightColor);
        line(L + 1, T + 1, R - 1, T + 1, m_lightColor);
        line(R, T, R, B, m_darkShadowColor);
        line(R - 1, T + 1, R - 1, B - 1, m_shadowColor);
        line(L, B, R + 1, B, m_darkShadowColor);
        line(L + 1, B - 1, R, B - 1, m_shadowColor);
        inset = 2;
        break;
    default:
        break;
    }
    m_textColor = translated(NewTextColor);
    const OleColor back = translated(NewBackColor);
    DrawCaption(toInt32(L + inset), toInt32(T + inset), toInt32(qint64(nWidth) - 2 * inset),
                toInt32(qint64(nHeight) - 2 * inset), back, sCaption, nLeftOffset, CaptionAlign);
    if (Appearance == Appearances::Selected)
        InvertRect(toInt32(L + inset), toInt32(T + inset), toInt32(qint64(nWidth) - 2 * inset),
                   toInt32(qint64(nHeight) - 2 * inset));
}

void OffScreenDC::DrawCaption(qint32 L, qint32 T, qint32 W, qint32 H, OleColor BackColor,
                              const QString &Caption, qint32 LeftOffset,
                              CaptionAlignments CaptionAlign) {
    m_backColor = BackColor;
    qint64 x = 0;
    qint64 y = 0;
    if (!Caption.isEmpty() && CaptionAlign >= caCenterCenter && CaptionAlign <= caBottomright) {
        TextCache &texts = TextCache::instance();
        const qint64 cx = texts.width(currentFont(), Caption);
        const qint64 cy = texts.height(currentFont());
        const qint64 available = qint64(W) - LeftOffset;
        switch (CaptionAlign % 3) {
        case 0:
            x = (available - cx) / 2 + L;
            break;
        case 1:
            x = qint64(L) + 3;
            break;
        default:
            x = available - 3 - cx + L;
            break;
        }
        switch (CaptionAlign / 3) {
        case 0:
            y = (qint64(H) - cy) / 2 + T;
            break;
        case 1:
            y = qint64(T) + 3;
            break;
        default:
            y = qint64(H) - 3 - cy + T;
            break;
        }
    }
    // A rectangle at x 0 starts its fill at the offset: the columns before it hold the tree part
    // of the first column, drawn separately.
    const qint64 left = L == 0 ? LeftOffset : L;
    textOut(x + LeftOffset, y, left, T, toInt32(qint64(L) + W), toInt32(qint64(T) + H), Caption,
            currentFont());
}

void OffScreenDC::textOut(qint64 x, qint64 y, qint64 left, qint64 top, qint64 right, qint64 bottom,
                          const QString &text, const QFont &font) {
    x += m_originX;
    const Span cols = clipSpan(left + m_originX, right + m_originX, m_surface.width());
    const Span rows = clipRows(top, bottom, m_surface.height(), m_clipTop, m_clipBottom);
    if (cols.empty() || rows.empty())
        return;
    const QRect box(static_cast<int>(cols.lo), static_cast<int>(rows.lo),
                    static_cast<int>(cols.hi - cols.lo), static_cast<int>(rows.hi - rows.lo));
    QPainter p(&m_surface);
    p.fillRect(box, QColor(oleTranslateColor(m_backColor)));
    if (text.isEmpty() || x < -TextReach || x > TextReach || y < -TextReach || y > TextReach)
        return;
    p.setClipRect(box);
    p.setPen(QColor(oleTranslateColor(m_textColor)));
    TextCache &texts = TextCache::instance();
    texts.draw(p, static_cast<int>(x), static_cast<int>(y) + texts.ascent(font), font, text);
}

void OffScreenDC::InvertRect(qint32 nLeft, qint32 nTop, qint32 nWidth, qint32 nHeight) {
    const qint64 right = toInt32(qint64(nLeft) + nWidth);
    const Span cols = clipSpan(nLeft + qint64(m_originX), right + m_originX, m_surface.width());
    const Span rows = clipRows(nTop, toInt32(qint64(nTop) + nHeight), m_surface.height(), m_clipTop,
                               m_clipBottom);
    if (cols.empty() || rows.empty())
        return;
    for (qint64 y = rows.lo; y < rows.hi; ++y) {
        auto *line = reinterpret_cast<QRgb *>(m_surface.scanLine(static_cast<int>(y)));
        for (qint64 x = cols.lo; x < cols.hi; ++x)
            line[x] ^= 0x00FFFFFFu;
    }
}

void OffScreenDC::BlastToScreen(qint32 &Left, qint32 &Top, qint32 &Width, qint32 &Height) {
    if (Width == -1)
        Width = m_width;
    if (Height == -1)
        Height = m_height;
    if (m_target && Width > 0 && Height > 0)
        blit(*m_target, Left, Top, m_surface, Width, Height);
}

void OffScreenDC::BlastToScreen() {
    qint32 left = 0;
    qint32 top = 0;
    qint32 width = -1;
    qint32 height = -1;
    BlastToScreen(left, top, width, height);
}

void OffScreenDC::DrawLine(qint32 X1, qint32 Y1, qint32 X2, qint32 Y2, OleColor Color,
                           OleColor BackColor, bool Dotted) {
    const QRgb color = oleTranslateColor(Color);
    const QRgb back = oleTranslateColor(BackColor);
    const qint64 x1 = qint64(X1) + m_originX;
    const qint64 x2 = qint64(X2) + m_originX;
    if (!Dotted) {
        solidLine(x1, Y1, x2, Y2, color);
        return;
    }
    if (X1 == X2) {
        // Pixels before the surface are skipped two at a time so the pattern's phase is kept.
        qint64 y = std::min(Y1, Y2);
        const qint64 last = std::min<qint64>(std::max(Y1, Y2), m_surface.height());
        if (y < -1)
            y += ((-1 - y) / 2) * 2;
        for (; y <= last; y += 2) {
            setPixel(x1, y, color);
            setPixel(x1, y + 1, back);
        }
    } else if (Y1 == Y2) {
        qint64 x = std::min(x1, x2);
        const qint64 last = std::min<qint64>(std::max(x1, x2), m_surface.width());
        if (x < 0)
            x += (-x / 2) * 2;
        for (; x <= last; x += 2)
            setPixel(x, Y1, color);
    }
}

void OffScreenDC::solidLine(qint64 x1, qint64 y1, qint64 x2, qint64 y2, QRgb rgb) {
    // Steps along the major axis from the start, excluding the end point; the minor coordinate
    // is rounded to nearest with ties kept back (classic Bresenham). Only the steps whose major
    // coordinate is on the surface are visited, so far-off endpoints cost nothing.
    const qint64 dx = x2 - x1;
    const qint64 dy = y2 - y1;
    const bool xMajor = std::abs(dx) >= std::abs(dy);
    const qint64 steps = xMajor ? std::abs(dx) : std::abs(dy);
    if (steps == 0)
        return;
    const qint64 minorRun = xMajor ? std::abs(dy) : std::abs(dx);
    const qint64 majorStart = xMajor ? x1 : y1;
    const qint64 minorStart = xMajor ? y1 : x1;
    const qint64 majorDir = (xMajor ? dx : dy) > 0 ? 1 : -1;
    const qint64 minorDir = (xMajor ? dy : dx) >= 0 ? 1 : -1;
    // Steps i with majorStart + majorDir * i inside [lo, hi): the surface, and the clip when
    // the major axis is vertical.
    const Span rows = clipRows(0, m_surface.height(), m_surface.height(), m_clipTop, m_clipBottom);
    const qint64 lo = xMajor ? 0 : rows.lo;
    const qint64 hi = xMajor ? m_surface.width() : rows.hi;
    qint64 first = majorDir > 0 ? lo - majorStart : majorStart - (hi - 1);
    qint64 last = majorDir > 0 ? hi - 1 - majorStart : majorStart - lo;
    first = std::max<qint64>(first, 0);
    last = std::min(last, steps - 1);
    for (qint64 i = first; i <= last; ++i) {
        const auto num =
            static_cast<unsigned __int128>(2 * i) * static_cast<unsigned __int128>(minorRun) +
            static_cast<unsigned __int128>(steps - 1);
        const auto offset = static_cast<qint64>(num / (2 * static_cast<unsigned __int128>(steps)));
        const qint64 major = majorStart + majorDir * i;
        const qint64 minor = minorStart + minorDir * offset;
        if (xMajor)
            setPixel(major, minor, rgb);
        else
            setPixel(minor, major, rgb);
    }
}

void OffScreenDC::setPixel(qint64 x, qint64 y, QRgb rgb) {
    if (x < 0 || y < 0 || x >= m_surface.width() || y >= m_surface.height() || y < m_clipTop ||
        y >= m_clipBottom)
        return;
    reinterpret_cast<QRgb *>(m_surface.scanLine(static_cast<int>(y)))[x] = rgb | 0xFF000000u;
}

void OffScreenDC::DrawPicture(const StdPicturePtr &bmpSource, qint32 X, qint32 Y) {
    if (bmpSource)
        blit(m_surface, qint64(X) + m_originX, Y, bmpSource->image(), bmpSource->pixelWidth(),
             bmpSource->pixelHeight(), m_clipTop, m_clipBottom);
}

void OffScreenDC::DrawText(qint32 X, qint32 Y, const QString &Caption,
                           std::optional<OleColor> NewTextColor,
                           std::optional<OleColor> NewBackColor, StdFontPtr TextFont) {
    // The given font serves this text only; the current font stays as it was.
    const QFont font = TextFont ? TextFont->qfont() : currentFont();
    const QFontMetrics fm(font);
    const qint32 right = toInt32(qint64(X) + fm.horizontalAdvance(Caption));
    const qint32 bottom = toInt32(qint64(Y) + fm.height());
    if (NewTextColor)
        m_textColor = translated(*NewTextColor);
    if (NewBackColor)
        m_backColor = translated(*NewBackColor);
    textOut(X, Y, X, Y, right, bottom, Caption, font);
}

QString OffScreenDC::AdjustText(qint32 nLeft, qint32 nWidth, const QString &Caption,
                                Appearances) const {
    if (Caption.isEmpty())
        return Caption;
    // The character count is 16-bit: longer captions raise the overflow error.
    const qint16 length = toInt16(Caption.size());
    const QFont &font = currentFont();
    const qint64 limit = qint64(nWidth) - 4;
    const auto fits = [&](qint64 count) {
        const QString prefix = count == length ? Caption : Caption.left(count);
        return nLeft + qint64(TextCache::instance().width(font, prefix)) < limit;
    };
    if (fits(length))
        return Caption;
    // Shortening keeps the longest n (from length - 1 down to 1) whose first n + 3 characters of
    // the caption fit, and measures that longer prefix rather than "n characters + ..." on
    // purpose. Prefix widths grow with the prefix, so bisection finds the same n as counting down.
    qint64 lo = 1;
    qint64 hi = length - 1;
    qint64 best = 0;
    while (lo <= hi) {
        const qint64 mid = (lo + hi) / 2;
        if (fits(std::min<qint64>(mid + 3, length))) {
            best = mid;
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
    const QString dots = QStringLiteral("...");
    return best > 0 ? Caption.left(best) + dots : dots;
}

void OffScreenDC::GetPictureSize(const StdPicturePtr &bmpSource, qint32 &Height, qint32 &Width) {
    Height = bmpSource ? bmpSource->pixelWidth() : 0;
    Width = bmpSource ? bmpSource->pixelHeight() : 0;
}

void OffScreenDC::DrawFocusRect(qint32 left, qint32 top, qint32 right, qint32 bottom) {
    if (right <= left || bottom <= top)
        return;
    const auto dot = [this](qint64 x, qint64 y) {
        if (((x + y) & 1) == 0 && x >= 0 && y >= 0 && x < m_surface.width() &&
            y < m_surface.height() && y >= m_clipTop && y < m_clipBottom)
            reinterpret_cast<QRgb *>(m_surface.scanLine(static_cast<int>(y)))[x] ^= 0x00FFFFFFu;
    };
    const qint64 firstX = qint64(left) + m_originX;
    const qint64 lastX = qint64(right) - 1 + m_originX;
    const qint64 lastY = qint64(bottom) - 1;
    const Span cols = clipSpan(firstX, lastX + 1, m_surface.width());
    for (qint64 x = cols.lo; x < cols.hi; ++x) {
        dot(x, top);
        if (lastY > top)
            dot(x, lastY);
    }
    const Span rows = clipSpan(qint64(top) + 1, lastY, m_surface.height());
    for (qint64 y = rows.lo; y < rows.hi; ++y) {
        dot(firstX, y);
        if (lastX > firstX)
            dot(lastX, y);
    }
}

qint32 OffScreenDC::TextWidth(const QString &text) const {
    return QFontMetrics(currentFont()).horizontalAdvance(text);
}

qint32 OffScreenDC::TextHeight() const {
    return QFontMetrics(currentFont()).height();
}

const QFont &OffScreenDC::currentFont() const {
    return m_font ? m_font->qfont() : m_defaultFont;
}
