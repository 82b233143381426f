#include "GoldenImage.h"

#include <QDir>
#include <gtest/gtest.h>

void expectMatchesGolden(const QImage &actualImage, const QString &name) {
    const QImage actual = actualImage.convertToFormat(QImage::Format_RGB32);
    const QString golden = QStringLiteral(VKTL_GOLDEN_DIR "/") + name + ".png";
    if (qEnvironmentVariable("VKTL_UPDATE_GOLDEN") == "1") {
        QDir().mkpath(QStringLiteral(VKTL_GOLDEN_DIR));
        ASSERT_TRUE(actual.save(golden, "PNG")) << golden.toStdString();
        return;
    }
    const QImage expected = QImage(golden).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(expected.isNull())
        << "missing " << golden.toStdString() << " (run once with VKTL_UPDATE_GOLDEN=1)";
    const bool sameSize = expected.size() == actual.size();
    QImage diff(actual.size(), QImage::Format_RGB32);
    qint64 differing = sameSize ? 0 : qint64(actual.width()) * actual.height();
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const QRgb a = actual.pixel(x, y);
            const bool same = expected.valid(x, y) && expected.pixel(x, y) == a;
            const int grey = 192 + qGray(a) / 4;
            diff.setPixel(x, y, same ? qRgb(grey, grey, grey) : qRgb(255, 0, 0));
            if (!same && sameSize)
                ++differing;
        }
    }
    if (differing == 0)
        return;
    const QString dir = QStringLiteral(VKTL_ARTIFACT_DIR);
    QDir().mkpath(dir);
    const QString out = dir + "/" + name;
    actual.save(out + "-actual.png", "PNG");
    diff.save(out + "-diff.png", "PNG");
    ADD_FAILURE() << name.toStdString() << ": " << differing << " pixels differ; see "
                  << out.toStdString() << "-actual.png and -diff.png";
}
