#pragma once
// The font object a host and the control share: name, size and style. Holders keep it by shared
// pointer, so a change made through one holder (painting bolds the control's font for a cell) is
// seen by all of them.

#include "vkTreeListExport.h"
#include <QFont>
#include <QString>
#include <QVariant>
#include <memory>

class VKTL_EXPORT StdFont {
public:
    // Makes the default font: "DejaVu Sans", 8 points, no style.
    StdFont();
    // Makes a font of the given name and size in points.
    StdFont(const QString &name, double size);

    // The face name.
    const QString &Name() const { return m_Name; }
    void setName(const QString &v);
    // The size in points (72 per inch); values of 0 or below are ignored.
    double Size() const { return m_Size; }
    void setSize(double v);
    // Bold weight.
    bool Bold() const { return m_Bold; }
    void setBold(bool v);
    // Italic style.
    bool Italic() const { return m_Italic; }
    void setItalic(bool v);
    // Underlined text.
    bool Underline() const { return m_Underline; }
    void setUnderline(bool v);
    // Struck-through text.
    bool Strikethrough() const { return m_Strikethrough; }
    void setStrikethrough(bool v);

    // The font to measure and draw with: its pixel size is the point size at 96 dots per inch
    // (rounded), hinted and without sub-pixel colours, so text is the same on every screen.
    const QFont &qfont() const;

private:
    void rebuild();

    QString m_Name;
    double m_Size;
    bool m_Bold = false;
    bool m_Italic = false;
    bool m_Underline = false;
    bool m_Strikethrough = false;
    QFont m_qfont;
};

using StdFontPtr = std::shared_ptr<StdFont>;

// A font in its saved form (a map of Name, Size, Bold, Italic, Underline, Strikethrough); no
// font gives an empty value.
VKTL_EXPORT QVariant stdFontToVariant(const StdFontPtr &font);
// Builds a font from its saved form; a member of the wrong type raises type mismatch.
VKTL_EXPORT StdFontPtr stdFontFromVariant(const QVariantMap &map);
// The font as a QFont in points (family, size, style), the form Qt's property editors use.
VKTL_EXPORT QFont stdFontToQFont(const StdFontPtr &font);
// A new font object from a QFont (a size in pixels is taken at 96 dots per inch).
VKTL_EXPORT StdFontPtr stdFontFromQFont(const QFont &font);
