// The host's graphics window: the mouse in it, and where its camera stands whenever that has changed.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

// What the host uploads: the mouse message; 32 bytes, little-endian.
struct mrCADViewRec {
  HWND window;       // the view
  uint32_t message;  // 513 to 521
  uint32_t reserved;
  WPARAM wparam;  // MK_ key state
  LPARAM lparam;  // x and y, signed client pixels in the two low words
};
static_assert(sizeof(mrCADViewRec) == 32, "travels between processes");
static_assert(offsetof(mrCADViewRec, window) == 0 && offsetof(mrCADViewRec, message) == 8 &&
                  offsetof(mrCADViewRec, wparam) == 16 && offsetof(mrCADViewRec, lparam) == 24,
              "travels between processes");

// An action on a view. Its action struct's kind is that of the mouse, -1 for a camera statement or a context
// menu.
class MR_API mrCADView : public mrBaseWindow {
public:
  // The view's own level is declared as a CAD view, whatever its window class. Raises CInvalidArgException
  // for a null window, which has no path.
  mrCADView(HWND window, mrBaseWindowFactory* factory);
};

class MR_API mrCADViewFactory : public mrBaseWindowFactory {
public:
  mrCADViewFactory();

  mrFactoryType get_factory_type() override;
  // Claims the mouse button messages of a view, as they come in. Only for those is the window asked whether
  // it is one.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Press and release in one place become a click, a click and a double click there the double click. A
  // release that follows no press is dropped. Asks the view for its camera and client size: a camera that
  // changed is a statement before the mouse's, and the only one when a drag moved it.
  void copy_data(void* data) override;
  // Declares a view by its host-given name, else as CADView().
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  // Records a context menu on a view in place of the right click that opened it; 0 when the window is no
  // view.
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override;

private:
  // What a statement depends on besides the mouse: read once per record.
  struct mrViewState {
    CString position;  // the camera, in the host's own words
    int width;         // client pixels, plus one
    int height;        // client pixels, plus one
    CString key;       // all three: differs when the view has moved
  };
  static mrViewState read_view(HWND view);

  // What the message makes of the last action. True when it needs an action of its own, which mouse
  // describes.
  bool build_mouse(const mrCADViewRec& rec, const mrViewState& state, mrBaseWindowActionStruct& mouse);
  bool build_release(HWND view, const mrViewState& state, mrBaseWindowActionStruct& mouse);
  bool build_double_click(HWND view, const mrViewState& state, mrBaseWindowActionStruct& mouse);
  static void turn_into(mrBaseWindow& action, const mrBaseWindowActionStruct& mouse,
                        const mrViewState& state);
  void record_camera(HWND view, const mrViewState& state);
  bool has_moved(HWND view, const mrViewState& state) const;

  // The camera key last recorded for a view. Recorder process; lives as long as it.
  std::unordered_map<HWND, std::string> m_cameras;
};
