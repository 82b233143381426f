// lsEdit: life cycle, object model, persistence, opening an edit, button drawing.
// Keys, focus, commits and the drop-down list are in lsEditInput.cpp.

#include "lsEdit.h"

#include "PropertyNotify.h"

#include "ButtonSurface.h"
#include "EditButtonPainter.h"
#include "EditTextBox.h"
#include "EntryGuard.h"
#include "SystemColors.h"
#include "TreeListError.h"
#include "VariantNumber.h"

#include <QApplication>
#include <QListWidget>
#include <QScopeGuard>

namespace {

constexpr OleColor kDefaultBackColor = 0x8000000F; // button face
constexpr OleColor kDefaultForeColor = 0x80000012; // button text
constexpr OleColor kButtonFace = 0x8000000F;

} // namespace

lsEdit::lsEdit(QWidget *parent, HostContainer *host)
    : QFrame(parent), m_host(host),
      // Nothing of the editor's own is reported besides the log: it has no error event.
      m_guard(std::make_unique<EntryGuard>([](qint32, const QString &) {})) {
    if (!m_host) {
        m_ownHost = std::make_unique<HostContainer>();
        m_host = m_ownHost.get();
    }
    m_text = new EditTextBox(this);
    m_list = new QListWidget(this);
    m_select = new ButtonSurface(this);
    m_down = new ButtonSurface(this);
    m_list->setFrameShape(QFrame::NoFrame);
    for (QWidget *child : {static_cast<QWidget *>(m_text), static_cast<QWidget *>(m_list),
                           static_cast<QWidget *>(m_select), static_cast<QWidget *>(m_down)})
        child->hide();
    setAutoFillBackground(true);
    // A new control is already what InitProperties makes of it, without the close.
    m_value = QString();
    m_mode = QVariant::fromValue<qint32>(lsEditTextBox);
    m_font = m_host->AmbientFont();
    applyFrame();
    applyColours();
    hide();
    connectInput();
}

lsEdit::~lsEdit() {
    // Children report focus and text changes while QWidget deletes them; nobody may hear that.
    disconnect(qApp, nullptr, this, nullptr);
    for (QObject *child : children())
        child->disconnect(this);
}

// --- Life cycle ---------------------------------------------------------------------------------

void lsEdit::InitProperties() {
    m_value = QString();
    m_font = m_host->AmbientFont();
    m_mode = QVariant::fromValue<qint32>(lsEditTextBox);
    CloseEditor();
    m_listIndex = 0;
}

void lsEdit::ReadProperties(const PropertyBag &bag) {
    // Read and checked in full before anything changes: a bad file leaves the control as it was.
    const auto i16 = [&](const char *key, qint16 def) {
        return bag.ReadProperty(QLatin1String(key), QVariant::fromValue<qint16>(def))
            .value<qint16>();
    };
    const auto u32 = [&](const char *key, quint32 def) {
        return bag.ReadProperty(QLatin1String(key), QVariant::fromValue<quint32>(def))
            .value<quint32>();
    };
    const qint16 borderStyle = i16("BorderStyle", 0);
    const qint16 appearance = i16("Appearance", 1);
    const quint32 backColor = u32("BackColor", kDefaultBackColor);
    const quint32 foreColor = u32("ForeColor", kDefaultForeColor);
    const QVariant font =
        bag.ReadProperty(QStringLiteral("Font"), stdFontToVariant(m_host->AmbientFont()));
    StdFontPtr stdFont;
    try {
        stdFont = stdFontFromVariant(font.toMap());
    } catch (const TreeListError &e) {
        throw bag.errorAt(QStringLiteral("Font"), e);
    }
    const qint32 mode =
        bag.ReadProperty(QStringLiteral("Mode"), QVariant::fromValue<qint32>(0)).value<qint32>();
    const bool enabled = bag.ReadProperty(QStringLiteral("Enabled"), true).toBool();
    const QString value = bag.ReadProperty(QStringLiteral("Value"), QString()).toString();
    const qint16 listIndex = i16("ListIndex", 0);
    const qint16 scaleMode = i16("ScaleMode", 1);

    m_borderStyle = borderStyle;
    m_appearance = appearance;
    applyFrame();
    m_backColor = backColor;
    m_foreColor = foreColor;
    applyColours();
    m_font = stdFont;
    m_mode = QVariant::fromValue<qint32>(mode);
    QWidget::setEnabled(enabled);
    m_value = value;
    // The list is empty when a control loads: only the cached index is restored.
    CloseEditor();
    m_listIndex = listIndex;
    m_scaleMode = scaleMode;
}

