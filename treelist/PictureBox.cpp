#include "PictureBox.h"

#include "RasterSurface.h"
#include "SystemColors.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

PictureBox::PictureBox(QWidget *parent) : QWidget(parent), m_font(std::make_shared<StdFont>()) {
    // Focus by click and by Tab; moves without a button reach the column-border tracking.
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
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
    m_screen.fill(oleTranslateColor(m_backColor, palette()));
    showFrame();
}

void PictureBox::showFrame() {
    // A frame copied while the widget paints itself is shown by that same paint.
    if (!m_painting)
        update();
}

void PictureBox::invertVerticalLine(qint32 x) {
    // A line a pen thick at the screen's ratio, as the frame's lines are.
    const qreal ratio = devicePixelRatioF();
    const int from = RasterSurface::deviceExtent(x, ratio);
    const int to = from + std::max(1, int(ratio));
    if (x < 0 || from >= m_screen.width())
        return;
    for (int y = 0; y < m_screen.height(); ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(m_screen.scanLine(y));
        for (int d = from; d < std::min(to, m_screen.width()); ++d)
            line[d] ^= 0x00FFFFFF;
    }
    if (!m_painting)
        update(x, 0, 1, height());
}

void PictureBox::setMousePointer(qint16 pointer) {
    m_mousePointer = pointer;
    switch (pointer) {
    case 1:
        setCursor(Qt::ArrowCursor);
        break;
    case 11:
        setCursor(Qt::WaitCursor);
        break;
    case 13:
        setCursor(Qt::BusyCursor);
        break;
    case 99:
        setCursor(Qt::SplitHCursor);
        break;
    default:
        unsetCursor();
        break;
    }
}

bool PictureBox::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    event->ignore();
    emit toolTipAsked(static_cast<QHelpEvent *>(event));
    return true;
}

void PictureBox::paintEvent(QPaintEvent *) {
    // Moved to a screen of another pixel ratio, the widget keeps its size: the image follows.
    fitScreen();
    m_painting = true;
    emit paintRequested();
    m_painting = false;
    // The image holds device pixels: it covers the widget one to one on the screen.
    const qreal ratio = devicePixelRatioF();
    QPainter p(this);
    p.drawImage(QRectF(0, 0, m_screen.width() / ratio, m_screen.height() / ratio), m_screen);
}

void PictureBox::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    fitScreen();
}

void PictureBox::fitScreen() {
    const qreal ratio = devicePixelRatioF();
    const QSize device(RasterSurface::deviceExtent(width(), ratio),
                       RasterSurface::deviceExtent(height(), ratio));
    if (m_screen.size() == device && !m_screen.isNull())
        return;
    // The old frame stays where it was until the control copies a new one: when composing that
    // one fails, the last good frame is still what the user sees.
    QImage screen(device, QImage::Format_RGB32);
    screen.fill(oleTranslateColor(m_backColor, palette()));
    // A surface shrunk to nothing has no picture to paint on.
    if (!m_screen.isNull() && !screen.isNull())
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
}

void PictureBox::mouseReleaseEvent(QMouseEvent *event) {
    emit mouseReleased(event);
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent *event) {
    emit mouseDoubleClicked(event);
}

void PictureBox::mouseMoveEvent(QMouseEvent *event) {
    emit mouseMoved(event);
}

void PictureBox::wheelEvent(QWheelEvent *event) {
    emit wheelTurned(event);
}

void PictureBox::keyPressEvent(QKeyEvent *event) {
    emit keyPressed(event);
}

void PictureBox::keyReleaseEvent(QKeyEvent *event) {
    emit keyReleased(event);
}
