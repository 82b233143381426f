// Numbers under digit-place pictures, as the version text and the timing report write them.

#include "NumberPicture.h"

#include <gtest/gtest.h>

TEST(NumberPictureTest, ZerosAlwaysShownHashesOnlyWhenSignificant) {
    const std::tuple<double, const char *, const char *> cases[] = {
        // clang-format off
        // Integer places: padded to the leftmost "0", never cut.
        {2, "00", "02"}, {123, "00", "123"}, {15, "0###", "0015"}, {0, "0###", "0000"},
        {12345, "0###", "12345"}, {7, "#", "7"}, {0.5, "#.##", ".5"},
        // Fraction places: rounded to all places, kept up to the rightmost "0".
        {0, "0.##0 sec ", "0.000 sec "}, {1.25, "0.##0 sec ", "1.250 sec "},
        {0.0625, "0.##0", "0.063"}, {2.5, "0", "3"}, {1.5, "0.##", "1.5"}, {1, "0.##", "1."},
        {1.23456789, "0.#0##", "1.2346"}, {1.2, "0.#0##", "1.20"}, {0.1f, "0.######0", "0.1000000"},
        {45678.125, "0.######0 sec ", "45678.1250000 sec "},
        // Signs, and text around the places.
        {-2.25, "0.0", "-2.3"}, {-0.0001, "0.00", "0.00"}, {3, "v0 of ", "v3 of "},
        // clang-format on
    };
    for (const auto &[value, picture, expected] : cases)
        EXPECT_EQ(formatNumber(value, QString::fromLatin1(picture)).toStdString(), expected)
            << value << " under \"" << picture << '"';
}