void lsEdit::WriteProperties(PropertyBag &bag) const {
    const auto i16 = [](qint16 v) { return QVariant::fromValue<qint16>(v); };
    const auto u32 = [](quint32 v) { return QVariant::fromValue<quint32>(v); };
    bag.WriteProperty("BorderStyle", i16(m_borderStyle), i16(0));
    bag.WriteProperty("Appearance", i16(m_appearance), i16(1));
    bag.WriteProperty("BackColor", u32(m_backColor), u32(kDefaultBackColor));
    bag.WriteProperty("ForeColor", u32(m_foreColor), u32(kDefaultForeColor));
    bag.WriteProperty("Font", stdFontToVariant(m_font), stdFontToVariant(m_host->AmbientFont()));
    bag.WriteProperty("Enabled", isEnabled(), true);
    bag.WriteProperty("Mode", QVariant::fromValue<qint32>(toLong(m_mode)),
                      QVariant::fromValue<qint32>(0));
    bag.WriteProperty("Value", m_value.toString(), QString());
    // The cached index is what is saved; reading the list would make a save change the control.
    bag.WriteProperty("ListIndex", i16(toInt16(m_listIndex)), i16(0));
    bag.WriteProperty("ScaleMode", i16(m_scaleMode), i16(1));
}

// --- Object model -------------------------------------------------------------------------------

void lsEdit::guarded(const char *entry, const std::function<void()> &call) {
    m_guard->run(entry, call);
}

void lsEdit::notify(const QString &key) {
    emit PropertyChanged(key);
    emitPropertyNotify(*this, key);
}

void lsEdit::setBorderStyle(qint16 value) {
    m_borderStyle = value;
    applyFrame();
    notify("BorderStyle");
}

qint32 lsEdit::AddItem(const QVariant &Item, const QVariant &Index) {
    const QString text = Item.toString();
    if (!Index.isValid() || Index.isNull()) {
        m_list->addItem(text);
        return 0;
    }
    const qint32 at = toLong(Index);
    if (at < 0 || at > m_list->count())
        throw TreeListError(TreeListError::InvalidArgument);
    m_list->insertItem(at, text);
    return 0;
}

void lsEdit::setAppearance(qint16 value) {
    m_appearance = value;
    applyFrame();
    notify("Appearance");
}

void lsEdit::setValue(const QVariant &value) {
    m_value = value;
    notify("Value");
}

void lsEdit::Clear() {
    m_text->setText(QString());
    m_list->clear();
}

void lsEdit::setBackColor(OleColor value) {
    m_backColor = value;
    applyColours();
    notify("BackColor");
}

void lsEdit::setForeColor(OleColor value) {
    m_foreColor = value;
    applyColours();
    notify("ForeColor");
}

void lsEdit::setFont(const StdFontPtr &font) {
    if (!font)
        throw TreeListError(TreeListError::InvalidArgument);
    m_font = font;
    notify("Font");
}

void lsEdit::setMode(const QVariant &value) {
    m_mode = value;
    notify("Mode");
}

qint32 lsEdit::ListIndex() {
    m_listIndex = m_list->currentRow();
    return m_listIndex;
}

void lsEdit::setListIndex(qint32 value) {
    m_listIndex = value;
    // The control moves the selection itself: that is no choice to commit. The flag is cleared
    // even when the index does not fit, or no list commit would ever run again.
    m_suppressListCommit = true;
    const auto clear = qScopeGuard([&] { m_suppressListCommit = false; });
    m_list->setCurrentRow(toInt16(value));
    notify("ListIndex");
}

void lsEdit::setEnabled(bool value) {
    QWidget::setEnabled(value);
    notify("Enabled");
}

void lsEdit::setScaleMode(qint16 value) {
    m_scaleMode = value;
    notify("ScaleMode");
}

