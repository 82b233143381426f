#include "lsIdent.h"

#include "BuiltinPictures.h"
#include "IconPicture.h"
#include "TreeListError.h"

#include <cmath>
#include <limits>

namespace {

// The indentation step of the geometry; the IdentSize property only reports it.
constexpr double IndentStep = 19.0;
// HIMETRIC and pixel scale modes.
constexpr qint16 Himetric = 8;
constexpr qint16 Pixels = 3;

// Stores a double in a 32-bit field the way an assignment to a Long does: rounded to nearest with
// halves to even; out of range (or not a number) raises the overflow error.
qint32 store(double value) {
    const double r = std::nearbyint(value);
    if (!std::isfinite(r) || r < std::numeric_limits<qint32>::min() ||
        r > std::numeric_limits<qint32>::max())
        throw TreeListError(TreeListError::Overflow);
    return static_cast<qint32>(r);
}

} // namespace

void lsIdent::Refresh(const lsNodePtr &Row, qint32 RowHeight, const lsImageList *ImageList,
                      const ScaleSource *Pic) {
    if (!Row)
        return;
    // A row without cells has top 0 and no icon.
    const lsCell *first = Row->borrowCells().cell(1);
    const qint32 Top = first ? first->Top() : 0;
    const QVariant Icon = first ? first->Icon() : QVariant();

    m_IdentSize = 19;
    m_IdentIndex = Row->IdentLevel();
    m_PosTop = 3;
    m_PosLeft = 3;
    m_ExpWidth = 9;
    m_ExpHeight = 9;
    try {
        measurePicture(Icon, ImageList, Pic);
    } catch (...) {
        // Unknown key, bad index, missing resource, failing conversion: a square of row height.
        m_PicHeight = RowHeight;
        m_PicWidth = RowHeight;
    }
    try {
        place(Row, Top, RowHeight);
    } catch (const TreeListError &) {
        // Only arithmetic overflow gets here; the positions computed so far stay.
    }
}

void lsIdent::measurePicture(const QVariant &Icon, const lsImageList *ImageList,
                             const ScaleSource *Pic) {
    // A row without an icon shows the expanded-parent picture whether or not there is a list.
    const StdPicturePtr picture =
        isEmptyText(Icon) ? builtinPicture(picExpandedParent) : iconPicture(Icon, ImageList);
    if (!picture || !Pic)
        throw TreeListError(TreeListError::InvalidArgument);
    const qint32 height = store(Pic->ScaleY(picture->Height(), Himetric, Pixels));
    const qint32 width = store(Pic->ScaleX(picture->Width(), Himetric, Pixels));
    m_PicHeight = height;
    m_PicWidth = width;
}

void lsIdent::place(const lsNodePtr &Row, qint32 Top, qint32 RowHeight) {
    const double top = Top;
    m_ExpX = store(double(m_PosLeft) + double(m_IdentIndex) * IndentStep);
    // The box is centred on the picture, not on the row.
    m_ExpY = store(top + std::floor((double(m_PicHeight) - m_ExpHeight) / 2.0 + 0.5));
    m_TreeLineX = store(double(m_ExpX) + std::floor(m_ExpWidth / 2.0));
    if (Top == 0 && !Row->Visible()) {
        m_TreeLineY1 = 0;
        m_TreeLineY2 = 0;
    } else {
        m_TreeLineY1 = store(double(m_ExpY) + std::floor(m_ExpHeight / 2.0));
        m_TreeLineY2 = store(std::floor(m_PicHeight / 2.0 + 0.5));
    }
    m_NodeLineY = m_TreeLineY1;
    m_NodeLineX1 = m_TreeLineX;
    m_NodeLineX2 = store(double(m_NodeLineX1) + 11.0);
    m_picX = store(double(m_ExpX) + 15.0);
    m_PicY = store(top + (double(RowHeight) - m_PicHeight) / 2.0);
    m_ChildLineX = store(double(m_picX) + std::floor(m_PicWidth / 2.0 + 0.5));
    m_ChildLineY1 = store(double(m_PicY) + m_PicHeight);
    m_ChildLineY2 = store(double(m_ChildLineY1) + std::floor(m_PicHeight / 2.0 + 0.5));
    // Every row has a picture (an empty Icon shows picture 103), so the text always follows it.
    m_TextX = store(double(m_picX) + m_PicWidth + 2.0);
    m_TextY = m_PicY;
}
