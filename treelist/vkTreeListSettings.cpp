// vkTreeList: the settings, their accessors and the persisted ones' table, which a new control,
// a load and a save all read.

#include "vkTreeList.h"

#include "FrameKeeper.h"
#include "InheritedPalette.h"
#include "PictureBox.h"
#include "PropertyTable.h"
#include "StdFont.h"
#include "SystemColors.h"
#include "TreeListState.h"

namespace {

// Flags some properties store as 16-bit numbers (-1 true, 0 false).
QVariant numberFlag(bool v) {
    return asInt16(v ? -1 : 0);
}

const TreeListSettings kDefaults;

} // namespace

// The control's persisted properties; a friend, so the rows may reach the control's state.
struct PersistedSetting {
    static std::span<const PropertyRow<vkTreeList>> all();
};

std::span<const PropertyRow<vkTreeList>> PersistedSetting::all() {
    using T = vkTreeList;
    using V = const QVariant &;
    // In the order a load reads them, which decides the property a bad file's error names. The
    // rows already there keep the old column count (a new control has its header row): the
    // Headers put builds its rows with it (phase 1), then the Columns put brings every header and
    // data row to the loaded count (phase 2). Every other value is taken in first.
    static const PropertyRow<vkTreeList> rows[] = {
        {"AutoRedraw", [](const T &) { return QVariant(kDefaults.autoRedraw); },
         [](const T &t) { return QVariant(t.d->settings.autoRedraw); },
         [](T &t, V v) { t.d->settings.autoRedraw = v.toBool(); }, nullptr, nullptr, 0, true},
        // 32-bit fields keep all their bits in the file: an enumerated value is stored as given.
        {"Columns", [](const T &) { return asInt32(kDefaults.columns); },
         [](const T &t) { return asInt32(t.d->settings.columns); },
         [](T &t, V v) { t.setColumns(v.value<qint32>()); }, nullptr,
         [](const T &, V v, const PropertyValues &) {
             toInt16(v.value<qint32>());
             return v;
         },
         2, true},
        {"EditMode", [](const T &) { return asInt32(kDefaults.editMode); },
         [](const T &t) { return asInt32(t.d->settings.editMode); },
         [](T &t, V v) { t.d->settings.editMode = v.value<qint32>(); }, nullptr, nullptr, 0, true},
        {"FocusType", [](const T &) { return asInt32(kDefaults.focusType); },
         [](const T &t) { return asInt32(t.d->settings.focusType); },
         [](T &t, V v) { t.d->settings.focusType = v.value<qint32>(); }, nullptr, nullptr, 0, true},
        {"Headers", [](const T &) { return asInt16(kDefaults.headerCount); },
         [](const T &t) { return asInt16(t.d->settings.headerCount); },
         [](T &t, V v) { t.setHeaders(v.value<qint16>()); }, nullptr,
         [](const T &t, V v, const PropertyValues &read) {
             vkTreeList::checkCellCount(qint64(t.d->rows->Count()) +
                                            std::max<qint16>(v.value<qint16>(), 0),
                                        read.value(QStringLiteral("Columns")).value<qint32>());
             return v;
         },
         1, true},
        {"RowHeight", [](const T &) { return asInt32(kDefaults.rowHeight); },
         [](const T &t) { return asInt32(t.d->settings.rowHeight); },
         [](T &t, V v) { t.d->settings.rowHeight = v.value<qint32>(); }, nullptr, nullptr, 0, true},
        {"LineStyle", [](const T &) { return asInt32(kDefaults.lineStyle); },
         [](const T &t) { return asInt32(t.d->settings.lineStyle); },
         [](T &t, V v) { t.d->settings.lineStyle = v.value<qint32>(); }, nullptr, nullptr, 0, true},
        {"ColumnWidth", [](const T &) { return asInt32(kDefaults.defaultColumnWidth); },
         [](const T &t) { return asInt32(t.d->settings.defaultColumnWidth); },
         [](T &t, V v) { t.d->settings.defaultColumnWidth = v.value<qint32>(); }, nullptr, nullptr,
         0, true},
        // A name the host registered its image list under, or nothing.
        {"ImageList", [](const T &) { return QVariant(); },
         [](const T &t) {
             const QString name = t.d->host->imageListName(t.d->imageList);
             return name.isEmpty() ? QVariant() : QVariant(name);
         },
         [](T &t, V v) {
             t.d->imageList = v.isValid() ? t.d->host->findImageList(v.toString()) : nullptr;
         },
         nullptr, nullptr, 0, true},
        {"Enabled", [](const T &) { return QVariant(true); },
         [](const T &t) { return QVariant(t.Enabled()); },
         [](T &t, V v) { t.setEnabled(v.toBool()); }, nullptr, nullptr, 0, true},
        {"Appearance", [](const T &) { return asInt16(kDefaults.appearance); },
         [](const T &t) { return asInt16(t.d->settings.appearance); },
         [](T &t, V v) { t.setAppearance(v.value<qint16>()); }, nullptr, nullptr, 0, true},
        // The font a new control gets is the host's.
        {"Font", [](const T &t) { return stdFontToVariant(t.d->host->AmbientFont()); },
         [](const T &t) { return stdFontToVariant(t.d->picOut->Font()); },
         [](T &t, V v) { t.d->picOut->setFont(stdFontFromVariant(v.toMap())); }, nullptr,
         [](const T &, V v, const PropertyValues &) {
             stdFontFromVariant(v.toMap());
             return v;
         },
         0, true},
        // Colours load in either their unsigned or their signed 32-bit form.
        {"ForeColor", [](const T &) { return asUInt32(TreeListSettings::kForeColor); },
         [](const T &t) { return asUInt32(t.d->picOut->ForeColor()); },
         [](T &t, V v) { t.d->picOut->setForeColor(v.value<quint32>()); }, nullptr, nullptr, 0,
         true},
        {"BackColor", [](const T &) { return asUInt32(TreeListSettings::kBackColor); },
         [](const T &t) { return asUInt32(t.d->picOut->BackColor()); },
         [](T &t, V v) {
             t.d->picOut->setBackColor(v.value<quint32>());
             t.paintBorderBackground();
         },
         nullptr, nullptr, 0, true},
        {"MultiSelect", [](const T &) { return numberFlag(kDefaults.multiSelect); },
         [](const T &t) { return numberFlag(t.d->settings.multiSelect); },
         [](T &t, V v) { t.d->settings.multiSelect = v.value<qint16>() != 0; }, nullptr, nullptr, 0,
         true},
        {"AutoSelectNew", [](const T &) { return QVariant(kDefaults.autoSelectNew); },
         [](const T &t) { return QVariant(t.d->settings.autoSelectNew); },
         [](T &t, V v) { t.d->settings.autoSelectNew = v.toBool(); }, nullptr, nullptr, 0, true},
        {"ComponentVersion", [](const T &) { return asInt16(0); },
         [](const T &t) { return asInt16(t.d->settings.componentVersion.toInt()); },
         [](T &t, V v) { t.d->settings.componentVersion = asInt16(v.value<qint16>()); }, nullptr,
         nullptr, 0, true},
        {"ExpandOnDoubleClick", [](const T &) { return numberFlag(kDefaults.expandOnDoubleClick); },
         [](const T &t) { return numberFlag(t.d->settings.expandOnDoubleClick); },
         [](T &t, V v) { t.d->settings.expandOnDoubleClick = v.value<qint16>() != 0; }, nullptr,
         nullptr, 0, true},
        // Left out of a file while off, so a layout saved before they existed reads the same.
        {"KeyboardSearch", [](const T &) { return QVariant(kDefaults.keyboardSearch); },
         [](const T &t) { return QVariant(t.d->settings.keyboardSearch); },
         [](T &t, V v) { t.d->settings.keyboardSearch = v.toBool(); }, nullptr, nullptr, 0, true},
        {"ShowTips", [](const T &) { return QVariant(kDefaults.showTips); },
         [](const T &t) { return QVariant(t.d->settings.showTips); },
         [](T &t, V v) { t.d->settings.showTips = v.toBool(); }, nullptr, nullptr, 0, true},
        {"SelectionMode", [](const T &) { return asInt32(kDefaults.selectionMode); },
         [](const T &t) { return asInt32(t.d->settings.selectionMode); },
         [](T &t, V v) { t.d->settings.selectionMode = v.value<qint32>(); }, nullptr, nullptr, 0,
         true},
    };
    return rows;
}

