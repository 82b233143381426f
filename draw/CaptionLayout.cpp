#include "CaptionLayout.h"

#include "TextCache.h"
#include "TreeListError.h"

#include <algorithm>

namespace CaptionLayout {

QString fitted(const QFont &font, qint32 left, qint32 width, const QString &caption) {
    if (caption.isEmpty())
        return caption;
    // The character count is 16-bit: longer captions raise the overflow error.
    const qint16 length = toInt16(caption.size());
    const qint64 limit = qint64(width) - 4;
    const auto fits = [&](qint64 count) {
        const QString prefix = count == length ? caption : caption.left(count);
        return left + qint64(TextCache::instance().width(font, prefix)) < limit;
    };
    if (fits(length))
        return caption;
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
    return best > 0 ? caption.left(best) + dots : dots;
}

std::pair<qint64, qint64> origin(const QFont &font, const QString &caption, CaptionAlignments align,
                                 qint64 left, qint64 top, qint64 width, qint64 height,
                                 qint64 leftOffset) {
    if (caption.isEmpty() || align < caCenterCenter || align > caBottomright)
        return {0, 0};
    TextCache &texts = TextCache::instance();
    const qint64 cx = texts.width(font, caption);
    const qint64 cy = texts.height(font);
    const qint64 available = width - leftOffset;
    qint64 x = 0;
    switch (align % 3) {
    case 0:
        x = (available - cx) / 2 + left;
        break;
    case 1:
        x = left + 3;
        break;
    default:
        x = available - 3 - cx + left;
        break;
    }
    qint64 y = 0;
    switch (align / 3) {
    case 0:
        y = (height - cy) / 2 + top;
        break;
    case 1:
        y = top + 3;
        break;
    default:
        y = height - 3 - cy + top;
        break;
    }
    return {x, y};
}

} // namespace CaptionLayout
