#include "OffScreenDC.h"

#include "Bevel.h"
#include "CaptionLayout.h"
#include "SurfacePixels.h"
#include "SystemColors.h"
#include "TreeListError.h"

#include <QFontMetrics>
#include <array>
#include <cmath>

namespace {

// System colour numbers of the 3-D colours the surface reports.
constexpr int ColorBtnFace = 15;
constexpr int ColorBtnHighlight = 20;
constexpr int ColorBtnShadow = 16;

// Raised and Selected share the one-pixel edge; Sunken swaps its colours.
constexpr std::array RaisedEdge = {BevelRing{SysButtonHighlight, SysButtonShadow}};
constexpr std::array SunkenEdge = {BevelRing{SysButtonShadow, SysButtonHighlight}};
constexpr std::array Raised3DEdge = {BevelRing{SysButtonHighlight, Sys3DDarkShadow},
                                     BevelRing{Sys3DLight, SysButtonShadow}};

} // namespace

OffScreenDC::OffScreenDC() : m_defaultFont(StdFont().qfont()), m_palette(classicPalette()) {}

OffScreenDC::~OffScreenDC() = default;

QImage *OffScreenDC::hDC() {
    return &m_raster.image();
}

const QImage *OffScreenDC::hDC() const {
    return &m_raster.image();
}

void OffScreenDC::setPalette(const QPalette &palette) {
    m_palette = palette;
    m_faceColor = 0; // read again at the next Initialize
}

QRgb OffScreenDC::rgb(OleColor c) const {
    return oleTranslateColor(c, m_palette);
}

OleColor OffScreenDC::translated(OleColor c) const {
    return oleFromRgb(rgb(c));
}

void OffScreenDC::Initialize(QImage *CtlHdc, qint32 CtlWidth, qint32 CtlHeight,
                             OleColor NewBackColor, OleColor NewForeColor, StdFontPtr NewFont) {
    m_raster.reset(CtlHdc, CtlWidth, CtlHeight);
    // Read once per object: a face colour of 0 means "not read yet".
    if (m_faceColor == 0) {
        m_faceColor = oleFromRgb(sysColor(ColorBtnFace, m_palette));
        m_highlightColor = oleFromRgb(sysColor(ColorBtnHighlight, m_palette));
        m_shadowColor = oleFromRgb(sysColor(ColorBtnShadow, m_palette));
    }
    m_backColor = NewBackColor;
    m_textColor = NewForeColor;
    if (OriginX() == 0) {
        // The whole raster in the background colour, as the rectangle below would leave it.
        m_textColor = translated(NewForeColor);
        m_backColor = translated(NewBackColor);
        m_raster.clear(rgb(NewBackColor));
    } else {
        DrawRect(0, 0, CtlWidth, CtlHeight, NewBackColor, NewForeColor, QString(), 0,
                 caCenterCenter, Appearances::Flat);
    }
    setFont(NewFont);
}

void OffScreenDC::Clear(OleColor NewBackColor, OleColor NewForeColor) {
    m_backColor = NewBackColor;
    m_textColor = NewForeColor;
    // The background doubles as text colour: later drawing must set the text colour it needs.
    DrawRect(0, 0, Width(), Height(), NewBackColor, NewBackColor, QString(), 0, caCenterCenter,
             Appearances::Flat);
}

void OffScreenDC::SetClipRows(qint32 Top, qint32 Bottom) {
    m_raster.setClipRows(Top, Bottom);
}

void OffScreenDC::ClearClip() {
    m_raster.clearClip();
}

bool OffScreenDC::HasChanged(qint32 CtlWidth, qint32 CtlHeight, bool Equal) const {
    if (Equal)
        return Width() != CtlWidth || Height() != CtlHeight;
    return Width() < CtlWidth || Height() < CtlHeight;
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
    std::span<const BevelRing> edge;
    switch (Appearance) {
    case Appearances::Raised:
        edge = RaisedEdge;
        break;
    case Appearances::Sunken:
    case Appearances::Selected:
        edge = SunkenEdge;
        break;
    case Appearances::Raised3D:
        edge = Raised3DEdge;
        break;
    default:
        break;
    }
    const qint64 L = nLeft;
    const qint64 T = nTop;
    // Off the unit ratio the rings are a pen thick and may leave device pixels between them and
    // the face: the whole box takes the face colour first.
    if (m_raster.ratio() != 1 && !edge.empty())
        m_raster.fillDevice(m_raster.columns(L == 0 ? nLeftOffset : L, L + nWidth),
                            m_raster.rows(T, T + nHeight), rgb(NewBackColor));
    drawBevel(L, T, L + nWidth - 1, T + nHeight - 1, edge, [this](const BevelSide &side) {
        DrawLine(toInt32(side.x1), toInt32(side.y1), toInt32(side.x2), toInt32(side.y2), side.color,
                 m_backColor);
    });
    const auto inset = qint64(edge.size());
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
    const auto [x, y] =
        CaptionLayout::origin(currentFont(), Caption, CaptionAlign, L, T, W, H, LeftOffset);
    // A rectangle at x 0 starts its fill at the offset: the columns before it hold the tree part
    // of the first column, drawn separately.
    const qint64 left = L == 0 ? LeftOffset : L;
    textOut(x + LeftOffset, y, left, T, toInt32(qint64(L) + W), toInt32(qint64(T) + H), Caption,
            currentFont());
}

