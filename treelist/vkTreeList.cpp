// vkTreeList: the facade. It makes the children and the parts that do the work (the frame keeper,
// the viewport, the input, the column geometry), wires Qt's calls into them through the one
// guard, and forwards the host's calls.

#include "vkTreeList.h"

#include "TreeListViewport.h"

#include "ColumnGeometry.h"
#include "FrameKeeper.h"
#include "TreeListInput.h"

#include "PropertyNotify.h"

#include "Bevel.h"
#include "BuiltinPictures.h"
#include "EntryGuard.h"
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

namespace {} // namespace

vkTreeList::vkTreeList(QWidget *parent, HostContainer *host)
    : QWidget(parent), m_frames(std::make_unique<FrameKeeper>(*this)),
      m_view(std::make_unique<TreeListViewport>(*this)),
      m_input(std::make_unique<TreeListInput>(*this)),
      m_columnGeometry(std::make_unique<ColumnGeometry>(*this)), m_host(host),
      m_guard(std::make_unique<EntryGuard>(
          [this](qint32 number, const QString &text) { emit OnError(number, text); })) {
    if (!m_host) {
        m_ownHost = std::make_unique<HostContainer>();
        m_host = m_ownHost.get();
    }
    // The border is the control's own; a desktop has no safe area, and asking for one on every
    // layout walks up to the window each time.
    setAttribute(Qt::WA_ContentsMarginsRespectsSafeArea, false);
    m_picOut = new PictureBox(this);
    m_picOut->setFont(m_host->AmbientFont());
    // Made after the drawing child, the bars and the corner filler lie over its edges.
    m_scrY = new QScrollBar(Qt::Vertical, this);
    m_scrX = new QScrollBar(Qt::Horizontal, this);
    m_imgGhost = new QLabel(this);
    m_imgGhost->setAutoFillBackground(true);
    QPalette ghost = m_imgGhost->palette();
    ghost.setColor(QPalette::Window, QColor::fromRgb(oleTranslateColor(0x8000000F)));
    m_imgGhost->setPalette(ghost);
    m_scrX->hide();
    m_scrY->hide();
    m_imgGhost->hide();

    connect(m_scrY, &QScrollBar::valueChanged, this, [this](int value) {
        guarded("vertical scroll", [&] { m_view->onVerticalScroll(value); });
    });
    connect(m_scrX, &QScrollBar::valueChanged, this, [this](int value) {
        guarded("horizontal scroll", [&] { m_view->onHorizontalScroll(value); });
    });
    connect(m_picOut, &PictureBox::paintRequested, this, [this] {
        guarded("paint", [&] {
            m_frames->RedrawFrame(true);
            // The frame was copied over the screen: a column drag's line goes back on top.
            m_columnGeometry->redrawDragLine();
        });
    });
    connect(m_picOut, &PictureBox::focusChanged, this, [this](bool focused) {
        guarded("focus change", [&] {
            // While the editor is open the grid keeps looking focused.
            if (!focused && m_editing)
                return;
            m_hasFocus = focused;
            m_frames->RedrawFrame(false);
        });
    });
    connectInput();
    connectEditor();

    Initialize();
    setAppearance(m_settings.appearance);
    // Created the way Qt creates widgets (a form, a layout, new with a parent and nothing more),
    // the control must already be a new instance with its header row.
    InitProperties();
}

vkTreeList::~vkTreeList() {
    // The children outlive this destructor (QWidget deletes them later) and may still report
    // focus or values; nothing of this class may hear them any more.
    for (QObject *child : {static_cast<QObject *>(m_picOut), static_cast<QObject *>(m_scrX),
                           static_cast<QObject *>(m_scrY), static_cast<QObject *>(m_lseMisc)})
        child->disconnect(this);
    Terminate();
}

