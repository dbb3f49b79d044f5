// Drawing of owner-drawn buttons and items.
#pragma once

#include <windows.h>

// A colour swatch; the item's data is its colour.
void draw_colour_item(const DRAWITEMSTRUCT& item);
// The item's own text behind a small square.
void draw_text_item(const DRAWITEMSTRUCT& item);
// A push button; one that answers BM_GETCHECK with 1 looks switched on.
void draw_button(const DRAWITEMSTRUCT& item);

// Makes an owner-drawn button a toggle. Such a button always answers BM_GETCHECK with 0; from here on it
// keeps the state that BM_SETCHECK gives it. Its dialog flips it when it is clicked.
void make_toggle(HWND button);
