// vkTreeList: the facade. It makes the children and the parts that do the work (the frame keeper,
// the viewport, the input, the column geometry), wires Qt's calls into them through the one
// guard, and forwards the host's calls.

#include "vkTreeList.h"

#include "ColumnGeometry.h"
#include "FrameKeeper.h"
#include "PropertyNotify.h"
#include "TreeListAccessibility.h"
#include "TreeListAccessible.h"
#include "TreeListInput.h"
#include "TreeListState.h"
#include "TreeListViewport.h"

#include "Bevel.h"
#include "BuiltinPictures.h"
#include "EntryGuard.h"
#include "InheritedPalette.h"
#include "KeyCodes.h"
#include "PictureBox.h"
#include "SystemColors.h"
#include "VariantNumber.h"
#include "lsEdit.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

TreeListState::TreeListState() = default;
TreeListState::~TreeListState() = default;

vkTreeList::vkTreeList(QWidget *parent, HostContainer *host)
    : QWidget(parent), d(std::make_unique<TreeListState>()) {
    d->frames = std::make_unique<FrameKeeper>(*this);
    d->view = std::make_unique<TreeListViewport>(*this);
    d->input = std::make_unique<TreeListInput>(*this);
    d->columnGeometry = std::make_unique<ColumnGeometry>(*this);
    d->accessibility = std::make_unique<TreeListAccessibility>(*this);
    TreeListAccessible::install();
    d->host = host;
    d->guard = std::make_unique<EntryGuard>(
        [this](qint32 number, const QString &text) { emit OnError(number, text); });
    if (!d->host) {
        d->ownHost = std::make_unique<HostContainer>();
        d->host = d->ownHost.get();
    }
    // The border is the control's own; a desktop has no safe area, and asking for one on every
    // layout walks up to the window each time.
    setAttribute(Qt::WA_ContentsMarginsRespectsSafeArea, false);
    d->picOut = new PictureBox(this);
    d->picOut->setFont(d->host->AmbientFont());
    // Made after the drawing child, the bars and the corner filler lie over its edges.
    d->scrY = new QScrollBar(Qt::Vertical, this);
    d->scrX = new QScrollBar(Qt::Horizontal, this);
    d->imgGhost = new QLabel(this);
    // The corner between the bars is a button face, as the bars are.
    d->imgGhost->setAutoFillBackground(true);
    d->imgGhost->setBackgroundRole(QPalette::Button);
    d->scrX->hide();
    d->scrY->hide();
    d->imgGhost->hide();

    connect(d->scrY, &QScrollBar::valueChanged, this, [this](int value) {
        guarded("vertical scroll", [&] { d->view->onVerticalScroll(value); });
    });
    connect(d->scrX, &QScrollBar::valueChanged, this, [this](int value) {
        guarded("horizontal scroll", [&] { d->view->onHorizontalScroll(value); });
    });
    connect(d->picOut, &PictureBox::paintRequested, this, [this] {
        guarded("paint", [&] {
            d->frames->RedrawFrame(true);
            // The frame was copied over the screen: a column drag's line goes back on top.
            d->columnGeometry->redrawDragLine();
        });
    });
    connect(d->picOut, &PictureBox::focusChanged, this, [this](bool focused) {
        guarded("focus change", [&] {
            // While the editor is open the grid keeps looking focused.
            if (!focused && d->editing)
                return;
            d->hasFocus = focused;
            d->frames->RedrawFrame(false);
            if (focused)
                d->accessibility->focused();
        });
    });
    connectInput();
    connectEditor();

    Initialize();
    setAppearance(d->settings.appearance);
    // Created the way Qt creates widgets (a form, a layout, new with a parent and nothing more),
    // the control must already be a new instance with its header row.
    InitProperties();
}

vkTreeList::~vkTreeList() {
    // The children outlive this destructor (QWidget deletes them later) and may still report
    // focus or values; nothing of this class may hear them any more.
    for (QObject *child : {static_cast<QObject *>(d->picOut), static_cast<QObject *>(d->scrX),
                           static_cast<QObject *>(d->scrY), static_cast<QObject *>(d->lseMisc)})
        child->disconnect(this);
    Terminate();
}

void vkTreeList::connectInput() {
    PictureBox *pic = d->picOut;
    connect(pic, &PictureBox::mousePressed, this, [this](QMouseEvent *e) {
        d->hasFocus = true;
        guarded("mouse press", [&] { d->input->onMousePress(*e); });
    });
    connect(pic, &PictureBox::mouseDoubleClicked, this,
            [this] { guarded("double click", [&] { d->input->onMouseDoubleClick(); }); });
    connect(pic, &PictureBox::mouseMoved, this,
            [this](QMouseEvent *e) { guarded("mouse move", [&] { d->input->onMouseMove(*e); }); });
    connect(pic, &PictureBox::mouseReleased, this, [this](QMouseEvent *e) {
        guarded("mouse release", [&] { d->input->onMouseRelease(*e); });
    });
    connect(pic, &PictureBox::toolTipAsked, this,
            [this](QHelpEvent *e) { guarded("tooltip", [&] { d->input->onToolTip(*e); }); });
    connect(pic, &PictureBox::wheelTurned, this,
            [this](QWheelEvent *e) { guarded("wheel", [&] { d->input->onWheel(*e); }); });
    connect(pic, &PictureBox::keyPressed, this,
            [this](QKeyEvent *e) { guarded("key press", [&] { d->input->onKeyPress(*e); }); });
    connect(pic, &PictureBox::keyReleased, this, [this](QKeyEvent *e) {
        // An auto-repeated key sends KeyDown again, not KeyUp, until it is let go.
        if (!e->isAutoRepeat())
            guarded("key release",
                    [&] { emit KeyUp(virtualKeyCode(e->key()), shiftMask(e->modifiers())); });
    });
}

