#include "DemoWindow.h"

#include "DemoEditor.h"
#include "DemoPictures.h"
#include "FrameTimer.h"
#include "HostContainer.h"
#include "PictureBox.h"
#include "PropertyBag.h"
#include "SystemColors.h"
#include "TreeListError.h"
#include "vkTreeList.h"

#include <QActionGroup>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString ImageListName = QStringLiteral("demoPictures");
// The demo's own entry in a layout file, beside the control's properties (which the control reads
// by name, so it passes over this one): column number to width in pixels.
const QString ColumnWidthsKey = QStringLiteral("DemoColumnWidths");
constexpr int StatusInterval = 250; // ms
constexpr int PanelWidth = 230;     // pixels

} // namespace

DemoWindow::DemoWindow(HostContainer &host, DemoTable table, QWidget *parent)
    : QMainWindow(parent), m_table(std::move(table)), m_tree(new vkTreeList(nullptr, &host)),
      m_loader(*m_tree, m_table), m_editor(new DemoEditor(*m_tree, m_table, this)),
      m_frames(new FrameTimer(m_tree->picOut(), this)),
      m_applicationPalette(QApplication::palette()) {
    setWindowTitle(tr("vkTreeList demo - %1").arg(m_table.caption));
    setWindowIcon(QPixmap::fromImage(DemoPictures::team(Qt::transparent)));

    m_tree->InitProperties();
    const QColor rowColor =
        QColor::fromRgb(oleTranslateColor(m_tree->BackColor(), m_tree->palette()));
    const lsImageListPtr pictures = DemoPictures::makeImageList(rowColor);
    host.registerImageList(ImageListName, pictures);
    m_tree->setImageList(pictures);
    m_tree->setHeaders(1);
    m_tree->setRowHeight(20);
    m_tree->setFocusType(lsSelectFullRow);
    m_tree->setMultiSelect(true);
    // What other tree views offer: type-ahead, tooltips for shortened texts, range selection.
    m_tree->setKeyboardSearch(true);
    m_tree->setShowTips(true);
    m_tree->setSelectionMode(lsSelectionExtended);

    auto *central = new QWidget(this);
    auto *layout = new QHBoxLayout(central);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_tree, 1);
    layout->addWidget(buildPanel());
    setCentralWidget(central);
    buildMenus();

    m_rowsLabel = new QLabel(this);
    m_cellLabel = new QLabel(this);
    m_timeLabel = new QLabel(this);
    m_hitLabel = new QLabel(this);
    m_cellLabel->setObjectName(QStringLiteral("currentCell"));
    m_timeLabel->setObjectName(QStringLiteral("frameTime"));
    m_timeLabel->setToolTip(tr("From the input that asked for the frame until it was drawn"));
    statusBar()->addPermanentWidget(m_hitLabel);
    statusBar()->addPermanentWidget(m_rowsLabel);
    statusBar()->addPermanentWidget(m_cellLabel);
    statusBar()->addPermanentWidget(m_timeLabel);

    QElapsedTimer clock;
    clock.start();
    m_loader.load();
    statusBar()->showMessage(
        tr("Loaded %L1 rows in %2 ms").arg(m_tree->Rows()).arg(clock.elapsed()), 8000);
    syncPanel();

    // The control tells about property changes but not about clicks: the status is polled.
    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &DemoWindow::updateStatus);
    timer->start(StatusInterval);
    connect(m_tree, &vkTreeList::PropertyChanged, this, &DemoWindow::updateStatus);
    // What the control's hit test finds under the mouse.
    connect(m_tree, &vkTreeList::MouseMove, this, [this](qint16, qint16, float x, float y) {
        const lsHitTestPtr hit = m_tree->HitTest(x, y);
        m_hitLabel->setText(
            hit->HeaderRow() >= 0
                ? tr("Header %1, column %2").arg(hit->HeaderRow()).arg(hit->HeaderCol())
                : tr("Line %1, column %2").arg(hit->DataRow()).arg(hit->DataCol()));
    });
    connect(m_editor, &DemoEditor::message, this,
            [this](const QString &text) { statusBar()->showMessage(text, 6000); });
    // Errors inside the control's own event handling do not stop the program; show them.
    connect(m_tree, &vkTreeList::OnError, this, [this](qint32 number, const QString &text) {
        statusBar()->showMessage(tr("Error %1: %2").arg(number).arg(text), 10000);
    });
    updateStatus();
}

