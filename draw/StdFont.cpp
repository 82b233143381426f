#include "StdFont.h"

#include "TreeListError.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double DotsPerInch = 96.0;
constexpr double PointsPerInch = 72.0;

} // namespace

StdFont::StdFont() : StdFont(QStringLiteral("DejaVu Sans"), 8.0) {}

StdFont::StdFont(const QString &name, double size) : m_Name(name), m_Size(8.0) {
    if (size > 0.0 && std::isfinite(size))
        m_Size = size;
    rebuild();
}

void StdFont::setName(const QString &v) {
    m_Name = v;
    rebuild();
}

void StdFont::setSize(double v) {
    if (!(v > 0.0) || !std::isfinite(v))
        return;
    m_Size = v;
    rebuild();
}

void StdFont::setBold(bool v) {
    m_Bold = v;
    rebuild();
}

void StdFont::setItalic(bool v) {
    m_Italic = v;
    rebuild();
}

void StdFont::setUnderline(bool v) {
    m_Underline = v;
    rebuild();
}

void StdFont::setStrikethrough(bool v) {
    m_Strikethrough = v;
    rebuild();
}

const QFont &StdFont::qfont() const {
    return m_qfont;
}

void StdFont::rebuild() {
    QFont f(m_Name);
    // Very large sizes are capped so the font engine is never asked for absurd glyphs.
    const double pixels = std::round(m_Size * DotsPerInch / PointsPerInch);
    f.setPixelSize(static_cast<int>(std::clamp(pixels, 1.0, 4096.0)));
    f.setBold(m_Bold);
    f.setItalic(m_Italic);
    f.setUnderline(m_Underline);
    f.setStrikeOut(m_Strikethrough);
    // Advances add up like the classic text engine's (no pair kerning), and full hinting with
    // grey anti-aliasing keeps glyph shapes identical on every display.
    f.setKerning(false);
    f.setHintingPreference(QFont::PreferFullHinting);
    f.setStyleStrategy(QFont::NoSubpixelAntialias);
    m_qfont = f;
}

QVariant stdFontToVariant(const StdFontPtr &font) {
    if (!font)
        return QVariant();
    QVariantMap map;
    map.insert(QStringLiteral("Name"), font->Name());
    map.insert(QStringLiteral("Size"), font->Size());
    map.insert(QStringLiteral("Bold"), font->Bold());
    map.insert(QStringLiteral("Italic"), font->Italic());
    map.insert(QStringLiteral("Underline"), font->Underline());
    map.insert(QStringLiteral("Strikethrough"), font->Strikethrough());
    return map;
}

StdFontPtr stdFontFromVariant(const QVariantMap &map) {
    auto font = std::make_shared<StdFont>();
    const auto text = [&](const char *key, const QString &fallback) {
        const QVariant v = map.value(QLatin1String(key), fallback);
        if (v.typeId() != QMetaType::QString)
            throw TreeListError(TreeListError::TypeMismatch);
        return v.toString();
    };
    const auto flag = [&](const char *key) {
        const QVariant v = map.value(QLatin1String(key), false);
        if (v.typeId() != QMetaType::Bool)
            throw TreeListError(TreeListError::TypeMismatch);
        return v.toBool();
    };
    font->setName(text("Name", font->Name()));
    const QVariant size = map.value(QStringLiteral("Size"), font->Size());
    bool ok = false;
    const double points = size.toDouble(&ok);
    if (!ok || size.typeId() == QMetaType::QString || points <= 0)
        throw TreeListError(TreeListError::TypeMismatch);
    font->setSize(points);
    font->setBold(flag("Bold"));
    font->setItalic(flag("Italic"));
    font->setUnderline(flag("Underline"));
    font->setStrikethrough(flag("Strikethrough"));
    return font;
}

QFont stdFontToQFont(const StdFontPtr &font) {
    QFont result;
    if (!font)
        return result;
    result.setFamily(font->Name());
    result.setPointSizeF(font->Size());
    result.setBold(font->Bold());
    result.setItalic(font->Italic());
    result.setUnderline(font->Underline());
    result.setStrikeOut(font->Strikethrough());
    return result;
}

StdFontPtr stdFontFromQFont(const QFont &font) {
    const double points =
        font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * 72.0 / 96.0;
    auto result = std::make_shared<StdFont>(font.family(), points);
    result->setBold(font.bold());
    result->setItalic(font.italic());
    result->setUnderline(font.underline());
    result->setStrikethrough(font.strikeOut());
    return result;
}
