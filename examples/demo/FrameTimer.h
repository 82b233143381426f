#pragma once
// Measures the tree list's frames as the person waits for them: from the input that asked for a
// frame (a key, a click, a wheel turn or a drag anywhere in the program, or the window resized)
// to the end of the paint of the control's drawing surface, which shows it. A frame no input
// asked for (the window uncovered) counts from the start of its paint. The control's own
// ReDrawTime counts in steps of about 4 ms, too coarse for a frame.

#include <QElapsedTimer>
#include <QObject>

class QWidget;

class FrameTimer : public QObject {
    Q_OBJECT
public:
    // Watches the frames shown on `surface`, the control's drawing child.
    explicit FrameTimer(QWidget *surface, QObject *parent = nullptr);

    // How long the last frame took, in milliseconds; 0 before the first.
    double lastFrameMs() const { return double(m_lastFrame) / 1e6; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void customEvent(QEvent *event) override;

private:
    QWidget *m_surface;
    QElapsedTimer m_clock;
    qint64 m_askedAt = -1;  // on m_clock, ns: when the frame to come was asked for, -1 for none
    int m_unsettled = 0;    // inputs whose repaints may still be on their way
    qint64 m_lastFrame = 0; // ns
};
