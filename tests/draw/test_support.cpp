// Colours, fonts, pictures, unit conversion and the image list.
#include "BuiltinPictures.h"
#include "ScaleConverter.h"
#include "StdFont.h"
#include "SystemColors.h"
#include "TreeListError.h"
#include "lsImageList.h"

#include <QFontInfo>
#include <gtest/gtest.h>

TEST(SystemColors, TranslationKeepsByteOrderAndFixedScheme) {
    const std::pair<OleColor, QRgb> cases[] = {
        {0x00000000, qRgb(0, 0, 0)},       {0x000000FF, qRgb(255, 0, 0)},
        {0x00FF0000, qRgb(0, 0, 255)},     {0x00123456, qRgb(0x56, 0x34, 0x12)},
        {0x80000005, qRgb(255, 255, 255)}, {0x80000008, qRgb(0, 0, 0)},
        {0x8000000F, qRgb(212, 208, 200)}, {0x80000010, qRgb(128, 128, 128)},
        {0x80000014, qRgb(255, 255, 255)}, {0x80000015, qRgb(64, 64, 64)},
        {0x8000000D, qRgb(10, 36, 106)},   {0x80000019, qRgb(0, 0, 0)},
        {0x8000001F, qRgb(0, 0, 0)},       {0xFFFFFFFF, qRgb(0, 0, 0)},
    };
    for (const auto &[ole, rgb] : cases)
        EXPECT_EQ(oleTranslateColor(ole), rgb) << std::hex << ole;
    EXPECT_EQ(oleFromRgb(qRgb(0x56, 0x34, 0x12)), 0x00123456u);
    EXPECT_EQ(sysColor(-1), qRgb(0, 0, 0));
}

TEST(StdFont, SharedChangesAndScreenIndependentSize) {
    auto font = std::make_shared<StdFont>();
    const StdFontPtr other = font;
    EXPECT_EQ(font->qfont().pixelSize(), 11); // 8 points at 96 dpi
    EXPECT_EQ(QFontInfo(font->qfont()).family(), "DejaVu Sans");
    other->setBold(true);
    other->setSize(12);
    other->setSize(-3);
    EXPECT_TRUE(font->qfont().bold());
    EXPECT_EQ(font->qfont().pixelSize(), 16);
}

TEST(Pictures, SizesConversionAndBuiltins) {
    const StdPicture sixteen(QImage(16, 9, QImage::Format_ARGB32));
    EXPECT_EQ(sixteen.Width(), 423);
    EXPECT_EQ(sixteen.Height(), 238);
    EXPECT_EQ(sixteen.image().format(), QImage::Format_RGB32);
    EXPECT_EQ(StdPicture(QImage()).Width(), 0);
    EXPECT_EQ(StdPicture::fromFile("/nonexistent.png"), nullptr);

    const ScaleConverter scale;
    EXPECT_DOUBLE_EQ(scale.ScaleX(1440, vbTwips, vbPixels), 96);
    EXPECT_DOUBLE_EQ(scale.ScaleY(96, vbPixels, vbUser), 1440);
    EXPECT_DOUBLE_EQ(scale.ScaleY(423, vbHimetric, vbPixels), 423 * 96 / 2540.0);
    EXPECT_DOUBLE_EQ(scale.ScaleY(1, vbCharacters, vbTwips), 240);
    EXPECT_THROW(scale.ScaleX(1, 9, vbPixels), TreeListError);

    for (int n = 101; n <= 106; ++n) {
        const StdPicturePtr p = builtinPicture(n);
        ASSERT_NE(p, nullptr) << n;
        EXPECT_EQ(p->pixelWidth(), n <= 102 ? 9 : 16) << n;
        EXPECT_EQ(p->pixelHeight(), p->pixelWidth()) << n;
    }
    EXPECT_EQ(builtinPicture(100), nullptr);
    EXPECT_EQ(builtinPicture(107), nullptr);
    EXPECT_EQ(builtinPicture(101), builtinPicture(101));

    // The boxes: grey frame, white inside, a black 5-pixel sign through the centre.
    for (int n : {101, 102}) {
        const QImage &box = builtinPicture(n)->image();
        for (int y = 0; y < 9; ++y) {
            for (int x = 0; x < 9; ++x) {
                const bool frame = x == 0 || y == 0 || x == 8 || y == 8;
                const bool bar = y == 4 && x >= 2 && x <= 6;
                const bool post = n == 102 && x == 4 && y >= 2 && y <= 6;
                const QRgb want = frame         ? qRgb(128, 128, 128)
                                  : bar || post ? qRgb(0, 0, 0)
                                                : qRgb(255, 255, 255);
                EXPECT_EQ(box.pixel(x, y), want) << n << " at " << x << "," << y;
            }
        }
    }
}

TEST(lsImageList, LookupByIndexAndKey) {
    lsImageList list;
    const auto a = std::make_shared<StdPicture>(QImage(4, 4, QImage::Format_RGB32));
    const auto b = std::make_shared<StdPicture>(QImage(8, 8, QImage::Format_RGB32));
    EXPECT_EQ(list.Add("Folder", a), 1);
    EXPECT_EQ(list.Add("", b), 2);
    EXPECT_EQ(list.ListImages("fOLDER").Picture, a);
    EXPECT_EQ(list.ListImages(2).Picture, b);
    EXPECT_EQ(list.ListImages(1.0).Key, "Folder");

    const auto raises = [&](const QVariant &key) {
        try {
            list.ListImages(key);
        } catch (const TreeListError &e) {
            return e.number();
        }
        return 0;
    };
    for (const QVariant &key : {QVariant("missing"), QVariant(3), QVariant(0), QVariant(QString())})
        EXPECT_EQ(raises(key), 5) << key.toString().toStdString();
    EXPECT_EQ(raises(QVariant(true)), 13);
    EXPECT_EQ(list.pictureOrNull("missing"), nullptr);
    EXPECT_EQ(list.pictureOrNull("folder"), a);
    EXPECT_THROW(list.Add("FOLDER", b), TreeListError); // keys are unique in any letter case
    EXPECT_THROW(list.Add("null", nullptr), TreeListError);
    EXPECT_EQ(list.Count(), 2);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.pictureOrNull(1), nullptr);
}
