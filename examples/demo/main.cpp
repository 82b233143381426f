// vktl_demo: the tree list filled with a directory tree (given on the command line) or with a
// built-in organisation chart. With --screenshot FILE it renders the window to a PNG and exits;
// with --where ROW,COLUMN it tells where a cell is on the screen (tests drive the window with it).
// --help and --version answer without a display.

#include "DemoWindow.h"
#include "DirectoryReader.h"
#include "HostContainer.h"
#include "OrgChart.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
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

// True when the command line asks for the help or the version. Qt's own options (-platform
// and the like) are not known to the parser yet and do not matter here.
bool asksForInformation(QCommandLineParser &parser, int argc, char *argv[]) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    parser.parse(arguments);
    return parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all")) ||
           parser.isSet(QStringLiteral("version"));
}

} // namespace

int main(int argc, char *argv[]) {
    // Without a display a screenshot is rendered off screen.
    if (wantsScreenshot(argc, argv) && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QCoreApplication::setApplicationName(QStringLiteral("vktl_demo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VKTL_DEMO_VERSION));

    QCommandLineParser parser;
    // "-reverse" and other Qt options must not read as short options run together (-v).
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(
        QStringLiteral("Shows the vkTreeList control filled with a directory tree, or with a "
                       "built-in organisation chart when no directory is given."));
    parser.addHelpOption();
    parser.addVersionOption();
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
    const QCommandLineOption paletteOption(
        QStringLiteral("palette"),
        QStringLiteral("Starts in the <look> palette: classic, application (the default) or dark."),
        QStringLiteral("look"));
    parser.addOption(paletteOption);
    parser.addPositionalArgument(
        QStringLiteral("directory"),
        QStringLiteral("Directory to show, four levels deep, at most 32767 rows."),
        QStringLiteral("[directory]"));
    if (asksForInformation(parser, argc, argv)) {
        // A core application needs no window system; process() prints and exits.
        QCoreApplication information(argc, argv);
        parser.process(information);
    }

    QApplication app(argc, argv);
    parser.process(app);

    DemoTable table;
    qsizetype found = 0;
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
        table = DirectoryReader().read(arguments.first(), &found);
    }
    const qint64 readTime = clock.elapsed();

    HostContainer host; // declared before the window: the control uses it until it is destroyed
    DemoWindow window(host, std::move(table));
    window.resize(900, 600);
    const QString look = parser.value(paletteOption);
    if (look == QLatin1String("classic"))
        window.applyLook(DemoWindow::Look::Classic);
    else if (look == QLatin1String("dark"))
        window.applyLook(DemoWindow::Look::Dark);
    else if (!look.isEmpty() && look != QLatin1String("application"))
        parser.showHelp(2);
    window.show();
    window.showcaseSelection();
    if (!arguments.isEmpty())
        window.statusBar()->showMessage(
            DirectoryReader::summary(window.tree()->Rows(), found, readTime), 8000);

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
    window.updateStatus();
    if (!window.grab().toImage().save(path, "PNG")) {
        std::fprintf(stderr, "vktl_demo: cannot write %s\n", qPrintable(path));
        return 1;
    }
    std::printf("Screenshot written to %s\n", qPrintable(QFileInfo(path).absoluteFilePath()));
    return 0;
}
