#!/usr/bin/env python3
"""Reads the demo's tree list as a screen reader does, through AT-SPI with pyatspi: finds the
tree, reads its column headers, the table's size and its first rows' names and states, then
opens a closed row through its action and sees the row's children appear."""
import sys
import time

import pyatspi


def fail(message):
    print("read_tree: " + message, file=sys.stderr)
    sys.exit(1)


def find(node, role, depth=0):
    """The first object of `role` under node (not looking inside a match or too deep)."""
    if node is None or depth > 15:
        return None
    if node.getRoleName() == role:
        return node
    for i in range(node.childCount):
        found = find(node.getChildAtIndex(i), role, depth + 1)
        if found is not None:
            return found
    return None


def wait_for(what, check, seconds=20.0):
    deadline = time.time() + seconds
    while time.time() < deadline:
        value = check()
        if value:
            return value
        time.sleep(0.2)
    fail(what)


def states(cell):
    names = {pyatspi.STATE_EXPANDABLE: "expandable", pyatspi.STATE_EXPANDED: "expanded",
             pyatspi.STATE_SELECTED: "selected", pyatspi.STATE_FOCUSED: "focused"}
    held = cell.getState()
    return {name for state, name in names.items() if held.contains(state)}


def demo_application():
    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        app = desktop.getChildAtIndex(i)
        if app is not None and app.name == "vktl_demo":
            return app
    return None


app = wait_for("the demo is not on the accessibility bus", demo_application)
tree = wait_for("no tree in the demo", lambda: find(app, "tree"))
table = tree.queryTable()
print("tree: %d rows, %d columns" % (table.nRows, table.nColumns))
if table.nRows < 3 or table.nColumns < 2:
    fail("the table is too small")
headers = [table.getColumnHeader(c).name for c in range(table.nColumns)]
print("column headers:", headers)
if headers[0] != "Name":
    fail("the first column header is %r" % headers[0])
for row in range(3):
    cell = table.getAccessibleAt(row, 0)
    print("row %d: %r %s %s" % (row, cell.name, cell.getRoleName(), sorted(states(cell))))
    if not cell.name:
        fail("row %d has no name" % row)
first = table.getAccessibleAt(0, 0)
if {"expandable", "expanded"} - states(first):
    fail("the first row is not an open branch")

closed = next((r for r in range(table.nRows)
               if {"expandable"} <= states(table.getAccessibleAt(r, 0))
               and "expanded" not in states(table.getAccessibleAt(r, 0))), None)
if closed is None:
    fail("no closed branch")
cell = table.getAccessibleAt(closed, 0)
action = cell.queryAction()
names = [action.getName(i) for i in range(action.nActions)]
print("actions of %r: %s" % (cell.name, names))
toggle = next((i for i, name in enumerate(names) if "toggle" in name.lower()), None)
if toggle is None:
    fail("no toggle action")
before, name = table.nRows, cell.name
action.doAction(toggle)
wait_for("opening the row brought no rows", lambda: tree.queryTable().nRows > before, 10)
table = tree.queryTable()
child = table.getAccessibleAt(closed + 1, 0)
print("opened %r: %d rows now, the next row %r (%s)" % (
    name, table.nRows, child.name, child.description))
if "expanded" not in states(table.getAccessibleAt(closed, 0)):
    fail("the opened row is not expanded")
print("read_tree: the tree list reads as a tree")
