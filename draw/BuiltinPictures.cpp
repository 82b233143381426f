#include "BuiltinPictures.h"

#include <QString>
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
