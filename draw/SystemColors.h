#pragma once
// OLE colours to RGB. System colours come from one fixed table of the classic light desktop
// scheme, so a frame renders the same on every machine whatever the desktop theme is.

#include "TreeListTypes.h"
#include "vkTreeListExport.h"

#include <QRgb>

// The RGB value of system colour `index` (0..30); black for an index the table does not hold.
VKTL_EXPORT QRgb sysColor(int index);

// Translates an OLE colour: 0x80000000 + n is system colour n; anything else is 0x00BBGGRR
// (the top byte is ignored). The result is opaque.
VKTL_EXPORT QRgb oleTranslateColor(OleColor c);

// The OLE colour (0x00BBGGRR) of an RGB value; the alpha channel is dropped.
VKTL_EXPORT OleColor oleFromRgb(QRgb rgb);

// The system colours of 3-D edges and button faces, as OLE colours.
constexpr OleColor SysButtonFace = 0x8000000Fu;
constexpr OleColor SysButtonShadow = 0x80000010u;
constexpr OleColor SysButtonText = 0x80000012u;
constexpr OleColor SysButtonHighlight = 0x80000014u;
constexpr OleColor Sys3DDarkShadow = 0x80000015u;
constexpr OleColor Sys3DLight = 0x80000016u;
