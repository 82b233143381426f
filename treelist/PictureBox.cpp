#include "PictureBox.h"

#include "SystemColors.h"

#include <QFontMetrics>
#include <QPainter>

PictureBox::PictureBox(QWidget *parent) : QWidget(parent), m_font(std::make_shared<StdFont>()) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

double PictureBox::ScaleX(double value, qint16 fromScale, qint16 toScale) const {
    return convertScale(value, fromScale, toScale, false);
}

double PictureBox::ScaleY(double value, qint16 fromScale, qint16 toScale) const {
    return convertScale(value, fromScale, toScale, true);
}

qint32 PictureBox::TextWidth(const QString &text) const {
    return QFontMetrics(m_font->qfont()).horizontalAdvance(text);
}

qint32 PictureBox::TextHeight(const QString &) const {
    return QFontMetrics(m_font->qfont()).height();
}

void PictureBox::setFont(const StdFontPtr &font) {
    m_font = font;
}

void PictureBox::setBackColor(OleColor c) {
    m_backColor = c;
}

void PictureBox::Cls() {
    m_screen.fill(oleTranslateColor(m_backColor));
    showFrame();
}

void PictureBox::showFrame() {
    // A frame copied while the widget paints itself is shown by that same paint.
    if (!m_painting)
        update();
}

void PictureBox::paintEvent(QPaintEvent *) {
    m_painting = true;
    emit paintRequested();
    m_painting = false;
    QPainter p(this);
    p.drawImage(0, 0, m_screen);
}

void PictureBox::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    // The old frame stays where it was until the control copies a new one: when composing that
    // one fails, the last good frame is still what the user sees.
    QImage screen(size(), QImage::Format_RGB32);
    screen.fill(oleTranslateColor(m_backColor));
    if (!m_screen.isNull())
        QPainter(&screen).drawImage(0, 0, m_screen);
    m_screen = std::move(screen);
}

void PictureBox::focusInEvent(QFocusEvent *event) {
    QWidget::focusInEvent(event);
    emit focusChanged(true);
}

void PictureBox::focusOutEvent(QFocusEvent *event) {
    QWidget::focusOutEvent(event);
    emit focusChanged(false);
}

void PictureBox::mousePressEvent(QMouseEvent *event) {
    emit mousePressed(event);
    QWidget::mousePressEvent(event);
}