QWidget *DemoWindow::buildPanel() {
    auto *panel = new QWidget;
    panel->setFixedWidth(PanelWidth);
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);

    auto *look = new QGroupBox(tr("Appearance"), panel);
    auto *form = new QFormLayout(look);
    m_lineStyle = new QComboBox(look);
    m_lineStyle->addItems({tr("None"), tr("Solid"), tr("Dotted")});
    form->addRow(tr("Tree lines"), m_lineStyle);
    m_focusType = new QComboBox(look);
    m_focusType->addItems({tr("Full row"), tr("Single cell")});
    form->addRow(tr("Selection"), m_focusType);
    m_rowHeight = new QSpinBox(look);
    m_rowHeight->setRange(16, 40);
    m_rowHeight->setSuffix(tr(" px"));
    form->addRow(tr("Row height"), m_rowHeight);
    m_columns = new QSpinBox(look);
    m_columns->setRange(1, 8);
    form->addRow(tr("Columns"), m_columns);
    m_headers = new QSpinBox(look);
    m_headers->setRange(0, 3);
    form->addRow(tr("Header rows"), m_headers);
    m_multiSelect = new QCheckBox(tr("Multiple selection"), look);
    m_multiSelect->setToolTip(tr("Ctrl or Shift and click add rows to the selection"));
    form->addRow(m_multiSelect);
    column->addWidget(look);

    auto *branches = new QGroupBox(tr("Branches"), panel);
    auto *branchButtons = new QHBoxLayout(branches);
    auto *expand = new QPushButton(tr("Expand all"), branches);
    auto *collapse = new QPushButton(tr("Collapse all"), branches);
    branchButtons->addWidget(expand);
    branchButtons->addWidget(collapse);
    column->addWidget(branches);

    auto *layoutBox = new QGroupBox(tr("Layout"), panel);
    auto *layoutColumn = new QVBoxLayout(layoutBox);
    auto *layoutButtons = new QHBoxLayout;
    auto *save = new QPushButton(tr("Save..."), layoutBox);
    auto *load = new QPushButton(tr("Load..."), layoutBox);
    layoutButtons->addWidget(save);
    layoutButtons->addWidget(load);
    layoutColumn->addLayout(layoutButtons);
    auto *layoutNote =
        new QLabel(tr("The control's saved properties and the column widths, as JSON."), layoutBox);
    layoutNote->setWordWrap(true);
    layoutNote->setEnabled(false);
    layoutColumn->addWidget(layoutNote);
    column->addWidget(layoutBox);

    column->addStretch(1);
    auto *source = new QLabel(m_table.caption, panel);
    source->setWordWrap(true);
    source->setEnabled(false);
    column->addWidget(source);

    connect(m_lineStyle, &QComboBox::currentIndexChanged, this, &DemoWindow::applyLineStyle);
    connect(m_focusType, &QComboBox::currentIndexChanged, this, &DemoWindow::applyFocusType);
    connect(m_rowHeight, &QSpinBox::valueChanged, m_tree, &vkTreeList::setRowHeight);
    connect(m_columns, &QSpinBox::valueChanged, this, &DemoWindow::applyColumns);
    connect(m_headers, &QSpinBox::valueChanged, this, &DemoWindow::applyHeaders);
    connect(m_multiSelect, &QCheckBox::toggled, this, &DemoWindow::applyMultiSelect);
    connect(expand, &QPushButton::clicked, this, [this] { setAllExpanded(true); });
    connect(collapse, &QPushButton::clicked, this, [this] { setAllExpanded(false); });
    connect(save, &QPushButton::clicked, this, &DemoWindow::saveLayout);
    connect(load, &QPushButton::clicked, this, &DemoWindow::loadLayout);

    auto *scroll = new QScrollArea(this);
    scroll->setWidget(panel);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Room for the bar that comes when the panel is taller than the window.
    scroll->setFixedWidth(PanelWidth + scroll->verticalScrollBar()->sizeHint().width());
    return scroll;
}

void DemoWindow::buildMenus() {
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    edit->addAction(tr("Edit current cell"), QKeySequence(Qt::Key_F2), this,
                    [this] { m_editor->editCurrent(); });
    QMenu *view = menuBar()->addMenu(tr("&View"));
    m_looks = new QActionGroup(this);
    for (auto [look, name] : {std::pair{Look::Classic, tr("&Classic palette")},
                              {Look::Application, tr("&Application palette")},
                              {Look::Dark, tr("&Dark palette")}}) {
        QAction *action = view->addAction(name, this, [this, look] { applyLook(look); });
        action->setCheckable(true);
        action->setChecked(look == Look::Application);
        m_looks->addAction(action);
    }
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("Self-test and &version..."), this, &DemoWindow::runDiagnostics);
}

