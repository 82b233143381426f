#include "ButtonSurface.h"

#include "KeyCodes.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

ButtonSurface::ButtonSurface(QWidget *parent) : QWidget(parent) {
    // A click gives it the focus, so Enter and Escape still reach the editor from here; Tab
    // passes it by, as it does a button.
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ButtonSurface::paintEvent(QPaintEvent *) {
    if (shownPart() != m_shown || size() != m_size)
        emit exposureChanged();
    const QImage &picture = image();
    QPainter(this).drawImage(m_shown.topLeft(), picture);
}

QRect ButtonSurface::shownPart() const {
    QRect part = rect();
    QPoint origin; // the current parent's origin in this surface's pixels
    for (const QWidget *w = this; !w->isWindow() && w->parentWidget(); w = w->parentWidget()) {
        origin -= w->pos();
        part &= QRect(origin, w->parentWidget()->size());
    }
    return part;
}

QImage &ButtonSurface::image() {
    const QRect shown = shownPart();
    if (shown != m_shown || size() != m_size) {
        m_shown = shown;
        m_size = size();
        m_image = QImage(shown.size(), QImage::Format_RGB32);
        m_image.fill(palette().color(QPalette::Button));
    }
    return m_image;
}

void ButtonSurface::mousePressEvent(QMouseEvent *event) {
    emit pressed(buttonMask(event->button()), shiftMask(event->modifiers()),
                 float(event->position().x()), float(event->position().y()));
}

void ButtonSurface::mouseReleaseEvent(QMouseEvent *event) {
    emit released(buttonMask(event->button()), shiftMask(event->modifiers()),
                  float(event->position().x()), float(event->position().y()));
}

void ButtonSurface::keyPressEvent(QKeyEvent *event) {
    qint16 ascii = keyAscii(event->text(), virtualKeyCode(event->key()));
    if (ascii != 0) {
        emit keyPress(ascii);
        if (ascii == 0) {
            event->accept();
            return;
        }
    }
    QWidget::keyPressEvent(event);
}
