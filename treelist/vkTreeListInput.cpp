// vkTreeList: hit testing, mouse and keyboard.

#include "vkTreeList.h"

#include "VariantNumber.h"

#include <cmath>

// --- Hit testing --------------------------------------------------------------------------------

lsHitTestPtr vkTreeList::HitTest(const QVariant &X, const QVariant &Y, qint16 Button,
                                 qint16 Shift) const {
    auto hit = std::make_shared<lsHitTest>();
    // Points are on the screen; the cells lie where the unscrolled frame put them. A non-numeric
    // X goes through as it is, and the hit test reports that nothing was hit.
    const QVariant x =
        isNumeric(X) ? QVariant(toNumber(X) + std::abs(double(m_horizontalOffset))) : X;
    hit->Refresh(x, Y, m_rowHeight, m_headers.get(), m_rows.get(), Button, Shift);
    return hit;
}
