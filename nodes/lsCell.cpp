#include "lsCell.h"

#include "IndexKey.h"

// The Variant fields start as empty strings, not as "no value".
const QVariant lsCell::kEmpty = emptyText();

void lsCell::Class_Initialize() {
    TreeEdits::note();
    m_Title.clear();
    m_left = 0;
    m_width = 80;
    m_leftWide = false;
    m_widthWide = false;
    m_Color = 0;
    m_BackColor = 0xFFFFFF;
    m_Index = 1;
    m_Bold = false;
    m_Visible = true;
    m_Selected = false;
    m_layout.reset();
}

lsCell::Layout &lsCell::layoutFor(bool needed) {
    if (!m_layout) {
        // A default written into a cell without the block changes nothing that can be read
        // back, so it lands in a scratch block that nothing reads.
        if (!needed) {
            static thread_local Layout scratch;
            return scratch;
        }
        m_layout = std::make_unique<Layout>();
    }
    return *m_layout;
}

lsCell::Values &lsCell::valuesFor(const QVariant &value) {
    if (!m_layout || !m_layout->values) {
        // Only a null string reads back exactly like the empty-text default.
        if (value.typeId() == QMetaType::QString && value.toString().isNull()) {
            static thread_local Values scratch;
            return scratch;
        }
        layoutFor(true).values = std::make_unique<Values>();
    }
    return *m_layout->values;
}