void DemoWindow::applyLook(Look look) {
    m_looks->actions().at(int(look))->setChecked(true);
    const QPalette palette = look == Look::Classic ? classicPalette()
                             : look == Look::Dark  ? darkPalette()
                                                   : m_applicationPalette;
    QApplication::setPalette(palette);
    // The pictures are copied opaquely: they are drawn again over the rows' new colour.
    if (const lsImageListPtr &pictures = m_tree->ImageList()) {
        DemoPictures::fill(*pictures,
                           QColor::fromRgb(oleTranslateColor(m_tree->BackColor(), palette)));
        m_tree->Refresh();
    }
}

void DemoWindow::runDiagnostics() {
    const QString report = m_tree->Test().toString();
    // "name.ocx|version|comments|": one item a line.
    QStringList parts = m_tree->ComponentVersion().toString().split(u'|', Qt::SkipEmptyParts);
    QMessageBox::information(
        this, tr("About the control"),
        tr("Component: %1\nVersion: %2\n%3").arg(parts.value(0), parts.value(1), parts.value(2)));
    statusBar()->showMessage(report.section(QStringLiteral("\r\n"), 0, 0), 10000);
}

QRect DemoWindow::cellTextRect(qint32 row, qint32 column) const {
    const lsNodePtr node = m_tree->Nodes(row);
    const lsCellPtr cell = node ? node->Cells()->Item(column) : nullptr;
    if (!cell)
        return {};
    const QRect onSurface(cell->Left() + cell->Xoffset() + m_tree->HorizontalOffset(), cell->Top(),
                          cell->Width() - cell->Xoffset(), cell->Height());
    return onSurface.translated(m_tree->picOut()->mapToGlobal(QPoint(0, 0)));
}

void DemoWindow::showcaseSelection() {
    QList<qint32> inView;
    for (const lsNodePtr &row : *m_tree->rows())
        if (row->Visible())
            inView.append(row->Index());
    if (inView.isEmpty())
        return;
    // Three rows apart from each other on the first screen; the first becomes the current row.
    const qint32 current = inView.value(5, inView.first());
    m_tree->SelectItem(current, 1);
    for (const qsizetype extra : {7, 11})
        if (extra < inView.size())
            m_tree->rows()->Selected(inView[extra], 1, true);
    m_tree->rows()->Selected(current, 1, true);
    m_tree->picOut()->setFocus();
    m_tree->Refresh(false);
    updateStatus();
}

void DemoWindow::applyLineStyle(int style) {
    m_tree->setLineStyle(style);
}

void DemoWindow::applyFocusType(int type) {
    m_tree->setFocusType(type == 0 ? lsSelectFullRow : lsSelectCell);
    m_tree->Refresh(false);
}

void DemoWindow::applyColumns(int columns) {
    m_tree->setAutoRedraw(false);
    m_loader.setColumnCount(columns);
    m_tree->setAutoRedraw(true);
}

void DemoWindow::applyHeaders(int headers) {
    m_tree->setAutoRedraw(false);
    m_tree->setHeaders(static_cast<qint16>(headers));
    m_loader.labelHeaders();
    m_loader.matchHeaderWidths();
    m_tree->setAutoRedraw(true);
}

void DemoWindow::applyMultiSelect(bool on) {
    m_tree->setMultiSelect(on);
    // Leaving multiple selection keeps only the current row selected.
    if (!on && m_tree->Row() > 0)
        m_tree->SelectItem(m_tree->Row());
}

void DemoWindow::setAllExpanded(bool open) {
    QElapsedTimer clock;
    clock.start();
    m_tree->setAutoRedraw(false);
    // The view keeps its first row when branches close, even when that row disappears in a
    // closed branch: go back to the top first.
    if (!open && m_tree->scrY()->isVisible())
        m_tree->scrY()->setValue(m_tree->scrY()->minimum());
    for (qint32 i = 1; i <= m_tree->Rows(); ++i) {
        const lsNodePtr row = m_tree->Nodes(i);
        if (!row || !row->HasChild() || row->Expanded() == open)
            continue;
        if (open)
            m_tree->Expand(i);
        else
            m_tree->Collapse(i);
    }
    m_tree->setAutoRedraw(true);
    statusBar()->showMessage(
        tr("%1 in %2 ms").arg(open ? tr("Expanded all") : tr("Collapsed all")).arg(clock.elapsed()),
        4000);
}

