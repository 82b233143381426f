#pragma once
// What must hold of a row collection after any operation, checked the hard way: a violation
// prints what broke and aborts, which the fuzzer reports as a finding.

class lsNodes;

// Index 1..Count in pre-order, Count rows reachable from Root through the links, links that
// agree in both directions, Root and Tail, iteration in position order.
void checkTree(const lsNodes &nodes);
// Only that the links of every row held at a position agree in both directions. After a
// duplicate key the new row stays linked in the tree without a position and Count counts it (a
// required behaviour): the positions no longer follow the links, but nothing may break.
void checkLinks(const lsNodes &nodes);
// Visible as the branches above say. Rows added under a closed branch, and rows a host put
// Visible on, may disagree until SetVisibility runs from the first row: call it after that.
void checkVisibility(const lsNodes &nodes);
