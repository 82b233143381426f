#pragma once
// A data set for the tree list, independent of the control: named columns and rows in tree
// pre-order (every row after its parent, siblings in display order), each row with a unique key,
// a picture key and one text per column.

#include "TreeListTypes.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

class DemoTable {
public:
    // How the user edits a column's cells in place.
    enum class Editing {
        None,   // read only
        Text,   // a text box
        Choice, // a text box with a drop-down list of `choices`
        Dialog, // a locked text box whose ellipsis button opens a dialog
    };

    struct Column {
        QString title;                         // header row 1
        QString note;                          // header row 2 (units, format)
        qint32 alignment = lsAlignLeftJustify; // lsAlignmentConstants
        int minWidth = 60;                     // pixels
        int maxWidth = 300;                    // pixels
        Editing editing = Editing::None;
        QStringList choices; // the drop-down list of a Choice column
    };

    struct Row {
        QString key;       // unique, also without regard to letter case
        QString parentKey; // "" for a top-level row
        int level = 0;     // 0 for a top-level row
        int childCount = 0;
        QString image;     // picture key in the demo's image list
        QStringList cells; // one text per column; cells[0] is the tree column
    };

    // What the window title says about the data.
    QString caption;
    QList<Column> columns;

    // Appends a row under `parentKey` ("" for the top level, else a row added before). The key
    // is made unique by a numbered suffix when another row has it in any letter case; the key
    // used is returned.
    QString addRow(const QString &parentKey, const QString &wantedKey, const QString &image,
                   const QStringList &cells);

    const QList<Row> &rows() const { return m_rows; }
    // Position of a row in `rows()`, or -1.
    int position(const QString &key) const;
    // Text of a row's column (0-based), "" when the row has fewer texts.
    QString text(int row, int column) const;
    // Replaces a row's text in a column (0-based); false for a row or column that is not there.
    bool setText(int row, int column, const QString &text);

private:
    QList<Row> m_rows;
    QHash<QString, int> m_positions; // folded key -> position
};
