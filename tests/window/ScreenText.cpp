// screen_text: takes a screenshot of the X screen and tells whether a text, drawn as the tree
// list draws a cell's text (its default font, window text on window background), is on it.
//
//   screen_text [--save FILE] [--absent] TEXT
//
// Exit status 0 when the screen is as asked (the text there, or with --absent not there), 1
// when not, 2 on a usage or screenshot error. The search is for the exact pixels the control's
// own text drawing gives, so it needs no OCR and cannot match a different text.

#include "OffScreenDC.h"
#include "StdFont.h"
#include "SystemColors.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <cstdio>

namespace {

// The text as the control draws it, cropped to the box around its ink.
QImage renderedText(const QString &text) {
    const OleColor back = 0x80000005, fore = 0x80000008; // window background and text
    OffScreenDC dc;
    dc.Initialize(nullptr, 40 + 12 * int(text.size()), 40, back, fore, std::make_shared<StdFont>());
    dc.DrawText(4, 4, text, fore, back);
    const QImage image = dc.hDC()->convertToFormat(QImage::Format_RGB32);
    const QRgb background = image.pixel(0, 0);
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != background)
                ink |= QRect(x, y, 1, 1);
    return image.copy(ink);
}

bool near(QRgb a, QRgb b) {
    constexpr int tolerance = 8;
    return std::abs(qRed(a) - qRed(b)) <= tolerance &&
           std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

// Where the template lies in the screenshot, pixel for pixel, or a null point.
std::optional<QPoint> find(const QImage &screen, const QImage &pattern) {
    for (int y = 0; y + pattern.height() <= screen.height(); ++y)
        for (int x = 0; x + pattern.width() <= screen.width(); ++x) {
            bool same = true;
            for (int py = 0; same && py < pattern.height(); ++py) {
                const auto *row = reinterpret_cast<const QRgb *>(screen.constScanLine(y + py));
                const auto *want = reinterpret_cast<const QRgb *>(pattern.constScanLine(py));
                for (int px = 0; same && px < pattern.width(); ++px)
                    same = near(row[x + px], want[px]);
            }
            if (same)
                return QPoint(x, y);
        }
    return std::nullopt;
}

} // namespace

int main(int argc, char *argv[]) {
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption save(QStringLiteral("save"),
                                  QStringLiteral("Also writes the screenshot to <file>."),
                                  QStringLiteral("file"));
    const QCommandLineOption absent(QStringLiteral("absent"),
                                    QStringLiteral("Succeeds when the text is not there."));
    parser.addOptions({save, absent});
    parser.addPositionalArgument(QStringLiteral("text"), QStringLiteral("The text to look for."));
    parser.process(app);
    if (parser.positionalArguments().size() != 1) {
        std::fprintf(stderr, "usage: screen_text [--save FILE] [--absent] TEXT\n");
        return 2;
    }
    const QString text = parser.positionalArguments().first();

    QScreen *screen = QGuiApplication::primaryScreen();
    const QImage shot =
        screen ? screen->grabWindow(0).toImage().convertToFormat(QImage::Format_RGB32) : QImage();
    if (shot.isNull()) {
        std::fprintf(stderr, "screen_text: no screenshot of the screen\n");
        return 2;
    }
    if (parser.isSet(save) && !shot.save(parser.value(save), "PNG")) {
        std::fprintf(stderr, "screen_text: cannot write %s\n", qPrintable(parser.value(save)));
        return 2;
    }
    const std::optional<QPoint> at = find(shot, renderedText(text));
    if (at)
        std::printf("\"%s\" at %d,%d\n", qPrintable(text), at->x(), at->y());
    else
        std::printf("\"%s\" not on the screen\n", qPrintable(text));
    return at.has_value() == parser.isSet(absent) ? 1 : 0;
}
