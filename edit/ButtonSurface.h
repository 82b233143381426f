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

    // The picture to draw on, as large as the surface now (a hidden widget hears of its new size
    // only when shown); call update() after drawing.
    QImage &image();

signals:
    // A mouse button went down / up over the surface (pixels).
    void pressed(qint16 button, qint16 shift, float x, float y);
    void released(qint16 button, qint16 shift, float x, float y);
    // The character a key types while the surface has the focus; set to 0 to swallow it.
    void keyPress(qint16 &keyAscii);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QImage m_image;
};