void vkTreeList::connectInput() {
    PictureBox *pic = m_picOut;
    connect(pic, &PictureBox::mousePressed, this, [this](QMouseEvent *e) {
        m_hasFocus = true;
        guarded("mouse press", [&] { m_input->onMousePress(*e); });
    });
    connect(pic, &PictureBox::mouseDoubleClicked, this,
            [this] { guarded("double click", [&] { m_input->onMouseDoubleClick(); }); });
    connect(pic, &PictureBox::mouseMoved, this,
            [this](QMouseEvent *e) { guarded("mouse move", [&] { m_input->onMouseMove(*e); }); });
    connect(pic, &PictureBox::mouseReleased, this, [this](QMouseEvent *e) {
        guarded("mouse release", [&] { m_input->onMouseRelease(*e); });
    });
    connect(pic, &PictureBox::wheelTurned, this,
            [this](QWheelEvent *e) { guarded("wheel", [&] { m_input->onWheel(*e); }); });
    connect(pic, &PictureBox::keyPressed, this,
            [this](QKeyEvent *e) { guarded("key press", [&] { m_input->onKeyPress(*e); }); });
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
        hit->locate(*x + std::abs(double(m_view->offset())), *y, m_settings.rowHeight,
                    m_headers.get(), m_rows.get(), Button, Shift);
    else
        hit->Refresh(X, Y, m_settings.rowHeight, m_headers.get(), m_rows.get(), Button, Shift);
    return hit;
}

const lsHitTest *vkTreeList::lastHit() const {
    return m_input->lastHit();
}

// --- Life cycle ---------------------------------------------------------------------------------

void vkTreeList::Initialize() {
    m_headers = std::make_unique<lsNodes>();
    m_rows = std::make_unique<lsNodes>();
    m_input->resetHit();
    m_ident = std::make_unique<lsIdent>();
    m_ident->setPosLeft(3);
    m_ident->setPosTop(3);
    m_settings.rowHeight = TreeListSettings().rowHeight;
    m_view->reset();
    m_lseMisc->setScaleMode(m_settings.scaleMode);
    for (int i = 0; i < 6; ++i)
        m_pictures[static_cast<size_t>(i)] = ::builtinPicture(101 + i);
}

void vkTreeList::Terminate() {
    if (m_terminated)
        return;
    m_terminated = true;
    // Clearing counts rows in 16 bits and overflows past 32767; shutting down must not throw, and
    // the collections' own destructors release whatever a failed clear left.
    for (lsNodes *nodes : {m_rows.get(), m_headers.get()}) {
        try {
            nodes->Clear();
        } catch (const TreeListError &) {
        }
    }
    m_rows.reset();
    m_headers.reset();
    m_input->releaseHit();
    m_ident.reset();
    m_frames->release();
    for (StdPicturePtr &picture : m_pictures)
        picture.reset();
}

void vkTreeList::buildDesignSample() {
    if (m_host->AmbientUserMode()) {
        Clear();
        m_settings.headerCount = 0;
        m_settings.columns = 0;
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
        return m_rows->Item(QVariant::fromValue<qint32>(index));
    };
    m_rows->setExpanded(add("", lsNext, "Node1", "Row1"), true);
    add("Node1", lsChild, "Node11", "Row2");
    const lsNodePtr row3 = add("Node1", lsChild, "Node12", "Row3");
    fillSampleTexts(row3->Index());
    m_rows->Selected(row3->Index(), 1);
    m_rows->setExpanded(add("Node1", lsChild, "Node13", "Row4"), true);
    add("Node13", lsChild, "Node#131", "Row5");
    fillSampleTexts(add("Node13", lsChild, "Node#132", "Row6")->Index());
    setHeaders(1);
    setAutoRedraw(true);
}

void vkTreeList::fillSampleTexts(qint32 rowIndex) {
    for (qint32 c = 1; c <= m_settings.columns; ++c)
        setListCell(lslcData, rowIndex, c, QStringLiteral("Cell#%1%2").arg(rowIndex).arg(c));
}

void vkTreeList::guarded(const char *entry, const std::function<void()> &call) {
    m_guard->run(entry, call);
}

qint64 vkTreeList::failedEntries() const {
    return m_guard->failures();
}

