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
    QPainter(this).drawImage(0, 0, image());
}

QImage &ButtonSurface::image() {
    if (m_image.size() != size()) {
        m_image = QImage(size(), QImage::Format_RGB32);
        m_image.fill(palette().color(QPalette::Button));
    }
    return m_image;
}

void ButtonSurface::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    // Drawn anew by its owner at its new size; until then it shows the button face.
    image();
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
