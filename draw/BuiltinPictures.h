#pragma once
// The control's own pictures, by resource number:
//   101 minus box (9 x 9)        102 plus box (9 x 9)
//   103 expanded parent (16 x 16) 104 collapsed parent (16 x 16)
//   105 leaf row (16 x 16)       106 marked row (16 x 16)

#include "StdPicture.h"
#include "vkTreeListExport.h"

// Resource numbers of the built-in pictures.
enum BuiltinPictureNumber : int {
    picMinusBox = 101,
    picPlusBox = 102,
    picExpandedParent = 103,
    picCollapsedParent = 104,
    picLeaf = 105,
    picMarked = 106,
};

// The built-in picture with the given resource number, loaded once and shared; null for any other
// number.
VKTL_EXPORT StdPicturePtr builtinPicture(int resourceNumber);