lsHitTestPtr vkTreeList::HitTest(const QVariant &X, const QVariant &Y, qint16 Button,
                                 qint16 Shift) const {
    auto hit = std::make_shared<lsHitTest>();
    // Points are on the screen; the cells lie where the unscrolled frame put them. A non-numeric
    // X or Y goes through as it is, and the hit test reports that nothing was hit.
    const std::optional<double> x = numberIn(X), y = numberIn(Y);
    if (x && y)
        hit->locate(*x + std::abs(double(d->view->offset())), *y, d->settings.rowHeight,
                    d->headers.get(), d->rows.get(), Button, Shift);
    else
        hit->Refresh(X, Y, d->settings.rowHeight, d->headers.get(), d->rows.get(), Button, Shift);
    return hit;
}

const lsHitTest *vkTreeList::lastHit() const {
    return d->input->lastHit();
}

// --- Life cycle ---------------------------------------------------------------------------------

void vkTreeList::Initialize() {
    d->headers = std::make_unique<lsNodes>();
    d->rows = std::make_unique<lsNodes>();
    d->input->resetHit();
    d->ident = std::make_unique<lsIdent>();
    d->ident->setPosLeft(3);
    d->ident->setPosTop(3);
    d->settings.rowHeight = TreeListSettings().rowHeight;
    d->view->reset();
    d->lseMisc->setScaleMode(d->settings.scaleMode);
    for (int i = 0; i < 6; ++i)
        d->pictures[static_cast<size_t>(i)] = ::builtinPicture(101 + i);
}

void vkTreeList::Terminate() {
    if (d->terminated)
        return;
    d->terminated = true;
    // Clearing counts rows in 16 bits and overflows past 32767; shutting down must not throw, and
    // the collections' own destructors release whatever a failed clear left.
    for (lsNodes *nodes : {d->rows.get(), d->headers.get()}) {
        try {
            nodes->Clear();
        } catch (const TreeListError &) {
        }
    }
    d->rows.reset();
    d->headers.reset();
    d->input->releaseHit();
    d->ident.reset();
    d->frames->release();
    for (StdPicturePtr &picture : d->pictures)
        picture.reset();
}

void vkTreeList::buildDesignSample() {
    if (d->host->AmbientUserMode()) {
        Clear();
        d->settings.headerCount = 0;
        d->settings.columns = 0;
        return;
    }
    setAutoRedraw(false);
    Clear();
    setHeaders(1);
    const auto add = [this](const char *relative, lsRelationshipConstants relation, const char *key,
                            const char *text) {
        const qint16 index =
            AddItem(QString::fromLatin1(relative), relation, QString::fromLatin1(key),
                    QString::fromLatin1(text), emptyText());
        return d->rows->Item(QVariant::fromValue<qint32>(index));
    };
    d->rows->setExpanded(add("", lsNext, "Node1", "Row1"), true);
    add("Node1", lsChild, "Node11", "Row2");
    const lsNodePtr row3 = add("Node1", lsChild, "Node12", "Row3");
    fillSampleTexts(row3->Index());
    d->rows->Selected(row3->Index(), 1);
    d->rows->setExpanded(add("Node1", lsChild, "Node13", "Row4"), true);
    add("Node13", lsChild, "Node#131", "Row5");
    fillSampleTexts(add("Node13", lsChild, "Node#132", "Row6")->Index());
    setHeaders(1);
    setAutoRedraw(true);
}

void vkTreeList::fillSampleTexts(qint32 rowIndex) {
    for (qint32 c = 1; c <= d->settings.columns; ++c)
        setListCell(lslcData, rowIndex, c, QStringLiteral("Cell#%1%2").arg(rowIndex).arg(c));
}

void vkTreeList::guarded(const char *entry, const std::function<void()> &call) {
    d->guard->run(entry, call);
}

qint64 vkTreeList::failedEntries() const {
    return d->guard->failures();
}

qint16 vkTreeList::virtualKeyCode(int qtKey) {
    return ::virtualKeyCode(qtKey);
}

void vkTreeList::notify(const QString &key) {
    emit PropertyChanged(key);
    emitPropertyNotify(*this, key);
}

