#pragma once
// Puts a DemoTable into a tree list and keeps the control's cells in step with it: rows with
// their pictures, cell texts and alignments, header titles, column widths and the branches that
// start open. Row i of the table is the control's row Index i + 1, since rows are added in tree
// order to an empty control.
//
// A data cell keeps the left edge it got when it was made (the previous cell's left plus width)
// until its row is shown again; header cells are placed from their widths on every frame. So
// columns are added one at a time and each is sized while it is the last one: a width change then
// moves nothing after it, and data cells stay under their headers even in rows not yet shown.

#include "DemoTable.h"

class vkTreeList;

class TreeLoader {
public:
    // The control takes widths in twips (its default scale mode).
    static constexpr int TwipsPerPixel = 15;
    // Rows in view after the first branches are opened, about one screen.
    static constexpr int FirstScreenRows = 40;

    TreeLoader(vkTreeList &tree, const DemoTable &table);

    // Replaces the control's rows with the table's, sized and labelled, with the first
    // branches open. Runs with AutoRedraw and AutoSelectNew off and restores both.
    void load();

    // Changes the number of columns; new columns come with their data, sized to it.
    void setColumnCount(qint32 columns);
    // Builds the columns from `first` on again, with their data and sized to it: columns the
    // control made by itself (reading a layout) come empty and with default widths.
    void refillColumns(qint32 first);
    // Gives every header cell the width of the data cell below it (new header rows come with
    // default widths).
    void matchHeaderWidths();
    // Titles in header row 1, notes in header row 2; other header cells keep their own texts.
    void labelHeaders();
    // Opens the top two levels and the first branch down to its leaves, as far as about
    // `budget` rows come into view.
    void openFirstBranches(int budget);

private:
    // Adds columns up to `columns`, one at a time, each filled and then sized.
    void growColumns(qint32 columns);
    void fillColumn(qint32 column);
    void sizeLastColumn();

    vkTreeList &m_tree;
    const DemoTable &m_table;
};
