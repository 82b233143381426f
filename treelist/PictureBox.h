#pragma once
// The control's drawing child: shows the last frame copied to it, owns the control's font and
// colours, converts between scale units, and passes its input and paint notifications on.

#include "ScaleConverter.h"
#include "StdFont.h"
#include "TreeListSettings.h"
#include "TreeListTypes.h"
#include "vkTreeListExport.h"

#include <QHelpEvent>
#include <QImage>
#include <QWidget>

class VKTL_EXPORT PictureBox : public QWidget, public ScaleSource {
    Q_OBJECT
public:
    explicit PictureBox(QWidget *parent = nullptr);

    // The image frames are copied to: the widget's size in device pixels.
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
    // Inverts the pixels of a vertical line at x over the whole height (drawn twice, it is gone).
    void invertVerticalLine(qint32 x);

    // The mouse pointer: 0 default, 1 arrow, 11 hourglass, 13 arrow and hourglass, 99 the custom
    // pointer (a column border's split arrows).
    qint16 MousePointer() const { return m_mousePointer; }
    void setMousePointer(qint16 pointer);

signals:
    // The widget must show its image: the control copies its frame first (synchronously).
    void paintRequested();
    // Keyboard focus came or went.
    void focusChanged(bool hasFocus);
    // Mouse and keyboard input on the surface, passed on as Qt delivers it.
    void mousePressed(QMouseEvent *event);
    void mouseReleased(QMouseEvent *event);
    void mouseDoubleClicked(QMouseEvent *event);
    void mouseMoved(QMouseEvent *event);
    void wheelTurned(QWheelEvent *event);
    void keyPressed(QKeyEvent *event);
    void keyReleased(QKeyEvent *event);
    // Qt asks for a tooltip at a point; the handler shows one or leaves the event ignored.
    void toolTipAsked(QHelpEvent *event);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    // Makes the screen image the widget's size at the screen's pixel ratio.
    void fitScreen();

    QImage m_screen;
    qint16 m_mousePointer = 0;
    bool m_painting = false;
    StdFontPtr m_font;
    OleColor m_foreColor = TreeListSettings::kForeColor;
    OleColor m_backColor = TreeListSettings::kBackColor;
};
