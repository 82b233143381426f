#pragma once
// What a vkTreeList holds: its parts, its children, its rows and its settings. The control and its
// parts share it; hosts see none of it.

#include "StdPicture.h"
#include "TreeListSettings.h"
#include "lsImageList.h"

#include <array>
#include <memory>

class ColumnGeometry;
class EntryGuard;
class FrameKeeper;
class HostContainer;
class PictureBox;
class QLabel;
class QScrollBar;
class TreeListAccessibility;
class TreeListInput;
class TreeListViewport;
class lsEdit;
class lsIdent;
class lsNodes;

struct TreeListState {
    TreeListState();
    ~TreeListState();

    // The parts that do the work.
    std::unique_ptr<FrameKeeper> frames;
    std::unique_ptr<TreeListViewport> view;
    std::unique_ptr<TreeListInput> input;
    std::unique_ptr<ColumnGeometry> columnGeometry;
    std::unique_ptr<TreeListAccessibility> accessibility;

    HostContainer *host = nullptr;
    std::unique_ptr<HostContainer> ownHost; // when the host gave none
    std::unique_ptr<EntryGuard> guard;

    // Children (Qt deletes them)
    PictureBox *picOut = nullptr;
    QScrollBar *scrX = nullptr;
    QScrollBar *scrY = nullptr;
    QLabel *imgGhost = nullptr;

    // Owned objects, created in this order and released in this order by Terminate
    std::unique_ptr<lsNodes> headers;
    std::unique_ptr<lsNodes> rows;
    std::unique_ptr<lsIdent> ident;
    std::array<StdPicturePtr, 6> pictures;

    TreeListSettings settings;
    lsImageListPtr imageList;
    bool editing = false;
    lsEdit *lseMisc = nullptr;

    bool hasFocus = false; // the drawing child's focus, as painting sees it
    bool terminated = false;
    bool ownEnabled = true; // the last Enabled told to the host
};
