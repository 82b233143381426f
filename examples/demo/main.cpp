// vktl_demo: the tree list filled with a directory tree (given on the command line) or with a
// built-in organisation chart. With --screenshot FILE it renders the window to a PNG and exits;
// with --where ROW,COLUMN it tells where a cell is on the screen (tests drive the window with it).

#include "DemoWindow.h"
#include "DirectoryReader.h"
#include "HostContainer.h"
#include "OrgChart.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStatusBar>
#include <QTimer>
#include <cstdio>
#include <cstring>

namespace {

bool wantsScreenshot(int argc, char *argv[]) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--screenshot") == 0 ||
            std::strncmp(argv[i], "--screenshot=", 13) == 0)
            return true;
    return false;
}

} // namespace

int main(int argc, char *argv[]) {
    // Without a display a screenshot is rendered off screen.
    if (wantsScreenshot(argc, argv) && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vktl_demo"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the vkTreeList control filled with a directory tree, or with a "
                       "built-in organisation chart when no directory is given."));
    parser.addHelpOption();
    const QCommandLineOption screenshotOption(
        QStringLiteral("screenshot"),
        QStringLiteral("Renders the window off screen to <file> (PNG) and exits."),
        QStringLiteral("file"));
    parser.addOption(screenshotOption);
    const QCommandLineOption whereOption(
        QStringLiteral("where"),
        QStringLiteral("Once the window is up, prints where the text of cell <row,column> lies on "
                       "the screen (x y width height), for driving the window from outside."),
        QStringLiteral("row,column"));
    parser.addOption(whereOption);
    parser.addPositionalArgument(
        QStringLiteral("directory"),
        QStringLiteral("Directory to show, four levels deep, at most 32767 rows."),
        QStringLiteral("[directory]"));
    parser.process(app);

    DemoTable table;
    QElapsedTimer clock;
    clock.start();
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() > 1)
        parser.showHelp(2);
    if (arguments.isEmpty()) {
        table = OrgChart().build();
    } else {
        if (!QFileInfo(arguments.first()).isDir()) {
            std::fprintf(stderr, "vktl_demo: not a directory: %s\n", qPrintable(arguments.first()));
            return 2;
        }
        table = DirectoryReader().read(arguments.first());
    }
    const qint64 readTime = clock.elapsed();

    HostContainer host; // declared before the window: the control uses it until it is destroyed
    DemoWindow window(host, std::move(table));
    window.resize(900, 600);
    window.show();
    window.showcaseSelection();
    if (!arguments.isEmpty())
        window.statusBar()->showMessage(
            QStringLiteral("Read %L1 entries in %2 ms").arg(window.tree()->Rows()).arg(readTime),
            8000);

    if (parser.isSet(whereOption)) {
        const QStringList cell = parser.value(whereOption).split(u',');
        QTimer::singleShot(0, &window, [&window, cell] {
            const QRect r = window.cellTextRect(cell.value(0).toInt(), cell.value(1).toInt());
            std::printf("%d %d %d %d\n", r.x(), r.y(), r.width(), r.height());
            std::fflush(stdout);
        });
    }
    if (!parser.isSet(screenshotOption))
        return QApplication::exec();

    const QString path = parser.value(screenshotOption);
    window.activateWindow();
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    if (!window.grab().toImage().save(path, "PNG")) {
        std::fprintf(stderr, "vktl_demo: cannot write %s\n", qPrintable(path));
        return 1;
    }
    std::printf("Screenshot written to %s\n", qPrintable(QFileInfo(path).absoluteFilePath()));
    return 0;
}
