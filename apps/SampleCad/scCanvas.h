// A picture in memory with smooth lines, painted to a window in one piece.
#pragma once

#include <windows.h>

#include <cstdint>

class scCanvas {
public:
  scCanvas() = default;
  ~scCanvas();
  scCanvas(const scCanvas&) = delete;
  scCanvas& operator=(const scCanvas&) = delete;

  // Client pixels; the content is undefined afterwards. False when there is no memory.
  bool resize(int width, int height);
  int width() const { return m_width; }
  int height() const { return m_height; }

  // Fills the picture from top to bottom.
  void gradient(COLORREF top, COLORREF bottom);
  // A line of one pixel's width, ends anywhere. opacity 0 to 1.
  void line(double x0, double y0, double x1, double y1, COLORREF colour, double opacity);
  // For text: a device context of the picture. Drawn in order with the lines after a GdiFlush.
  HDC dc() const { return m_dc; }
  void paint(HDC target) const;

private:
  void blend(int x, int y, COLORREF colour, double opacity);
  bool clip(double& x0, double& y0, double& x1, double& y1) const;
  void release();

  HDC m_dc = nullptr;
  HBITMAP m_bitmap = nullptr;
  HGDIOBJ m_old_bitmap = nullptr;
  uint32_t* m_pixels = nullptr;  // 0x00rrggbb, rows from the top
  int m_width = 0;
  int m_height = 0;
};
