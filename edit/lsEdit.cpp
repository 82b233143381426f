#include "lsEdit.h"

#include "InheritedPalette.h"

#include "ButtonSurface.h"
#include "EditButtonPainter.h"
#include "EditDropDown.h"
#include "EditProperties.h"
#include "EditSession.h"
#include "EditTextBox.h"
#include "EntryGuard.h"
#include "KeyCodes.h"
#include "SystemColors.h"
#include "TreeListError.h"
#include "VariantNumber.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>

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
    // What the owner-drawn buttons do, for screen readers.
    m_select->setAccessibleName(tr("Choose a value"));
    m_down->setAccessibleName(tr("Open the list"));
    m_dropDown = std::make_unique<EditDropDown>(*this, *m_text, *m_list, *m_down, m_listIndex);
    m_session = std::make_unique<EditSession>(*this, *m_text, *m_dropDown, *m_select, *m_down,
                                              m_value, m_open);
    for (QWidget *child : {static_cast<QWidget *>(m_text), static_cast<QWidget *>(m_list),
                           static_cast<QWidget *>(m_select), static_cast<QWidget *>(m_down)})
        child->hide();
    setAutoFillBackground(true);
    // Nobody listens yet, so the close this includes raises OnClose to no one.
    EditProperties::setUp(*this);
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
    EditProperties::reset(*this);
}

void lsEdit::ReadProperties(const PropertyBag &bag) {
    EditProperties::read(*this, bag);
}

void lsEdit::WriteProperties(PropertyBag &bag) const {
    EditProperties::write(*this, bag);
}

// --- Object model -------------------------------------------------------------------------------

void lsEdit::guarded(const char *entry, const std::function<void()> &call) {
    m_guard->run(entry, call);
}

void lsEdit::setBorderStyle(qint16 value) {
    EditProperties::set(*this, EditProperties::BorderStyle, QVariant::fromValue(value));
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
    EditProperties::set(*this, EditProperties::Appearance, QVariant::fromValue(value));
}

void lsEdit::setValue(const QVariant &value) {
    EditProperties::set(*this, EditProperties::Value, value);
}

void lsEdit::Clear() {
    m_text->setText(QString());
    m_list->clear();
}

void lsEdit::setBackColor(OleColor value) {
    EditProperties::set(*this, EditProperties::BackColor, QVariant::fromValue(value));
}

void lsEdit::setForeColor(OleColor value) {
    EditProperties::set(*this, EditProperties::ForeColor, QVariant::fromValue(value));
}

void lsEdit::setFont(const StdFontPtr &font) {
    if (!font)
        throw TreeListError(TreeListError::InvalidArgument);
    EditProperties::set(*this, EditProperties::Font, QVariant::fromValue(font));
}

void lsEdit::setMode(const QVariant &value) {
    EditProperties::set(*this, EditProperties::Mode, value);
}

qint32 lsEdit::ListIndex() {
    m_listIndex = m_list->currentRow();
    return m_listIndex;
}

void lsEdit::setListIndex(qint32 value) {
    // The cache takes the value even when the list cannot (an index beyond 16 bits raises).
    m_listIndex = value;
    m_dropDown->selectRow(value);
    EditProperties::notify(*this, EditProperties::ListIndex);
}

void lsEdit::setEnabled(bool value) {
    EditProperties::set(*this, EditProperties::Enabled, value);
}

void lsEdit::setScaleMode(qint16 value) {
    EditProperties::set(*this, EditProperties::ScaleMode, QVariant::fromValue(value));
}

QVariant lsEdit::Edit(const qint32 &Mode) {
    if (Mode != -1)
        setMode(QVariant::fromValue<qint32>(Mode));
    bool cancel = false;
    emit BeforeEdit(cancel);
    if (!cancel)
        m_session->open();
    return QVariant();
}

