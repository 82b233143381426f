#pragma once
// The double buffer of the tree list: every frame is composed on an off-screen 32-bit RGB raster
// and copied to the target in one block (`BlastToScreen`), so the window never shows a half
// painted frame. Also the control's drawing primitives: framed rectangles with an aligned caption,
// solid and dotted lines, pictures, opaque text, inversion and caption shortening.
//
// Colours are OLE colours. The current background and text colours are surface state kept as
// they were set and translated when used; system colours translate through the surface's
// palette (the classic scheme's until one is set). Coordinates are pixels, origin top-left;
// everything is clipped to the surface, and sums that leave the 32-bit range raise the overflow
// error.

#include "RasterSurface.h"
#include "StdFont.h"
#include "StdPicture.h"
#include "TreeListTypes.h"
#include "vkTreeListExport.h"

#include <QFont>
#include <QImage>
#include <QPalette>
#include <QString>
#include <optional>

class VKTL_EXPORT OffScreenDC {
public:
    // Makes an empty object; it draws nothing until `Initialize`.
    OffScreenDC();
    ~OffScreenDC();

    // Device pixels per logical pixel the next `Initialize` makes the raster at (1 by default);
    // every coordinate stays logical.
    qreal pixelRatio() const { return m_raster.ratio(); }
    void setPixelRatio(qreal ratio) { m_raster.setRatio(ratio); }
    // The current background colour, as last set.
    OleColor BackColor() const { return m_backColor; }
    // Sets the current background colour (stored untranslated).
    void setBackColor(OleColor c) { m_backColor = c; }
    // The current text colour, as last set.
    OleColor TextColor() const { return m_textColor; }
    // Sets the current text colour (stored untranslated).
    void setTextColor(OleColor c) { m_textColor = c; }
    // The font last given (null if none); text uses it, or the default font when null.
    const StdFontPtr &Font() const { return m_font; }
    // Makes a font current; null returns to the surface's default font.
    void setFont(const StdFontPtr &NewFont) { m_font = NewFont; }
    // The palette system colours translate through; the button colours are read again from it at
    // the next `Initialize`.
    const QPalette &palette() const { return m_palette; }
    void setPalette(const QPalette &palette);
    // The RGB value of a colour: a system colour as the palette gives it.
    QRgb rgb(OleColor c) const;
    // The button-face colour read at `Initialize` (0x00BBGGRR; 0 before).
    OleColor ThreeDFaceColor() const { return m_faceColor; }
    // The button-highlight colour read at `Initialize`.
    OleColor ThreeDHighlightColor() const { return m_highlightColor; }
    // The button-shadow colour read at `Initialize`.
    OleColor ThreeDShadowColor() const { return m_shadowColor; }

