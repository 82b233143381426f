#include "SystemTimer.h"

#include <QDateTime>
#include <optional>

float secondsSinceMidnight() {
    // Local time is the UTC clock plus the zone's offset. Asking for the offset reads the time
    // zone's files, too slow for a timer read around every repaint: it is looked up again only
    // once a minute.
    static qint64 offsetMs = 0;
    static std::optional<qint64> offsetAt;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (!offsetAt || now - *offsetAt > 60000 || now < *offsetAt) {
        offsetMs = qint64(QDateTime::currentDateTime().offsetFromUtc()) * 1000;
        offsetAt = now;
    }
    constexpr qint64 day = 86400000;
    return static_cast<float>(((now + offsetMs) % day + day) % day) / 1000.0f;
}