void vkTreeList::InitProperties() {
    // Starting over leaves the border and the scale unit as the window has them.
    const qint16 appearance = d->settings.appearance;
    const qint16 scaleMode = d->settings.scaleMode;
    d->settings = TreeListSettings();
    d->settings.appearance = appearance;
    d->settings.scaleMode = scaleMode;
    paintBorderBackground();
    if (!d->host->AmbientUserMode()) {
        buildDesignSample();
        Refresh(true);
    } else {
        // A Qt host creates its controls in code rather than loading them from a saved form, so
        // a new control starts the way a saved default one loads: one header row, one column.
        setHeaders(static_cast<qint16>(d->settings.headerCount));
    }
}

void vkTreeList::ReadProperties(const PropertyBag &bag) {
    readProperties(*this, PersistedSetting::all(), bag);
}

void vkTreeList::WriteProperties(PropertyBag &bag) const {
    writeProperties(*this, PersistedSetting::all(), bag);
}

void vkTreeList::paintBorderBackground() {
    // The border strip around the drawing child shows the control's background colour.
    setOwnColours(
        *this, {{QPalette::Window, QColor::fromRgb(oleTranslateColor(d->picOut->BackColor(),
                                                                     inheritedPalette(*this)))}});
}

void vkTreeList::setAppearance(qint32 value) {
    d->settings.appearance = toInt16(value);
    const int border = d->settings.appearance == lsApp3D ? TreeListSettings::kBorder3D : 0;
    setContentsMargins(border, border, border, border);
    notify("Appearance");
    d->frames->RedrawFrame(false);
}

