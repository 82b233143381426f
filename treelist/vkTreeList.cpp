// vkTreeList: life cycle, simple properties and persistence.
// Rows, cells, columns and headers are in vkTreeListRows.cpp; the viewport and painting in
// vkTreeListView.cpp.

#include "vkTreeList.h"

#include "PropertyNotify.h"

#include "Bevel.h"
#include "BuiltinPictures.h"
#include "EntryGuard.h"
#include "KeyCodes.h"
#include "PictureBox.h"
#include "SystemColors.h"
#include "lsEdit.h"

#include <QLabel>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStyle>

namespace {

constexpr OleColor kDefaultForeColor = 0x80000008;
constexpr OleColor kDefaultBackColor = 0x80000005;
constexpr qint32 kBorder3D = 2;

qint16 vbBool(bool v) {
    return v ? -1 : 0;
}

} // namespace

vkTreeList::vkTreeList(QWidget *parent, HostContainer *host)
    : QWidget(parent), m_host(host),
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

    connect(m_scrY, &QScrollBar::valueChanged, this,
            [this](int value) { guarded("vertical scroll", [&] { onVerticalScroll(value); }); });
    connect(m_scrX, &QScrollBar::valueChanged, this, [this](int value) {
        guarded("horizontal scroll", [&] { onHorizontalScroll(value); });
    });
    connect(m_picOut, &PictureBox::paintRequested, this, [this] {
        guarded("paint", [&] {
            RedrawFrame(true);
            // The frame was copied over the screen: a column drag's line goes back on top.
            if (m_dragging)
                m_picOut->invertVerticalLine(m_dragX);
        });
    });
    connect(m_picOut, &PictureBox::focusChanged, this, [this](bool focused) {
        guarded("focus change", [&] {
            // While the editor is open the grid keeps looking focused.
            if (!focused && m_editing)
                return;
            m_hasFocus = focused;
            RedrawFrame(false);
        });
    });
    connectInput();
    connectEditor();

    Initialize();
    setAppearance(m_appearance);
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

// --- Life cycle ---------------------------------------------------------------------------------

void vkTreeList::Initialize() {
    m_headers = std::make_unique<lsNodes>();
    m_rows = std::make_unique<lsNodes>();
    m_hit = std::make_shared<lsHitTest>();
    m_ident = std::make_unique<lsIdent>();
    m_ident->setPosLeft(3);
    m_ident->setPosTop(3);
    m_rowHeight = 18;
    m_visibleLineCount = 0;
    m_displayedRowCount = 0;
    m_firstDisplayedRow = 0;
    m_horizontalOffset = 0;
    m_lseMisc->setScaleMode(m_scaleMode);
    for (int i = 0; i < 6; ++i)
        m_pictures[static_cast<size_t>(i)] = ::builtinPicture(101 + i);
}

void vkTreeList::InitProperties() {
    m_autoRedraw = true;
    m_columns = 1;
    m_editMode = lsEditTextBox;
    m_focusType = lsSelectCell;
    m_headerCount = 1;
    m_rowHeight = 18;
    m_lineStyle = lsLineSolid;
    m_defaultColumnWidth = 1200;
    m_expandOnDoubleClick = true;
    m_componentVersion = QVariant::fromValue<qint16>(0);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor::fromRgb(oleTranslateColor(m_picOut->BackColor())));
    setPalette(pal);
    m_multiSelect = false;
    m_autoSelectNew = true;
    if (!m_host->AmbientUserMode()) {
        buildDesignSample();
        Refresh(true);
    } else {
        // A Qt host creates its controls in code rather than loading them from a saved form, so
        // a new control starts the way a saved default one loads: one header row, one column.
        setHeaders(static_cast<qint16>(m_headerCount));
    }
}