void DemoWindow::saveLayout() {
    const QString path = QFileDialog::getSaveFileName(this, tr("Save layout"), m_layoutPath,
                                                      tr("Layout files (*.json);;All files (*)"));
    if (path.isEmpty())
        return;
    QString error;
    if (!saveLayoutTo(path, &error)) {
        QMessageBox::critical(this, tr("Save layout"), error);
        return;
    }
    m_layoutPath = path;
    statusBar()->showMessage(tr("Layout saved to %1").arg(path), 5000);
}

void DemoWindow::loadLayout() {
    const QString path = QFileDialog::getOpenFileName(this, tr("Load layout"), m_layoutPath,
                                                      tr("Layout files (*.json);;All files (*)"));
    if (path.isEmpty())
        return;
    QString error;
    if (!loadLayoutFrom(path, &error)) {
        QMessageBox::critical(this, tr("Load layout"), error);
        return;
    }
    m_layoutPath = path;
    statusBar()->showMessage(tr("Layout loaded from %1").arg(path), 5000);
}

bool DemoWindow::saveLayoutTo(const QString &path, QString *error) const {
    PropertyBag bag;
    m_tree->WriteProperties(bag);
    QVariantMap widths;
    for (qint32 c = 1; c <= m_tree->Columns(); ++c)
        if (const qint32 width = m_tree->ColumnWidth(c); width > 0)
            widths.insert(QString::number(c), width / TreeLoader::TwipsPerPixel);
    bag.WriteProperty(ColumnWidthsKey, widths, QVariantMap());
    QString reason;
    if (bag.save(path, &reason))
        return true;
    if (error)
        *error = tr("The layout could not be written to %1:\n%2").arg(path, reason);
    return false;
}

bool DemoWindow::loadLayoutFrom(const QString &path, QString *error) {
    PropertyBag bag;
    QString reason;
    if (!bag.load(path, &reason)) {
        if (error)
            *error = tr("%1 could not be read:\n%2").arg(path, reason);
        return false;
    }
    const qint32 columnsBefore = m_tree->Columns();
    QVariantMap widths;
    try {
        // Read first: a bad entry of the demo's must leave the control as it was, too.
        widths = bag.ReadProperty(ColumnWidthsKey, QVariantMap()).toMap();
        m_tree->ReadProperties(bag);
    } catch (const TreeListError &e) {
        // The control reads every value before it applies any: it is unchanged.
        if (error)
            *error = tr("%1 is not a layout for this control:\n%2 (error %3)")
                         .arg(path, e.description())
                         .arg(e.number());
        return false;
    }
    m_tree->setAutoRedraw(false);
    m_loader.refillColumns(columnsBefore + 1);
    m_loader.labelHeaders();
    m_loader.matchHeaderWidths();
    for (auto it = widths.cbegin(); it != widths.cend(); ++it) {
        const qint32 column = it.key().toInt();
        const qint32 width = it.value().toInt();
        if (column >= 1 && column <= m_tree->Columns() && width > 0)
            m_tree->setColumnWidth(column, width * TreeLoader::TwipsPerPixel);
    }
    m_tree->setAutoRedraw(true);
    m_tree->Refresh(true);
    syncPanel();
    return true;
}

void DemoWindow::syncPanel() {
    const QSignalBlocker blockLines(m_lineStyle);
    const QSignalBlocker blockFocus(m_focusType);
    const QSignalBlocker blockHeight(m_rowHeight);
    const QSignalBlocker blockColumns(m_columns);
    const QSignalBlocker blockHeaders(m_headers);
    const QSignalBlocker blockMulti(m_multiSelect);
    m_lineStyle->setCurrentIndex(std::clamp<int>(m_tree->LineStyle(), 0, 2));
    m_focusType->setCurrentIndex(m_tree->FocusType() == lsSelectFullRow ? 0 : 1);
    m_rowHeight->setValue(m_tree->RowHeight());
    m_columns->setValue(m_tree->Columns());
    m_headers->setValue(m_tree->Headers());
    m_multiSelect->setChecked(m_tree->MultiSelect());
}

void DemoWindow::updateStatus() {
    m_rowsLabel->setText(tr("%L1 rows").arg(m_tree->Rows()));
    const lsNodePtr current = m_tree->Row() > 0 ? m_tree->Nodes(m_tree->Row()) : nullptr;
    if (!current)
        m_cellLabel->setText(tr("No row selected"));
    else if (!current->Visible())
        m_cellLabel->setText(tr("Current row hidden in a closed branch"));
    else
        m_cellLabel->setText(tr("Row %1, column %2").arg(m_tree->Row()).arg(m_tree->Col()));
    m_timeLabel->setText(tr("Last frame %1 ms").arg(m_frames->lastFrameMs(), 0, 'f', 1));
}
