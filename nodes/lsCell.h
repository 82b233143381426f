#pragma once
// One cell of a row: its text, picture, colours, alignment and the pixel box that layout and
// painting give it. Plain stored values with no range checks; a host may keep a cell after it
// left its row (cells are held by shared pointer).

#include "SelectionPuts.h"
#include "TreeEdits.h"
#include "TreeListError.h"
#include "TreeListTypes.h"
#include "vkTreeListExport.h"

#include <QString>
#include <QVariant>
#include <memory>

class VKTL_EXPORT lsCell {
public:
    // Makes a cell with every field at its default.
    lsCell() = default;

    // Resets every field to its default (Width 80, Index 1, Appearance Flat, white background...).
    void Class_Initialize();

    // Pixel height, set by layout.
    qint32 Height() const { return m_layout ? m_layout->height : 0; }
    void setHeight(qint32 v) {
        TreeEdits::note();
        layoutFor(v != 0).height = v;
    }
    // Pixel x of the cell's left edge within its row.
    qint32 Left() const { return m_leftWide ? m_layout->left : m_left; }
    void setLeft(qint32 v) {
        TreeEdits::note();
        m_leftWide = !fitsNarrow(v);
        if (m_leftWide)
            layoutFor(true).left = v;
        else
            m_left = qint16(v);
    }
    // Pixel y of the cell, set by layout.
    qint32 Top() const { return m_layout ? m_layout->top : 0; }
    void setTop(qint32 v) {
        TreeEdits::note();
        layoutFor(v != 0).top = v;
    }
    // Pixel width: the column width.
    qint32 Width() const { return m_widthWide ? m_layout->width : m_width; }
    void setWidth(qint32 v) {
        TreeEdits::note();
        m_widthWide = !fitsNarrow(v);
        if (m_widthWide)
            layoutFor(true).width = v;
        else
            m_width = qint16(v);
    }
    // Whether the cell is shown.
    bool Visible() const { return m_Visible; }
    void setVisible(bool v) {
        TreeEdits::note();
        m_Visible = v;
    }
    // The cell's text.
    const QString &Title() const { return m_Title; }
    void setTitle(const QString &v) {
        TreeEdits::note();
        m_Title = v;
    }
    // Free user data.
    const QVariant &Tag() const {
        return m_layout && m_layout->values ? m_layout->values->tag : kEmpty;
    }
    void setTag(const QVariant &v) {
        TreeEdits::note();
        valuesFor(v).tag = v;
    }
    // The key the cell is stored under in its `lsCells`.
    const QVariant &Key() const {
        return m_layout && m_layout->values ? m_layout->values->key : kEmpty;
    }
    void setKey(const QVariant &v) {
        TreeEdits::note();
        valuesFor(v).key = v;
    }
    // The picture: a key or index into the control's image list ("" for none).
    const QVariant &Icon() const {
        return m_layout && m_layout->values ? m_layout->values->icon : kEmpty;
    }
    void setIcon(const QVariant &v) {
        TreeEdits::note();
        valuesFor(v).icon = v;
    }
    // Whether the text is drawn bold.
    bool Bold() const { return m_Bold; }
    void setBold(bool v) {
        TreeEdits::note();
        m_Bold = v;
    }
    // Text colour (OLE colour).
    OleColor Color() const { return m_Color; }
    void setColor(OleColor v) {
        TreeEdits::note();
        m_Color = v;
    }
    // Background colour (OLE colour).
    OleColor BackColor() const { return m_BackColor; }
    void setBackColor(OleColor v) {
        TreeEdits::note();
        m_BackColor = v;
    }
    // Horizontal alignment of the text (`lsAlignmentConstants`).
    qint32 Alignment() const { return m_layout ? m_layout->alignment : lsAlignLeftJustify; }
    void setAlignment(qint32 v) {
        TreeEdits::note();
        layoutFor(v != lsAlignLeftJustify).alignment = v;
    }
    // Horizontal offset of the text and fill in pixels (the tree part in the first column).
    qint32 Xoffset() const { return m_layout ? m_layout->xoffset : 0; }
    void setXoffset(qint32 v) {
        TreeEdits::note();
        layoutFor(v != 0).xoffset = v;
    }
    // The cell's column number, as given when it was added. 16-bit: a put outside
    // -32768..32767 raises overflow and changes nothing.
    qint16 Index() const { return m_Index; }
    void setIndex(qint32 v) {
        const qint16 index = toInt16(v);
        TreeEdits::note();
        m_Index = index;
    }
    // Frame style (`Appearances` value).
    qint32 Appearance() const { return m_layout ? m_layout->appearance : kFlat; }
    void setAppearance(qint32 v) {
        TreeEdits::note();
        layoutFor(v != kFlat).appearance = v;
    }
    // Whether this is the selected cell.
    bool Selected() const { return m_Selected; }
    void setSelected(bool v) {
        TreeEdits::note();
        if (v)
            SelectionPuts::note();
        m_Selected = v;
    }

private:
    friend class lsCells;
    friend class lsNodes;
    static constexpr qint32 kFlat = static_cast<qint32>(Appearances::Flat);
    static const QVariant kEmpty;

    // The variant fields, made only once one is given a value other than empty text.
    struct Values {
        QVariant icon = kEmpty, key = kEmpty, tag = kEmpty;
    };
    // Fields that most cells keep at their defaults, made on the first other value; also the
    // left edge and width of a cell whose value does not fit in 16 bits.
    struct Layout {
        qint32 top = 0, height = 0, xoffset = 0, alignment = lsAlignLeftJustify, appearance = kFlat;
        qint32 left = 0, width = 0;
        std::unique_ptr<Values> values;
    };
    // Pixel edges and widths almost always fit in 16 bits; keeping them that narrow in the cell
    // (with the rare wider value in the layout block) keeps a cell at 48 bytes.
    static bool fitsNarrow(qint32 v) { return v >= -32768 && v <= 32767; }
    // The layout block to write to; a write of a default value into no block goes to a scratch.
    Layout &layoutFor(bool needed);
    Values &valuesFor(const QVariant &value);

    QString m_Title;
    std::unique_ptr<Layout> m_layout;
    OleColor m_Color = 0;
    OleColor m_BackColor = 0xFFFFFF;
    qint16 m_left = 0;
    qint16 m_width = 80;
    qint16 m_Index = 1;
    bool m_leftWide : 1 = false;
    bool m_widthWide : 1 = false;
    bool m_Bold : 1 = false;
    bool m_Visible : 1 = true;
    bool m_Selected : 1 = false;
    // Taken out of its `lsCells` while a host still held it: it keeps its slot but no position.
    bool m_removed : 1 = false;
    // The slot of an `lsCells` holds this cell.
    bool m_inUse : 1 = false;
    // Handed out by a collection no shared pointer holds: such pointers cannot be counted, so
    // the cell never moves.
    bool m_handedOut : 1 = false;
};

using lsCellPtr = std::shared_ptr<lsCell>;
