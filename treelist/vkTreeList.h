#pragma once
// vkTreeList: a tree view whose every row carries cells in columns, under zero or more header
// rows. The host fills it through AddItem / ListCell / Nodes, sets its properties, and saves and
// loads them through a PropertyBag. All drawing is composed off screen and shown in one copy.

#include "HostContainer.h"
#include "OffScreenDC.h"
#include "PropertyBag.h"
#include "StdPicture.h"
#include "TreeListTypes.h"
#include "lsHitTest.h"
#include "lsImageList.h"
#include "lsNodes.h"
#include "vkTreeListExport.h"

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

class ColumnGeometry;
class FrameKeeper;
class PictureBox;
class QLabel;
class QScrollBar;
class TreeListInput;
class TreeListViewport;
class lsEdit;
struct TreeListState;

class VKTL_EXPORT vkTreeList : public QWidget {
    Q_OBJECT
    // The persisted properties, by their property-bag names, each with its own notification; 16-bit
    // values are int properties, as Qt's property editors and form files know int, not short.
    Q_PROPERTY(qint32 Appearance READ Appearance WRITE setAppearance NOTIFY AppearanceChanged)
    Q_PROPERTY(bool AutoRedraw READ AutoRedraw WRITE setAutoRedraw NOTIFY AutoRedrawChanged)
    Q_PROPERTY(quint32 BackColor READ BackColor WRITE setBackColor NOTIFY BackColorChanged)
    Q_PROPERTY(qint32 EditMode READ EditMode WRITE setEditMode NOTIFY EditModeChanged)
    Q_PROPERTY(bool Enabled READ Enabled WRITE setEnabled NOTIFY EnabledChanged)
    Q_PROPERTY(qint32 FocusType READ FocusType WRITE setFocusType NOTIFY FocusTypeChanged)
    Q_PROPERTY(QFont Font READ qtFont WRITE setQtFont NOTIFY FontChanged)
    Q_PROPERTY(quint32 ForeColor READ ForeColor WRITE setForeColor NOTIFY ForeColorChanged)
    Q_PROPERTY(QString ImageList READ imageListName WRITE setImageListName NOTIFY ImageListChanged)
    Q_PROPERTY(qint32 LineStyle READ LineStyle WRITE setLineStyle NOTIFY LineStyleChanged)
    Q_PROPERTY(qint32 RowHeight READ RowHeight WRITE setRowHeight NOTIFY RowHeightChanged)
    Q_PROPERTY(bool MultiSelect READ MultiSelect WRITE setMultiSelect NOTIFY MultiSelectChanged)
    Q_PROPERTY(
        bool AutoSelectNew READ AutoSelectNew WRITE setAutoSelectNew NOTIFY AutoSelectNewChanged)
    Q_PROPERTY(bool ExpandOnDoubleClick READ ExpandOnDoubleClick WRITE setExpandOnDoubleClick NOTIFY
                   ExpandOnDoubleClickChanged)
    Q_PROPERTY(qint32 Columns READ Columns WRITE setColumns NOTIFY ColumnsChanged)
    Q_PROPERTY(qint32 Headers READ Headers WRITE setHeaders NOTIFY HeadersChanged)
    Q_PROPERTY(QVariant ComponentVersion READ ComponentVersion WRITE setComponentVersion NOTIFY
                   ComponentVersionChanged)
    Q_PROPERTY(qint32 ScaleMode READ ScaleMode WRITE setScaleMode)
    Q_PROPERTY(bool KeyboardSearch READ KeyboardSearch WRITE setKeyboardSearch NOTIFY
                   KeyboardSearchChanged)
    Q_PROPERTY(bool ShowTips READ ShowTips WRITE setShowTips NOTIFY ShowTipsChanged)
    Q_PROPERTY(
        qint32 SelectionMode READ SelectionMode WRITE setSelectionMode NOTIFY SelectionModeChanged)
    // What the control reports, read only.
    Q_PROPERTY(qint32 DefaultColumnWidth READ DefaultColumnWidth)
    Q_PROPERTY(qint32 Rows READ Rows)
    Q_PROPERTY(qint32 Row READ Row)
    Q_PROPERTY(qint32 Col READ Col)
    Q_PROPERTY(qint32 FirstDisplayedRow READ FirstDisplayedRow)
    Q_PROPERTY(qint32 VisibleLineCount READ VisibleLineCount)
    Q_PROPERTY(qint32 HorizontalOffset READ HorizontalOffset)
    Q_PROPERTY(float ReDrawTime READ ReDrawTime)
    Q_PROPERTY(bool Editing READ isEditing)
    // The help texts Qt tools show; their wording and spelling are part of the interface.
    Q_CLASSINFO("Description", "Tarnwick hierarchical ListView control")
    Q_CLASSINFO("MultiSelect", "Enables, Disables selection of  more then one row.")
    Q_CLASSINFO("AutoSelectNew", "If enabled then the added row will be selected.")
    Q_CLASSINFO("ReDrawTime", "Returns the time was necessary to redraw the control.")
    Q_CLASSINFO("EnsureVisible", "Makes the passed node visible.")
    Q_CLASSINFO("AutoSize", "Sets the Column size according to longest data in that column.")

public:
    // Creates the control and its children; a host given must outlive it (null: a run-mode one).
    explicit vkTreeList(QWidget *parent = nullptr, HostContainer *host = nullptr);
    ~vkTreeList() override;
    // --- Life cycle and persistence ---
    // Starts the control over as a new instance (at design time with the six sample rows).
    Q_INVOKABLE void InitProperties();
    // Loads the persisted properties; a bad value raises, naming it, and changes nothing.
    void ReadProperties(const PropertyBag &bag);
    // Saves the persisted properties, leaving out every value equal to its default.
    void WriteProperties(PropertyBag &bag) const;
    // --- Properties ---
    // Window border, lsAppFlat or lsApp3D (16-bit: a value past that raises overflow).
    qint32 Appearance() const;
    void setAppearance(qint32 value);
    // Whether repaints lay out and show frames; turning it on repaints at once.
    bool AutoRedraw() const;
    void setAutoRedraw(bool value);
    // Background colour of the rows (OLE colour); takes effect at the next repaint.
    OleColor BackColor() const;
    void setBackColor(OleColor value);
    // How the in-place editor edits (lsEditModeConstants).
    qint32 EditMode() const;
    void setEditMode(qint32 value);
    // Whether the control itself takes input, whatever its parent says; a change notifies.
    bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }
    void setEnabled(bool value);
    // Whether clicks and keys select rows or cells (lsSelectConstants).
    qint32 FocusType() const;
    void setFocusType(qint32 value);
    // The control's font, shared with the drawing surface; as a QFont for Qt's editors.
    StdFontPtr Font() const;
    void setFont(const StdFontPtr &font);
    using QWidget::setFont;
    QFont qtFont() const;
    void setQtFont(const QFont &font);
    // Text colour of the rows (OLE colour); takes effect at the next repaint.
    OleColor ForeColor() const;
    void setForeColor(OleColor value);
    // The host's image list for pictures (may be null), or by its registered name ("" none).
    const lsImageListPtr &ImageList() const;
    void setImageList(const lsImageListPtr &list);
    QString imageListName() const;
    void setImageListName(const QString &name);
    // Tree line style (lsLineStyle).
    qint32 LineStyle() const;
    void setLineStyle(qint32 value);
    // Row height in pixels; only 16..255 is taken, other values are ignored without an error.
    qint32 RowHeight() const;
    void setRowHeight(qint32 value);
    // "Enables, Disables selection of  more then one row." (Shift or Ctrl with a click).
    bool MultiSelect() const;
    void setMultiSelect(bool value);
    // "If enabled then the added row will be selected." (and scrolled into view by AddItem).
    bool AutoSelectNew() const;
    void setAutoSelectNew(bool value);
    // Whether a double click (or Enter) opens and closes a row.
    bool ExpandOnDoubleClick() const;
    void setExpandOnDoubleClick(bool value);
    // Off by default: typing selects the next visible row whose first cell starts with the text.
    bool KeyboardSearch() const;
    void setKeyboardSearch(bool value);
    // Off by default: hovering over a shortened ("...") caption shows it whole in a tooltip.
    bool ShowTips() const;
    void setShowTips(bool value);
    // How Shift and Ctrl select (lsSelectionModeConstants; classic by default).
    qint32 SelectionMode() const;
    void setSelectionMode(qint32 value);
    // The width given to columns that have none, persisted as "ColumnWidth".
    qint32 DefaultColumnWidth() const;
    // The unit of ColumnWidth (1 twips, 3 pixels, 8 HIMETRIC...; 16-bit: past that, overflow).
    qint16 ScaleMode() const;
    void setScaleMode(qint32 value);
    // --- Columns and headers ---
    // Data columns (below 1 ignored; overflow past 32767, out of memory past 2097152 cells).
    qint32 Columns() const;
    void setColumns(qint32 value);
    // Number of header rows (16-bit: a put past that raises overflow before anything changes).
    qint16 Headers();
    void setHeaders(qint32 value);
    // Width of a column in the scale mode (-1 when there is no such column or row); sets it.
    Q_INVOKABLE qint32 ColumnWidth(qint32 ColID) const;
    Q_INVOKABLE void setColumnWidth(qint32 ColID, qint32 width);
    // "Sets the Column size according to longest data in that column."; always returns false.
    Q_INVOKABLE bool AutoSize(qint32 ColID);
    // --- Rows and cells ---
    // Adds a row relative to another; its Index (16-bit) or -1. lsFirst / lsLast come back lsNext.
    qint16 AddItem(const QVariant &Relative, qint32 &Relationship,
                   const QVariant &Key = emptyText(), const QString &Text = QString(),
                   const QVariant &Image = emptyText());
    Q_INVOKABLE qint16 AddItem(const QVariant &Relative = emptyText(),
                               lsRelationshipConstants Relationship = lsNext,
                               const QVariant &Key = emptyText(), const QString &Text = QString(),
                               const QVariant &Image = emptyText());
    // Removes every row; returns false.
    Q_INVOKABLE bool Clear();
    // The row at a position or under a key, or null.
    lsNodePtr Nodes(const QVariant &IndexKey) const;
    // Number of rows; Index of the selected row and of the selected cell (0 when none).
    qint32 Rows() const;
    qint32 Row() const;
    qint32 Col() const;
    // Opens / closes a row and raises OnExpand / OnCollapse; false for an unknown row.
    Q_INVOKABLE bool Expand(const QVariant &RowIndexKey);
    Q_INVOKABLE bool Collapse(const QVariant &RowIndexKey);
    // Removes a row (found by its key) with its subtree; false for an unknown row.
    Q_INVOKABLE bool RemoveItem(const QVariant &RowIndexKey);
    // Recomputes visibility from a row onwards; always false.
    Q_INVOKABLE bool SetVisibility(const QVariant &RowIndexKey);
    // Reads one property of a body cell (-1: the current row / column); empty when none.
    Q_INVOKABLE QVariant ListCell(qint32 CellProperty = lslcData, qint32 RowID = -1,
                                  qint32 ColID = -1);
    // Writes one property of a body cell and repaints its row when it is on screen.
    Q_INVOKABLE void setListCell(qint32 CellProperty, qint32 RowID, qint32 ColID,
                                 const QVariant &value);
    // The cell ListCell reads, -1 resolved to the current row / column (written back); or null.
    lsCellPtr ResolveListCell(qint32 &RowID, qint32 &ColID) const;
    // Reads / writes one property of a header cell (no defaults; out of range means none).
    Q_INVOKABLE QVariant HeaderCell(qint32 CellProperty, qint32 RowID, qint32 ColID) const;
    Q_INVOKABLE void setHeaderCell(qint32 CellProperty, qint32 RowID, qint32 ColID,
                                   const QVariant &value);
    // The header cell at a header row and column, or null.
    lsCellPtr ResolveHeaderCell(qint32 RowID, qint32 ColID) const;
    // --- Selection ---
    // Selects a row and cell (cell: the current one's column, else 1) and repaints.
    void SelectItem(qint32 RowID, std::optional<qint32> ColID = std::nullopt);
    Q_INVOKABLE void SelectItem(qint32 RowID, qint32 ColID);
    // The user's mark on a row; false / nothing for an unknown row.
    Q_INVOKABLE bool Mark(qint32 RowID) const;
    Q_INVOKABLE void setMark(qint32 RowID, bool value);
    // --- Viewport ---
    // "Makes the passed node visible.": a row below the view becomes its last line; never up.
    Q_INVOKABLE QVariant EnsureVisible(const QVariant &IndexKey);
    // Index of the row drawn right under the header rows.
    qint32 FirstDisplayedRow() const;
    // Number of data lines that fit under the header rows (a partial line counts).
    qint16 VisibleLineCount() const;
    // Horizontal scroll offset in pixels (zero or negative).
    qint32 HorizontalOffset() const;
    // What lies at (X, Y) past the horizontal scroll; DataRow is a line (IDs -1: X or Y no number).
    lsHitTestPtr HitTest(const QVariant &X, const QVariant &Y, qint16 Button = 0,
                         qint16 Shift = 0) const;
    // --- Painting ---
    // Repaints the whole frame (after clearing the drawing child when asked).
    Q_INVOKABLE void Refresh(bool Clear = false);
    // "Returns the time was necessary to redraw the control." (seconds).
    float ReDrawTime() const;
    // The composed frame (null before the first one), waiting pixels composed first.
    const OffScreenDC *surface();
    // Index of the last row painted in the last frame.
    qint32 LastPaintedRow() const;
    // --- Children and owned objects ---
    PictureBox *picOut() const;
    QScrollBar *scrX() const;
    QScrollBar *scrY() const;
    QLabel *imgGhost() const;
    // The body rows and the header rows.
    lsNodes *rows() const;
    lsNodes *headers() const;
    // One of the six built-in pictures, 101..106 (null for other numbers).
    StdPicturePtr builtinPicture(int number) const;
    // Whether the drawing child has the focus, as painting sees it.
    bool hasFocusFlag() const;
    // Number of calls from Qt (events, scroll bars) that failed and were reported by OnError.
    qint64 failedEntries() const;
    // The hit test of the last mouse press.
    const lsHitTest *lastHit() const;
    // The virtual-key code of a Qt key, as KeyDown and KeyUp report it.
    static qint16 virtualKeyCode(int qtKey);
    // --- Editing ---
    // Selects a cell and edits it (-1: current row, column, EditMode, written back); always false.
    bool Edit(qint32 &RowID, qint32 &ColID, qint32 &Mode);
    bool Edit(qint32 &RowID, qint32 &ColID);
    Q_INVOKABLE bool Edit(const qint32 &RowID = -1, const qint32 &ColID = -1,
                          const qint32 &Mode = -1);
    // Closes an open edit without committing; returns "".
    Q_INVOKABLE QString AbortEdit();
    // Empties the editor's text and drop-down list (open or not).
    Q_INVOKABLE void EditComboClear();
    // Adds an entry to the drop-down list the next combo-box edit shows (at Index when given).
    Q_INVOKABLE void EditComboAddItem(const QVariant &Item, const QVariant &Index = QVariant());
    // The index of the drop-down list's selection (-1 none); the text of entry Index, or "".
    Q_INVOKABLE qint32 EditComboListIndex();
    Q_INVOKABLE QVariant EditComboList(const QVariant &Index) const;
    // True while an edit is open; the editor the control edits with.
    bool isEditing() const;
    lsEdit *lseMisc() const;
    // --- Diagnostics ---
    // "<module>.ocx|<major>.<minor 00>.<revision 0###>|<comments>|", also kept as the property.
    QVariant ComponentVersion();
    // Drops the value (read-only in effect) and notifies "ComponentVersion".
    void setComponentVersion(const QVariant &value);
    // Times three walks drawing every row's texts off screen and reports them; List is unused.
    QVariant Test(bool &List);
    Q_INVOKABLE QVariant Test();

    // A header row and a screenful of rows of two columns; room for a header, a line and bars.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // A property changed: by its property-bag key, and by its own Q_PROPERTY notification.
    void PropertyChanged(const QString &key);
    void AppearanceChanged();
    void AutoRedrawChanged();
    void BackColorChanged();
    void EditModeChanged();
    void EnabledChanged();
    void FocusTypeChanged();
    void FontChanged();
    void ForeColorChanged();
    void ImageListChanged();
    void LineStyleChanged();
    void RowHeightChanged();
    void MultiSelectChanged();
    void AutoSelectNewChanged();
    void ExpandOnDoubleClickChanged();
    void ColumnsChanged();
    void HeadersChanged();
    void ComponentVersionChanged();
    void KeyboardSearchChanged();
    void ShowTipsChanged();
    void SelectionModeChanged();
    // The view scrolled; a row was opened / closed by the control.
    void Scroll();
    void OnExpand(qint32 RowID);
    void OnCollapse(qint32 RowID);
    // Mouse on the grid (Button 1 left, 2 right, 4 middle; Shift 1 Shift, 2 Ctrl, 4 Alt; pixels).
    // A click raises MouseDown, MouseUp, Click; a double click then DblClick and MouseUp.
    void MouseDown(qint16 Button, qint16 Shift, float X, float Y);
    void MouseMove(qint16 Button, qint16 Shift, float X, float Y);
    void MouseUp(qint16 Button, qint16 Shift, float X, float Y);
    void Click();
    void DblClick();
    // A press on a data cell / a left press on a header cell.
    void CellClick(qint32 RowID, qint32 ColID);
    void HeaderClick(qint32 RowID, qint32 ColID);
    // Keys on the grid, after navigation: virtual-key code and Shift mask; the character typed.
    void KeyDown(qint16 KeyCode, qint16 Shift);
    void KeyPress(qint16 KeyAscii);
    void KeyUp(qint16 KeyCode, qint16 Shift);
    // A call Qt made into the control failed with this error; the control stays usable.
    void OnError(qint32 Number, const QString &Description);
    // The editor's events; what the host assigns to the arguments reaches the editor.
    // An edit is about to open; Cancel = true keeps it closed (and Edit shut until AbortEdit).
    void BeforeEdit(bool &Cancel);
    // A commit is about to happen; Cancel = true discards it.
    void ValidateEdit(QVariant &NewValue, QVariant &OldValue, bool &Cancel);
    // A commit passed validation; the cell keeps its text unless the host writes NewValue.
    void AfterEdit(QVariant &NewValue, QVariant &OldValue, bool &Changed);
    // The ellipsis of a button-mode edit: the editor's left and top, and the Value to set.
    void EditButtonClick(qint32 &Xpos, qint32 &Ypos, QVariant &Value);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // Every entry point from Qt runs its work through here.
    void guarded(const char *entry, const std::function<void()> &call);
    void connectEditor();
    void connectInput();
    void Initialize();
    void Terminate();
    void buildDesignSample();
    void fillSampleTexts(qint32 rowIndex);
    void onResize();
    void paintBorder();
    void paintBorderBackground();
    void syncEnabled();
    void notify(const QString &key);
    static void checkCellCount(qint64 rows, qint64 columns);
    void CreateRowCells(const lsNodePtr &node, const QString &Text, const QVariant &Image,
                        OleColor foreColor, OleColor backColor, qint32 appearance);
    static qint32 defaultCellWidth(const lsNodePtr &firstHeader, qint32 column);
    lsNodePtr listRow(qint32 &RowID, qint32 &ColID) const;
    qint32 defaultHeaderWidth(qint32 column) const;
    void addHeaderCells(const lsNodePtr &node);
    bool setRowExpanded(const QVariant &RowIndexKey, bool expanded);
    QVariant cellProperty(const lsCell &cell, qint32 property) const;
    bool setCellProperty(lsCell &cell, qint32 property, const QVariant &value);

    friend struct PersistedSetting;
    friend class FrameKeeper;
    friend class TreeListViewport;
    friend class TreeListInput;
    friend class ColumnGeometry;
    friend class TreeListAccessibleCell;
    std::unique_ptr<TreeListState> d;
};