QVariant lsEdit::AbortEdit() {
    m_aborted = true;
    CloseEditor();
    return QVariant();
}

QVariant lsEdit::List(const QVariant &Index) const {
    const qint32 at = toLong(Index);
    if (at > -1 && at < m_list->count())
        return m_list->item(at)->text();
    return QString();
}

QLineEdit *lsEdit::txtEdit() const {
    return m_text;
}

QWidget *lsEdit::btnSelect() const {
    return m_select;
}

QWidget *lsEdit::btnDown() const {
    return m_down;
}

qint32 lsEdit::modeNumber() const {
    const std::optional<double> mode = numberIn(m_mode);
    if (mode && (*mode == 0 || *mode == 1 || *mode == 2))
        return qint32(*mode);
    return -1;
}

void lsEdit::applyFrame() {
    if (m_borderStyle == 0)
        setFrameStyle(QFrame::NoFrame);
    else if (m_appearance == 0)
        setFrameStyle(QFrame::Box | QFrame::Plain);
    else
        setFrameStyle(QFrame::WinPanel | QFrame::Sunken);
}

void lsEdit::applyColours() {
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor::fromRgb(oleTranslateColor(m_backColor)));
    pal.setColor(QPalette::WindowText, QColor::fromRgb(oleTranslateColor(m_foreColor)));
    setPalette(pal);
}

// --- Opening an edit ----------------------------------------------------------------------------

QVariant lsEdit::Edit(const qint32 &Mode) {
    if (Mode != -1)
        setMode(QVariant::fromValue<qint32>(Mode));
    bool cancel = false;
    emit BeforeEdit(cancel);
    if (cancel)
        return QVariant();
    m_changed = false;
    m_aborted = false;
    m_list->hide();
    m_text->hide();
    m_down->hide();
    m_select->hide();

    // Children are sized and coloured first, then filled, then shown, then focused.
    const qint32 mode = modeNumber();
    if (mode < 0)
        return QVariant();
    QPalette pal = m_text->palette();
    pal.setColor(QPalette::Base, QColor::fromRgb(oleTranslateColor(m_backColor)));
    pal.setColor(QPalette::Text, QColor::fromRgb(oleTranslateColor(m_foreColor)));
    m_text->setPalette(pal);
    m_text->setFont(m_font->qfont());
    m_text->setFrame(false);
    const QRect inner = contentsRect();
    if (mode == lsEditTextBox) {
        m_text->setGeometry(inner);
        m_text->setText(m_value.toString());
        m_text->show();
    } else {
        ButtonSurface *button = mode == lsEditComboBox ? m_down : m_select;
        if (mode == lsEditComboBox) {
            m_savedTop = y();
            m_savedLeft = x();
            m_savedHeight = height();
            m_savedWidth = width();
        }
        const qint32 side = inner.height();
        button->setGeometry(inner.x() + inner.width() - side, inner.y(), side, side);
        m_text->setGeometry(inner.x(), inner.y(), inner.width() - side, inner.height());
        m_text->setText(m_value.toString());
        if (mode == lsEditComboBox)
            SelectValueInList();
        m_text->show();
        if (mode == lsEditComboBox)
            DrawDownButton(lsBtnUp);
        else
            DrawSelectButton(lsBtnUp);
        button->show();
    }
    m_open = true;
    show();
    raise();
    m_text->setFocus();
    return QVariant();
}

// --- Buttons ------------------------------------------------------------------------------------

bool lsEdit::DrawSelectButton(qint16 State) {
    m_selectState = State;
    // The picture first: taking it settles where the button lies on it.
    QImage &picture = m_select->image();
    const bool drawn = EditButtonPainter::DrawSelectButton(picture, State, kButtonFace, m_foreColor,
                                                           m_select->buttonBox());
    m_select->update();
    return drawn;
}

bool lsEdit::DrawDownButton(qint16 State) {
    m_downState = State;
    QImage &picture = m_down->image();
    const bool drawn = EditButtonPainter::DrawDownButton(picture, State, kButtonFace, m_foreColor,
                                                         m_down->buttonBox());
    m_down->update();
    return drawn;
}
