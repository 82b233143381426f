#pragma once
// One cell of a row: its text, picture, colours, alignment and the pixel box that layout and
// painting give it. Plain stored values with no range checks; a host may keep a cell after it
// left its row (cells are held by shared pointer).

#include "TreeListTypes.h"

#include <QString>
#include <QVariant>
#include <memory>

class lsCell {
public:
    // Makes a cell with every field at its default.
    lsCell();

    // Resets every field to its default (Width 80, Index 1, Appearance Flat, white background...).
    void Class_Initialize();

    // Pixel height, set by layout.
    qint32 Height() const { return m_Height; }
    void setHeight(qint32 v) { m_Height = v; }
    // Pixel x of the cell's left edge within its row.
    qint32 Left() const { return m_Left; }
    void setLeft(qint32 v) { m_Left = v; }
    // Pixel y of the cell, set by layout.
    qint32 Top() const { return m_Top; }
    void setTop(qint32 v) { m_Top = v; }
    // Pixel width: the column width.
    qint32 Width() const { return m_Width; }
    void setWidth(qint32 v) { m_Width = v; }
    // Whether the cell is shown.
    bool Visible() const { return m_Visible; }
    void setVisible(bool v) { m_Visible = v; }
    // The cell's text.
    const QString &Title() const { return m_Title; }
    void setTitle(const QString &v) { m_Title = v; }
    // Free user data.
    const QVariant &Tag() const { return m_Tag; }
    void setTag(const QVariant &v) { m_Tag = v; }
    // The key the cell is stored under in its `lsCells`.
    const QVariant &Key() const { return m_Key; }
    void setKey(const QVariant &v) { m_Key = v; }
    // The picture: a key or index into the control's image list ("" for none).
    const QVariant &Icon() const { return m_Icon; }
    void setIcon(const QVariant &v) { m_Icon = v; }
    // Whether the text is drawn bold.
    bool Bold() const { return m_Bold; }
    void setBold(bool v) { m_Bold = v; }
    // Text colour (OLE colour).
    OleColor Color() const { return m_Color; }
    void setColor(OleColor v) { m_Color = v; }
    // Background colour (OLE colour).
    OleColor BackColor() const { return m_BackColor; }
    void setBackColor(OleColor v) { m_BackColor = v; }
    // Horizontal alignment of the text (`lsAlignmentConstants`).
    qint32 Alignment() const { return m_Alignment; }
    void setAlignment(qint32 v) { m_Alignment = v; }
    // Horizontal offset of the text and fill in pixels (the tree part in the first column).
    qint32 Xoffset() const { return m_Xoffset; }
    void setXoffset(qint32 v) { m_Xoffset = v; }
    // The cell's column number, as given when it was added.
    qint16 Index() const { return m_Index; }
    void setIndex(qint16 v) { m_Index = v; }
    // Frame style (`Appearances` value).
    qint32 Appearance() const { return m_Appearance; }
    void setAppearance(qint32 v) { m_Appearance = v; }
    // Whether this is the selected cell.
    bool Selected() const { return m_Selected; }
    void setSelected(bool v) { m_Selected = v; }

private:
    qint32 m_Alignment;
    bool m_Bold;
    QVariant m_Icon;
    QVariant m_Key;
    QVariant m_Tag;
    QString m_Title;
    bool m_Visible;
    qint32 m_Top;
    qint32 m_Left;
    qint32 m_Height;
    qint32 m_Width;
    OleColor m_Color;
    OleColor m_BackColor;
    qint32 m_Xoffset;
    qint16 m_Index;
    qint32 m_Appearance;
    bool m_Selected;
};

using lsCellPtr = std::shared_ptr<lsCell>;
