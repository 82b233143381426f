#pragma once
// The control's drawing child: shows the last frame copied to it, owns the control's font and
// colours, converts between scale units, and passes its input and paint notifications on.

#include "ScaleConverter.h"
#include "StdFont.h"
#include "TreeListTypes.h"

#include <QImage>
#include <QWidget>

class PictureBox : public QWidget, public ScaleSource {
    Q_OBJECT
public:
    explicit PictureBox(QWidget *parent = nullptr);

    // The image frames are copied to; it always has the widget's size.
    QImage *screenImage() { return &m_screen; }
    const QImage &screenImage() const { return m_screen; }

    // Inner width and height in pixels.
    qint32 ScaleWidth() const { return width(); }
    qint32 ScaleHeight() const { return height(); }
    // Converts a horizontal / vertical value between scale units (pixels are 96 per inch).
    double ScaleX(double value, qint16 fromScale, qint16 toScale) const override;
    double ScaleY(double value, qint16 fromScale, qint16 toScale) const override;
    // Width and height of a text in the current font, in pixels.
    qint32 TextWidth(const QString &text) const;
    qint32 TextHeight(const QString &text) const;

    // The font (a shared object: changing it changes it for every holder).
    const StdFontPtr &Font() const { return m_font; }
    void setFont(const StdFontPtr &font);
    using QWidget::setFont;
    // Text colour (OLE colour).
    OleColor ForeColor() const { return m_foreColor; }
    void setForeColor(OleColor c) { m_foreColor = c; }
    // Background colour (OLE colour).
    OleColor BackColor() const { return m_backColor; }
    void setBackColor(OleColor c);
    // Fills the screen image with the background colour.
    void Cls();
    // Shows the screen image again (after a frame was copied to it).
    void showFrame();

signals:
    // The widget must show its image: the control copies its frame first (synchronously).
    void paintRequested();
    // Keyboard focus came or went.
    void focusChanged(bool hasFocus);
    // A mouse button went down on the surface.
    void mousePressed(QMouseEvent *event);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    QImage m_screen;
    bool m_painting = false;
    StdFontPtr m_font;
    OleColor m_foreColor = 0x80000008;
    OleColor m_backColor = 0x80000005;
};
