#pragma once
// Enumerations and small value types shared by every layer of the component.
// Enumerated properties are never range-checked: fields of these types hold any 32-bit value.

#include "vkTreeListExport.h"

#include <QObject>

// An OLE colour: 0x00BBGGRR, or 0x80000000 + n naming system colour n.
using OleColor = quint32;

// The enumerations live in a namespace that Qt's meta-object system knows (value names reach
// Designer, QML and QMetaEnum), and are used unqualified everywhere through the directive below.
namespace vkTreeListConstants {
Q_NAMESPACE_EXPORT(VKTL_EXPORT)

// Where `lsNodes::Add` places a new row relative to an existing one.
enum lsRelationshipConstants : qint32 {
    lsFirst = 0,
    lsLast = 1,
    lsNext = 2,
    lsPrevious = 3,
    lsChild = 4,
};
Q_ENUM_NS(lsRelationshipConstants)

// What a click or the keyboard selects: a whole row or one cell.
enum lsSelectConstants : qint32 {
    lsSelectFullRow = 0,
    lsSelectCell = 1,
};
Q_ENUM_NS(lsSelectConstants)

// How clicks and keys with Shift and Ctrl select rows (SelectionMode).
enum lsSelectionModeConstants : qint32 {
    lsSelectionClassic = 0,  // Shift or Ctrl with a click adds a row when MultiSelect is on
    lsSelectionExtended = 1, // Shift selects a range, Ctrl toggles a row, Ctrl+A selects all
};
Q_ENUM_NS(lsSelectionModeConstants)

// How the in-place editor edits a cell.
enum lsEditModeConstants : qint32 {
    lsEditTextBox = 0,
    lsEditComboBox = 1,
    lsEditButton = 2,
};
Q_ENUM_NS(lsEditModeConstants)

// The control window's border look.
enum lsAppearanceConstants : qint32 {
    lsAppFlat = 0,
    lsApp3D = 1,
};
Q_ENUM_NS(lsAppearanceConstants)

// Horizontal text alignment in a cell.
enum lsAlignmentConstants : qint32 {
    lsAlignLeftJustify = 0,
    lsAlignRightJustify = 1,
    lsAlignCenter = 2,
};
Q_ENUM_NS(lsAlignmentConstants)

// How tree lines are drawn.
enum lsLineStyle : qint32 {
    lsNoTreeLine = 0,
    lsLineSolid = 1,
    lsLineDotted = 2,
};
Q_ENUM_NS(lsLineStyle)

// Frame style of a drawn rectangle (and of a cell).
enum class Appearances : qint32 {
    Raised = 0,
    Flat = 1,
    Sunken = 2,
    Selected = 3,
    Raised3D = 4,
};
Q_ENUM_NS(Appearances)

// Caption placement in a rectangle: value mod 3 is horizontal (centre, left, right), value div 3
// vertical (centre, top, bottom). `caBottomright` is spelled with a lower-case r: hosts use that
// name.
enum CaptionAlignments : qint32 {
    caCenterCenter = 0,
    caCenterLeft = 1,
    caCenterRight = 2,
    caTopCenter = 3,
    caTopLeft = 4,
    caTopRight = 5,
    caBottomCenter = 6,
    caBottomLeft = 7,
    caBottomright = 8,
};
Q_ENUM_NS(CaptionAlignments)

// The cell property that `ListCell` and `HeaderCell` read or write (names keep their mixed case).
enum lsListCellProperties : qint32 {
    lslcAlignment = 0,
    lslcBold = 1,
    lslcData = 2,
    lslcIcon = 3,
    lslcTag = 4,
    lslcTop = 5,
    lslcLeft = 6,
    lslcHeight = 7,
    lslcWidth = 8,
    lslcForeColor = 9,
    lslcbackColor = 10,
    lsLCSelected = 11,
};
Q_ENUM_NS(lsListCellProperties)

} // namespace vkTreeListConstants

using namespace vkTreeListConstants;
