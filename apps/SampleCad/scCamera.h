// Where the view looks from: an orbit around a target point.
#pragma once

#include "framework/CString.h"

struct scPoint3 {
  double x, y, z;  // model millimetres, z upwards
};

struct scPoint2 {
  double x, y;  // client pixels
};

struct scCamera {
  double yaw = -35;       // degrees around z; 0 looks along y
  double pitch = 24;      // degrees above the horizon
  double distance = 430;  // millimetres from the target
  scPoint3 target = {0, 0, 30};
  bool perspective = true;

  // Pixels of a rotation drag, of a pan drag, of a zoom drag.
  void turn(double dx, double dy);
  void pan(double dx, double dy, int view_height);
  void zoom(double factor);
  void look(double new_yaw, double new_pitch);

  // Pixel of a point in a view of this size; false when it lies behind the camera.
  bool project(const scPoint3& point, int width, int height, scPoint2& out) const;
  // The same for a line; cut at the camera's plane. False when all of it lies behind.
  bool project(const scPoint3& a, const scPoint3& b, int width, int height, scPoint2& out_a,
               scPoint2& out_b) const;
  // Millimetres in front of the camera.
  double depth(const scPoint3& point) const;

  // The camera as text, and back: "yaw=-35.0 pitch=24.0 distance=520.0 target=0.0,0.0,30.0 perspective".
  // Equal cameras give equal texts; a text of another form leaves the camera alone and gives false.
  CString to_text() const;
  bool from_text(const char* text);

private:
  scPoint3 to_eye(const scPoint3& point) const;
  scPoint2 to_screen(const scPoint3& eye, int width, int height) const;
};
