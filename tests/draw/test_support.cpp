// Colours, fonts, pictures, unit conversion and the image list.
#include "BuiltinPictures.h"
#include "ErrorOf.h"
#include "ScaleConverter.h"
#include "StdFont.h"
#include "SystemColors.h"
#include "lsImageList.h"

#include <QFontInfo>
#include <gtest/gtest.h>

TEST(SystemColors, TranslationKeepsByteOrderAndFixedScheme) {
    // Byte order, one system colour, and indexes past the scheme.
    const std::pair<OleColor, QRgb> cases[] = {{0x00123456, qRgb(0x56, 0x34, 0x12)},
                                               {0x8000000F, qRgb(212, 208, 200)},
                                               {0x8000001F, qRgb(0, 0, 0)},
                                               {0xFFFFFFFF, qRgb(0, 0, 0)}};
    for (const auto &[ole, rgb] : cases)
        EXPECT_EQ(oleTranslateColor(ole), rgb) << std::hex << ole;
    EXPECT_EQ(oleFromRgb(qRgb(0x56, 0x34, 0x12)), 0x00123456u);
    EXPECT_EQ(sysColor(-1), qRgb(0, 0, 0));
}

TEST(StdFont, ChangesReachTheFontAndSizeIsScreenIndependent) {
    StdFont font;
    EXPECT_EQ(font.qfont().pixelSize(), 11); // 8 points at 96 dpi
    EXPECT_EQ(QFontInfo(font.qfont()).family(), "DejaVu Sans");
    font.setBold(true);
    font.setSize(12);
    font.setSize(-3);
    EXPECT_TRUE(font.qfont().bold());
    EXPECT_EQ(font.qfont().pixelSize(), 16);
}

TEST(Pictures, SizesConversionAndBuiltins) {
    const StdPicture sixteen(QImage(16, 9, QImage::Format_ARGB32));
    EXPECT_EQ(std::tuple(sixteen.Width(), sixteen.Height(), sixteen.image().format()),
              std::tuple(423, 238, QImage::Format_RGB32));
    EXPECT_EQ(StdPicture(QImage()).Width(), 0);
    EXPECT_EQ(StdPicture::fromFile("/nonexistent.png"), nullptr);

    const ScaleConverter scale;
    EXPECT_DOUBLE_EQ(scale.ScaleX(1440, vbTwips, vbPixels), 96);
    EXPECT_DOUBLE_EQ(scale.ScaleY(96, vbPixels, vbUser), 1440);
    EXPECT_DOUBLE_EQ(scale.ScaleY(423, vbHimetric, vbPixels), 423 * 96 / 2540.0);
    EXPECT_DOUBLE_EQ(scale.ScaleY(1, vbCharacters, vbTwips), 240);
    EXPECT_THROW(scale.ScaleX(1, 9, vbPixels), TreeListError);

    // The pictures themselves are pinned by the "pictures" reference image.
    EXPECT_FALSE(builtinPicture(100) || builtinPicture(107));
    EXPECT_EQ(builtinPicture(101), builtinPicture(101));
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
    for (const QVariant &key : {QVariant("missing"), QVariant(3), QVariant(0), QVariant(QString())})
        EXPECT_EQ(errorOf([&] { list.ListImages(key); }), 5) << key.toString().toStdString();
    EXPECT_EQ(errorOf([&] { list.ListImages(true); }), 13);
    EXPECT_EQ(list.pictureOrNull("missing"), nullptr);
    EXPECT_EQ(list.pictureOrNull("folder"), a);
    EXPECT_THROW(list.Add("FOLDER", b), TreeListError); // keys are unique in any letter case
    EXPECT_THROW(list.Add("null", nullptr), TreeListError);
    EXPECT_EQ(list.Count(), 2);
    list.Clear();
    EXPECT_FALSE(list.Count() || list.pictureOrNull(1));
}
