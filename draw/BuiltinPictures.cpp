#include "BuiltinPictures.h"

#include <QString>
#include <algorithm>
#include <array>

namespace {

constexpr int FirstNumber = picMinusBox;
constexpr int LastNumber = picMarked;

// Resource file of each picture, in resource-number order.
constexpr std::array<const char *, 6> Files = {
    ":/vktl/minus-box.xpm",     ":/vktl/plus-box.xpm", ":/vktl/folder-open.xpm",
    ":/vktl/folder-closed.xpm", ":/vktl/leaf.xpm",     ":/vktl/marked.xpm",
};

} // namespace

StdPicturePtr builtinPicture(int resourceNumber) {
    if (resourceNumber < FirstNumber || resourceNumber > LastNumber)
        return nullptr;
    // Loaded on first use and kept for the life of the process, like resources of a module.
    static std::array<StdPicturePtr, Files.size()> cache;
    const auto slot = static_cast<size_t>(resourceNumber - FirstNumber);
    if (!cache[slot]) {
        QImage image(QString::fromLatin1(Files[slot]));
        if (image.isNull())
            return nullptr;
        cache[slot] = std::make_shared<StdPicture>(std::move(image));
    }
    return cache[slot];
}

StdPicturePtr paletteBox(int resourceNumber, const QPalette &palette) {
    if (resourceNumber != picMinusBox && resourceNumber != picPlusBox)
        return nullptr;
    const StdPicturePtr box = builtinPicture(resourceNumber);
    if (!box)
        return nullptr;
    // The box file's three colours, and what the palette makes of each.
    const std::array<std::pair<QRgb, QRgb>, 3> colours = {{
        {0xFF808080, palette.color(QPalette::Active, QPalette::Mid).rgb()},
        {0xFFFFFFFF, palette.color(QPalette::Active, QPalette::Base).rgb()},
        {0xFF000000, palette.color(QPalette::Active, QPalette::Text).rgb()},
    }};
    if (std::all_of(colours.begin(), colours.end(), [](auto c) { return c.first == c.second; }))
        return box;
    QImage image = box->image().convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            for (const auto &[from, to] : colours)
                if ((line[x] | 0xFF000000u) == from) {
                    line[x] = to | 0xFF000000u;
                    break;
                }
    }
    return std::make_shared<StdPicture>(std::move(image));
}