qint16 vkTreeList::virtualKeyCode(int qtKey) {
    return ::virtualKeyCode(qtKey);
}

void vkTreeList::notify(const QString &key) {
    emit PropertyChanged(key);
    emitPropertyNotify(*this, key);
}

QSize vkTreeList::sizeHint() const {
    return {320,
            m_settings.rowHeight * (m_settings.headerCount + 12) + 2 * TreeListSettings::kBorder3D};
}

QSize vkTreeList::minimumSizeHint() const {
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {3 * bar + 2 * TreeListSettings::kBorder3D,
            m_settings.rowHeight * (m_settings.headerCount + 1) + bar +
                2 * TreeListSettings::kBorder3D};
}

void vkTreeList::onResize() {
    if (!m_rows)
        return;
    // The drawing child takes the whole inner area; the bars lie over its right and bottom
    // edges, which is why line capacity subtracts the horizontal bar's height.
    m_picOut->setGeometry(contentsRect());
    const bool moreLines = m_view->lineCapacity();
    m_view->layoutScrollBars();
    m_host->DoEvents();
    m_frames->RedrawFrame(!moreLines);
}

QVariant vkTreeList::EnsureVisible(const QVariant &IndexKey) {
    m_view->ensureVisible(IndexKey);
    return QVariant();
}

qint32 vkTreeList::FirstDisplayedRow() const {
    return m_view->firstRow();
}

qint16 vkTreeList::VisibleLineCount() const {
    return m_view->lineCount();
}

qint32 vkTreeList::HorizontalOffset() const {
    return m_view->offset();
}

qint32 vkTreeList::ColumnWidth(qint32 ColID) const {
    return m_columnGeometry->width(ColID);
}

void vkTreeList::setColumnWidth(qint32 ColID, qint32 width) {
    m_columnGeometry->setWidth(ColID, width);
}

bool vkTreeList::AutoSize(qint32 ColID) {
    m_columnGeometry->autoSize(ColID);
    return false;
}

void vkTreeList::Refresh(bool Clear) {
    if (Clear)
        m_picOut->Cls();
    m_frames->RedrawFrame(false);
}

const OffScreenDC *vkTreeList::surface() {
    return m_frames->surface();
}

float vkTreeList::ReDrawTime() const {
    return m_frames->redrawTime();
}

qint32 vkTreeList::LastPaintedRow() const {
    return m_frames->lastPaintedRow();
}

StdPicturePtr vkTreeList::builtinPicture(int number) const {
    if (number < 101 || number > 106)
        return nullptr;
    return m_pictures[static_cast<size_t>(number - 101)];
}

// --- Window events ------------------------------------------------------------------------------

void vkTreeList::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && m_rows)
        guarded("enabled change", [&] { syncEnabled(); });
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
    if (Enabled() == m_ownEnabled)
        return;
    m_ownEnabled = Enabled();
    notify("Enabled");
    m_frames->RedrawFrame(false);
}

void vkTreeList::paintEvent(QPaintEvent *) {
    if (m_settings.appearance == lsApp3D)
        guarded("border paint", [&] { paintBorder(); });
}

void vkTreeList::paintBorder() {
    // The classic sunken client edge: the control looks set into its form.
    static constexpr BevelRing SunkenBorder[] = {{SysButtonShadow, SysButtonHighlight},
                                                 {Sys3DDarkShadow, Sys3DLight}};
    QPainter p(this);
    const QRect r = rect().adjusted(0, 0, -1, -1);
    // Lines with a cosmetic pen stay one device pixel wide on a scaled screen, as edges should.
    drawBevelRuns(r.left(), r.top(), r.right(), r.bottom(), SunkenBorder,
                  [&](const QRect &run, OleColor color) {
                      p.setPen(QColor::fromRgb(oleTranslateColor(color)));
                      p.drawLine(run.topLeft(), run.bottomRight());
                  });
}

void vkTreeList::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    guarded("resize", [&] { onResize(); });
}
