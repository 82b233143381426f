#include "DemoPictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

QImage blank(const QColor &background) {
    QImage image(DemoPictures::Size, DemoPictures::Size, QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    return image;
}

// Head and shoulders of one figure, its top-left corner at (x, y), about 9 x 13 pixels.
void drawFigure(QPainter &p, qreal x, qreal y, const QColor &shirt) {
    QPainterPath body;
    body.moveTo(x, y + 13);
    body.lineTo(x, y + 10.5);
    body.cubicTo(x, y + 7.5, x + 2, y + 6.5, x + 4.5, y + 6.5);
    body.cubicTo(x + 7, y + 6.5, x + 9, y + 7.5, x + 9, y + 10.5);
    body.lineTo(x + 9, y + 13);
    body.closeSubpath();
    p.setPen(QPen(shirt.darker(150), 1));
    p.setBrush(shirt);
    p.drawPath(body);
    p.setPen(QPen(QColor(0x9a, 0x6b, 0x45), 1));
    p.setBrush(QColor(0xf4, 0xc7, 0x9c));
    p.drawEllipse(QRectF(x + 2, y, 5, 5.5));
}

} // namespace

QImage DemoPictures::folder(const QColor &background) {
    QImage image = blank(background);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor edge(0xb0, 0x7d, 0x12);
    // The tab and back wall, then the front flap a shade lighter.
    QPainterPath back;
    back.moveTo(1.5, 3.5);
    back.lineTo(6, 3.5);
    back.lineTo(7.5, 5);
    back.lineTo(14.5, 5);
    back.lineTo(14.5, 13.5);
    back.lineTo(1.5, 13.5);
    back.closeSubpath();
    p.setPen(QPen(edge, 1));
    p.setBrush(QColor(0xe8, 0xb0, 0x30));
    p.drawPath(back);
    QLinearGradient front(0, 6, 0, 14);
    front.setColorAt(0, QColor(0xff, 0xe0, 0x8a));
    front.setColorAt(1, QColor(0xf5, 0xbf, 0x42));
    p.setBrush(front);
    p.drawRoundedRect(QRectF(1.5, 6.5, 13, 7), 1, 1);
    return image;
}

QImage DemoPictures::file(const QColor &background) {
    QImage image = blank(background);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor edge(0x70, 0x78, 0x88);
    // A page with its top-right corner folded over.
    QPainterPath page;
    page.moveTo(3.5, 1.5);
    page.lineTo(9.5, 1.5);
    page.lineTo(13.5, 5.5);
    page.lineTo(13.5, 14.5);
    page.lineTo(3.5, 14.5);
    page.closeSubpath();
    QLinearGradient paper(0, 1, 0, 15);
    paper.setColorAt(0, Qt::white);
    paper.setColorAt(1, QColor(0xe4, 0xe9, 0xf1));
    p.setPen(QPen(edge, 1));
    p.setBrush(paper);
    p.drawPath(page);
    QPainterPath fold;
    fold.moveTo(9.5, 1.5);
    fold.lineTo(9.5, 5.5);
    fold.lineTo(13.5, 5.5);
    p.setBrush(QColor(0xc8, 0xd0, 0xdc));
    p.drawPath(fold);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QColor(0x8c, 0xa6, 0xd0));
    for (int y = 7; y <= 12; y += 2)
        p.drawLine(5, y, y == 12 ? 9 : 11, y);
    return image;
}

QImage DemoPictures::person(const QColor &background) {
    QImage image = blank(background);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    drawFigure(p, 3.5, 1.5, QColor(0x3a, 0x7b, 0xd5));
    return image;
}

QImage DemoPictures::team(const QColor &background) {
    QImage image = blank(background);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    // A colleague behind and to the right, the lead in front.
    drawFigure(p, 6.5, 0.5, QColor(0x5c, 0xa8, 0x5c));
    drawFigure(p, 0.5, 2.5, QColor(0x2f, 0x8f, 0x6f));
    return image;
}

lsImageListPtr DemoPictures::makeImageList(const QColor &background) {
    auto list = std::make_shared<lsImageList>();
    fill(*list, background);
    return list;
}

void DemoPictures::fill(lsImageList &list, const QColor &background) {
    list.Clear();
    list.Add(QStringLiteral("folder"), std::make_shared<StdPicture>(folder(background)));
    list.Add(QStringLiteral("file"), std::make_shared<StdPicture>(file(background)));
    list.Add(QStringLiteral("person"), std::make_shared<StdPicture>(person(background)));
    list.Add(QStringLiteral("team"), std::make_shared<StdPicture>(team(background)));
}
