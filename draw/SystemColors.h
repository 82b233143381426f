#pragma once
// OLE colours to RGB. A colour with the high bit set names a system colour: the platform's
// current one, which on Qt is the widget's palette. Each system colour the control draws with
// maps to a palette role in one table; the others (desktop, captions) keep the classic light
// desktop scheme's value. Under `classicPalette()` every system colour is the classic scheme's.

#include "TreeListTypes.h"
#include "vkTreeListExport.h"

#include <QPalette>
#include <QRgb>

// The classic scheme's RGB value of system colour `index` (0..30); black for an index the table
// does not hold.
VKTL_EXPORT QRgb sysColor(int index);
// System colour `index` as `palette` gives it (black for an index the table does not hold).
VKTL_EXPORT QRgb sysColor(int index, const QPalette &palette);
// A palette whose roles are the classic scheme's colours, in every colour group.
VKTL_EXPORT QPalette classicPalette();
// A dark palette in the manner of the Fusion style's dark scheme, for hosts that offer one.
VKTL_EXPORT QPalette darkPalette();

// Translates an OLE colour: 0x80000000 + n is system colour n (of the classic scheme, or as
// `palette` gives it); anything else is 0x00BBGGRR (the top byte is ignored). The result is opaque.
VKTL_EXPORT QRgb oleTranslateColor(OleColor c);
VKTL_EXPORT QRgb oleTranslateColor(OleColor c, const QPalette &palette);

// The OLE colour (0x00BBGGRR) of an RGB value; the alpha channel is dropped.
VKTL_EXPORT OleColor oleFromRgb(QRgb rgb);

// The system colours of 3-D edges and button faces, as OLE colours.
constexpr OleColor SysButtonFace = 0x8000000Fu;
constexpr OleColor SysButtonShadow = 0x80000010u;
constexpr OleColor SysButtonText = 0x80000012u;
constexpr OleColor SysButtonHighlight = 0x80000014u;
constexpr OleColor Sys3DDarkShadow = 0x80000015u;
constexpr OleColor Sys3DLight = 0x80000016u;