    // Creates the surface of CtlWidth x CtlHeight filled with NewBackColor, sets the colours and
    // the font (a raster of that size that nothing shares is reused). CtlHdc is the image
    // `BlastToScreen` copies to (may be null). Sizes of 0 or less, or too large to allocate, give
    // a surface that ignores drawing.
    void Initialize(QImage *CtlHdc, qint32 CtlWidth, qint32 CtlHeight, OleColor NewBackColor,
                    OleColor NewForeColor, StdFontPtr NewFont);
    // Fills the whole surface with NewBackColor; leaves the text colour at that colour too.
    void Clear(OleColor NewBackColor, OleColor NewForeColor);
    // True when the surface does not fit a window of CtlWidth x CtlHeight: any difference when
    // Equal, only a too small surface when not.
    bool HasChanged(qint32 CtlWidth, qint32 CtlHeight, bool Equal = true) const;
    // Filled rectangle with a border of the given appearance and a caption shortened to fit; a
    // rectangle at x 0 leaves its first nLeftOffset columns unpainted.
    void DrawRect(qint32 nLeft, qint32 nTop, qint32 nWidth, qint32 nHeight, OleColor NewBackColor,
                  OleColor NewTextColor, const QString &sCaption = QString(),
                  qint32 nLeftOffset = 0, CaptionAlignments CaptionAlign = caCenterCenter,
                  Appearances Appearance = Appearances::Flat);
    // Inverts the pixels from (nLeft, nTop) to (nLeft + nWidth, nTop + nHeight), exclusive.
    void InvertRect(qint32 nLeft, qint32 nTop, qint32 nWidth, qint32 nHeight);
    // Copies the surface from its origin to the target at (Left, Top); a width or height of -1
    // means the surface's and is written back. Only the part inside both images is copied.
    void BlastToScreen(qint32 &Left, qint32 &Top, qint32 &Width, qint32 &Height);
    // Copies the whole surface to the target's origin. A target of the same size then shares the
    // surface's raster rather than a copy of it; whichever is drawn on next copies it first.
    void BlastToScreen();
    // Line from (X1, Y1) towards (X2, Y2). Solid lines stop one pixel short of the end. Dotted
    // vertical lines paint every other pixel in Color and the gaps in BackColor, possibly one
    // pixel past the end; dotted horizontal lines leave the gaps; dotted diagonals draw nothing.
    void DrawLine(qint32 X1, qint32 Y1, qint32 X2, qint32 Y2, OleColor Color, OleColor BackColor,
                  bool Dotted = false);
    // A plus (or minus) box `size` pixels square at (x, y): a frame one pen thick, the inside, and
    // a sign one pen thick kept a pen off the frame, all on whole device pixels.
    void DrawExpandBox(qint32 x, qint32 y, qint32 size, bool plus, OleColor frame, OleColor inside,
                       OleColor sign);
    // Copies a picture opaquely at full size with its top-left corner at (X, Y).
    void DrawPicture(const StdPicturePtr &bmpSource, qint32 X, qint32 Y);
    // Text with its top-left at (X, Y) on an opaque box of its measured size. Given colours
    // become current and stay so; TextFont is used for this text only.
    void DrawText(qint32 X, qint32 Y, const QString &Caption,
                  std::optional<OleColor> NewTextColor = std::nullopt,
                  std::optional<OleColor> NewBackColor = std::nullopt,
                  StdFontPtr TextFont = nullptr);
    // While set, a box whose fill colour is this one's is not filled, its text drawn on what is
    // there: the caller knows those pixels already have it (cells on a surface just cleared).
    void setFillSkipped(std::optional<OleColor> colour) { m_fillSkipped = colour; }
    // The surface raster, in device pixels (null image before `Initialize`).
    QImage *hDC();
    // The surface raster, read-only.
    const QImage *hDC() const;
    // The caption as `DrawRect` shows it in a width: unchanged when nLeft + its width stays below
    // nWidth - 4, else cut and ended with "...", or "..." alone. Appearance is not used.
    QString AdjustText(qint32 nLeft, qint32 nWidth, const QString &Caption,
                       Appearances Appearance = Appearances::Flat) const;
    // A picture's size in pixels, crossed over: Height receives the width and Width the height
    // (callers pass their width variable first). Both are 0 for a null picture.
    static void GetPictureSize(const StdPicturePtr &bmpSource, qint32 &Height, qint32 &Width);
    // Inverts every other pixel of the 1-pixel frame of (left, top)-(right, bottom), right and
    // bottom exclusive: the keyboard-focus rectangle. Drawing it twice removes it.
    void DrawFocusRect(qint32 left, qint32 top, qint32 right, qint32 bottom);
    // Width of a text in the current font.
    qint32 TextWidth(const QString &text) const;
    // Height of a line of text in the current font.
    qint32 TextHeight() const;
    // Horizontal drawing origin: every primitive lands OriginX pixels to the right of its
    // coordinates (left when negative), so a sideways-scrolled view keeps unscrolled positions.
    // Rules that look at coordinates (a rectangle at x 0) see them before the shift. Default 0.
    qint32 OriginX() const { return m_raster.originX(); }
    void setOriginX(qint32 x) { m_raster.setOriginX(x); }
    // Keeps every primitive off the pixel rows outside [Top, Bottom) until `ClearClip`.
    void SetClipRows(qint32 Top, qint32 Bottom);
    // Lets every primitive reach all pixel rows again (as after `Initialize`).
    void ClearClip();
    // Surface width as given to `Initialize`.
    qint32 Width() const { return m_raster.width(); }
    // Surface height as given to `Initialize`.
    qint32 Height() const { return m_raster.height(); }

private:
    void DrawFrame(qint32 nLeft, qint32 nTop, qint32 nWidth, qint32 nHeight, OleColor NewBackColor,
                   OleColor NewTextColor, const QString &sCaption, qint32 nLeftOffset,
                   CaptionAlignments CaptionAlign, Appearances Appearance);
    void DrawCaption(qint32 L, qint32 T, qint32 W, qint32 H, OleColor BackColor,
                     const QString &Caption, qint32 LeftOffset, CaptionAlignments CaptionAlign);
    // Fills the box [left, right) x [top, bottom) and draws text with its top-left at (x, y)
    // clipped to it, in the current colours.
    void textOut(qint64 x, qint64 y, qint64 left, qint64 top, qint64 right, qint64 bottom,
                 const QString &text, const QFont &font);
    const QFont &currentFont() const;
    OleColor translated(OleColor c) const;

    RasterSurface m_raster;
    StdFontPtr m_font;
    QFont m_defaultFont;
    OleColor m_backColor = 0xFFFFFF;
    OleColor m_textColor = 0;
    OleColor m_faceColor = 0;
    OleColor m_highlightColor = 0;
    OleColor m_shadowColor = 0;
    QPalette m_palette;
    std::optional<OleColor> m_fillSkipped;
};
