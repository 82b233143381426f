#pragma once
// An owner-drawn button of the editor: a picture it shows as it was drawn, reporting presses,
// releases and character keys with the masks the editor's handlers read (button: left 1, right
// 2, middle 4; Shift 1, Ctrl 2, Alt 4).

#include <QImage>
#include <QWidget>

class ButtonSurface : public QWidget {
    Q_OBJECT
public:
    explicit ButtonSurface(QWidget *parent = nullptr);

    // The picture to draw on: the part of the surface its parents let show now (a hidden widget
    // hears of its new size only when shown), so a button far larger than its window costs no
    // more than the window; call update() after drawing.
    QImage &image();
    // Where the whole button lies on that picture, for the painter.
    QRect buttonBox() const { return QRect(-m_shown.topLeft(), m_size); }

signals:
    // A mouse button went down / up over the surface (pixels).
    void pressed(qint16 button, qint16 shift, float x, float y);
    void released(qint16 button, qint16 shift, float x, float y);
    // The character a key types while the surface has the focus; set to 0 to swallow it.
    void keyPress(qint16 &keyAscii);
    // The surface was resized, or more or less of it can show than the picture holds (a parent
    // moved or resized): draw the button again.
    void exposureChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    // The part of the surface inside every parent up to its window, in its own pixels.
    QRect shownPart() const;

    QImage m_image;
    QRect m_shown; // where the picture lies on the surface
    QSize m_size;  // the surface's size when the picture was made
};