void OffScreenDC::textOut(qint64 x, qint64 y, qint64 left, qint64 top, qint64 right, qint64 bottom,
                          const QString &text, const QFont &font) {
    const QRgb back = rgb(m_backColor);
    const bool fill = !m_fillSkipped || rgb(*m_fillSkipped) != back;
    SurfacePixels::textBox(m_raster, x, y, left, top, right, bottom, text, font, rgb(m_textColor),
                           back, fill);
}

void OffScreenDC::InvertRect(qint32 nLeft, qint32 nTop, qint32 nWidth, qint32 nHeight) {
    const qint64 right = toInt32(qint64(nLeft) + nWidth);
    const qint64 bottom = toInt32(qint64(nTop) + nHeight);
    SurfacePixels::invert(m_raster, nLeft, nTop, right, bottom);
}

void OffScreenDC::BlastToScreen(qint32 &Left, qint32 &Top, qint32 &Width, qint32 &Height) {
    if (Width == -1)
        Width = this->Width();
    if (Height == -1)
        Height = this->Height();
    if (Width > 0 && Height > 0)
        m_raster.copyToTarget(Left, Top, Width, Height);
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
    const QRgb color = rgb(Color);
    if (Dotted)
        SurfacePixels::dottedLine(m_raster, X1, Y1, X2, Y2, color, rgb(BackColor));
    else
        SurfacePixels::solidLine(m_raster, X1, Y1, X2, Y2, color);
}

void OffScreenDC::DrawExpandBox(qint32 x, qint32 y, qint32 size, bool plus, OleColor frame,
                                OleColor inside, OleColor sign) {
    using Span = RasterSurface::Span;
    const Span cols = {m_raster.device(qint64(x) + OriginX()),
                       m_raster.device(qint64(x) + size + OriginX())};
    const Span rows = {m_raster.device(y), m_raster.device(qint64(y) + size)};
    const qint64 pen = m_raster.pen();
    const qint64 extent = std::min(cols.hi - cols.lo, rows.hi - rows.lo);
    if (extent <= 0)
        return;
    m_raster.fillDevice(cols, rows, rgb(frame));
    m_raster.fillDevice({cols.lo + pen, cols.hi - pen}, {rows.lo + pen, rows.hi - pen},
                        rgb(inside));
    const qint64 inset = pen + std::max<qint64>(1, std::llround(m_raster.ratio()));
    const qint64 middle = (extent - pen) / 2;
    m_raster.fillDevice({cols.lo + inset, cols.lo + extent - inset},
                        {rows.lo + middle, rows.lo + middle + pen}, rgb(sign));
    if (plus)
        m_raster.fillDevice({cols.lo + middle, cols.lo + middle + pen},
                            {rows.lo + inset, rows.lo + extent - inset}, rgb(sign));
}

void OffScreenDC::DrawPicture(const StdPicturePtr &bmpSource, qint32 X, qint32 Y) {
    if (bmpSource)
        m_raster.drawImage(X, Y, bmpSource->imageAt(pixelRatio()), bmpSource->pixelWidth(),
                           bmpSource->pixelHeight());
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
    return CaptionLayout::fitted(currentFont(), nLeft, nWidth, Caption);
}

void OffScreenDC::GetPictureSize(const StdPicturePtr &bmpSource, qint32 &Height, qint32 &Width) {
    Height = bmpSource ? bmpSource->pixelWidth() : 0;
    Width = bmpSource ? bmpSource->pixelHeight() : 0;
}

void OffScreenDC::DrawFocusRect(qint32 left, qint32 top, qint32 right, qint32 bottom) {
    SurfacePixels::focusFrame(m_raster, left, top, right, bottom);
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
