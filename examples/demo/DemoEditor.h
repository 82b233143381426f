#pragma once
// Edits the demo's cells in place through the control, as a host does: the table says how each
// column edits (text box, drop-down list, or a dialog behind the ellipsis button). A second click
// on a cell of the current row opens the editor there (after the double-click time, so a double
// click still opens and closes a branch); the window's F2 edits the current cell. Accepted values
// go into the cell with ListCell and into the table; an empty name is refused.

#include "DemoTable.h"

#include <QObject>
#include <QPoint>
#include <QTimer>
#include <optional>

class QWidget;
class vkTreeList;

class DemoEditor : public QObject {
    Q_OBJECT
public:
    // The control and table must outlive the editor, which `dialogParent` owns and over which
    // its dialogs open.
    DemoEditor(vkTreeList &tree, DemoTable &table, QWidget *dialogParent);

    // Opens the editor over a cell (control row Index and column); false when the column does
    // not edit, there is no such cell, or its row is hidden in a closed branch.
    bool edit(qint32 row, qint32 column);
    // Edits the current cell when its column edits, else the current row's name.
    bool editCurrent();

signals:
    // Something for the status bar: a refused value, a stored one.
    void message(const QString &text);

private:
    struct Cell {
        qint32 row, column;
    };

    const DemoTable::Column *columnOf(qint32 column) const;
    void onCellClick(qint32 row, qint32 column);
    void onMouseDown(qint16 button, qint16 shift, float x);
    void onValidate(QVariant &newValue, bool &cancel);
    void onAfterEdit(const QVariant &newValue);
    void onButtonClick(qint32 x, qint32 y, QVariant &value);
    // Writes an accepted text to the cell being edited and to the table.
    void store(const QString &text);
    // The demo's own window for the ellipsis column: a year and month, or none when cancelled.
    std::optional<QString> chooseMonth(const QPoint &at, const QString &current);

    vkTreeList &m_tree;
    DemoTable &m_table;
    QWidget *m_dialogParent;
    qint32 m_settledRow = 0;       // the current row when the last click or key ended
    std::optional<Cell> m_clicked; // a click on the settled row, waiting for its press
    std::optional<Cell> m_pending; // a second click waiting out the double-click time
    Cell m_editing{0, 0};          // the cell the open editor edits
    QTimer m_clickTimer;
};
