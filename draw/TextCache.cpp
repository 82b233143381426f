#include "TextCache.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

namespace {

// Texts kept before the cache starts afresh: a few screens of captions.
constexpr qsizetype MaxTexts = 8192;
// Fonts kept at the same time (the control's font and its bold twin, an editor's...).
constexpr qsizetype MaxFonts = 8;

} // namespace

TextCache &TextCache::instance() {
    static TextCache cache;
    return cache;
}

TextCache::FontEntry &TextCache::entry(const QFont &font) {
    if (m_last >= 0 && m_fonts[m_last].font == font)
        return m_fonts[m_last];
    for (qsizetype i = 0; i < m_fonts.size(); ++i) {
        if (m_fonts[i].font == font) {
            m_last = i;
            return m_fonts[i];
        }
    }
    if (m_fonts.size() >= MaxFonts) {
        m_fonts.clear();
        m_size = 0;
    }
    const QFontMetrics fm(font);
    m_fonts.append(FontEntry{font, fm.height(), fm.ascent(), {}});
    m_last = m_fonts.size() - 1;
    return m_fonts.last();
}

TextCache::Shaped &TextCache::shaped(FontEntry &fontEntry, const QString &text) {
    auto it = fontEntry.texts.find(text);
    if (it != fontEntry.texts.end())
        return *it;
    if (m_size >= MaxTexts) {
        for (FontEntry &f : m_fonts)
            f.texts.clear();
        m_size = 0;
    }
    ++m_size;
    return *fontEntry.texts.insert(text, Shaped{});
}

void TextCache::clear() {
    m_fonts.clear();
    m_size = 0;
    m_last = -1;
}

qint32 TextCache::width(const QFont &font, const QString &text) {
    Shaped &s = shaped(entry(font), text);
    if (s.width < 0)
        s.width = QFontMetrics(font).horizontalAdvance(text);
    return s.width;
}

qint32 TextCache::height(const QFont &font) {
    return entry(font).height;
}

qint32 TextCache::ascent(const QFont &font) {
    return entry(font).ascent;
}

const QFont &TextCache::scaled(const QFont &font, qreal ratio) {
    if (ratio != m_scaledBy || !(font == m_scaledFrom)) {
        m_scaledFrom = font;
        m_scaledBy = ratio;
        m_scaled = font;
        if (font.pixelSize() > 0)
            m_scaled.setPixelSize(qRound(font.pixelSize() * ratio));
        else
            m_scaled.setPointSizeF(font.pointSizeF() * ratio);
    }
    return m_scaled;
}

void TextCache::draw(QPainter &painter, int x, int baseline, const QFont &font,
                     const QString &text) {
    FontEntry &fontEntry = entry(font);
    Shaped &s = shaped(fontEntry, text);
    if (!s.shaped) {
        QTextLayout layout(text, font);
        QTextOption option;
        option.setWrapMode(QTextOption::NoWrap);
        layout.setTextOption(option);
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setLineWidth(1e9);
        layout.endLayout();
        // The runs are placed with their baseline at y 0.
        s.runs = layout.glyphRuns();
        const qreal lineAscent = line.ascent();
        for (QGlyphRun &run : s.runs) {
            QList<QPointF> positions = run.positions();
            for (QPointF &p : positions)
                p.ry() -= lineAscent;
            run.setPositions(positions);
        }
        s.shaped = true;
    }
    for (const QGlyphRun &run : s.runs)
        painter.drawGlyphRun(QPointF(x, baseline), run);
}