void vkTreeList::ReadProperties(const PropertyBag &bag) {
    // Everything is read into temporaries first: a value of the wrong type fails the load
    // before anything of the control has changed.
    const auto i16 = [&](const char *key, qint16 def) {
        return bag.ReadProperty(QLatin1String(key), QVariant::fromValue<qint16>(def))
            .value<qint16>();
    };
    const auto i32 = [&](const char *key, qint32 def) {
        return bag.ReadProperty(QLatin1String(key), QVariant::fromValue<qint32>(def))
            .value<qint32>();
    };
    // Colours load in either their unsigned or their signed 32-bit form.
    const auto u32 = [&](const char *key, quint32 def) {
        return bag.ReadProperty(QLatin1String(key), QVariant::fromValue<quint32>(def))
            .value<quint32>();
    };
    const auto flag = [&](const char *key, bool def) {
        return bag.ReadProperty(QLatin1String(key), def).toBool();
    };
    // Checks made here rather than by the bag name their property too.
    const auto checked = [&](const char *key, const auto &check) {
        try {
            return check();
        } catch (const TreeListError &e) {
            throw bag.errorAt(QLatin1String(key), e);
        }
    };
    const bool autoRedraw = flag("AutoRedraw", true);
    // 32-bit fields keep all their bits in the file: an enumerated value is stored as given.
    const qint32 columns = i32("Columns", 1);
    // Counts the Headers and Columns puts below would refuse fail the load here, whole.
    checked("Columns", [&] { return toInt16(columns); });
    const qint32 editMode = i32("EditMode", 0);
    const qint32 focusType = i32("FocusType", 1);
    const qint16 headers = i16("Headers", 1);
    checked("Headers", [&] {
        checkCellCount(qint64(m_rows->Count()) + std::max<qint16>(headers, 0), columns);
    });
    const qint32 rowHeight = i32("RowHeight", 18);
    const qint32 lineStyle = i32("LineStyle", 1);
    const qint32 columnWidth = i32("ColumnWidth", 1200);
    const QVariant imageListName = bag.ReadProperty(QStringLiteral("ImageList"), QVariant());
    const bool enabled = flag("Enabled", true);
    const qint16 appearance = i16("Appearance", 1);
    const QVariant ambient = stdFontToVariant(m_host->AmbientFont());
    const QVariant fontValue = bag.ReadProperty(QStringLiteral("Font"), ambient);
    const StdFontPtr font = checked("Font", [&] { return stdFontFromVariant(fontValue.toMap()); });
    const quint32 foreColor = u32("ForeColor", kDefaultForeColor);
    const quint32 backColor = u32("BackColor", kDefaultBackColor);
    const qint16 multiSelect = i16("MultiSelect", 0);
    const bool autoSelectNew = flag("AutoSelectNew", true);
    const qint16 componentVersion = i16("ComponentVersion", 0);
    const qint16 expandOnDoubleClick = i16("ExpandOnDoubleClick", -1);

    m_autoRedraw = autoRedraw;
    m_editMode = editMode;
    m_focusType = focusType;
    m_headerCount = headers;
    m_rowHeight = rowHeight;
    m_lineStyle = lineStyle;
    m_defaultColumnWidth = columnWidth;
    m_imageList =
        imageListName.isValid() ? m_host->findImageList(imageListName.toString()) : nullptr;
    setEnabled(enabled);
    setAppearance(appearance);
    m_picOut->setFont(font);
    m_picOut->setForeColor(foreColor);
    m_picOut->setBackColor(backColor);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor::fromRgb(oleTranslateColor(backColor)));
    setPalette(pal);
    // The rows already there have the old column count (a new control has its header row), so
    // the count is not stored ahead of the puts: the Headers put builds its rows with the old
    // count and the Columns put then brings every header and data row to the loaded one. A count
    // below 1 is ignored, as the put ignores it.
    setHeaders(headers);
    setColumns(columns);
    m_multiSelect = multiSelect != 0;
    m_autoSelectNew = autoSelectNew;
    m_componentVersion = QVariant::fromValue<qint16>(componentVersion);
    m_expandOnDoubleClick = expandOnDoubleClick != 0;
}

void vkTreeList::WriteProperties(PropertyBag &bag) const {
    const auto i16 = [](qint32 v) { return QVariant::fromValue<qint16>(static_cast<qint16>(v)); };
    const auto i32 = [](qint32 v) { return QVariant::fromValue<qint32>(v); };
    bag.WriteProperty("AutoRedraw", m_autoRedraw, true);
    bag.WriteProperty("Columns", i32(m_columns), i32(1));
    bag.WriteProperty("EditMode", i32(m_editMode), i32(0));
    bag.WriteProperty("FocusType", i32(m_focusType), i32(1));
    bag.WriteProperty("Headers", i16(m_headerCount), i16(1));
    bag.WriteProperty("RowHeight", i32(m_rowHeight), i32(18));
    bag.WriteProperty("Enabled", Enabled(), true);
    bag.WriteProperty("Appearance", i16(m_appearance), i16(1));
    bag.WriteProperty("BackColor", QVariant::fromValue<quint32>(m_picOut->BackColor()),
                      QVariant::fromValue<quint32>(kDefaultBackColor));
    bag.WriteProperty("Font", stdFontToVariant(m_picOut->Font()),
                      stdFontToVariant(m_host->AmbientFont()));
    bag.WriteProperty("ForeColor", QVariant::fromValue<quint32>(m_picOut->ForeColor()),
                      QVariant::fromValue<quint32>(kDefaultForeColor));
    const QString listName = m_host->imageListName(m_imageList);
    bag.WriteProperty("ImageList", listName.isEmpty() ? QVariant() : QVariant(listName),
                      QVariant());
    bag.WriteProperty("LineStyle", i32(m_lineStyle), i32(1));
    bag.WriteProperty("ColumnWidth", i32(m_defaultColumnWidth), i32(1200));
    bag.WriteProperty("MultiSelect", i16(vbBool(m_multiSelect)), i16(0));
    bag.WriteProperty("AutoSelectNew", m_autoSelectNew, true);
    bag.WriteProperty("ComponentVersion", i16(m_componentVersion.toInt()), i16(0));
    bag.WriteProperty("ExpandOnDoubleClick", i16(vbBool(m_expandOnDoubleClick)), i16(-1));
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
    m_hit.reset();
    m_ident.reset();
    m_surface.reset();
    m_spareSurface.reset();
    for (StdPicturePtr &picture : m_pictures)
        picture.reset();
}

