#pragma once
// The editor's public enumerations.

#include "vkTreeListExport.h"

#include <QObject>

// How the editor edits (lsEditTextBox 0, lsEditComboBox 1, lsEditButton 2). The tree list's
// EditMode property holds the same values, so the enumeration lives once, in the shared types.
#include "TreeListTypes.h"

namespace lsEditConstants {
Q_NAMESPACE_EXPORT(VKTL_EXPORT)

// How an editor button is drawn.
enum lsButtonStateConstants : qint16 {
    lsBtnDown = -1,    // pressed: sunken frame, glyph one pixel right and down
    lsbtnFlat = 0,     // no edge lines, glyph placed as when pressed
    lsBtnUp = 1,       // raised frame, glyph in place
    lsBtnDisabled = 2, // raised frame, glyph in the button-shadow colour
};
Q_ENUM_NS(lsButtonStateConstants)

} // namespace lsEditConstants

using namespace lsEditConstants;
