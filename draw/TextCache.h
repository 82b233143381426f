#pragma once
// Measures and shapes captions once per font. A frame draws the same few hundred captions again
// and again (and measures each twice: to fit it and to place it); shaping them is most of what a
// frame costs, so the results are kept. The cache is shared by every surface of the program (all
// run on the user-interface thread) and starts afresh when it grows past a bound, so memory stays
// small whatever the host shows.

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <QString>

class QPainter;

class TextCache {
public:
    // The program's cache.
    static TextCache &instance();

    // Advance width in pixels of `text` in `font`, as QFontMetrics::horizontalAdvance gives it.
    qint32 width(const QFont &font, const QString &text);
    // Height of a line and ascent in pixels, as QFontMetrics gives them.
    qint32 height(const QFont &font);
    qint32 ascent(const QFont &font);
    // Draws `text` with its baseline's left end at (x, baseline), with the painter's pen, as
    // QPainter::drawText would.
    void draw(QPainter &painter, int x, int baseline, const QFont &font, const QString &text);

    // `font` scaled by `ratio`: the font that sets text at that many device pixels per pixel.
    const QFont &scaled(const QFont &font, qreal ratio);

    // Drops every kept text and font (a host short of memory; tests that weigh the heap).
    void clear();

private:
    struct Shaped {
        qint32 width = -1;     // -1 until measured
        QList<QGlyphRun> runs; // empty until drawn once
        bool shaped = false;
    };
    struct FontEntry {
        QFont font;
        qint32 height = 0;
        qint32 ascent = 0;
        QHash<QString, Shaped> texts;
    };

    FontEntry &entry(const QFont &font);
    Shaped &shaped(FontEntry &fontEntry, const QString &text);

    QList<FontEntry> m_fonts;
    qsizetype m_last = -1; // the entry found last: frames ask for one font many times in a row
    qsizetype m_size = 0;  // texts held over all fonts
    // The font scaled last, its ratio and the result: a frame scales one font many times.
    QFont m_scaledFrom, m_scaled;
    qreal m_scaledBy = 0;
};
