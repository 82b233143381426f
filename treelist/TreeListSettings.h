#pragma once
// The control's settings, each at the value a new control has. A saved layout leaves out every
// value equal to its default, so these are also what a property the file lacks loads as.

#include "TreeListTypes.h"

#include <QVariant>

struct TreeListSettings {
    // The colours live with the drawing child; these are only where they start.
    static constexpr OleColor kForeColor = 0x80000008; // window text
    static constexpr OleColor kBackColor = 0x80000005; // window
    // Width of the sunken border a 3-D appearance draws around the rows.
    static constexpr qint32 kBorder3D = 2;

    bool autoRedraw = true;
    qint32 columns = 1;
    qint32 editMode = lsEditTextBox;
    qint32 focusType = lsSelectCell;
    qint32 headerCount = 1;
    qint32 rowHeight = 18;
    qint32 lineStyle = lsLineSolid;
    // In the scale mode's unit: twips, so 80 pixels at 15 twips a pixel.
    qint32 defaultColumnWidth = 1200;
    bool multiSelect = false;
    bool autoSelectNew = true;
    bool expandOnDoubleClick = true;
    // What other tree views offer, off until a host turns it on.
    bool keyboardSearch = false; // typed text goes to the row it names
    bool showTips = false;       // a shortened caption shows whole in a tooltip
    qint32 selectionMode = lsSelectionClassic;
    // A 16-bit zero until ComponentVersion is asked for, then the version text.
    QVariant componentVersion = QVariant::fromValue<qint16>(0);
    qint16 appearance = lsApp3D;
    qint16 scaleMode = 1; // twips
};