void vkTreeList::buildDesignSample() {
    if (m_host->AmbientUserMode()) {
        Clear();
        m_headerCount = 0;
        m_columns = 0;
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
    for (qint32 c = 1; c <= m_columns; ++c)
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
    return {320, m_rowHeight * (m_headerCount + 12) + 2 * kBorder3D};
}

QSize vkTreeList::minimumSizeHint() const {
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {3 * bar + 2 * kBorder3D, m_rowHeight * (m_headerCount + 1) + bar + 2 * kBorder3D};
}

// --- Properties ---------------------------------------------------------------------------------

void vkTreeList::setAppearance(qint32 value) {
    m_appearance = toInt16(value);
    const int border = m_appearance == lsApp3D ? kBorder3D : 0;
    setContentsMargins(border, border, border, border);
    notify("Appearance");
    RedrawFrame(false);
}

void vkTreeList::setAutoRedraw(bool value) {
    // Turned off, the control keeps showing the frame of its last repaint.
    settlePixels();
    m_autoRedraw = value;
    notify("AutoRedraw");
    if (value)
        Refresh(false);
}

OleColor vkTreeList::BackColor() const {
    return m_picOut->BackColor();
}

void vkTreeList::setBackColor(OleColor value) {
    // No repaint follows: the frame shows the look of the last repaint.
    settlePixels();
    m_picOut->setBackColor(value);
    notify("BackColor");
}

void vkTreeList::setEditMode(qint32 value) {
    m_editMode = value;
    notify("EditMode");
}

void vkTreeList::setFocusType(qint32 value) {
    // No repaint follows: the frame shows the look of the last repaint.
    settlePixels();
    m_focusType = value;
    notify("FocusType");
}

StdFontPtr vkTreeList::Font() const {
    return m_picOut->Font();
}

void vkTreeList::setFont(const StdFontPtr &font) {
    if (!font)
        throw TreeListError(TreeListError::TypeMismatch);
    settlePixels();
    m_picOut->setFont(font);
    notify("Font");
}

OleColor vkTreeList::ForeColor() const {
    return m_picOut->ForeColor();
}

void vkTreeList::setForeColor(OleColor value) {
    // No repaint follows: the frame shows the look of the last repaint.
    settlePixels();
    m_picOut->setForeColor(value);
    notify("ForeColor");
}

void vkTreeList::setImageList(const lsImageListPtr &list) {
    // No repaint follows: the frame shows the look of the last repaint.
    settlePixels();
    m_imageList = list;
    notify("ImageList");
}

QString vkTreeList::imageListName() const {
    return m_host->imageListName(m_imageList);
}

void vkTreeList::setImageListName(const QString &name) {
    setImageList(name.isEmpty() ? nullptr : m_host->findImageList(name));
}

QFont vkTreeList::qtFont() const {
    return stdFontToQFont(Font());
}

void vkTreeList::setQtFont(const QFont &font) {
    setFont(stdFontFromQFont(font));
}

void vkTreeList::setLineStyle(qint32 value) {
    m_lineStyle = value;
    notify("LineStyle");
    RedrawFrame(false);
}

void vkTreeList::setRowHeight(qint32 value) {
    // Out-of-range heights are ignored without an error, on purpose.
    if (value < 16 || value > 255)
        return;
    m_rowHeight = value;
    notify("RowHeight");
    RedrawFrame(false);
}

void vkTreeList::setMultiSelect(bool value) {
    // No repaint follows: the frame shows the look of the last repaint.
    settlePixels();
    m_multiSelect = value;
    notify("MultiSelect");
}

void vkTreeList::setAutoSelectNew(bool value) {
    m_autoSelectNew = value;
    notify("AutoSelectNew");
}

void vkTreeList::setExpandOnDoubleClick(bool value) {
    m_expandOnDoubleClick = value;
    notify("ExpandOnDoubleClick");
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
    RedrawFrame(false);
}

void vkTreeList::paintEvent(QPaintEvent *) {
    if (m_appearance == lsApp3D)
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