void vkTreeList::setAutoRedraw(bool value) {
    // Turned off, the control keeps showing the frame of its last repaint.
    d->frames->settlePixels();
    d->settings.autoRedraw = value;
    notify("AutoRedraw");
    if (value)
        Refresh(false);
}

OleColor vkTreeList::BackColor() const {
    return d->picOut->BackColor();
}

void vkTreeList::setBackColor(OleColor value) {
    // No repaint follows: the frame shows the look of the last repaint.
    d->frames->settlePixels();
    d->picOut->setBackColor(value);
    notify("BackColor");
}

void vkTreeList::setEditMode(qint32 value) {
    d->settings.editMode = value;
    notify("EditMode");
}

void vkTreeList::setFocusType(qint32 value) {
    // No repaint follows: the frame shows the look of the last repaint.
    d->frames->settlePixels();
    d->settings.focusType = value;
    notify("FocusType");
}

StdFontPtr vkTreeList::Font() const {
    return d->picOut->Font();
}

void vkTreeList::setFont(const StdFontPtr &font) {
    if (!font)
        throw TreeListError(TreeListError::TypeMismatch);
    d->frames->settlePixels();
    d->picOut->setFont(font);
    notify("Font");
}

OleColor vkTreeList::ForeColor() const {
    return d->picOut->ForeColor();
}

void vkTreeList::setForeColor(OleColor value) {
    // No repaint follows: the frame shows the look of the last repaint.
    d->frames->settlePixels();
    d->picOut->setForeColor(value);
    notify("ForeColor");
}

void vkTreeList::setImageList(const lsImageListPtr &list) {
    // No repaint follows: the frame shows the look of the last repaint.
    d->frames->settlePixels();
    d->imageList = list;
    notify("ImageList");
}

QString vkTreeList::imageListName() const {
    return d->host->imageListName(d->imageList);
}

void vkTreeList::setImageListName(const QString &name) {
    setImageList(name.isEmpty() ? nullptr : d->host->findImageList(name));
}

QFont vkTreeList::qtFont() const {
    return stdFontToQFont(Font());
}

void vkTreeList::setQtFont(const QFont &font) {
    setFont(stdFontFromQFont(font));
}

void vkTreeList::setLineStyle(qint32 value) {
    d->settings.lineStyle = value;
    notify("LineStyle");
    d->frames->RedrawFrame(false);
}

void vkTreeList::setRowHeight(qint32 value) {
    // Out-of-range heights are ignored without an error, on purpose.
    if (value < 16 || value > 255)
        return;
    d->settings.rowHeight = value;
    notify("RowHeight");
    d->frames->RedrawFrame(false);
}

void vkTreeList::setMultiSelect(bool value) {
    // No repaint follows: the frame shows the look of the last repaint.
    d->frames->settlePixels();
    d->settings.multiSelect = value;
    notify("MultiSelect");
}

void vkTreeList::setAutoSelectNew(bool value) {
    d->settings.autoSelectNew = value;
    notify("AutoSelectNew");
}

void vkTreeList::setExpandOnDoubleClick(bool value) {
    d->settings.expandOnDoubleClick = value;
    notify("ExpandOnDoubleClick");
}

qint32 vkTreeList::Appearance() const {
    return d->settings.appearance;
}

bool vkTreeList::AutoRedraw() const {
    return d->settings.autoRedraw;
}

qint32 vkTreeList::EditMode() const {
    return d->settings.editMode;
}

qint32 vkTreeList::FocusType() const {
    return d->settings.focusType;
}

qint32 vkTreeList::LineStyle() const {
    return d->settings.lineStyle;
}

qint32 vkTreeList::RowHeight() const {
    return d->settings.rowHeight;
}

bool vkTreeList::MultiSelect() const {
    return d->settings.multiSelect;
}

bool vkTreeList::AutoSelectNew() const {
    return d->settings.autoSelectNew;
}

bool vkTreeList::ExpandOnDoubleClick() const {
    return d->settings.expandOnDoubleClick;
}

qint32 vkTreeList::DefaultColumnWidth() const {
    return d->settings.defaultColumnWidth;
}

qint16 vkTreeList::ScaleMode() const {
    return d->settings.scaleMode;
}

void vkTreeList::setScaleMode(qint32 value) {
    d->settings.scaleMode = toInt16(value);
}

qint32 vkTreeList::Columns() const {
    return d->settings.columns;
}

const lsImageListPtr &vkTreeList::ImageList() const {
    return d->imageList;
}

bool vkTreeList::KeyboardSearch() const {
    return d->settings.keyboardSearch;
}

void vkTreeList::setKeyboardSearch(bool value) {
    d->settings.keyboardSearch = value;
    notify("KeyboardSearch");
}

bool vkTreeList::ShowTips() const {
    return d->settings.showTips;
}

void vkTreeList::setShowTips(bool value) {
    d->settings.showTips = value;
    notify("ShowTips");
}

qint32 vkTreeList::SelectionMode() const {
    return d->settings.selectionMode;
}

void vkTreeList::setSelectionMode(qint32 value) {
    d->settings.selectionMode = value;
    notify("SelectionMode");
}
