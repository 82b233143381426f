#pragma once
// The demo's main window: the tree list filled from a DemoTable with its cells edited in place, a
// side panel that switches the control's look and saves or loads its layout, menus (quit, the
// control's self-test and version), and a status bar with row count, current cell and the time
// the last frame took. A saved layout holds the control's properties and the column widths.

#include "DemoTable.h"
#include "TreeLoader.h"

#include <QMainWindow>
#include <QPalette>

class DemoEditor;
class FrameTimer;
class HostContainer;
class QCheckBox;
class QComboBox;
class QLabel;
class QSpinBox;
class vkTreeList;

class QActionGroup;

class DemoWindow : public QMainWindow {
    Q_OBJECT
public:
    // Builds the window and loads the table. The host must outlive the window, whose control
    // uses it until it is destroyed.
    DemoWindow(HostContainer &host, DemoTable table, QWidget *parent = nullptr);

    vkTreeList *tree() const { return m_tree; }

    // Selects a few rows of the first screen (several of them, as multiple selection allows)
    // and gives the grid the focus, so a first look shows the selection.
    void showcaseSelection();

    // Where a cell's text lies on the screen (global coordinates), empty for no such cell.
    QRect cellTextRect(qint32 row, qint32 column) const;
    // The in-place editing of the demo's cells.
    DemoEditor *editor() const { return m_editor; }

    // Writes the control's properties and the column widths to a JSON file; false with the
    // reason on failure.
    bool saveLayoutTo(const QString &path, QString *error = nullptr) const;
    // Reads the control's properties and column widths from a JSON file and brings the rows in
    // line with them. A file that cannot be read, or a value of the wrong type, leaves the
    // control as it was and gives false with the reason.
    bool loadLayoutFrom(const QString &path, QString *error = nullptr);

    // The palettes the View menu offers: the classic scheme's, the application's own as it
    // started, and a dark one.
    enum class Look { Classic, Application, Dark };
    // Puts one of them on the application, as a person switching it while the program runs.
    void applyLook(Look look);

    // Shows the row count, the current cell and the last frame's time. Runs on a timer too: the
    // control tells about property changes but not about clicks.
    void updateStatus();

private:
    // The side panel, in a scroll area so that a small window scrolls it instead of squeezing it.
    QWidget *buildPanel();
    void buildMenus();
    // Runs the control's timing self-test (which shows its report) and shows its version.
    void runDiagnostics();
    void applyLineStyle(int style);
    void applyFocusType(int type);
    void applyColumns(int columns);
    void applyHeaders(int headers);
    void applyMultiSelect(bool on);
    void setAllExpanded(bool open);
    void saveLayout();
    void loadLayout();
    // Shows the control's current settings in the panel without applying them again.
    void syncPanel();

    DemoTable m_table;
    vkTreeList *m_tree;
    TreeLoader m_loader;
    DemoEditor *m_editor;
    FrameTimer *m_frames;
    QPalette m_applicationPalette; // as the application started
    QActionGroup *m_looks = nullptr;
    QString m_layoutPath = QStringLiteral("layout.json");

    QComboBox *m_lineStyle = nullptr;
    QComboBox *m_focusType = nullptr;
    QSpinBox *m_rowHeight = nullptr;
    QSpinBox *m_columns = nullptr;
    QSpinBox *m_headers = nullptr;
    QCheckBox *m_multiSelect = nullptr;
    QLabel *m_rowsLabel = nullptr;
    QLabel *m_cellLabel = nullptr;
    QLabel *m_timeLabel = nullptr;
    QLabel *m_hitLabel = nullptr;
};
