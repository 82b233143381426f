#include "lsCell.h"

#include "IndexKey.h"

lsCell::lsCell() {
    Class_Initialize();
}

void lsCell::Class_Initialize() {
    m_Alignment = lsAlignLeftJustify;
    m_Bold = false;
    // The Variant fields start as empty strings, not as "no value".
    m_Icon = emptyText();
    m_Key = emptyText();
    m_Tag = emptyText();
    m_Title.clear();
    m_Visible = true;
    m_Top = 0;
    m_Left = 0;
    m_Height = 0;
    m_Width = 80;
    m_Color = 0;
    m_BackColor = 0xFFFFFF;
    m_Xoffset = 0;
    m_Index = 1;
    m_Appearance = static_cast<qint32>(Appearances::Flat);
    m_Selected = false;
}
