// Builds the six sample rows that a newly placed tree list shows at design time, prints them in
// tree order, then closes "Row4" (key "Node13") and prints them again.
#include "lsNodes.h"

#include <cstdio>

namespace {

void print(const lsNodes &nodes, const char *title) {
    std::printf("%s\n%-5s  %-16s  %-7s  %s\n", title, "Index", "Text", "Visible", "FindPath");
    for (const lsNodePtr &node : nodes) {
        const QString indented = QString(node->IdentLevel() * 2, ' ') + node->Text();
        std::printf("%5d  %-16s  %-7s  %s\n", node->Index(), qPrintable(indented),
                    node->Visible() ? "True" : "False", qPrintable(nodes.FindPath(node)));
    }
    std::printf("\n");
}

} // namespace

int main() {
    lsNodes nodes;
    // Into an empty collection the relative and relationship are not looked at.
    nodes.setExpanded(nodes.Add(emptyText(), lsNext, "Node1", "Row1"), true);
    nodes.Add("Node1", lsChild, "Node11", "Row2");
    nodes.Add("Node1", lsChild, "Node12", "Row3");
    nodes.setExpanded(nodes.Add("Node1", lsChild, "Node13", "Row4"), true);
    nodes.Add("Node13", lsChild, "Node#131", "Row5");
    nodes.Add("Node13", lsChild, "Node#132", "Row6");
    print(nodes, "Design-time sample:");

    nodes.setExpanded(nodes.Item("Node13"), false);
    print(nodes, "After collapsing Node13:");
    return 0;
}