QSize vkTreeList::sizeHint() const {
    return {320, d->settings.rowHeight * (d->settings.headerCount + 12) +
                     2 * TreeListSettings::kBorder3D};
}

QSize vkTreeList::minimumSizeHint() const {
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {3 * bar + 2 * TreeListSettings::kBorder3D,
            d->settings.rowHeight * (d->settings.headerCount + 1) + bar +
                2 * TreeListSettings::kBorder3D};
}

void vkTreeList::onResize() {
    if (!d->rows)
        return;
    // The drawing child takes the whole inner area; the bars lie over its right and bottom
    // edges, which is why line capacity subtracts the horizontal bar's height.
    d->picOut->setGeometry(contentsRect());
    const bool moreLines = d->view->lineCapacity();
    d->view->layoutScrollBars();
    d->host->DoEvents();
    d->frames->RedrawFrame(!moreLines);
}

QVariant vkTreeList::EnsureVisible(const QVariant &IndexKey) {
    d->view->ensureVisible(IndexKey);
    return QVariant();
}

qint32 vkTreeList::FirstDisplayedRow() const {
    return d->view->firstRow();
}

qint16 vkTreeList::VisibleLineCount() const {
    return d->view->lineCount();
}

qint32 vkTreeList::HorizontalOffset() const {
    return d->view->offset();
}

qint32 vkTreeList::ColumnWidth(qint32 ColID) const {
    return d->columnGeometry->width(ColID);
}

void vkTreeList::setColumnWidth(qint32 ColID, qint32 width) {
    d->columnGeometry->setWidth(ColID, width);
}

bool vkTreeList::AutoSize(qint32 ColID) {
    d->columnGeometry->autoSize(ColID);
    return false;
}

void vkTreeList::Refresh(bool Clear) {
    if (Clear)
        d->picOut->Cls();
    d->frames->RedrawFrame(false);
}

const OffScreenDC *vkTreeList::surface() {
    return d->frames->surface();
}

float vkTreeList::ReDrawTime() const {
    return d->frames->redrawTime();
}

qint32 vkTreeList::LastPaintedRow() const {
    return d->frames->lastPaintedRow();
}

StdPicturePtr vkTreeList::builtinPicture(int number) const {
    if (number < 101 || number > 106)
        return nullptr;
    return d->pictures[static_cast<size_t>(number - 101)];
}

// --- Window events ------------------------------------------------------------------------------

void vkTreeList::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && d->rows)
        guarded("enabled change", [&] { syncEnabled(); });
    // A new palette (the application's, a person switching to dark mode): the border takes the
    // background colour's new shade; the children repaint, and a frame made in other colours is
    // no longer the one a repaint gives.
    if (event->type() == QEvent::PaletteChange && d->picOut)
        guarded("palette change", [&] { paintBorderBackground(); });
}

void vkTreeList::setEnabled(bool value) {
    QWidget::setEnabled(value);
    // Qt reports only changes of the effective state: inside a disabled parent this put is seen
    // here alone.
    syncEnabled();
}

void vkTreeList::syncEnabled() {
    // A parent that is disabled or enabled changes how the control works, not its own Enabled:
    // only the control's own state is news for the host.
    if (Enabled() == d->ownEnabled)
        return;
    d->ownEnabled = Enabled();
    notify("Enabled");
    d->frames->RedrawFrame(false);
}

void vkTreeList::paintEvent(QPaintEvent *) {
    if (d->settings.appearance == lsApp3D)
        guarded("border paint", [&] { paintBorder(); });
}

void vkTreeList::paintBorder() {
    // The classic sunken client edge: the control looks set into its form.
    static constexpr BevelRing SunkenBorder[] = {{SysButtonShadow, SysButtonHighlight},
                                                 {Sys3DDarkShadow, Sys3DLight}};
    QPainter p(this);
    const QPalette system = inheritedPalette(*this);
    const QRect r = rect().adjusted(0, 0, -1, -1);
    // Lines with a cosmetic pen stay one device pixel wide on a scaled screen, as edges should.
    drawBevelRuns(r.left(), r.top(), r.right(), r.bottom(), SunkenBorder,
                  [&](const QRect &run, OleColor color) {
                      p.setPen(QColor::fromRgb(oleTranslateColor(color, palette())));
                      p.drawLine(run.topLeft(), run.bottomRight());
                  });
}

void vkTreeList::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    guarded("resize", [&] { onResize(); });
}

PictureBox *vkTreeList::picOut() const {
    return d->picOut;
}

QScrollBar *vkTreeList::scrX() const {
    return d->scrX;
}

QScrollBar *vkTreeList::scrY() const {
    return d->scrY;
}

QLabel *vkTreeList::imgGhost() const {
    return d->imgGhost;
}

lsNodes *vkTreeList::rows() const {
    return d->rows.get();
}

lsNodes *vkTreeList::headers() const {
    return d->headers.get();
}

bool vkTreeList::hasFocusFlag() const {
    return d->hasFocus;
}

bool vkTreeList::isEditing() const {
    return d->editing;
}
