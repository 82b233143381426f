#include "FuzzApplication.h"

#include <QApplication>

QApplication &fuzzApplication() {
    static int argc = 1;
    static char name[] = "vktl_fuzz";
    static char *argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication *app = new QApplication(argc, argv);
    return *app;
}
