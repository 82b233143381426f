#pragma once
// lsEdit: a small control that edits one value in place, as a text box, a text box with a
// drop-down list (combo box), or a locked text box with an ellipsis button that hands the editing
// to the host. It is closed (hidden) until `Edit` opens it and closes again on Enter, Escape,
// `AbortEdit` or when the focus leaves it; a commit runs validate, announce, store through the
// events `EditValidate` and `AfterEdit`.

#include "HostContainer.h"
#include "PropertyBag.h"
#include "StdFont.h"
#include "TreeListTypes.h"
#include "lsEditTypes.h"
#include "vkTreeListExport.h"

#include <QFrame>
#include <QVariant>
#include <functional>
#include <memory>

class ButtonSurface;
class EditDropDown;
class EditProperties;
class EditSession;
class EditTextBox;
class EntryGuard;
class QKeyEvent;
class QListWidget;
class QLineEdit;

class VKTL_EXPORT lsEdit : public QFrame {
    Q_OBJECT
    // The persisted properties, by the names the property bag uses; each notifies through its
    // own signal besides PropertyChanged. 16-bit values are int properties: Qt's property
    // editors and form files know int, not short.
    Q_PROPERTY(qint32 BorderStyle READ BorderStyle WRITE setBorderStyle NOTIFY BorderStyleChanged)
    Q_PROPERTY(qint32 Appearance READ Appearance WRITE setAppearance NOTIFY AppearanceChanged)
    Q_PROPERTY(QVariant Value READ Value WRITE setValue NOTIFY ValueChanged)
    Q_PROPERTY(quint32 BackColor READ BackColor WRITE setBackColor NOTIFY BackColorChanged)
    Q_PROPERTY(quint32 ForeColor READ ForeColor WRITE setForeColor NOTIFY ForeColorChanged)
    Q_PROPERTY(QFont Font READ qtFont WRITE setQtFont NOTIFY FontChanged)
    Q_PROPERTY(QVariant Mode READ Mode WRITE setMode NOTIFY ModeChanged)
    Q_PROPERTY(qint32 ListIndex READ ListIndex WRITE setListIndex NOTIFY ListIndexChanged)
    Q_PROPERTY(bool Enabled READ Enabled WRITE setEnabled NOTIFY EnabledChanged)
    Q_PROPERTY(qint32 ScaleMode READ ScaleMode WRITE setScaleMode NOTIFY ScaleModeChanged)
    Q_PROPERTY(bool Editing READ isEditing)

public:
    // Creates the control with its hidden children and sets it up as a new instance (which closes
    // it and raises OnClose once). The host may be null (a default run-mode host is used); it
    // must outlive the control.
    explicit lsEdit(QWidget *parent = nullptr, HostContainer *host = nullptr);
    ~lsEdit() override;

    // --- Life cycle ---------------------------------------------------------------------------
    // Sets up a new instance: Value "", the ambient font, Mode 0, closed, ListIndex 0.
    Q_INVOKABLE void InitProperties();
    // Loads the ten persisted properties; a value of the wrong type raises type mismatch and
    // changes nothing. The editor is closed between "Value" and "ListIndex", as at set-up.
    void ReadProperties(const PropertyBag &bag);
    // Saves the ten persisted properties (a value equal to its default is not stored). A value
    // that cannot be stored (a Mode that is not a number) raises before anything is written.
    void WriteProperties(PropertyBag &bag) const;

    // --- Object model -------------------------------------------------------------------------
    // Border of the control's surface: 0 none, 1 fixed single.
    qint16 BorderStyle() const { return m_borderStyle; }
    void setBorderStyle(qint16 value);
    // Does nothing, on purpose.
    Q_INVOKABLE void Refresh() {}
    // Adds the text of Item to the drop-down list, at Index when given (else at the end); an
    // Index outside 0..count raises invalid argument. Returns 0.
    Q_INVOKABLE qint32 AddItem(const QVariant &Item, const QVariant &Index = QVariant());
    // Look of the border: 0 flat, 1 3D.
    qint16 Appearance() const { return m_appearance; }
    void setAppearance(qint16 value);
    // The value being edited (the old one during an edit, the committed one after it). Setting it
    // does not touch the text box: only Edit fills that.
    QVariant Value() const { return m_value; }
    void setValue(const QVariant &value);
    // Empties the text box and the drop-down list.
    Q_INVOKABLE void Clear();
    // Background colour (OLE colour) of the surface and, from the next Edit, of the text box.
    OleColor BackColor() const { return m_backColor; }
    void setBackColor(OleColor value);
    // Text colour (OLE colour); also the colour of the buttons' glyphs.
    OleColor ForeColor() const { return m_foreColor; }
    void setForeColor(OleColor value);
    // The font of the text box and the list.
    StdFontPtr Font() const { return m_font; }
    void setFont(const StdFontPtr &font);
    // The font as a QFont (family, point size, style), for Qt's property editors.
    QFont qtFont() const { return stdFontToQFont(m_font); }
    void setQtFont(const QFont &font) { setFont(stdFontFromQFont(font)); }
    using QWidget::setFont;
    // The editing mode, compared with lsEditModeConstants; any other value is kept and makes
    // Edit show nothing.
    QVariant Mode() const { return m_mode; }
    void setMode(const QVariant &value);
    // The index of the list's selection (-1 none), read from the list and cached. Setting it
    // selects that entry without committing; beyond 16 bits raises overflow.
    qint32 ListIndex();
    void setListIndex(qint32 value);
    // Whether the control takes input.
    bool Enabled() const { return isEnabled(); }
    void setEnabled(bool value);
    // Opens an edit in Mode (-1: the current one; any other value becomes the Mode property).
    // Raises BeforeEdit first; a cancelled edit shows nothing. The result is empty.
    Q_INVOKABLE QVariant Edit(const qint32 &Mode = -1);
    // The unit of positions and sizes the host works in (kept and saved; the editor itself
    // places its children in pixels).
    qint16 ScaleMode() const { return m_scaleMode; }
    void setScaleMode(qint16 value);
    // Closes the editor without committing. The result is empty.
    Q_INVOKABLE QVariant AbortEdit();
    // The text of list entry Index, or "" when Index is not within 0..count-1.
    Q_INVOKABLE QVariant List(const QVariant &Index) const;

