// Stand-in for the host's tool library: the message numbers of its CAD tree.
//
// The numbers are agreed between processes by registering the messages under exactly these names, in every
// process that loads the library (or compiles this file in), at load.
#pragma once

#include "framework/mrApi.h"

// Asked of a tree view: wParam 0, lParam 0. A CAD tree answers 165, every other window something else.
extern MR_API unsigned int kvtWM_REQUEST_CAD_TREE_INFORMATION;

// What changed on an object of a CAD tree.
enum kvtCADTreeChangeCode : unsigned int {
  kvtObjectShown = 0,
  kvtObjectHidden = 1,
  kvtObjectChecked = 2,
  kvtObjectUnchecked = 3,
  kvtObjectColoured = 4,  // value is the colour, 0x00bbggrr
  kvtObjectStarred = 5,
  kvtObjectUnstarred = 6,
};

// lParam of kvtWM_CAD_TREE_CHANGED.
struct kvtCADTreeChange {
  void* tree;           // HWND of the CAD tree
  void* item;           // HTREEITEM of the changed object
  unsigned int change;  // kvtCADTreeChangeCode
  int value;            // only for kvtObjectColoured
};
static_assert(sizeof(kvtCADTreeChange) == 24, "read by the library as 24 bytes");

// Told by a CAD tree to its parent when the user shows, hides, checks, colours or stars an object. lParam is
// the address of a kvtCADTreeChange in the tree's process, valid during the call; wParam and the answer are
// unused.
extern MR_API unsigned int kvtWM_CAD_TREE_CHANGED;
