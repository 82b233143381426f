#pragma once
// Where a cell's caption goes and how much of it shows. Pure layout: it measures with the font
// and needs no surface.

#include "TreeListTypes.h"

#include <QFont>
#include <QString>
#include <utility>

namespace CaptionLayout {

// The caption as it fits a width: unchanged when left + its width stays below width - 4, else
// cut and ended with "...", or "..." alone. Raises overflow past 32767 characters.
QString fitted(const QFont &font, qint32 left, qint32 width, const QString &caption);

// The top-left (x, y) of a caption aligned in the box at (left, top) of width x height, three
// pixels in from the edge it is aligned to; the horizontal room is the width less leftOffset.
// (0, 0) for an empty caption or an alignment outside the nine.
std::pair<qint64, qint64> origin(const QFont &font, const QString &caption, CaptionAlignments align,
                                 qint64 left, qint64 top, qint64 width, qint64 height,
                                 qint64 leftOffset);

} // namespace CaptionLayout