    // --- Children and buttons -----------------------------------------------------------------
    // The text box, shown in every mode while an edit is open.
    QLineEdit *txtEdit() const;
    // The drop-down list of combo-box mode.
    QListWidget *lstEdit() const { return m_list; }
    // The ellipsis button of button mode.
    QWidget *btnSelect() const;
    // The arrow button of combo-box mode.
    QWidget *btnDown() const;
    // Draws the ellipsis button in a state (lsButtonStateConstants); false for an unknown one.
    Q_INVOKABLE bool DrawSelectButton(qint16 State);
    // Draws the arrow button in a state; false for an unknown one.
    Q_INVOKABLE bool DrawDownButton(qint16 State);
    // True while an edit is open (the control shown).
    bool isEditing() const { return m_open; }

signals:
    // A property changed; the key is the one the property bag uses.
    void PropertyChanged(const QString &key);
    // The same, one signal per property (the Q_PROPERTY notifications).
    void BorderStyleChanged();
    void AppearanceChanged();
    void ValueChanged();
    void BackColorChanged();
    void ForeColorChanged();
    void FontChanged();
    void ModeChanged();
    void ListIndexChanged();
    void EnabledChanged();
    void ScaleModeChanged();
    // The editor closed (possibly more than once for one edit).
    void OnClose();
    // Button mode: Enter or the ellipsis button. Xpos and Ypos are the editor's own left and top
    // in its container; what the host puts into Value is the result of the edit.
    void OnButtonClick(qint32 &Xpos, qint32 &Ypos, QVariant &Value);
    // A commit passed validation. Changing NewValue here changes nothing: the text box counts.
    void AfterEdit(QVariant &NewValue, QVariant &OldValue, bool &Changed);
    // Edit is about to open; Cancel = true keeps it closed.
    void BeforeEdit(bool &Cancel);
    // Declared for hosts and never raised: the editor forwards no keyboard or mouse input.
    void KeyDown(qint16 &KeyCode, qint16 &Shift);
    void KeyPress(qint16 &KeyAscii);
    void KeyUp(qint16 &KeyCode, qint16 &Shift);
    void MouseDown(qint16 &Button, qint16 &Shift, float &X, float &Y);
    void MouseMove(qint16 &Button, qint16 &Shift, float &X, float &Y);
    void MouseUp(qint16 &Button, qint16 &Shift, float &X, float &Y);
    // First step of every commit; Cancel = true discards the edit (the editor closes anyway).
    void EditValidate(QVariant &NewValue, QVariant &OldValue, bool &Cancel);

protected:
    // Keys its parts leave unhandled stop here: they must not reach the widget the editor sits
    // on (a grid would move its selection under an open edit).
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    // The property table reads and writes the fields below.
    friend class EditProperties;

    void guarded(const char *entry, const std::function<void()> &call);
    void applyFrame();
    void applyColours();
    // Routes the children's input to the edit session and the drop-down list.
    void connectInput();

    HostContainer *m_host;
    std::unique_ptr<HostContainer> m_ownHost;
    std::unique_ptr<EntryGuard> m_guard;
    EditTextBox *m_text;
    QListWidget *m_list;
    ButtonSurface *m_select;
    ButtonSurface *m_down;
    std::unique_ptr<EditDropDown> m_dropDown;
    std::unique_ptr<EditSession> m_session;
    // The state each button was last drawn in, to draw it again when more of it shows.
    qint16 m_selectState = lsBtnUp;
    qint16 m_downState = lsBtnUp;

    // The properties' fields; the property table gives them their defaults.
    qint16 m_borderStyle{};
    qint16 m_appearance{};
    OleColor m_backColor{};
    OleColor m_foreColor{};
    StdFontPtr m_font;
    qint16 m_scaleMode{};
    QVariant m_mode;
    QVariant m_value;
    qint32 m_listIndex{};
    bool m_open{};
};
