// Drawing needs one Qt application for the whole run, and widgets need theirs to be a
// QApplication; tests run on the offscreen platform unless another is asked for. Widgets draw
// in the classic palette, which the reference images were made in, unless a test sets another;
// the scroll bars are Qt's own and keep the platform's palette they were drawn in there.
#include <gtest/gtest.h>
#ifdef QT_WIDGETS_LIB
#include "SystemColors.h"

#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Application app(argc, argv);
#ifdef QT_WIDGETS_LIB
    const QPalette platform = QApplication::palette();
    QApplication::setPalette(classicPalette());
    QApplication::setPalette(platform, "QScrollBar");
#endif
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
