#pragma once
// Where the tree part of one row is drawn: plus/minus box, tree lines, node picture and text
// start. `Refresh` fills every position for a row; painters and the hit test then read them.
// Vertical positions are absolute (they include the row's top); horizontal ones count from the
// left edge of the first column. Every position is also a plain writable property.

#include "ScaleSource.h"
#include "lsImageList.h"
#include "lsNode.h"
#include "vkTreeListExport.h"

class VKTL_EXPORT lsIdent {
public:
    // Left margin of the tree column.
    qint32 PosLeft() const { return m_PosLeft; }
    void setPosLeft(qint32 v) { m_PosLeft = v; }
    // Top margin.
    qint32 PosTop() const { return m_PosTop; }
    void setPosTop(qint32 v) { m_PosTop = v; }
    // Top of the plus/minus box.
    qint32 ExpY() const { return m_ExpY; }
    void setExpY(qint32 v) { m_ExpY = v; }
    // Left of the plus/minus box.
    qint32 ExpX() const { return m_ExpX; }
    void setExpX(qint32 v) { m_ExpX = v; }
    // Lower end of the line from the picture down to the children.
    qint32 ChildLineY2() const { return m_ChildLineY2; }
    void setChildLineY2(qint32 v) { m_ChildLineY2 = v; }
    // Upper end of that line (the picture's bottom).
    qint32 ChildLineY1() const { return m_ChildLineY1; }
    void setChildLineY1(qint32 v) { m_ChildLineY1 = v; }
    // x of that line (the picture's centre).
    qint32 ChildLineX() const { return m_ChildLineX; }
    void setChildLineX(qint32 v) { m_ChildLineX = v; }
    // Second y of the vertical tree line: half the picture height, not offset by the row's top.
    qint32 TreeLineY2() const { return m_TreeLineY2; }
    void setTreeLineY2(qint32 v) { m_TreeLineY2 = v; }
    // First y of the vertical tree line (the box's middle row).
    qint32 TreeLineY1() const { return m_TreeLineY1; }
    void setTreeLineY1(qint32 v) { m_TreeLineY1 = v; }
    // x of the vertical tree line (the box's middle column).
    qint32 TreeLineX() const { return m_TreeLineX; }
    void setTreeLineX(qint32 v) { m_TreeLineX = v; }
    // Right end of the horizontal line to the node.
    qint32 NodeLineX2() const { return m_NodeLineX2; }
    void setNodeLineX2(qint32 v) { m_NodeLineX2 = v; }
    // Left end of that line.
    qint32 NodeLineX1() const { return m_NodeLineX1; }
    void setNodeLineX1(qint32 v) { m_NodeLineX1 = v; }
    // y of that line.
    qint32 NodeLineY() const { return m_NodeLineY; }
    void setNodeLineY(qint32 v) { m_NodeLineY = v; }
    // Top of the node picture.
    qint32 PicY() const { return m_PicY; }
    void setPicY(qint32 v) { m_PicY = v; }
    // Left of the node picture (spelled with a lower-case p: hosts use that name).
    qint32 picX() const { return m_picX; }
    void setPicX(qint32 v) { m_picX = v; }
    // Top of the text.
    qint32 TextY() const { return m_TextY; }
    void setTextY(qint32 v) { m_TextY = v; }
    // Left of the text.
    qint32 TextX() const { return m_TextX; }
    void setTextX(qint32 v) { m_TextX = v; }
    // The row's indentation level.
    qint32 IdentIndex() const { return m_IdentIndex; }
    void setIdentIndex(qint32 v) { m_IdentIndex = v; }
    // Indentation step; informative only: the geometry always steps by 19.
    qint32 IdentSize() const { return m_IdentSize; }
    void setIdentSize(qint32 v) { m_IdentSize = v; }
    // Node picture height in pixels.
    qint32 PicHeight() const { return m_PicHeight; }
    void setPicHeight(qint32 v) { m_PicHeight = v; }
    // Node picture width in pixels.
    qint32 PicWidth() const { return m_PicWidth; }
    void setPicWidth(qint32 v) { m_PicWidth = v; }
    // Plus/minus box height.
    qint32 ExpHeight() const { return m_ExpHeight; }
    void setExpHeight(qint32 v) { m_ExpHeight = v; }
    // Plus/minus box width.
    qint32 ExpWidth() const { return m_ExpWidth; }
    void setExpWidth(qint32 v) { m_ExpWidth = v; }

    // Computes every position for Row (nothing happens for a null row). The node picture is the
    // first cell's Icon in ImageList, or the built-in picture of that number without a list;
    // built-in 103 when Icon is empty. Its HIMETRIC size is converted to pixels by Pic. A picture
    // that cannot be found or measured (also with a null Pic) counts as RowHeight x RowHeight.
    void Refresh(const lsNodePtr &Row, qint32 RowHeight, const lsImageList *ImageList,
                 const ScaleSource *Pic);

private:
    void measurePicture(const QVariant &Icon, const lsImageList *ImageList, const ScaleSource *Pic);
    void place(const lsNodePtr &Row, qint32 Top, qint32 RowHeight);

    qint32 m_PosLeft = 0;
    qint32 m_PosTop = 0;
    qint32 m_ExpY = 0;
    qint32 m_ExpX = 0;
    qint32 m_ChildLineY2 = 0;
    qint32 m_ChildLineY1 = 0;
    qint32 m_ChildLineX = 0;
    qint32 m_TreeLineY2 = 0;
    qint32 m_TreeLineY1 = 0;
    qint32 m_TreeLineX = 0;
    qint32 m_NodeLineX2 = 0;
    qint32 m_NodeLineX1 = 0;
    qint32 m_NodeLineY = 0;
    qint32 m_PicY = 0;
    qint32 m_picX = 0;
    qint32 m_TextY = 0;
    qint32 m_TextX = 0;
    qint32 m_IdentIndex = 0;
    qint32 m_IdentSize = 0;
    qint32 m_PicHeight = 0;
    qint32 m_PicWidth = 0;
    qint32 m_ExpHeight = 0;
    qint32 m_ExpWidth = 0;
};
