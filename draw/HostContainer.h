#pragma once
// What the control needs of the application that hosts it: whether it runs or is being
// designed, the ambient font, a way to let pending events run, and named objects (image
// lists) that a saved layout refers to, and whether message boxes may be shown. The default
// implementation suits a plain Qt program: run mode, DejaVu Sans 8 pt, no event processing,
// message boxes shown, and a table of image lists.

#include "StdFont.h"
#include "lsImageList.h"
#include "vkTreeListExport.h"

#include <QHash>
#include <QString>
#include <memory>

class VKTL_EXPORT HostContainer {
public:
    virtual ~HostContainer() = default;

    // True at run time, false while the control is placed on a form at design time.
    virtual bool AmbientUserMode() const { return m_userMode; }
    // The font a new control starts with.
    virtual StdFontPtr AmbientFont() const { return std::make_shared<StdFont>(); }
    // Lets pending events run; the default does nothing (see HostContainer.cpp).
    virtual void DoEvents();

    // Names an image list so that a saved "ImageList" property can find it again.
    void registerImageList(const QString &name, const lsImageListPtr &list);
    // The image list registered under a name, or null.
    virtual lsImageListPtr findImageList(const QString &name) const;
    // The name an image list was registered under, or "" for none.
    virtual QString imageListName(const lsImageListPtr &list) const;

    // Switches between run mode (true) and design mode (false).
    void setAmbientUserMode(bool userMode) { m_userMode = userMode; }

    // Whether the component may show message boxes. A box waits for a person: tests and hosts
    // that run unattended turn them off (on a platform without a screen none is ever shown).
    bool MessageBoxes() const { return m_messageBoxes; }
    void setMessageBoxes(bool shown) { m_messageBoxes = shown; }

private:
    bool m_userMode = true;
    bool m_messageBoxes = true;
    QHash<QString, lsImageListPtr> m_imageLists;
};
