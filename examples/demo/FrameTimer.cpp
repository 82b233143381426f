#include "FrameTimer.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

namespace {

// Posted behind the repaint that input asks for (which Qt posts at Qt::LowEventPriority): when it
// arrives and no frame came, the input asked for none.
const QEvent::Type InputSettled = static_cast<QEvent::Type>(QEvent::registerEventType());
constexpr int AfterRepaints = Qt::LowEventPriority - 1;

bool isInput(const QEvent *event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return true;
    case QEvent::MouseMove:
        // The pointer only passing over draws nothing; a drag does.
        return static_cast<const QMouseEvent *>(event)->buttons() != Qt::NoButton;
    default:
        return false;
    }
}

} // namespace

FrameTimer::FrameTimer(QWidget *surface, QObject *parent) : QObject(parent), m_surface(surface) {
    m_clock.start();
    QCoreApplication::instance()->installEventFilter(this);
}

bool FrameTimer::eventFilter(QObject *watched, QEvent *event) {
    if (watched == m_surface && event->type() == QEvent::Paint) {
        const qint64 start = m_askedAt >= 0 ? m_askedAt : m_clock.nsecsElapsed();
        // Delivered here, so that the end of the paint can be timed; it needs no other delivery.
        watched->event(event);
        m_lastFrame = m_clock.nsecsElapsed() - start;
        m_askedAt = -1;
        return true;
    }
    // Everything else only passes by on its way. A resized window asks for a frame as input does.
    const bool resized = event->type() == QEvent::Resize && watched == m_surface->window();
    if (m_askedAt < 0 && (isInput(event) || resized)) {
        m_askedAt = m_clock.nsecsElapsed();
        ++m_unsettled;
        QCoreApplication::postEvent(this, new QEvent(InputSettled), AfterRepaints);
    }
    return false;
}

void FrameTimer::customEvent(QEvent *event) {
    // Only the last input's marker speaks for the frame now awaited.
    if (event->type() == InputSettled && --m_unsettled == 0)
        m_askedAt = -1;
}