QVariant lsEdit::AbortEdit() {
    m_session->abort();
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

void lsEdit::applyFrame() {
    if (m_borderStyle == 0)
        setFrameStyle(QFrame::NoFrame);
    else if (m_appearance == 0)
        setFrameStyle(QFrame::Box | QFrame::Plain);
    else
        setFrameStyle(QFrame::WinPanel | QFrame::Sunken);
}

void lsEdit::applyColours() {
    const QPalette inherited = inheritedPalette(*this);
    setOwnColours(
        *this,
        {{QPalette::Window, QColor::fromRgb(oleTranslateColor(m_backColor, inherited))},
         {QPalette::WindowText, QColor::fromRgb(oleTranslateColor(m_foreColor, inherited))}});
}

void lsEdit::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    // The application's palette changed (dark mode, say): system colours follow it.
    if (event->type() == QEvent::PaletteChange)
        applyColours();
}

// --- Buttons ------------------------------------------------------------------------------------

bool lsEdit::DrawSelectButton(qint16 State) {
    m_selectState = State;
    // The picture first: taking it settles where the button lies on it.
    QImage &picture = m_select->image();
    const bool drawn = EditButtonPainter::DrawSelectButton(
        picture, State, SysButtonFace, m_foreColor, m_select->buttonBox(), inheritedPalette(*this));
    m_select->update();
    return drawn;
}

bool lsEdit::DrawDownButton(qint16 State) {
    m_downState = State;
    QImage &picture = m_down->image();
    const bool drawn = EditButtonPainter::DrawDownButton(
        picture, State, SysButtonFace, m_foreColor, m_down->buttonBox(), inheritedPalette(*this));
    m_down->update();
    return drawn;
}

// --- Input --------------------------------------------------------------------------------------

void lsEdit::connectInput() {
    const auto comboMode = [this] { return EditSession::modeOf(m_mode) == lsEditComboBox; };
    connect(m_text, &EditTextBox::keyDown, this, [this, comboMode](qint16 code, qint16) {
        guarded("text box key down", [&] {
            // Only the combo box reads keys here: they open its list.
            if (comboMode())
                m_dropDown->textKeyDown(code);
        });
    });
    connect(m_text, &EditTextBox::keyPress, this, [this](qint16 &ascii) {
        guarded("text box key press", [&] { m_session->keyPress(ascii); });
    });
    connect(m_text, &EditTextBox::gotFocus, this,
            [this] { guarded("text box focus", [&] { m_session->textGotFocus(); }); });
    connect(m_text, &QLineEdit::textChanged, this, [this, comboMode] {
        guarded("text change", [&] {
            if (comboMode())
                m_dropDown->matchPrefix();
        });
    });
    for (ButtonSurface *button : {m_select, m_down})
        connect(button, &ButtonSurface::keyPress, this, [this](qint16 &ascii) {
            guarded("button key", [&] { m_session->keyPress(ascii); });
        });
    connect(m_select, &ButtonSurface::exposureChanged, this,
            [this] { guarded("ellipsis exposure", [&] { DrawSelectButton(m_selectState); }); });
    connect(m_down, &ButtonSurface::exposureChanged, this,
            [this] { guarded("arrow exposure", [&] { DrawDownButton(m_downState); }); });
    connect(m_down, &ButtonSurface::pressed, this,
            [this, comboMode](qint16 button, qint16, float, float) {
                guarded("arrow press", [&] { m_dropDown->arrowPressed(button, comboMode()); });
            });
    connect(m_down, &ButtonSurface::released, this,
            [this] { guarded("arrow release", [&] { DrawDownButton(lsBtnUp); }); });
    connect(m_select, &ButtonSurface::pressed, this, [this](qint16 button, qint16, float, float) {
        guarded("ellipsis press", [&] {
            if (button == kLeftButton)
                DrawSelectButton(lsBtnDown);
        });
    });
    // Any button let go over the ellipsis acts as Enter: the release is not filtered.
    connect(m_select, &ButtonSurface::released, this, [this] {
        guarded("ellipsis release", [&] {
            DrawSelectButton(lsBtnUp);
            qint16 enter = kEnter;
            m_session->keyPress(enter);
        });
    });
    m_dropDown->listenToList(
        [this](qint16 &ascii) { guarded("list key", [&] { m_session->keyPress(ascii); }); },
        [this] { guarded("list release", [&] { m_session->listReleased(); }); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        guarded("focus change", [&] { m_session->focusChanged(now); });
    });
}

void lsEdit::keyPressEvent(QKeyEvent *event) {
    event->accept();
}

void lsEdit::keyReleaseEvent(QKeyEvent *event) {
    event->accept();
}
