// A picture in memory with smooth lines; see the header.
#include "apps/SampleCad/scCanvas.h"

#include <algorithm>
#include <cmath>

namespace {

// COLORREF has red in the low byte, a bitmap blue.
uint32_t pixel(COLORREF colour) {
  return static_cast<uint32_t>(GetRValue(colour)) << 16 | static_cast<uint32_t>(GetGValue(colour)) << 8 |
         GetBValue(colour);
}

int mix(int from, int to, double part) { return from + static_cast<int>(std::lround((to - from) * part)); }

}  // namespace

scCanvas::~scCanvas() { release(); }

void scCanvas::release() {
  if (m_dc) {
    SelectObject(m_dc, m_old_bitmap);
    DeleteObject(m_bitmap);
    DeleteDC(m_dc);
  }
  m_dc = nullptr;
  m_pixels = nullptr;
  m_width = m_height = 0;
}

bool scCanvas::resize(int width, int height) {
  width = std::max(width, 1);
  height = std::max(height, 1);
  if (m_pixels && width == m_width && height == m_height)
    return true;
  // No reallocation while a window is only painted again.
  release();
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  m_bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!m_bitmap)
    return false;
  m_dc = CreateCompatibleDC(nullptr);
  m_old_bitmap = SelectObject(m_dc, m_bitmap);
  m_pixels = static_cast<uint32_t*>(bits);
  m_width = width;
  m_height = height;
  return true;
}

void scCanvas::gradient(COLORREF top, COLORREF bottom) {
  for (int y = 0; y < m_height; ++y) {
    const double part = static_cast<double>(y) / m_height;
    const uint32_t value =
        pixel(RGB(mix(GetRValue(top), GetRValue(bottom), part), mix(GetGValue(top), GetGValue(bottom), part),
                  mix(GetBValue(top), GetBValue(bottom), part)));
    std::fill_n(m_pixels + static_cast<size_t>(y) * m_width, m_width, value);
  }
}

void scCanvas::blend(int x, int y, COLORREF colour, double opacity) {
  // Smooth lines reach one pixel beyond the clipped ends.
  if (x < 0 || y < 0 || x >= m_width || y >= m_height)
    return;
  uint32_t& target = m_pixels[static_cast<size_t>(y) * m_width + x];
  target = pixel(RGB(mix(target >> 16 & 255, GetRValue(colour), opacity),
                     mix(target >> 8 & 255, GetGValue(colour), opacity),
                     mix(target & 255, GetBValue(colour), opacity)));
}

// Cuts the line to the picture; false when nothing of it is inside.
bool scCanvas::clip(double& x0, double& y0, double& x1, double& y1) const {
  const double dx = x1 - x0;
  const double dy = y1 - y0;
  // Parameters along the line at which it enters and leaves each side.
  const double step[] = {-dx, dx, -dy, dy};
  const double room[] = {x0, m_width - 1 - x0, y0, m_height - 1 - y0};
  double first = 0;
  double last = 1;
  for (int side = 0; side < 4; ++side) {
    if (step[side] == 0) {
      if (room[side] < 0)
        return false;
      continue;
    }
    const double t = room[side] / step[side];
    if (step[side] < 0)
      first = std::max(first, t);
    else
      last = std::min(last, t);
  }
  if (first > last)
    return false;
  x1 = x0 + dx * last;
  y1 = y0 + dy * last;
  x0 += dx * first;
  y0 += dy * first;
  return true;
}

void scCanvas::line(double x0, double y0, double x1, double y1, COLORREF colour, double opacity) {
  if (!m_pixels || !clip(x0, y0, x1, y1))
    return;
  // One step per pixel along the longer axis, the colour shared between the two pixels across it.
  const bool steep = std::fabs(y1 - y0) > std::fabs(x1 - x0);
  const double length = steep ? std::fabs(y1 - y0) : std::fabs(x1 - x0);
  const int steps = std::max(1, static_cast<int>(std::ceil(length)));
  for (int i = 0; i <= steps; ++i) {
    const double t = static_cast<double>(i) / steps;
    const double along = steep ? y0 + (y1 - y0) * t : x0 + (x1 - x0) * t;
    const double across = steep ? x0 + (x1 - x0) * t : y0 + (y1 - y0) * t;
    const int a = static_cast<int>(std::lround(along));
    const int b = static_cast<int>(std::floor(across));
    const double far_part = across - b;
    blend(steep ? b : a, steep ? a : b, colour, opacity * (1 - far_part));
    blend(steep ? b + 1 : a, steep ? a : b + 1, colour, opacity * far_part);
  }
}

void scCanvas::paint(HDC target) const { BitBlt(target, 0, 0, m_width, m_height, m_dc, 0, 0, SRCCOPY); }
